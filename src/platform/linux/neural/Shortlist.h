#pragma once

#include <QByteArrayView>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace lucentra {

/// The lexical shortlist of a model: which words of the target language may translate each word of the source. A view:
/// the bytes have to stay.
class Shortlist
{
public:
    /// Returns nullopt unless the bytes are a shortlist for vocabularies of these sizes.
    static std::optional<Shortlist> parse(QByteArrayView bytes, int sourceWords, int targetWords);

    /// The words among which a sentence's translation is searched, ascending. `isShared`: both languages have the same
    /// vocabulary, so that the words of the sentence itself are among them.
    std::vector<std::uint32_t> candidates(std::span<const int> sentence, bool isShared) const;

private:
    QByteArrayView m_starts; ///< 64-bit numbers: where each source word's list starts, and the end of the last one
    QByteArrayView m_words; ///< 32-bit numbers
    std::uint64_t m_wordCount = 0;
    std::size_t m_firstWords = 0;
    std::size_t m_targetWords = 0;
};

} // namespace lucentra
