// A translation model, its shortlist and its vocabulary, damaged: the input is a list of places and what is written there.

#include "Fuzz.h"
#include "Shortlist.h"
#include "StudentNetwork.h"
#include "TinyModel.h"
#include "Vocabulary.h"

#include <sentencepiece_processor.h>

using namespace lucentra;

namespace {

const QByteArray soundModel = TinyModel().bytes();
const QByteArray soundList = TinyModel::shortlist();
const QByteArray soundVocabulary = TinyModel::vocabulary();

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QByteArray model = soundModel;
    QByteArray list = soundList;
    QByteArray vocabulary = soundVocabulary;
    // The first byte cuts the model; then three bytes of the place in all of them, and one of the value.
    if (size > 0 && data[0] > 200)
        model.truncate(model.size() * data[0] / 256);
    for (size_t at = 1; at + 4 <= size; at += 4) {
        auto place = qsizetype(data[at] | data[at + 1] << 8 | data[at + 2] << 16) %
                     (model.size() + list.size() + vocabulary.size());
        QByteArray *file = &model;
        for (QByteArray *next : {&list, &vocabulary}) {
            if (place >= file->size()) {
                place -= file->size();
                file = next;
            }
        }
        (*file)[place] = char(data[at + 3]);
    }
    if (vocabulary != soundVocabulary) {
        if (const auto loaded = loadVocabulary(vocabulary)) {
            std::string text;
            static_cast<void>(loaded->Decode(loaded->EncodeAsIds("An ABC, \xE3\x81\x82"), &text));
        }
    }
    const auto file = NetworkFile::parse(model);
    const auto network = file ? StudentNetwork::make(*file) : tl::unexpected(file.error());
    if (!network || network->sourceWords() < TinyModel::words)
        return 0;
    list = TinyModel::withChecksum(list); // or nothing else would be tried
    const auto shortlist = Shortlist::parse(list, network->sourceWords(), network->targetWords());
    const std::vector<std::vector<int>> sentences{{3, 4, TinyModel::words - 1, 0}, {0}};
    const auto translations = network->translate(sentences, {.shortlist = shortlist ? &*shortlist : nullptr});
    mustHold(translations.size() == sentences.size(), "each sentence has a translation");
    for (const WordTranslation &translation : translations) {
        for (const int word : translation.words)
            mustHold(word >= 0 && word < network->targetWords(), "a word is of the vocabulary");
    }
    return 0;
}
