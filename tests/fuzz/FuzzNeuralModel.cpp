// A translation model and its shortlist, damaged: the input is a list of places and what is written there.

#include "Fuzz.h"
#include "Shortlist.h"
#include "StudentNetwork.h"
#include "TinyModel.h"

using namespace lucentra;

namespace {

const QByteArray soundModel = TinyModel().bytes();
const QByteArray soundList = TinyModel::shortlist();

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QByteArray model = soundModel;
    QByteArray list = soundList;
    // The first byte cuts the model; then three bytes of the place in both, and one of the value.
    if (size > 0 && data[0] > 200)
        model.truncate(model.size() * data[0] / 256);
    for (size_t at = 1; at + 4 <= size; at += 4) {
        const auto place = qsizetype(data[at] | data[at + 1] << 8 | data[at + 2] << 16) % (model.size() + list.size());
        (place < model.size() ? model[place] : list[place - model.size()]) = char(data[at + 3]);
    }
    const auto file = NetworkFile::parse(model);
    const auto network = file ? StudentNetwork::make(*file) : tl::unexpected(file.error());
    if (!network || network->sourceWords() < TinyModel::words)
        return 0;
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
