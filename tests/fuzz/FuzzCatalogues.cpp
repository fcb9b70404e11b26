// The message catalogues of the installed programs, of both kinds.

#include "Fuzz.h"

#include "MessageCatalogue.h"

using namespace lucentra;

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArrayView bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    for (const auto reader : {readMoCatalogue, readQmCatalogue}) {
        size_t messages = 0;
        reader(bytes, [&](QByteArrayView source, const QString &translation) {
            ++messages;
            mustHold(!source.isEmpty() && !translation.isEmpty(), "a message has a source and a translation");
            mustHold(translation.isValidUtf16(), "a translation is text");
        });
        mustHold(messages <= size, "the work is bounded by the bytes");
    }
    return 0;
}
