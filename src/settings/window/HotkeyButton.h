#pragma once

#include "Callback.h"
#include "Scheduler.h"

#include <QPushButton>

#include <memory>
#include <optional>

namespace lucentra {

class LocalizationManager;

/// A button that records a key combination. A click starts recording, the next combination ends it. Return, Escape and
/// the loss of the focus end it without a change. A key needs no modifiers; modifiers alone are not a combination.
class HotkeyButton : public QPushButton
{
public:
    /// How long the window may lose the focus without ending a recording. A window manager that handles a key first
    /// takes the focus for a moment.
    static constexpr std::chrono::milliseconds focusPatience{500};

    HotkeyButton(const LocalizationManager &texts, Scheduler &scheduler);

    /// Gets the modifier flags, the virtual key code (VirtualKeys.h) and the displayed combination.
    Callback<quint32, quint32, const QString &> onHotkeyChanged;
    /// Gets whether a recording has started or ended. During a recording the program's hotkeys must be unregistered,
    /// otherwise they couldn't be recorded.
    Callback<bool> onRecordingChanged;

    bool isRecording() const { return m_isRecording; }
    /// The text outside a recording: a combination as this desktop writes it, elided if it is longer than the prompt.
    QString defaultTitle() const { return m_defaultTitle; }
    void setDefaultTitle(const QString &title);
    /// Ends a recording. A given title becomes the default title.
    void finishRecording(const std::optional<QString> &title = std::nullopt);

protected:
    bool event(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QString recordingPrompt() const;
    void startRecording();
    bool handleRecordingKey(const QKeyEvent &event);

    const LocalizationManager &m_texts;
    Scheduler &m_scheduler;
    QString m_defaultTitle;
    std::unique_ptr<ScheduledTask> m_focusLoss;
    bool m_isRecording = false;
};

} // namespace lucentra
