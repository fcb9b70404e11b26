#pragma once

#include "AppLanguage.h"
#include "StringTables.h"
#include "TextPattern.h"

#include <QString>
#include <QStringList>

#include <atomic>
#include <optional>

namespace lucentra {

class NotificationCenter;
class SettingsStore;

/// The interface language: the user's choice, the texts in it, and the target language that may follow it.
///
/// Every text that a user sees is looked up here with its Traditional Chinese wording as the key. The lookups and
/// `resolvedLanguageCode` may be called from any thread, everything else on the main thread.
class LocalizationManager
{
public:
    /// Takes the language from the settings and writes nothing. `tablesFolder` holds the compiled string tables (see
    /// `stringTablesFolder`); `preferredLanguages` are the system's, BCP 47 tags, the most preferred first
    /// (`QLocale::system().uiLanguages()`). The store and the centre must outlive the manager.
    LocalizationManager(SettingsStore &settings, NotificationCenter &notifications, const QString &tablesFolder,
                        QStringList preferredLanguages);

    AppLanguage language() const { return m_language; }

    /// Stores a new language and posts "AppLanguageDidChange"; the current one again does nothing.
    void setLanguage(AppLanguage language);

    /// The text for a key in the interface language; the English one, else the key, where it is missing.
    QString localized(const QString &key) const;

    /// The looked-up pattern with `%@` (a text) and `%d` (a whole number) filled by position, numbers in the interface
    /// language's own form; see `fillPattern`.
    template <typename... Arguments>
    QString formatted(const QString &key, const Arguments &...arguments) const
    {
        return fillPattern(localized(key), {PatternArgument(arguments)...}, QLocale(resolvedLanguageCode()));
    }

    /// The code of a language's texts and numbers. `System` is the system's most preferred language as far as there is
    /// a table for it, "en" where the system prefers none.
    QString resolvedLanguageCode(AppLanguage language) const;
    QString resolvedLanguageCode() const { return resolvedLanguageCode(m_language); }

    /// The target language that goes with an interface language: "zh-Hans", "zh-Hant", "ja", "ko" or "en".
    QString targetCode(AppLanguage language) const;

    /// Lets the target language follow the stored interface language, unless the user has switched that off. Returns
    /// the code that it wrote.
    std::optional<QString> syncTargetLanguage();

private:
    QString systemLanguageCode(const QString &withoutPreference) const;

    SettingsStore &m_settings;
    NotificationCenter &m_notifications;
    const StringTables m_tables;
    const QStringList m_preferredLanguages;
    std::atomic<AppLanguage> m_language;
};

} // namespace lucentra
