#include "Language.h"

#include <algorithm>

namespace lucentra {

const Language *targetLanguage(QStringView code)
{
    const auto found = std::find_if(targetLanguages.begin(), targetLanguages.end(),
                                    [&](const Language &language) { return code == language.code; });
    return found == targetLanguages.end() ? nullptr : &*found;
}

} // namespace lucentra
