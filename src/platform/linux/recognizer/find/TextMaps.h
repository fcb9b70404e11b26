#pragma once

#include <QSize>

#include <array>
#include <cstdint>
#include <vector>

namespace lucentra {

/// Numbers of 0 to 255 per place, row by row: how sure the net is that something is there.
struct SureMap
{
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> values;

    SureMap() = default;
    SureMap(int w, int h)
        : width(w)
        , height(h)
        , values(std::size_t(w) * std::size_t(h))
    {
    }
    std::uint8_t *row(int y) { return values.data() + std::size_t(y) * std::size_t(width); }
    const std::uint8_t *row(int y) const { return values.data() + std::size_t(y) * std::size_t(width); }
};

/// What the net sees on a picture.
struct TextMaps
{
    enum Script { Latin, Ideographs, Kana, Hangul };

    SureMap ink;                    ///< at full size: the letters themselves, without outlines, shadows and icons
    SureMap core;                   ///< at half size: the middle of each line, from its first letter to its last
    std::array<SureMap, 4> scripts; ///< at an eighth: the letters of a line, by `Script`
};

} // namespace lucentra
