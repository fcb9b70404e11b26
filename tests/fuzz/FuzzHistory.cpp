// The history's file, which people copy, edit and merge by hand.

#include "Fuzz.h"

#include "HistoryFile.h"
#include "HistorySearch.h"

using namespace lucentra;

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto items = decodeHistory(bytesOf(data, size));
    if (!items) {
        mustHold(!items.error().description.isEmpty(), "a failure has words");
        return 0;
    }
    const QByteArray written = encodeHistory(*items);
    const auto again = decodeHistory(written);
    mustHold(again.has_value(), "what was written can be read");
    mustHold(encodeHistory(*again) == written, "reading and writing changes nothing");
    for (const HistoryItem &item : *items)
        mustHold(dateOf(item.timestamp).isValid(), "every entry has a date");
    return 0;
}
