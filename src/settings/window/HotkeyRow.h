#pragma once

#include "HotkeyButton.h"
#include "Setting.h"

namespace lucentra {

class SettingsStore;

/// The settings of one hotkey. The text is written last, and announces all three.
struct StoredHotkey
{
    Setting<qint64> code;
    Setting<qint64> modifiers;
    Setting<QString> text;
};

/// The button that shows a stored hotkey and stores a recorded one.
class HotkeyRow : public HotkeyButton
{
public:
    HotkeyRow(SettingsStore &settings, const StoredHotkey &hotkey, const LocalizationManager &texts,
              Scheduler &scheduler, QWidget *parent = nullptr);

    /// Updates the shown combination unless one is being recorded.
    void showStored();

private:
    void store(quint32 flags, quint32 keyCode, const QString &combination);

    SettingsStore &m_settings;
    const StoredHotkey m_hotkey;
};

} // namespace lucentra
