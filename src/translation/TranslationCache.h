#pragma once

#include <QHash>
#include <QString>

#include <list>
#include <mutex>
#include <optional>

namespace lucentra {

/// Remembers translations by the engine with its settings, the target language and the text, in memory only. When it is
/// full, those that were used longest ago are dropped. Any thread.
class TranslationCache
{
public:
    /// The greatest number of characters of all texts and translations.
    static constexpr qsizetype mostCharacters = 400'000;

    std::optional<QString> find(const QString &engine, const QString &text);
    void insert(const QString &engine, const QString &text, const QString &translation);
    void clear();

private:
    struct Entry
    {
        QString key;
        QString translation;
    };

    std::mutex m_mutex;
    std::list<Entry> m_entries; ///< the last used one first
    QHash<QString, std::list<Entry>::iterator> m_places;
    qsizetype m_characters = 0;
};

} // namespace lucentra
