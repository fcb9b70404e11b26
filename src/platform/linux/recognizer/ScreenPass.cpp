#include "ScreenPass.h"

#include "ReaderPool.h"

#include <algorithm>
#include <array>
#include <latch>

namespace lucentra {

namespace {

/// Seconds of processor time that each worker has for reading an image. A screen full of small print is read to its
/// end; on one of 8K it can't be, and finding the lines takes its share as well.
double readingTime(const QSize &size)
{
    constexpr double most = 3;
    constexpr double least = 1.5;
    constexpr double usual = 3840.0 * 2160; // pixels
    return std::clamp(most * usual / (double(size.width()) * size.height()), least, most);
}

/// How many lines are asked about further. The few of the first round tell which language needn't be asked any more.
struct Round
{
    std::size_t doubtful;
    std::size_t telling;
};
constexpr std::array rounds{Round{3, 2}, Round{SIZE_MAX, SIZE_MAX}};

/// Takes away the first ones.
std::vector<ReadLine *> takenFrom(std::vector<ReadLine *> &lines, std::size_t most)
{
    const auto end = lines.begin() + std::ptrdiff_t(std::min(most, lines.size()));
    std::vector<ReadLine *> taken(lines.begin(), end);
    lines.erase(lines.begin(), end);
    return taken;
}

} // namespace

ScreenPass::ScreenPass(const QImage &image, QList<ReadLine> &lines, const LineRouter &thorough, const LineRouter &hasty,
                       LineReader &reader, ReaderPool &pool, const std::function<bool()> &isWanted)
    : m_image(image)
    , m_thorough(thorough)
    , m_hasty(hasty)
    , m_reader(reader, isWanted)
    , m_pool(pool)
    , m_budget(pool.workers() * readingTime(image.size()))
{
    for (ReadLine &line : lines)
        m_lines.push_back(&line);
}

void ScreenPass::run()
{
    withEach(m_lines, [this](ReadLine &line) { lookAt(line); });
    expectLanguages();

    const Lines samples = this->samples();
    withEach(samples, [this](ReadLine &line) {
        read(line);
        readOn(line);
        compare(line);
    });
    for (const ReadLine *line : samples)
        learn(*line);

    Lines others = m_lines;
    std::erase_if(others, [&](ReadLine *line) { return std::ranges::find(samples, line) != samples.end(); });
    withEach(others, [this](ReadLine &line) { read(line); });
    const Lines doubtful = doubtfulOf(others);
    for (const ReadLine *line : others) {
        if (!isDoubtful(*line))
            learn(*line);
    }
    askFurther(doubtful, tellingOf(others));
    withEach(m_lines, [this](ReadLine &line) { readAlike(line); });
}

bool ScreenPass::hasLeftOutLines() const
{
    return m_budget.isSpent() &&
           std::ranges::any_of(m_lines, [](const ReadLine *line) { return line->pieces.isEmpty(); });
}

void ScreenPass::askFurther(Lines doubtful, Lines telling)
{
    for (const Round &round : rounds) {
        const Lines asked = takenFrom(doubtful, round.doubtful);
        const Lines compared = takenFrom(telling, m_screen.isSimplifiedOpen() ? round.telling : 0);
        Lines both = asked;
        std::ranges::copy(compared, std::back_inserter(both));
        // What is read on is doubtful, what is compared isn't.
        withEach(both, [this](ReadLine &line) { isDoubtful(line) ? readOn(line) : compare(line); });
        for (const ReadLine *line : asked)
            learn(*line);
        for (const ReadLine *line : compared)
            m_screen.learn(line->comparison);
    }
}

/// Lets the workers do something with lines, as long as there is time and anybody wants it. Returns when all is done.
void ScreenPass::withEach(const Lines &lines, const std::function<void(ReadLine &)> &work)
{
    std::latch done(std::ssize(lines));
    for (ReadLine *line : lines) {
        m_pool.post([&, line] {
            if (!m_budget.isSpent() && m_reader.isWanted()) {
                const ReadingBudget::Spending spending(m_budget);
                work(*line);
            }
            done.count_down();
        });
    }
    done.wait();
}

void ScreenPass::expectLanguages()
{
    std::array<int, 3> heights{};
    for (const ReadLine *line : m_lines) {
        for (qsizetype i = 0; i < line->looks.size(); ++i) {
            const QRect &ink = line->found.pieces[i].ink;
            heights[std::size_t(line->looks[i])] += ink.width() / ink.height();
        }
    }
    m_screen.expect(heights[0], heights[1], heights[2]);
}

/// Two short lines that don't look Latin and stand on flat ground.
ScreenPass::Lines ScreenPass::samples() const
{
    constexpr std::size_t most = 2;
    constexpr double best = 9; // heights; an ideograph is as wide as it is high
    const auto distance = [](const ReadLine *line) {
        return std::abs(line->found.ink.width() / double(line->found.ink.height()) - best);
    };
    Lines samples;
    std::ranges::copy_if(m_lines, std::back_inserter(samples), [&](const ReadLine *line) {
        // Without looks, the time was over before it was looked at.
        return !line->looks.isEmpty() && line->looks.first() != LineLooks::Latin && !line->isOnPicture &&
               distance(line) < 6;
    });
    std::ranges::stable_sort(samples, {}, distance);
    samples.resize(std::min(most, samples.size()));
    return samples;
}

ScreenPass::Lines ScreenPass::doubtfulOf(const Lines &lines) const
{
    Lines doubtful;
    std::ranges::copy_if(lines, std::back_inserter(doubtful),
                         [this](const ReadLine *line) { return isDoubtful(*line); });
    return doubtful;
}

/// The lines by which traditional is told from simplified Chinese, the best first: of a few ideographs, since one says
/// little and many take long.
ScreenPass::Lines ScreenPass::tellingOf(const Lines &lines) const
{
    constexpr int few = 9;
    const auto characters = [this](const ReadLine *line) {
        return line->pieces.isEmpty() ? 0 : m_thorough.comparableCharacters(line->pieces.first());
    };
    Lines telling;
    std::ranges::copy_if(lines, std::back_inserter(telling),
                         [&](const ReadLine *line) { return !isDoubtful(*line) && characters(line) > 0; });
    std::ranges::stable_sort(telling, {}, [&](const ReadLine *line) { return std::abs(characters(line) - few); });
    return telling;
}

bool ScreenPass::isDoubtful(const ReadLine &line) const
{
    return !line.found.isShort() && std::ranges::any_of(line.pieces, [this](const RoutedReading &piece) {
        return m_thorough.isDoubtful(piece);
    });
}

void ScreenPass::lookAt(ReadLine &line) const
{
    for (const LinePiece &piece : line.found.pieces) {
        const LineNormalizer normalizer(m_image, piece.ink);
        line.isOnPicture |= normalizer.isVaried();
        const Separation separation = normalizer.isVaried() ? Separation::BrightFill : Separation::Axis;
        line.looks.append(looksOf(normalizer.strip(separation, StripShape())));
    }
}

void ScreenPass::read(ReadLine &line) const
{
    // A letter alone isn't written on a picture; its details that look like one are many.
    if (line.found.isShort() && line.isOnPicture)
        return;
    const LineRouter &router = m_budget.isScarce() ? m_hasty : m_thorough;
    for (qsizetype i = 0; i < line.looks.size(); ++i) {
        const LineNormalizer normalizer(m_image, line.found.pieces[i].ink);
        line.pieces.append(router.read(normalizer, line.looks[i], line.found.isShort(), m_reader, m_screen));
    }
}

void ScreenPass::readOn(ReadLine &line) const
{
    for (qsizetype i = 0; i < line.pieces.size() && !m_budget.isScarce(); ++i) {
        RoutedReading &piece = line.pieces[i];
        if (m_thorough.isDoubtful(piece))
            piece = m_thorough.readOn(piece, LineNormalizer(m_image, line.found.pieces[i].ink), m_reader, m_screen);
    }
}

void ScreenPass::compare(ReadLine &line) const
{
    if (line.pieces.isEmpty() || m_thorough.comparableCharacters(line.pieces.first()) == 0 || m_budget.isScarce())
        return;
    const LineNormalizer normalizer(m_image, line.found.pieces.first().ink);
    line.comparison = m_thorough.compared(line.pieces.first(), normalizer, m_reader);
}

void ScreenPass::readAlike(ReadLine &line) const
{
    for (qsizetype i = 0; i < line.pieces.size(); ++i) {
        RoutedReading &piece = line.pieces[i];
        piece.best = m_thorough.readAlike(LineNormalizer(m_image, line.found.pieces[i].ink), piece,
                                          i == 0 ? line.comparison : Comparison(), m_reader, m_screen);
    }
}

void ScreenPass::learn(const ReadLine &line)
{
    for (const RoutedReading &piece : line.pieces)
        m_screen.learn(piece);
    m_screen.learn(line.comparison);
}

} // namespace lucentra
