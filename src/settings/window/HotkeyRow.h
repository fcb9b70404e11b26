#pragma once

#include "HotkeyButton.h"

namespace lucentra {

class SettingsStore;

/// The button that shows the stored hotkey and stores a recorded one, which announces "UpdateGlobalHotkey".
class HotkeyRow : public HotkeyButton
{
public:
    HotkeyRow(SettingsStore &settings, const LocalizationManager &texts, Scheduler &scheduler,
              QWidget *parent = nullptr);

    /// Updates the shown combination unless one is being recorded.
    void showStored();

private:
    void store(quint32 flags, quint32 keyCode, const QString &combination);

    SettingsStore &m_settings;
};

} // namespace lucentra
