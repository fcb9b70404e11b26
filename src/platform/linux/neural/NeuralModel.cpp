#include "NeuralModel.h"

#include "MappedFile.h"
#include "Shortlist.h"
#include "StudentNetwork.h"
#include "Vocabulary.h"

#include <sentencepiece_processor.h>

#include <QDir>

#include <algorithm>
#include <atomic>
#include <future>
#include <numeric>
#include <string>
#include <thread>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

using Kind = NeuralModelError::Kind;
using Vocabulary = sentencepiece::SentencePieceProcessor;

/// A longer sentence is translated in parts. Models are trained with sentences up to about this length.
constexpr std::size_t longestPart = 127;
/// More would need more memory, and not be faster.
constexpr std::size_t mostWordsTogether = 1024;

tl::unexpected<NeuralModelError> failure(Kind kind, const QString &detail)
{
    return tl::unexpected(NeuralModelError{kind, detail});
}

struct NamedFile
{
    QString name;
    std::unique_ptr<MappedFile> file; ///< null if there is none, or more than one
};

NamedFile openFile(const QDir &folder, const QString &pattern)
{
    const QStringList names = folder.entryList({pattern}, QDir::Files, QDir::Name);
    if (names.size() != 1)
        return {.name = pattern, .file = nullptr};
    return {.name = names.first(), .file = MappedFile::open(folder.filePath(names.first()))};
}

/// The sentence as numbers, in parts that each end in the end of the sentence.
std::vector<std::vector<int>> partsOf(const QString &sentence, const Vocabulary &vocabulary)
{
    const QByteArray text = sentence.toUtf8();
    std::vector<int> words;
    if (!vocabulary.Encode({text.constData(), std::size_t(text.size())}, &words).ok())
        return {};
    std::vector<std::vector<int>> parts;
    for (std::size_t start = 0; start < words.size(); start += longestPart) {
        const auto end = std::min(words.size(), start + longestPart);
        std::vector<int> &part =
            parts.emplace_back(words.begin() + std::ptrdiff_t(start), words.begin() + std::ptrdiff_t(end));
        part.push_back(vocabulary.eos_id());
    }
    return parts;
}

class MappedModel : public NeuralModel
{
public:
    MappedModel(NamedFile modelFile, NamedFile shortlistFile, StudentNetwork network)
        : m_modelFile(std::move(modelFile))
        , m_shortlistFile(std::move(shortlistFile))
        , m_network(std::move(network))
    {
    }

    std::optional<NeuralModelError> setVocabularies(std::unique_ptr<Vocabulary> source,
                                                    std::unique_ptr<Vocabulary> target)
    {
        m_source = std::move(source);
        m_ownTarget = std::move(target);
        m_target = m_ownTarget ? m_ownTarget.get() : m_source.get();
        if (m_source->GetPieceSize() > m_network.sourceWords() || m_target->GetPieceSize() > m_network.targetWords())
            return NeuralModelError{Kind::Damaged, u"*.spm"_s};
        if (m_shortlistFile.file) {
            m_shortlist =
                Shortlist::parse(m_shortlistFile.file->bytes(), m_network.sourceWords(), m_network.targetWords());
            if (!m_shortlist)
                return NeuralModelError{Kind::Damaged, m_shortlistFile.name};
        }
        return std::nullopt;
    }

    QList<Translation> translate(const QStringList &sentences, const Options &options) const override
    {
        std::vector<std::vector<int>> parts;
        std::vector<qsizetype> owners; // the sentence of each part
        for (qsizetype i = 0; i < sentences.size(); ++i) {
            for (auto &part : partsOf(sentences[i], *m_source)) {
                parts.push_back(std::move(part));
                owners.push_back(i);
            }
        }
        const std::vector<WordTranslation> translated = translateParts(parts, options);
        const bool isIntact =
            m_modelFile.file->isIntact() && (!m_shortlistFile.file || m_shortlistFile.file->isIntact());
        QList<Translation> translations(sentences.size(), {.text = {}, .isComplete = isIntact});
        for (std::size_t p = 0; p < parts.size(); ++p) {
            std::vector<int> words = translated[p].words;
            std::erase_if(words, [this](int word) { return word >= m_target->GetPieceSize(); });
            std::string text;
            const bool isText = m_target->Decode(words, &text).ok();
            Translation &translation = translations[owners[p]];
            translation.text += QString::fromUtf8(text.data(), qsizetype(text.size()));
            translation.isComplete = translation.isComplete && translated[p].isComplete && isText;
        }
        return translations;
    }

private:
    /// Deals the parts out to threads in batches of about as many words each.
    std::vector<WordTranslation> translateParts(const std::vector<std::vector<int>> &parts,
                                                const Options &options) const
    {
        std::vector<std::size_t> order(parts.size());
        std::iota(order.begin(), order.end(), std::size_t(0));
        std::stable_sort(order.begin(), order.end(), [&parts](std::size_t left, std::size_t right) {
            return parts[left].size() > parts[right].size();
        });
        std::size_t words = 0;
        for (const auto &part : parts)
            words += part.size();
        const auto processors = std::max(1U, std::thread::hardware_concurrency());
        const auto threads = std::min(std::size_t(options.threads > 0 ? unsigned(options.threads) : processors),
                                      std::max(std::size_t(1), parts.size()));
        struct Batch
        {
            std::size_t words = 0;
            std::vector<std::size_t> numbers; ///< of its parts
        };
        std::vector<Batch> batches((words / mostWordsTogether + threads) / threads * threads);
        for (const std::size_t number : order) {
            // The longest first, each where the fewest words are.
            Batch &batch = *std::min_element(batches.begin(), batches.end(), [](const Batch &left, const Batch &right) {
                return left.words < right.words;
            });
            batch.words += parts[number].size();
            batch.numbers.push_back(number);
        }

        std::vector<WordTranslation> translations(parts.size());
        std::atomic<std::size_t> nextBatch = 0;
        const auto work = [&] {
            for (std::size_t b = nextBatch++; b < batches.size(); b = nextBatch++) {
                std::vector<std::vector<int>> chosen;
                for (const std::size_t number : batches[b].numbers)
                    chosen.push_back(parts[number]);
                std::vector<WordTranslation> made =
                    m_network.translate(chosen, {.endWord = m_target->eos_id(),
                                                 .unknownWord = m_target->unk_id(),
                                                 .lengthFactor = options.lengthFactor,
                                                 .leastLength = options.leastLength,
                                                 .shortlist = m_shortlist ? &*m_shortlist : nullptr,
                                                 .isWanted = options.isWanted});
                for (std::size_t i = 0; i < made.size(); ++i)
                    translations[batches[b].numbers[i]] = std::move(made[i]);
            }
        };
        std::vector<std::future<void>> others;
        for (std::size_t i = 1; i < threads; ++i)
            others.push_back(std::async(std::launch::async, work));
        work();
        for (auto &other : others)
            other.get();
        return translations;
    }

    const NamedFile m_modelFile;
    const NamedFile m_shortlistFile;
    const StudentNetwork m_network;
    std::optional<Shortlist> m_shortlist;
    std::unique_ptr<Vocabulary> m_source;
    std::unique_ptr<Vocabulary> m_ownTarget; ///< null if both languages have the same
    Vocabulary *m_target = nullptr;
};

} // namespace

tl::expected<std::shared_ptr<const NeuralModel>, NeuralModelError> NeuralModel::open(const QString &path)
{
    const QDir folder(path);
    NamedFile modelFile = openFile(folder, u"model.*.bin"_s);
    NamedFile shortlistFile = openFile(folder, u"lex.*.bin"_s);
    const bool hasOneVocabulary = !folder.entryList({u"vocab.*.spm"_s}, QDir::Files).isEmpty();
    const NamedFile sourceFile = openFile(folder, hasOneVocabulary ? u"vocab.*.spm"_s : u"srcvocab.*.spm"_s);
    const NamedFile targetFile = hasOneVocabulary ? NamedFile() : openFile(folder, u"trgvocab.*.spm"_s);
    for (const NamedFile *needed : {&std::as_const(modelFile), &sourceFile, &targetFile}) {
        if (!needed->file && (needed != &targetFile || !hasOneVocabulary))
            return failure(Kind::Missing, needed->name);
    }
    // Most of the time goes into the vocabularies.
    const auto load = [](const NamedFile *file) { return loadVocabulary(file->file->bytes()); };
    auto target = hasOneVocabulary ? std::future<std::unique_ptr<Vocabulary>>()
                                   : std::async(std::launch::async, load, &targetFile);
    auto source = load(&sourceFile);
    auto ownTarget = target.valid() ? target.get() : nullptr;
    if (!source)
        return failure(Kind::Damaged, sourceFile.name);
    if (!ownTarget && !hasOneVocabulary)
        return failure(Kind::Damaged, targetFile.name);
    const auto file = NetworkFile::parse(modelFile.file->bytes());
    if (!file)
        return tl::unexpected(file.error());
    auto network = StudentNetwork::make(*file);
    if (!network)
        return tl::unexpected(network.error());
    const auto model =
        std::make_shared<MappedModel>(std::move(modelFile), std::move(shortlistFile), std::move(*network));
    if (const auto error = model->setVocabularies(std::move(source), std::move(ownTarget)))
        return tl::unexpected(*error);
    return model;
}

} // namespace lucentra
