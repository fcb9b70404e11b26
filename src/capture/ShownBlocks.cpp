#include "ShownBlocks.h"

#include "PictureChange.h"
#include "ScreenReading.h"

#include <algorithm>
#include <vector>

using namespace std::chrono_literals;

namespace lucentra {

namespace {

/// A text that has been the same for so long isn't being written any more.
constexpr auto stillTime = 300ms;
/// The same for a text that was found in the midst of a change and may be whole.
constexpr auto stillTimeOfNew = 150ms;
/// No text waits longer to be translated.
constexpr auto longestWait = 1000ms;
/// The share of a shorter text that a longer one must begin with, since the last letters of a text that is being
/// written are often misread.
constexpr double sameBeginning = 0.8;

/// Whether a region contains a good part of a rectangle.
bool covers(const QRegion &region, const QRect &rect)
{
    int covered = 0;
    for (const QRect &part : region & rect)
        covered += part.width() * part.height();
    return 4 * covered > rect.width() * rect.height();
}

class Comparison
{
public:
    Comparison(const QList<ShownBlock> &former, std::chrono::milliseconds time)
        : m_former(former)
        , m_isTaken(size_t(former.size()))
        , m_time(time)
    {
    }

    ShownBlock shown(const TextBlock &block, bool isUnsettled)
    {
        if (const ShownBlock *same = take([&](const ShownBlock &each) { return each.block.text == block.text; }, block)) {
            ShownBlock kept = *same;
            kept.block = block;
            return kept;
        }
        ShownBlock written{.block = block, .begun = m_time, .changed = m_time};
        const ShownBlock *shorter =
            take([&](const ShownBlock &each) { return isSamePlace(each.block.normBox.unitRect(), block.normBox.unitRect()) &&
                                                      continues(block.text, each.block.text); },
                 block);
        if (shorter) {
            written.translation = shorter->translation;
            if (!shorter->isTranslated)
                written.begun = shorter->begun;
        } else if (isUnsettled) {
            written.changed -= stillTime - stillTimeOfNew;
        } else {
            written.begun = m_time - longestWait; // waits for nothing
        }
        return written;
    }

private:
    /// The former block that fits best: at the same place if there is one.
    template <typename Predicate>
    const ShownBlock *take(Predicate isWanted, const TextBlock &block)
    {
        std::optional<qsizetype> best;
        for (qsizetype i = 0; i < m_former.size(); ++i) {
            if (m_isTaken[size_t(i)] || !isWanted(m_former[i]))
                continue;
            const bool isHere = isSamePlace(m_former[i].block.normBox.unitRect(), block.normBox.unitRect());
            if (!best || isHere)
                best = i;
            if (isHere)
                break;
        }
        if (!best)
            return nullptr;
        m_isTaken[size_t(*best)] = true;
        return &m_former[*best];
    }

    const QList<ShownBlock> &m_former;
    std::vector<bool> m_isTaken;
    const std::chrono::milliseconds m_time;
};

} // namespace

bool continues(const QString &text, const QString &beginning)
{
    const auto end = std::mismatch(text.begin(), text.end(), beginning.begin(), beginning.end()).second;
    return text.size() > beginning.size() && double(end - beginning.begin()) >= sameBeginning * double(beginning.size());
}

BlockChange compareBlocks(const QList<ShownBlock> &former, const QList<TextBlock> &now, const QSize &size,
                          const QRegion &unsettled, std::chrono::milliseconds time)
{
    BlockChange change;
    Comparison comparison(former, time);
    for (const TextBlock &block : now) {
        const ShownBlock shown = comparison.shown(block, covers(unsettled, pixelsOf(block.normBox, size)));
        const auto due = std::min(shown.begun + longestWait, shown.changed + stillTime);
        if (!shown.isTranslated && due <= time)
            change.wanted.append(change.blocks.size());
        else if (!shown.isTranslated)
            change.again = std::min(change.again.value_or(due), due);
        change.blocks.append(shown);
    }
    return change;
}

} // namespace lucentra
