#include "StringPool.h"

#include "PhraseFile.h"

#include <bit>
#include <cstring>

namespace lucentra {

StringPool::StringPool(size_t expectedStrings)
    : m_slots(std::bit_ceil(2 * expectedStrings))
{
    constexpr qsizetype usualSize = 64;
    m_bytes.reserve(qsizetype(expectedStrings) * usualSize); // pages that stay unused cost nothing
}

qsizetype StringPool::length(quint32 offset) const
{
    quint16 length = 0;
    std::memcpy(&length, m_bytes.constData() + offset, sizeof length);
    return length;
}

QByteArrayView StringPool::string(quint32 offset) const
{
    return {m_bytes.constData() + offset + 2, length(offset)};
}

StringPool::Place StringPool::place(QByteArrayView bytes)
{
    if (size_t(m_count) * 2 >= m_slots.size())
        grow();
    const quint64 hash = phraseHash(bytes);
    const auto tag = quint32(hash >> 32);
    const size_t mask = m_slots.size() - 1;
    size_t at = hash & mask;
    for (; m_slots[at].next != 0; at = (at + 1) & mask) {
        const quint32 offset = m_slots[at].next - 1;
        if (m_slots[at].tag == tag && string(offset) == bytes)
            return {.offset = offset, .number = m_slots[at].number, .isNew = false};
    }
    const auto offset = quint32(m_bytes.size());
    const auto length = quint16(bytes.size());
    m_bytes.append(reinterpret_cast<const char *>(&length), sizeof length);
    m_bytes.append(bytes);
    m_slots[at] = {.tag = tag, .next = offset + 1, .number = m_count};
    return {.offset = offset, .number = m_count++, .isNew = true};
}

void StringPool::grow()
{
    std::vector<Slot> old(m_slots.size() * 2);
    old.swap(m_slots);
    const size_t mask = m_slots.size() - 1;
    for (const Slot &slot : old) {
        if (slot.next == 0)
            continue;
        size_t at = phraseHash(string(slot.next - 1)) & mask;
        while (m_slots[at].next != 0)
            at = (at + 1) & mask;
        m_slots[at] = slot;
    }
}

} // namespace lucentra
