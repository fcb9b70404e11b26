#pragma once

#include "AppLanguage.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "StringTables.h"
#include "TextPattern.h"

#include <QString>
#include <QStringList>

#include <atomic>
#include <optional>

namespace lucentra {

/// The interface language, the texts in it, and the target language that may follow it.
///
/// Every visible text is looked up here; its key is the Traditional Chinese text. The lookups and
/// `resolvedLanguageCode` may be called on any thread.
class LocalizationManager
{
public:
    /// Reads the language from the settings. `tablesFolder` contains the compiled string tables (see
    /// `stringTablesFolder`); `preferredLanguages` are the system's languages as BCP 47 tags, most preferred first
    /// (`QLocale::system().uiLanguages()`).
    LocalizationManager(SettingsStore &settings, const QString &tablesFolder, QStringList preferredLanguages);

    AppLanguage language() const { return m_language; }

    /// Stores the language, which announces it. Does nothing if it is the current one.
    void setLanguage(AppLanguage language);

    /// Calls after each change of the language until the context is destroyed ("AppLanguageDidChange").
    template <typename Callback>
    void observeLanguage(QObject *context, Callback callback) const
    {
        m_settings.observe(notifications::appLanguageDidChange, context, std::move(callback));
    }

    /// The text for a key in the interface language; if that is missing, the English text; if that is missing, the key.
    QString localized(const QString &key) const;

    /// Looks up a pattern and replaces `%@` (a text) and `%d` (a whole number) by the arguments; see `fillPattern`.
    template <typename... Arguments>
    QString formatted(const QString &key, const Arguments &...arguments) const
    {
        return fillPattern(localized(key), {PatternArgument(arguments)...}, QLocale(resolvedLanguageCode()));
    }

    /// The code of the language in which texts and numbers are shown. `System` is the language nearest to the system's
    /// most preferred one, or "en" if the system has no preference.
    QString resolvedLanguageCode(AppLanguage language) const;
    QString resolvedLanguageCode() const { return resolvedLanguageCode(m_language); }

    /// The target language for an interface language: "zh-Hans", "zh-Hant", "ja", "ko" or "en".
    QString targetCode(AppLanguage language) const;

    /// Sets the target language to that of the stored interface language, unless the user has disabled that. Returns
    /// the code that it wrote, or nullopt.
    std::optional<QString> syncTargetLanguage();

private:
    QString systemLanguageCode(const QString &withoutPreference) const;

    SettingsStore &m_settings;
    const StringTables m_tables;
    const QStringList m_preferredLanguages;
    std::atomic<AppLanguage> m_language;
    QObject m_observer;
};

} // namespace lucentra
