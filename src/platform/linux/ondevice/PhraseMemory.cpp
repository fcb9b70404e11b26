#include "PhraseMemory.h"

#include "MemoryLanguage.h"
#include "PhraseLookup.h"
#include "PhraseStore.h"

#include <QDateTime>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// With fewer phrases than this, the programs that would bring more are missing or were installed without them.
constexpr quint32 fewPhrases = 5000;

/// Small packages that need no others and bring many phrases.
QStringList phrasePackages()
{
    return {u"libgtk-3-common"_s, u"qt6-translations-l10n"_s, u"evince-common"_s, u"gnumeric-common"_s, u"vlc-l10n"_s};
}

} // namespace

PhraseMemory::PhraseMemory(PhraseStore &store)
    : m_store(store)
{
}

QList<OnDeviceOutcome> PhraseMemory::translate(const LanguagePair &pair, const QStringList &texts,
                                               const std::function<bool()> & /*isWanted*/)
{
    using Kind = OnDeviceOutcome::Kind;
    if (std::none_of(texts.begin(), texts.end(), &PhraseLookup::mayKnow)) // not worth waiting for a build
        return QList<OnDeviceOutcome>(texts.size(), {.kind = Kind::UnknownPhrase});
    const auto file = m_store.file();
    if (!file && m_store.isGettingReady())
        return QList<OnDeviceOutcome>(texts.size(), {.kind = Kind::NotReady});
    const auto lookup = file ? PhraseLookup::between(*file, pair) : std::nullopt;
    QList<OnDeviceOutcome> outcomes;
    for (const QString &text : texts) {
        const auto found = lookup ? lookup->translate(text) : std::nullopt;
        if (found)
            outcomes.append({.kind = Kind::Translated,
                             .text = found->text,
                             .service = QString::fromLatin1(serviceName),
                             .confidence = found->confidence});
        else
            outcomes.append({.kind = lookup ? Kind::UnknownPhrase : Kind::PairUnavailable});
    }
    return outcomes;
}

PairAvailability PhraseMemory::availability(const LanguagePair &pair)
{
    const auto known = [](const QString &code) { return isEnglish(code) || memoryLanguage(code).has_value(); };
    const auto target = memoryLanguage(pair.target);
    const bool isPossible =
        known(pair.source) && (isEnglish(pair.target) || (target && memoryLanguages[size_t(*target)].isTarget()));
    if (isPossible && m_store.isGettingReady())
        return PairAvailability::Available;
    const auto file = m_store.file();
    if (file && PhraseLookup::between(*file, pair))
        return PairAvailability::Available;
    return isPossible ? PairAvailability::Addable : PairAvailability::Unavailable;
}

QList<OnDeviceServiceStatus> PhraseMemory::status()
{
    OnDeviceServiceStatus status{.name = QString::fromLatin1(serviceName),
                                 .isGettingReady = m_store.isGettingReady()};
    const auto file = status.isGettingReady ? nullptr : m_store.file();
    if (!file)
        return {status};
    const auto code = [](size_t language) { return QString(memoryLanguages[language].code); };
    quint32 fewest = std::numeric_limits<quint32>::max();
    for (size_t language = 0; language < memoryLanguages.size(); ++language) {
        if (file->phrasesInto(int(language)) > 0)
            status.pairs.append({u"en"_s, code(language)});
        if (file->phrasesOutOf(int(language)) > 0)
            status.pairs.append({code(language), u"en"_s});
        for (size_t target = 0; target < memoryLanguages.size(); ++target) {
            const bool areChinese = code(language).startsWith(u"zh") && code(target).startsWith(u"zh");
            if (!areChinese && PhraseLookup::between(*file, {code(language), code(target)}))
                status.pairs.append({code(language), code(target)});
        }
        if (memoryLanguages[language].isTarget())
            fewest = std::min(fewest, file->phrasesInto(int(language)));
    }
    status.phraseCount = file->header().phrases;
    status.cacheAgeSeconds = std::max<qint64>(0, QDateTime::currentSecsSinceEpoch() - file->header().builtAt);
    if (fewest < fewPhrases) {
        status.addableBy = phrasePackages();
        status.isStripped = leavesOutCatalogues();
    }
    return {status};
}

} // namespace lucentra
