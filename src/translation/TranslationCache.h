#pragma once

#include <QCache>
#include <QString>

#include <mutex>
#include <optional>
#include <utility>

namespace lucentra {

/// Remembers translations by the engine with its settings, the target language and the text, in memory only. When it is
/// full, those that were used longest ago are dropped. Any thread.
class TranslationCache
{
public:
    /// The greatest number of characters of all texts and translations.
    static constexpr qsizetype mostCharacters = 400'000;

    std::optional<QString> find(const QString &engine, const QString &text)
    {
        const std::lock_guard lock(m_mutex);
        const QString *const known = m_translations.object({engine, text});
        return known ? std::optional(*known) : std::nullopt;
    }

    void insert(const QString &engine, const QString &text, const QString &translation)
    {
        const std::lock_guard lock(m_mutex);
        m_translations.insert({engine, text}, new QString(translation),
                              engine.size() + text.size() + translation.size());
    }

private:
    std::mutex m_mutex;
    QCache<std::pair<QString, QString>, QString> m_translations{mostCharacters};
};

} // namespace lucentra
