#include "read/WordList.h"

#include "read/ModelFile.h"

#include <algorithm>
#include <bit>

namespace lucentra {

WordList::WordList(QByteArrayView data)
{
    if (data.isEmpty())
        return;
    constexpr int most = 1 << 24; // edges
    DataReader reader(data);
    reader.bytes(2);
    const qint32 characters = reader.take<qint32>();
    const qint32 count = reader.take<qint32>();
    if (characters < 1 || characters > (1 << 20) || count < 0 || count > most)
        throw std::runtime_error("words of another kind");
    m_bits = int(std::bit_width(unsigned(characters)));
    for (qint32 i = 0; i < count; ++i)
        m_edges.push_back(reader.take<quint64>());
    m_first.resize(std::size_t(characters), -1);
    const std::uint64_t mask = (std::uint64_t(1) << m_bits) - 1;
    for (std::size_t i = 0; i < m_edges.size(); ++i) {
        if ((m_edges[i] & mask) < m_first.size())
            m_first[m_edges[i] & mask] = std::int32_t(i);
        if ((m_edges[i] >> m_bits & 1) != 0)
            break;
    }
}

std::optional<WordList::Step> WordList::step(int place, int character) const
{
    if (place == 0) {
        const bool isKnown = std::size_t(character) < m_first.size() && m_first[std::size_t(character)] >= 0;
        return isKnown ? found(std::size_t(m_first[std::size_t(character)]), character) : std::nullopt;
    }
    // No place has more edges than there are characters.
    const std::size_t end = std::min(m_edges.size(), std::size_t(place) + m_first.size());
    for (std::size_t edge = std::size_t(place); edge < end; ++edge) {
        if (const std::optional<Step> step = found(edge, character))
            return step;
        if ((m_edges[edge] >> m_bits & 1) != 0) // the last edge from there
            break;
    }
    return {};
}

/// What an edge leads to if it has this character. Above it are three bits (the last from its place, leads back, a word
/// ends) and the place.
std::optional<WordList::Step> WordList::found(std::size_t edge, int character) const
{
    const std::uint64_t bits = m_edges[edge];
    const bool leadsBack = (bits >> (m_bits + 1) & 1) != 0;
    if (leadsBack || (bits & ((std::uint64_t(1) << m_bits) - 1)) != std::uint64_t(character))
        return {};
    const std::uint64_t place = bits >> (m_bits + 3);
    return Step{place < m_edges.size() ? int(place) : 0, (bits >> (m_bits + 2) & 1) != 0};
}

} // namespace lucentra
