#include "CharacterSets.h"

#include <iconv.h>

#include <array>

namespace lucentra {

namespace {

constexpr char16_t first = 0x4e00;
constexpr char16_t last = 0x9fff;

} // namespace

CharacterSets::CharacterSets()
    : m_sets(last - first + 1)
{
    // Rows above these hold characters that are hardly ever used and say nothing about the language. GB 2312 and
    // Shift-JIS are used as a whole, Big5 with both levels.
    add("GB2312", 0xb0, Simplified);
    add("BIG5", 0xa4, Traditional);
    add("SHIFT_JIS", 0x88, Japanese);
}

void CharacterSets::add(const char *encoding, unsigned char lead, Set set)
{
    const iconv_t converter = iconv_open("UTF-16LE", encoding);
    if (converter == iconv_t(-1)) // NOLINT(performance-no-int-to-ptr): the documented error value
        return;
    for (int high = lead; high <= 0xff; ++high) {
        for (int low = 0x40; low <= 0xfe; ++low) {
            std::array<char, 2> bytes{char(high), char(low)};
            std::array<unsigned char, 4> character{};
            char *in = bytes.data();
            char *out = reinterpret_cast<char *>(character.data());
            size_t inLeft = bytes.size();
            size_t outLeft = character.size();
            iconv(converter, nullptr, nullptr, nullptr, nullptr);
            if (iconv(converter, &in, &inLeft, &out, &outLeft) == size_t(-1) || outLeft != 2)
                continue;
            const auto code = char16_t(character[0] | character[1] << 8);
            if (code >= first && code <= last)
                m_sets[code - first] |= set;
        }
    }
    iconv_close(converter);
}

unsigned char CharacterSets::sets(char16_t c)
{
    static const CharacterSets sets;
    return c >= first && c <= last ? sets.m_sets[c - first] : 0;
}

} // namespace lucentra
