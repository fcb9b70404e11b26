#pragma once

#include <vector>

namespace lucentra {

/// Which national character sets contain an ideograph, from the system's converters.
class CharacterSets
{
public:
    /// Bits of `sets`.
    enum Set : unsigned char { Simplified = 1, Traditional = 2, Japanese = 4 }; ///< GB 2312, Big5, Shift-JIS

    /// The sets that contain a character; 0 outside the block U+4E00 to U+9FFF.
    static unsigned char sets(char16_t c);

private:
    CharacterSets();
    void add(const char *encoding, unsigned char lead, Set set);

    std::vector<unsigned char> m_sets; ///< by code point, from the block's first
};

} // namespace lucentra
