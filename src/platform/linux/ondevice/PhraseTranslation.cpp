#include "PhraseTranslation.h"

#include "PhraseLanguage.h"
#include "PhraseLookup.h"
#include "PhraseStore.h"

#include <QDateTime>

#include <algorithm>
#include <utility>

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

const QString serviceName = u"phrases"_s;

/// Whether the store collects phrases of the pair.
bool isPossible(const LanguagePair &pair)
{
    const auto target = phraseLanguage(pair.target);
    return (isEnglish(pair.source) || phraseLanguage(pair.source)) &&
           (isEnglish(pair.target) || (target && phraseLanguages[size_t(*target)].isTarget()));
}

} // namespace

PhraseTranslation::PhraseTranslation(std::shared_ptr<PhraseStore> store)
    : m_store(std::move(store))
{
}

void PhraseTranslation::prepare()
{
    m_store->prepare();
}

void PhraseTranslation::cancel()
{
    m_store->cancel();
}

QList<OnDeviceOutcome> PhraseTranslation::translateAtOnce(const LanguagePair &pair, const QStringList &texts,
                                                          const std::function<bool()> &isWanted)
{
    using Kind = OnDeviceOutcome::Kind;
    const bool mayKnow = std::any_of(texts.begin(), texts.end(), &PhraseLookup::mayKnow);
    if (!isPossible(pair) || !mayKnow || !m_store->isCollecting())
        return translate(pair, texts, isWanted);
    QList<OnDeviceOutcome> outcomes;
    for (const QString &text : texts)
        outcomes.append({.kind = PhraseLookup::mayKnow(text) ? Kind::NotReady : Kind::UnknownPhrase});
    return outcomes;
}

QList<OnDeviceOutcome> PhraseTranslation::translate(const LanguagePair &pair, const QStringList &texts,
                                                    const std::function<bool()> & /*isWanted*/)
{
    using Kind = OnDeviceOutcome::Kind;
    const auto all = [&texts](Kind kind) { return QList<OnDeviceOutcome>(texts.size(), {.kind = kind}); };
    if (!isPossible(pair))
        return all(Kind::PairUnavailable);
    // Texts that no phrase can match don't wait for a build.
    if (m_store->isGettingReady() && std::none_of(texts.begin(), texts.end(), &PhraseLookup::mayKnow))
        return all(Kind::UnknownPhrase);
    const auto file = m_store->file();
    if (!file && m_store->isGettingReady())
        return all(Kind::NotReady);
    const auto lookup = file ? PhraseLookup::between(*file, pair) : std::nullopt;
    QList<OnDeviceOutcome> outcomes;
    for (const QString &text : texts) {
        const auto found = lookup ? lookup->translate(text) : std::nullopt;
        if (found)
            outcomes.append({.kind = Kind::Translated,
                             .text = found->text,
                             .service = serviceName,
                             .confidence = found->confidence});
        else
            outcomes.append({.kind = lookup ? Kind::UnknownPhrase : Kind::PairUnavailable});
    }
    return outcomes;
}

bool PhraseTranslation::isPhrase(const LanguagePair &pair, const QString &text)
{
    if (!isPossible(pair) || m_store->isGettingReady())
        return false;
    const auto file = m_store->file();
    const auto lookup = file ? PhraseLookup::between(*file, pair) : std::nullopt;
    return lookup && lookup->isPhrase(text);
}

QList<OnDeviceAddition> PhraseTranslation::additions(const LanguagePair & /*pair*/)
{
    QList<OnDeviceAddition> packages;
    for (const OnDeviceServiceStatus &status : currentStatus()) {
        for (const QString &package : status.addableBy)
            packages.append({.package = package});
    }
    return packages;
}

QList<OnDeviceServiceStatus> PhraseTranslation::currentStatus()
{
    if (m_store->isGettingReady())
        return {{.name = serviceName, .isGettingReady = true}};
    return status();
}

QList<OnDeviceServiceStatus> PhraseTranslation::status()
{
    const auto file = m_store->file();
    OnDeviceServiceStatus status{.name = serviceName, .isGettingReady = !file && m_store->isGettingReady()};
    if (!file)
        return {status};
    const auto code = [](size_t language) { return QString(phraseLanguages[language].code); };
    quint32 fewest = std::numeric_limits<quint32>::max();
    for (size_t language = 0; language < phraseLanguages.size(); ++language) {
        if (file->phrasesInto(int(language)) > 0)
            status.pairs.append({u"en"_s, code(language)});
        if (file->phrasesOutOf(int(language)) > 0)
            status.pairs.append({code(language), u"en"_s});
        for (size_t target = 0; target < phraseLanguages.size(); ++target) {
            const bool areChinese = code(language).startsWith(u"zh") && code(target).startsWith(u"zh");
            if (!areChinese && PhraseLookup::between(*file, {code(language), code(target)}))
                status.pairs.append({code(language), code(target)});
        }
        if (phraseLanguages[language].isTarget())
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
