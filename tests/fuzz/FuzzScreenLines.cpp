// Lines of a screen or a catalogue: divided, looked up among the phrases, and identified by their language.

#include "FuzzedPhrases.h"

#include "PhraseForm.h"
#include "PhraseLookup.h"
#include "ScreenLanguageIdentifier.h"
#include "Text.h"

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

// Made before the engine times the first input.
const std::shared_ptr<const PhraseFile> file = PhraseFile::fromBytes(smallMemory());

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto text = decodeUtf8(bytesOf(data, size));
    if (!text)
        return 0;
    const ScreenPhrase phrase = screenPhrase(*text);
    mustHold(!phrase.forms.isEmpty(), "a line has a form");
    for (const ScreenForm &form : phrase.forms) {
        mustHold(form.values.size() <= mostSlots, "no more values than slots");
        mustHold(phraseKey(form.text).size() <= form.text.size(), "a key is no longer than its phrase");
    }
    const PhraseForm source = catalogueForm(*text);
    mustHold(source.arguments.size() <= mostSlots, "no more arguments than slots");
    const auto translation = translationForm(*text, source, mayHaveMnemonic(*text));
    mustHold(!translation || !translation->isEmpty(), "a translation is no empty text");
    for (const LanguagePair &pair : {LanguagePair{u"en"_s, u"ja"_s}, LanguagePair{u"ja"_s, u"en"_s}}) {
        const auto found = PhraseLookup::between(*file, pair)->translate(*text);
        mustHold(!found || (found->confidence >= 0 && found->confidence <= 1), "a confidence is a share");
        mustHold(!found || found->text.isValidUtf16(), "a translation is text");
    }
    for (const auto &memory : {file, std::shared_ptr<const PhraseFile>()}) {
        ScreenLanguageIdentifier identifier([&memory] { return memory; });
        mustHold(identifier.identify({*text, u"Cancel"_s}).size() == 2, "one language a text");
    }
    return 0;
}
