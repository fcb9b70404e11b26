#include "AppleTranslationBridge.h"

#include "LanguageIdentifier.h"

#include <algorithm>
#include <future>
#include <map>

namespace lucentra {

namespace {

/// Whether a text of one language needs no translation into the other: neither between kinds of Chinese nor between
/// regions of one language.
bool isSameLanguage(const QString &code, const QString &target)
{
    return code.section(u'-', 0, 0) == target.section(u'-', 0, 0);
}

qsizetype lettersIn(const QStringList &texts)
{
    qsizetype count = 0;
    for (const QString &text : texts)
        count += std::ranges::count_if(text, [](QChar c) { return c.isLetter(); });
    return count;
}

} // namespace

AppleTranslationBridge::AppleTranslationBridge(LanguageIdentifier &identifier, OnDeviceTranslationService &service)
    : m_identifier(identifier)
    , m_service(service)
{
}

AppleTranslationBridge::~AppleTranslationBridge()
{
    QObject::disconnect(m_parentGone);
}

void AppleTranslationBridge::setParentView(const QObject *view)
{
    QObject::disconnect(m_parentGone);
    m_hasParent = view != nullptr;
    if (view)
        m_parentGone = QObject::connect(view, &QObject::destroyed, [this] { m_hasParent = false; });
}

OnDeviceTranslations AppleTranslationBridge::translate(const QStringList &texts, const QString &targetLanguage,
                                                       const std::function<bool()> &isWanted) const
{
    using Kind = OnDeviceOutcome::Kind;
    OnDeviceTranslations result{.texts = texts};
    if (!m_hasParent || texts.isEmpty() || (isWanted && !isWanted()))
        return result;

    const QStringList languages = m_identifier.identify(texts);
    std::map<QString, QList<qsizetype>> groups; // positions of the texts by source language
    for (qsizetype i = 0; i < texts.size(); ++i) {
        const QString language = languages.value(i);
        const bool isUndetermined = language.isEmpty() || language == u"und" || language == u"unknown";
        const bool isSame = isSameLanguage(language, targetLanguage);
        result.outcomes.append({.kind = isSame ? Kind::SameLanguage : Kind::Undetermined});
        if (!isUndetermined && !isSame)
            groups[language].append(i);
    }

    // Each group has a thread of its own, which no other call can take.
    std::map<QString, std::future<QList<OnDeviceOutcome>>> translated;
    std::map<QString, qsizetype> letters;
    for (const auto &[language, positions] : groups) {
        QStringList group;
        for (const qsizetype i : positions)
            group.append(texts[i]);
        letters[language] = lettersIn(group);
        translated[language] =
            std::async(std::launch::async, [this, pair = LanguagePair{language, targetLanguage}, group, &isWanted] {
                return m_service.translate(pair, group, isWanted);
            });
    }
    for (const auto &[language, positions] : groups) {
        const QList<OnDeviceOutcome> outcomes = translated[language].get();
        for (qsizetype i = 0; i < positions.size(); ++i) {
            const OnDeviceOutcome outcome = outcomes.value(i);
            result.outcomes[positions[i]] = outcome;
            if (outcome.kind == Kind::Translated)
                result.texts[positions[i]] = outcome.text;
        }
    }
    if (result.texts == texts) {
        for (const OnDeviceServiceStatus &status : m_service.currentStatus())
            result.isStripped = result.isStripped || status.isStripped;
        std::map<QString, QList<OnDeviceAddition>> helpful;
        qsizetype most = 0; // letters of a language for which something can be installed
        for (const auto &[language, count] : letters) {
            helpful[language] = m_service.additions({language, targetLanguage});
            if (!helpful[language].isEmpty())
                most = std::max(most, count);
        }
        for (const auto &[language, additions] : helpful) {
            if (4 * letters[language] < most)
                continue; // probably guessed from a name, for which nobody should install a model
            for (const OnDeviceAddition &addition : additions) {
                if (!result.additions.contains(addition))
                    result.additions.append(addition);
            }
        }
    }
    return result;
}

bool AppleTranslationBridge::isPhrase(const QString &text, const QString &targetLanguage) const
{
    const QString language = m_identifier.identify({text}).value(0);
    return !isSameLanguage(language, targetLanguage) && m_service.isPhrase({language, targetLanguage}, text);
}

} // namespace lucentra
