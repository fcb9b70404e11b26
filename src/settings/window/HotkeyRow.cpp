#include "HotkeyRow.h"

#include "SettingsStore.h"

namespace lucentra {

HotkeyRow::HotkeyRow(SettingsStore &settings, const StoredHotkey &hotkey, const LocalizationManager &texts,
                     Scheduler &scheduler, QWidget *parent)
    : HotkeyButton(texts, scheduler, parent)
    , m_settings(settings)
    , m_hotkey(hotkey)
{
    showStored();
    onHotkeyChanged = [this](quint32 flags, quint32 keyCode, const QString &combination) {
        store(flags, keyCode, combination);
    };
}

void HotkeyRow::showStored()
{
    if (!isRecording())
        setDefaultTitle(m_settings.read(m_hotkey.text));
}

void HotkeyRow::store(quint32 flags, quint32 keyCode, const QString &combination)
{
    constexpr quint32 storedBits = 0xFFFF;
    m_settings.write(m_hotkey.modifiers, flags);
    m_settings.write(m_hotkey.code, keyCode & storedBits);
    m_settings.write(m_hotkey.text, combination);
}

} // namespace lucentra
