#pragma once

#include "HotkeyButton.h"

namespace lucentra {

class SettingsStore;

/// The button that records the hotkey of the settings: it shows the stored combination, and stores a recorded one,
/// which the program then registers at once ("UpdateGlobalHotkey"). Main thread only.
class HotkeyRow : public HotkeyButton
{
public:
    /// What is referred to must outlive the button.
    HotkeyRow(SettingsStore &settings, const LocalizationManager &texts, Scheduler &scheduler,
              QWidget *parent = nullptr);

    /// Shows what is stored by now, unless a combination is being recorded.
    void showStored();

private:
    void store(quint32 flags, quint32 keyCode, const QString &combination);

    SettingsStore &m_settings;
};

} // namespace lucentra
