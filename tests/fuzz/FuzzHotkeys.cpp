// Stored hotkeys: numbers and a shown combination, from a file that anybody may have edited.

#include "Fuzz.h"

#include "VirtualKeys.h"

#include <cstring>

using namespace lucentra;

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    quint64 flags = 0;
    quint32 keyCode = 0;
    if (size < sizeof flags + sizeof keyCode)
        return 0;
    std::memcpy(&flags, data, sizeof flags);
    std::memcpy(&keyCode, data + sizeof flags, sizeof keyCode);
    const size_t used = sizeof flags + sizeof keyCode;
    const QString combination = QString::fromUtf8(bytesOf(data + used, size - used));

    const QString key = menuKeyOfDisplayString(combination);
    mustHold(!key.isEmpty(), "a menu always has a key to show");
    const QString shown = hotkeyDisplayString(quint32(flags), key);
    mustHold(hotkeyDisplayString(quint32(flags), menuKeyOfDisplayString(shown)) == shown,
             "a menu shows the combination that was recorded");
    if (const auto xKeyCode = xKeyCodeOfVirtualKey(keyCode)) {
        const auto back = virtualKeyOfXKeyCode(*xKeyCode);
        mustHold(back && xKeyCodeOfVirtualKey(*back) == xKeyCode, "a position has one number either way");
    }
    mustHold((hotkeyModifiersOfFlags(flags) & ~0x1B00U) == 0, "no modifier but the four");
    return 0;
}
