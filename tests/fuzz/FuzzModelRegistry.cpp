// A server's list of translation models.

#include "Fuzz.h"

#include "ModelRegistry.h"

using namespace lucentra;

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto models = readModelRegistry(bytesOf(data, size));
    if (!models)
        return 0;
    for (const OfferedModel &model : *models) {
        mustHold(modelPair(modelName(model.pair)) == model.pair, "a pair can name a folder");
        mustHold(model.files.size() >= 3 && model.size() > 0 && model.packedSize() > 0, "a model is complete");
        for (const ModelFile &file : model.files) {
            mustHold(!file.name.contains(u'/') && !file.name.startsWith(u'.'), "a file stays in its folder");
            mustHold(!file.location.startsWith('/') && !file.location.contains("..") && !file.location.contains(':'),
                     "a file comes from its server");
        }
    }
    return 0;
}
