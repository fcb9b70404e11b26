// The settings of a former version, a property list in either of its formats.

#include "Fuzz.h"

#include "PropertyList.h"

using namespace lucentra;

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QJsonObject values = readPropertyList(bytesOf(data, size));
    for (const QJsonValue &value : values)
        mustHold(value.isString() || value.isDouble() || value.isBool(), "nothing but texts, numbers and booleans");
    return 0;
}
