#pragma once

#include "Scheduler.h"

#include <QPushButton>

#include <functional>
#include <memory>
#include <optional>

namespace lucentra {

class LocalizationManager;

/// A button that records a combination of keys: a click begins, the next combination ends it. Return, Escape and the
/// loss of the focus end it without a change. Keys need no modifier; modifiers alone are no combination. Main thread
/// only.
class HotkeyButton : public QPushButton
{
public:
    /// How long the window may be without the focus while a combination is recorded. A window manager that looks at a
    /// key first takes the focus away for a moment.
    static constexpr std::chrono::milliseconds focusPatience{500};

    /// What is referred to must outlive the button.
    HotkeyButton(const LocalizationManager &texts, Scheduler &scheduler, QWidget *parent = nullptr);

    /// Takes modifier flags and the virtual key code (VirtualKeys.h), and the combination as it is shown.
    std::function<void(quint32 flags, quint32 keyCode, const QString &combination)> onHotkeyChanged;
    /// Recording has begun or ended. Meanwhile the program's own hotkeys must be let go, or they couldn't be recorded.
    std::function<void(bool isRecording)> onRecordingChanged;

    bool isRecording() const { return m_isRecording; }
    /// What the button shows while it doesn't record, as this desktop writes a combination, and elided where it is
    /// longer than the prompt of a recording.
    QString defaultTitle() const { return m_defaultTitle; }
    void setDefaultTitle(const QString &title);
    /// Ends a recording; a given title becomes the default one.
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
    void setRecording(bool recording);

    const LocalizationManager &m_texts;
    Scheduler &m_scheduler;
    QString m_defaultTitle;
    std::unique_ptr<ScheduledTask> m_focusLoss;
    bool m_isRecording = false;
};

} // namespace lucentra
