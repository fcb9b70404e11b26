#include "TranslationCache.h"

namespace lucentra {

namespace {

QString cacheKey(const QString &engine, const QString &text)
{
    return engine + u'\n' + text;
}

} // namespace

std::optional<QString> TranslationCache::find(const QString &engine, const QString &text)
{
    const std::lock_guard lock(m_mutex);
    const auto place = m_places.constFind(cacheKey(engine, text));
    if (place == m_places.constEnd())
        return std::nullopt;
    m_entries.splice(m_entries.begin(), m_entries, *place);
    return m_entries.front().translation;
}

void TranslationCache::insert(const QString &engine, const QString &text, const QString &translation)
{
    const QString key = cacheKey(engine, text);
    const std::lock_guard lock(m_mutex);
    if (const auto place = m_places.constFind(key); place != m_places.constEnd()) {
        m_characters -= key.size() + (*place)->translation.size();
        m_entries.erase(*place);
    }
    m_entries.push_front({key, translation});
    m_places.insert(key, m_entries.begin());
    m_characters += key.size() + translation.size();
    while (m_characters > mostCharacters) {
        m_characters -= m_entries.back().key.size() + m_entries.back().translation.size();
        m_places.remove(m_entries.back().key);
        m_entries.pop_back();
    }
}

void TranslationCache::clear()
{
    const std::lock_guard lock(m_mutex);
    m_entries.clear();
    m_places.clear();
    m_characters = 0;
}

} // namespace lucentra
