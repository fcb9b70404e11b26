#include "read/PassReader.h"

#include "strip/StripParts.h"

#include <leptonica/allheaders.h>

#include <algorithm>

namespace lucentra {
namespace {

constexpr int longest = 40;      // heights of the strip
constexpr double wordGap = 0.13; // of the strip's height; narrower ones are between ideographs or letters

} // namespace

Reading PassReader::read(const Strip &strip, ReadingLanguage language, ReadingMode mode) const
{
    if (!strip || !isWanted())
        return {};
    const int width = pixGetWidth(strip.get());
    const int piece = longest * pixGetHeight(strip.get());
    if (width <= piece)
        return m_reader.read(strip, language, mode);
    const std::vector<std::uint8_t> darkest = darkestOfColumns(strip);
    Reading whole{{}, 0, language};
    double sum = 0;
    qsizetype length = 0;
    for (int left = 0; left < width;) {
        const bool isLast = width - left <= piece;
        const Cut cut = isLast ? Cut{width, 0} : bestCut(darkest, left + piece / 2, left + piece);
        if (!isWanted())
            return {};
        const Reading part = m_reader.read(pieceOf(strip.get(), left, cut.x), language, mode);
        for (ReadWord word : part.words) {
            word.start += whole.text.size();
            word.left += left - StripShape().padding;
            word.right += left - StripShape().padding;
            whole.words.append(word);
        }
        whole.text += part.text;
        if (!isLast && !whole.text.isEmpty() && cut.gap >= wordGap * pixGetHeight(strip.get()))
            whole.text += QLatin1Char(' ');
        if (!part.text.isEmpty())
            whole.weakest = length == 0 ? part.weakest : std::min(whole.weakest, part.weakest);
        sum += part.confidence * double(part.text.size());
        length += part.text.size();
        left = cut.x;
    }
    whole.text = whole.text.trimmed();
    if (length > 0)
        whole.confidence = sum / double(length);
    return whole;
}

} // namespace lucentra
