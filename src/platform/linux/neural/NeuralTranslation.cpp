#include "NeuralTranslation.h"

#include "ChineseScript.h"
#include "Memory.h"
#include "Sentences.h"
#include "TranslationModels.h"

#include <QDir>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

const QString serviceName = u"neural"_s;
/// In words. A short text's translation may be longer than the usual factor allows.
constexpr int alwaysAllowedLength = 16;
/// More than a network of rules has, less than a program's own translators.
constexpr double neuralConfidence = 0.45;

bool isTraditionalChinese(const QString &tag)
{
    return isSameModelLanguage(tag, u"zh-Hant");
}

bool isSimplifiedChinese(const QString &tag)
{
    return isSameModelLanguage(tag, u"zh-Hans");
}

QList<LanguagePair> pairsOf(const QList<InstalledModel> &installed)
{
    QList<LanguagePair> pairs;
    for (const InstalledModel &model : installed)
        pairs.append({model.source, model.target});
    return pairs;
}

/// A language as the program names it.
QString languageCode(const QString &tag)
{
    return isTraditionalChinese(tag) ? u"zh-Hant"_s : isSimplifiedChinese(tag) ? u"zh-Hans"_s : tag;
}

/// Distinguishes two contents of a model's folder without reading the files.
QList<FileStamp> stampsOf(const QString &folder)
{
    QList<FileStamp> stamps;
    for (const QString &name : QDir(folder).entryList(QDir::Files, QDir::Name))
        stamps.append(stampOf(folder + u'/' + name));
    return stamps;
}

/// A sentence of one of the texts, on its way through the models.
struct Task
{
    qsizetype text = 0;
    qsizetype part = 0;
    QString sentence;
    /// The sentence between its protected words, if they got lost when it was translated as a whole.
    QList<TextPart> pieces;
};

/// Divides a sentence at its protected words: pieces of language, each with the protected word that follows it.
QList<TextPart> piecesBetween(const QString &sentence, const QStringList &words)
{
    QList<TextPart> pieces;
    qsizetype start = 0;
    for (const QString &word : words) {
        const qsizetype at = sentence.indexOf(word, start);
        const QString before = sentence.sliced(start, at - start);
        pieces.append({.sentence = before, .separator = word});
        start = at + word.size();
    }
    pieces.append({.sentence = sentence.sliced(start), .separator = {}});
    for (TextPart &piece : pieces) {
        const auto parts = partsOfText(piece.sentence, u"en"_s);
        piece.isLanguage = std::any_of(parts.begin(), parts.end(), [](const TextPart &part) { return part.isLanguage; });
    }
    return pieces;
}

/// Replaces the middle of a piece, and keeps the spaces at its ends.
QString betweenSpaces(const QString &piece, const QString &middle)
{
    const QString trimmed = piece.trimmed();
    const qsizetype start = piece.indexOf(trimmed);
    return piece.first(start) + middle + piece.sliced(start + trimmed.size());
}

} // namespace

NeuralTranslation::NeuralTranslation(InstalledModels models, std::chrono::milliseconds rest)
    : m_models(std::move(models))
    , m_rest(rest)
{
}

NeuralTranslation::~NeuralTranslation() = default;

void NeuralTranslation::cancel()
{
    m_isCancelled = true;
}

qsizetype NeuralTranslation::loadedCount() const
{
    const std::lock_guard lock(m_mutex);
    return std::count_if(m_loaded.begin(), m_loaded.end(), [](const Loaded &loaded) { return loaded.model != nullptr; });
}

void NeuralTranslation::dropRemoved(const QList<InstalledModel> &installed)
{
    const std::lock_guard lock(m_mutex);
    std::erase_if(m_loaded, [&installed](const Loaded &loaded) {
        return std::none_of(installed.begin(), installed.end(),
                            [&loaded](const InstalledModel &model) { return model.folder == loaded.folder; });
    });
}

std::shared_ptr<const NeuralModel> NeuralTranslation::load(const QString &folder)
{
    const QList<FileStamp> stamps = stampsOf(folder);
    const std::lock_guard lock(m_mutex);
    auto loaded = std::find_if(m_loaded.begin(), m_loaded.end(),
                               [&folder](const Loaded &each) { return each.folder == folder; });
    if (loaded == m_loaded.end() || loaded->stamps != stamps) {
        if (loaded == m_loaded.end())
            loaded = m_loaded.insert(loaded, Loaded{.folder = folder});
        loaded->stamps = stamps;
        loaded->model = NeuralModel::open(folder).value_or(nullptr);
    }
    loaded->lastUse = std::chrono::steady_clock::now();
    if (!m_release.joinable())
        m_release = std::jthread([this](const std::stop_token &stop) { releaseAfterRest(stop); });
    m_restChanged.notify_one();
    return loaded->model;
}

void NeuralTranslation::releaseAfterRest(const std::stop_token &stop)
{
    std::unique_lock lock(m_mutex);
    while (!stop.stop_requested()) {
        const auto now = std::chrono::steady_clock::now();
        const bool hasReleased = std::erase_if(m_loaded, [&](const Loaded &each) { return each.lastUse + m_rest <= now; }) > 0;
        if (hasReleased) {
            lock.unlock();
            giveBackFreeMemory();
            lock.lock();
        }
        const auto earliest = std::min_element(m_loaded.begin(), m_loaded.end(), [](const Loaded &one, const Loaded &other) {
            return one.lastUse < other.lastUse;
        });
        if (earliest == m_loaded.end())
            m_restChanged.wait(lock, stop, [this] { return !m_loaded.empty(); });
        else
            m_restChanged.wait_until(lock, stop, earliest->lastUse + m_rest, [] { return false; });
    }
}

/// The models of a pair. Returns nullopt if there is no way, and a step without a model if one can't be used.
std::optional<std::vector<NeuralTranslation::Step>> NeuralTranslation::route(const LanguagePair &pair)
{
    const QList<InstalledModel> installed = m_models.list();
    dropRemoved(installed);
    const QList<LanguagePair> pairs = pairsOf(installed);
    const QList<LanguagePair> ways = modelRoute(pair, pairs);
    if (ways.isEmpty())
        return std::nullopt;
    std::vector<Step> steps;
    for (const LanguagePair &way : ways)
        steps.push_back({.model = load(installed[pairs.indexOf(way)].folder)});
    steps.front().fromSimplified = isTraditionalChinese(pair.source) && isSimplifiedChinese(ways.first().source);
    steps.back().toTraditional = isTraditionalChinese(pair.target) && isSimplifiedChinese(ways.last().target);
    return steps;
}

QList<std::optional<QString>> NeuralTranslation::translateSentences(const std::vector<Step> &steps,
                                                                    QStringList sentences,
                                                                    const std::function<bool()> &isWanted) const
{
    QList<bool> isComplete(sentences.size(), true);
    for (const Step &step : steps) {
        if (step.fromSimplified)
            std::transform(sentences.begin(), sentences.end(), sentences.begin(), simplifiedFromTraditional);
        const auto translations =
            step.model->translate(sentences, {.leastLength = alwaysAllowedLength, .isWanted = isWanted});
        for (qsizetype i = 0; i < sentences.size(); ++i) {
            isComplete[i] = isComplete[i] && translations[i].isComplete && !translations[i].text.trimmed().isEmpty();
            sentences[i] = isComplete[i] ? translations[i].text : QString();
        }
        if (step.toTraditional)
            std::transform(sentences.begin(), sentences.end(), sentences.begin(), traditionalFromSimplified);
    }
    QList<std::optional<QString>> results;
    for (qsizetype i = 0; i < sentences.size(); ++i)
        results.append(isComplete[i] ? std::optional(sentences[i]) : std::nullopt);
    return results;
}

QList<OnDeviceOutcome> NeuralTranslation::translate(const LanguagePair &pair, const QStringList &texts,
                                                    const std::function<bool()> &isWanted)
{
    using Kind = OnDeviceOutcome::Kind;
    const auto steps = route(pair);
    if (!steps)
        return QList<OnDeviceOutcome>(texts.size());
    if (std::any_of(steps->begin(), steps->end(), [](const Step &step) { return !step.model; }))
        return QList<OnDeviceOutcome>(texts.size(), {.kind = Kind::UnknownPhrase});
    const auto isStillWanted = [this, &isWanted] { return !m_isCancelled && (!isWanted || isWanted()); };

    QList<QList<TextPart>> parts;
    QList<Task> tasks;
    QStringList sentences;
    for (qsizetype t = 0; t < texts.size(); ++t) {
        parts.append(partsOfText(texts[t], pair.source));
        for (qsizetype p = 0; p < parts[t].size(); ++p) {
            const TextPart &part = parts[t][p];
            if (!part.isLanguage)
                continue;
            tasks.append({.text = t, .part = p, .sentence = part.sentence});
            sentences.append(readableSentence(part.sentence));
        }
    }
    QList<std::optional<QString>> translations = translateSentences(*steps, sentences, isStillWanted);

    // Sentences that lost a protected word are translated in pieces, which leaves the words where they are.
    sentences.clear();
    for (qsizetype i = 0; i < tasks.size(); ++i) {
        const QStringList words = protectedWords(tasks[i].sentence);
        if (!translations[i] || hasWords(*translations[i], words))
            continue;
        tasks[i].pieces = piecesBetween(tasks[i].sentence, words);
        for (const TextPart &piece : std::as_const(tasks[i].pieces)) {
            if (piece.isLanguage)
                sentences.append(piece.sentence.trimmed());
        }
    }
    const QList<std::optional<QString>> pieceTranslations =
        sentences.isEmpty() ? QList<std::optional<QString>>() : translateSentences(*steps, sentences, isStillWanted);
    qsizetype next = 0;
    for (qsizetype i = 0; i < tasks.size(); ++i) {
        if (tasks[i].pieces.isEmpty())
            continue;
        QString whole;
        for (const TextPart &piece : std::as_const(tasks[i].pieces)) {
            const auto translated = piece.isLanguage ? pieceTranslations[next++] : std::optional(piece.sentence.trimmed());
            whole += betweenSpaces(piece.sentence, translated.value_or(piece.sentence.trimmed())) + piece.separator;
        }
        translations[i] = whole;
    }

    QList<OnDeviceOutcome> outcomes(texts.size(), {.kind = Kind::SameLanguage}); // what has no words stays
    for (qsizetype i = 0; i < tasks.size(); ++i) {
        OnDeviceOutcome &outcome = outcomes[tasks[i].text];
        if (outcome.kind == Kind::UnknownPhrase)
            continue;
        if (!translations[i]) {
            outcome = {.kind = Kind::UnknownPhrase};
            continue;
        }
        outcome = {.kind = Kind::Translated, .service = serviceName, .confidence = neuralConfidence};
        parts[tasks[i].text][tasks[i].part].sentence =
            restoredSentence(*translations[i], tasks[i].sentence, pair.target);
    }
    for (qsizetype t = 0; t < texts.size(); ++t) {
        if (outcomes[t].kind == Kind::Translated)
            outcomes[t].text = joinedText(parts[t], pair.target);
    }
    return outcomes;
}

QList<OnDeviceAddition> NeuralTranslation::additions(const LanguagePair &pair)
{
    const QList<InstalledModel> installed = m_models.list();
    const MissingModels missing = missingModels(pair, pairsOf(installed));
    if (!missing.pairs.isEmpty())
        return {{.package = {}, .models = pair, .bytes = missing.packedSize}};
    QList<OnDeviceAddition> repairs;
    for (const LanguagePair &way : modelRoute(pair, pairsOf(installed))) {
        if (!load(installed[pairsOf(installed).indexOf(way)].folder))
            repairs.append({.package = {}, .models = way, .isRepair = true});
    }
    return repairs;
}

QList<OnDeviceServiceStatus> NeuralTranslation::status()
{
    const QList<InstalledModel> installed = m_models.list();
    dropRemoved(installed);
    const QList<LanguagePair> available = pairsOf(installed);
    QStringList languages;
    for (const LanguagePair &pair : available)
        languages << languageCode(pair.source) << languageCode(pair.target);
    OnDeviceServiceStatus status{.name = serviceName};
    if (languages.contains(u"zh-Hans") && !languages.contains(u"zh-Hant")) {
        languages << u"zh-Hant"_s;
        status.traditionalChineseBy = u"OpenCC"_s;
    }
    languages.sort();
    languages.removeDuplicates();
    for (const QString &source : std::as_const(languages)) {
        for (const QString &target : std::as_const(languages)) {
            if (!modelRoute({source, target}, available).isEmpty())
                status.pairs.append({source, target});
        }
    }
    return {status};
}

} // namespace lucentra
