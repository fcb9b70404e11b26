// The memory's file, damaged: the input is a list of places and what is written there.

#include "FuzzedPhrases.h"

#include "NgramModel.h"
#include "PhraseLookup.h"

#include <cstring>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

const QByteArray sound = smallMemory(); // made before the engine times the first input

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    PhraseFileHeader header;
    std::memcpy(&header, sound.constData(), sizeof header);
    QByteArray bytes = sound;
    // Three bytes of the place, one of the value. The model of n-grams, any value of which is a good one, is left out.
    const auto places = quint64(sound.size() - NgramModel::byteCount);
    for (size_t at = 0; at + 4 <= size; at += 4) {
        quint64 place = (data[at] | data[at + 1] << 8 | data[at + 2] << 16) % places;
        if (place >= header.ngrams)
            place += NgramModel::byteCount;
        bytes[qsizetype(place)] = char(data[at + 3]);
    }
    const auto file = PhraseFile::fromBytes(bytes);
    if (!file)
        return 0;
    for (const QString &line : {u"Cancel"_s, u"Page 3 of 4"_s, u"Abbrechen"_s, u"キャンセル"_s, u"File name: x"_s}) {
        (void)file->englishVotes(phraseKey(line));
        (void)file->isEnglishWord(phraseKey(line));
        (void)file->ngrams().scores(line);
        for (const LanguagePair &pair : {LanguagePair{u"en"_s, u"ja"_s}, LanguagePair{u"ja"_s, u"en"_s},
                                         LanguagePair{u"de"_s, u"ja"_s}, LanguagePair{u"ko"_s, u"zh-Hant"_s}}) {
            const auto lookup = PhraseLookup::between(*file, pair);
            const auto found = lookup ? lookup->translate(line) : std::nullopt;
            mustHold(!found || found->text.isValidUtf16(), "a translation is text");
        }
    }
    return 0;
}
