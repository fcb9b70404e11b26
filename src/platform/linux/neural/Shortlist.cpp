#include "Shortlist.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace lucentra {

namespace {

constexpr std::uint64_t shortlistMagic = 0xF11A48D5013417F5U;

/// Files of the format need not be aligned for their numbers.
template <typename Number>
Number numberAt(QByteArrayView bytes, std::size_t index)
{
    Number value = 0;
    std::memcpy(&value, bytes.data() + index * sizeof value, sizeof value);
    return value;
}

/// The checksum that the header has: of all whole 64-bit numbers after it.
std::uint64_t checksumOf(QByteArrayView bytes)
{
    std::uint64_t sum = 0;
    for (std::size_t i = 2; i < std::size_t(bytes.size()) / 8; ++i)
        sum ^= numberAt<std::uint64_t>(bytes, i) + 0x9E3779B9U + (sum << 6U) + (sum >> 2U);
    return sum;
}

} // namespace

std::optional<Shortlist> Shortlist::parse(QByteArrayView bytes, int sourceWords, int targetWords)
{
    // Magic, checksum, how many of the most frequent words are always candidates, length of the longest list, number of
    // starts, number of words.
    constexpr std::size_t headerSize = 6 * sizeof(std::uint64_t);
    if (std::size_t(bytes.size()) < headerSize || numberAt<std::uint64_t>(bytes, 0) != shortlistMagic)
        return std::nullopt;
    const auto firstWords = numberAt<std::uint64_t>(bytes, 2);
    const auto startCount = numberAt<std::uint64_t>(bytes, 4);
    const auto wordCount = numberAt<std::uint64_t>(bytes, 5);
    const auto size = std::uint64_t(bytes.size());
    if (startCount != std::uint64_t(sourceWords) + 1 || wordCount > size / 4 ||
        size != headerSize + 8 * startCount + 4 * wordCount || checksumOf(bytes) != numberAt<std::uint64_t>(bytes, 1))
        return std::nullopt;

    Shortlist list;
    list.m_starts = bytes.sliced(headerSize, qsizetype(8 * startCount));
    list.m_words = bytes.sliced(qsizetype(headerSize + 8 * startCount));
    list.m_targetWords = std::size_t(targetWords);
    list.m_firstWords = std::size_t(std::min<std::uint64_t>(firstWords, std::uint64_t(targetWords)));
    list.m_wordCount = wordCount;
    std::uint64_t previous = 0;
    for (std::size_t i = 0; i < startCount; ++i) {
        const auto start = numberAt<std::uint64_t>(list.m_starts, i);
        if (start < previous || start > wordCount)
            return std::nullopt;
        previous = start;
    }
    for (std::size_t i = 0; i < wordCount; ++i) {
        if (numberAt<std::uint32_t>(list.m_words, i) >= list.m_targetWords)
            return std::nullopt;
    }
    return list;
}

std::vector<std::uint32_t> Shortlist::candidates(std::span<const int> sentence, bool isShared) const
{
    std::vector<bool> isTaken(m_targetWords);
    std::fill_n(isTaken.begin(), m_firstWords, true);
    for (const int word : sentence) {
        if (isShared && std::size_t(word) < m_targetWords)
            isTaken[std::size_t(word)] = true;
        // The bytes were checked, but another program may have written into the file since.
        const auto end = std::min(numberAt<std::uint64_t>(m_starts, std::size_t(word) + 1), m_wordCount);
        for (auto i = numberAt<std::uint64_t>(m_starts, std::size_t(word)); i < end; ++i) {
            if (const auto candidate = numberAt<std::uint32_t>(m_words, i); candidate < m_targetWords)
                isTaken[candidate] = true;
        }
    }
    // Models are trained and published with a number of candidates that is a multiple of eight.
    auto count = std::size_t(std::count(isTaken.begin(), isTaken.end(), true));
    for (std::size_t word = m_firstWords; count % 8 != 0 && word < m_targetWords; ++word) {
        if (!isTaken[word]) {
            isTaken[word] = true;
            ++count;
        }
    }
    std::vector<std::uint32_t> words;
    words.reserve(count);
    for (std::size_t word = 0; word < m_targetWords; ++word) {
        if (isTaken[word])
            words.push_back(std::uint32_t(word));
    }
    return words;
}

} // namespace lucentra
