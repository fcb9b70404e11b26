#pragma once

#include "Callback.h"

#include <QObject>

namespace lucentra {

class GlassView;
class LocalizationManager;
class SettingsStore;

/// What clicks on the pane and the capsule's buttons do, and the hints that say so.
class PaneControls : public QObject
{
public:
    PaneControls(GlassView &pane, SettingsStore &settings, const LocalizationManager &texts);

    /// Starts a pass over the area beneath the pane.
    Callback<> onTranslateTapped;

    /// Typed text on the pane.
    struct ManualInput
    {
        std::function<QWidget *(QWidget *)> makePanel; ///< makes the panel that takes the text, as a child of the pane
        Callback<> submit;                             ///< translates what has been typed
        Callback<> copy;                               ///< copies the translation
        Callback<> reset;                              ///< cancels and forgets everything, including a running pass
    };
    ManualInput manualInput;

    /// Shows the start hint for the current settings. To be called once the pane is on the screen: the first text takes
    /// long, since the toolkit reads the list of all fonts for it.
    void showPristineHint();
    /// The translate action of clicks, buttons, menus and hotkeys: starts a pass, or translates the typed text in input
    /// mode.
    void performTranslateAction();
    void toggleTriggerMode();
    void toggleInputMode();
    void selectTargetLanguage(const QString &code);

private:
    bool isDoubleClickGesture() const;
    void updateCapsule();
    /// Shows a text, given by its key, for a short time.
    void showHint(const QString &textKey);

    GlassView &m_pane;
    SettingsStore &m_settings;
    const LocalizationManager &m_texts;
};

} // namespace lucentra
