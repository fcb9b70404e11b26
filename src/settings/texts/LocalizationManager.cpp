#include "LocalizationManager.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

LocalizationManager::LocalizationManager(SettingsStore &settings, const QString &tablesFolder,
                                         QStringList preferredLanguages)
    : m_settings(settings)
    , m_tables(tablesFolder)
    , m_preferredLanguages(std::move(preferredLanguages))
    , m_language(appLanguageFromRawValue(settings.read(settings::appLanguage)))
{
    // Before anybody else observes the setting, so that all of them see the new language.
    observeLanguage(&m_observer, [this](const QString &stored) { m_language = appLanguageFromRawValue(stored); });
}

void LocalizationManager::setLanguage(AppLanguage language)
{
    if (m_language.exchange(language) == language)
        return;
    m_settings.write(settings::appLanguage, rawValue(language));
}

QString LocalizationManager::localized(const QString &key) const
{
    const AppLanguage language = m_language;
    return m_tables.text(language == AppLanguage::System ? systemLanguageCode(u"zh-Hant"_s) : rawValue(language), key);
}

QString LocalizationManager::resolvedLanguageCode(AppLanguage language) const
{
    return language == AppLanguage::System ? systemLanguageCode(u"en"_s) : rawValue(language);
}

QString LocalizationManager::targetCode(AppLanguage language) const
{
    return supportedLanguageCode(resolvedLanguageCode(language));
}

std::optional<QString> LocalizationManager::syncTargetLanguage()
{
    if (!m_settings.read(settings::targetLanguageFollowsInterface))
        return std::nullopt;
    const QString code = targetCode(appLanguageFromRawValue(m_settings.read(settings::appLanguage)));
    m_settings.write(settings::targetLanguageCode, code);
    return code;
}

QString LocalizationManager::systemLanguageCode(const QString &withoutPreference) const
{
    return m_preferredLanguages.isEmpty() ? withoutPreference : supportedLanguageCode(m_preferredLanguages.first());
}

} // namespace lucentra
