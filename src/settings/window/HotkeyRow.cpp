#include "HotkeyRow.h"

#include "Settings.h"
#include "SettingsStore.h"

namespace lucentra {

HotkeyRow::HotkeyRow(SettingsStore &settings, const LocalizationManager &texts, Scheduler &scheduler, QWidget *parent)
    : HotkeyButton(texts, scheduler, parent)
    , m_settings(settings)
{
    showStored();
    onHotkeyChanged = [this](quint32 flags, quint32 keyCode, const QString &combination) {
        store(flags, keyCode, combination);
    };
}

void HotkeyRow::showStored()
{
    if (!isRecording())
        setDefaultTitle(m_settings.read(settings::hotkeyString));
}

void HotkeyRow::store(quint32 flags, quint32 keyCode, const QString &combination)
{
    constexpr quint32 storedBits = 0xFFFF;
    m_settings.write(settings::hotkeyModifiers, flags);
    m_settings.write(settings::hotkeyCode, keyCode & storedBits);
    m_settings.write(settings::hotkeyString, combination); // last: it announces all three
}

} // namespace lucentra
