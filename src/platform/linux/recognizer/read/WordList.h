#pragma once

#include <QByteArrayView>

#include <cstdint>
#include <optional>
#include <vector>

namespace lucentra {

/// The words of a model: a graph whose edges are characters. Words that begin or end alike share them.
class WordList
{
public:
    /// Where one gets by a character.
    struct Step
    {
        int place = 0;     ///< 0 if no word goes on from there
        bool ends = false; ///< a word ends there
    };

    /// Takes the part of a model (see `ModelFile`). Empty data has no words. Throws std::runtime_error where it is
    /// broken.
    explicit WordList(QByteArrayView data);

    /// Goes on from a place, 0 being the beginning of all words, with a character of the model by its number.
    std::optional<Step> step(int place, int character) const;

private:
    std::optional<Step> found(std::size_t edge, int character) const;

    std::vector<std::uint64_t> m_edges;
    std::vector<std::int32_t> m_first; ///< edges of the beginning, by character; -1 for none
    int m_bits = 0;                    ///< of a character in an edge
};

} // namespace lucentra
