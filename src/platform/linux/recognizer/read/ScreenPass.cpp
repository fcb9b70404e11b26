#include "read/ScreenPass.h"

#include "Rules.h"
#include "TextRecognizer.h"
#include "read/ChineseVariant.h"
#include "read/ReaderPool.h"
#include "read/Writing.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <latch>
#include <limits>

namespace lucentra {

using namespace Qt::StringLiterals;

namespace {

/// Seconds of processor time that each worker has for second readings if the request is hasty.
constexpr double hastyTime = 0.15;

/// Seconds of processor time that each worker has for reading an image. A screen full of small print is read to its
/// end; on one of 8K it can't be, and finding the lines takes its share as well.
double readingTime(const QSize &size)
{
    constexpr double most = 3;
    constexpr double least = 1.5;
    constexpr double usual = 3840.0 * 2160; // pixels
    return std::clamp(most * usual / (double(size.width()) * size.height()), least, most);
}

} // namespace

QRect roomOf(const QRect &ink, const QList<QRect> &lines, const QSize &image)
{
    int top = 0;
    int bottom = image.height() - 1;
    // What two boxes share is of both if it is little, such as tails and accents, else a half is of each.
    const auto part = [&ink](int shared) { return 4 * shared > ink.height() ? (shared + 1) / 2 : 0; };
    for (const QRect &other : lines) {
        if (other.right() < ink.left() || other.left() > ink.right())
            continue;
        if (other.top() > ink.center().y())
            bottom = std::min(bottom, std::max(ink.bottom(), other.top() - 1) - part(ink.bottom() - other.top() + 1));
        else if (other.bottom() < ink.center().y())
            top = std::max(top, std::min(ink.top(), other.bottom() + 1) + part(other.bottom() - ink.top() + 1));
    }
    return {0, top, image.width(), bottom - top + 1};
}

ScreenPass::ScreenPass(const QImage &image, const SureMap &ink, QList<ReadLine> &lines, const LineRouter &thorough,
                       const LineRouter &hasty, LineReader &reader, ReaderPool &pool,
                       const TextRecognitionRequest &request)
    : m_image(image)
    , m_ink(ink)
    , m_thorough(thorough)
    , m_hasty(hasty)
    , m_reader(reader, request.isWanted)
    , m_pool(pool)
    , m_budget(pool.workers() * readingTime(image.size()))
    , m_doubts(pool.workers() * (request.isHasty ? hastyTime : readingTime(image.size())))
{
    for (ReadLine &line : lines) {
        m_lines.push_back(&line);
        m_places.append(line.found.ink);
    }
}

void ScreenPass::run()
{
    expectLanguages();
    tellChinese();
    withEach(m_lines, [this](ReadLine &line) { read(line); });
    for (const ReadLine *line : m_lines) {
        if (!isDoubtful(*line))
            learn(*line);
    }
    const Lines doubtful = doubtfulLines();
    withEach(doubtful, [this](ReadLine &line) { readOn(line); });
    for (const ReadLine *line : doubtful)
        learn(*line);
    withEach(m_lines, [this](ReadLine &line) { readAlike(line); });
}

bool ScreenPass::hasLeftOutLines() const
{
    return m_budget.isSpent() &&
           std::ranges::any_of(m_lines, [](const ReadLine *line) { return line->pieces.isEmpty(); });
}

/// Looks at lines of ideographs, a few at a time, until they tell whether the Chinese is traditional or simplified.
void ScreenPass::tellChinese()
{
    if (!isOn("two Chineses") || !m_thorough.readsBothChinese())
        return;
    Lines telling = tellingLines();
    constexpr std::size_t most = 16; // lines; Japanese ones never tell
    constexpr std::size_t together = 4;
    telling.resize(std::min(telling.size(), most));
    for (std::size_t i = 0; i < telling.size() && m_screen.isSimplifiedOpen(); i += together) {
        const Lines lines(telling.begin() + std::ptrdiff_t(i),
                          telling.begin() + std::ptrdiff_t(std::min(i + together, telling.size())));
        withEach(lines, [this](ReadLine &line) { compareChinese(line); });
        for (const ReadLine *line : lines)
            m_screen.learnSimplified(line->simplified);
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
    ScriptShares shares{};
    for (const ReadLine *line : m_lines) {
        for (const LinePiece &piece : line->found.pieces) {
            for (std::size_t i = 0; i < shares.size(); ++i)
                shares[i] += piece.scripts[i];
        }
    }
    m_screen.expect(shares);
}

ScreenPass::Lines ScreenPass::doubtfulLines() const
{
    Lines doubtful;
    std::ranges::copy_if(m_lines, std::back_inserter(doubtful),
                         [this](const ReadLine *line) { return isDoubtful(*line); });
    return doubtful;
}

/// The lines that may show whether the Chinese is traditional or simplified, the best first. Lines of a few ideographs
/// are best: a single one proves little, and what is long may not be text.
ScreenPass::Lines ScreenPass::tellingLines() const
{
    constexpr double few = 9; // heights of a line
    const auto length = [](const ReadLine *line) {
        const QRect &ink = line->found.pieces.first().ink;
        return double(ink.width()) / ink.height();
    };
    Lines telling;
    std::ranges::copy_if(m_lines, std::back_inserter(telling), [](const ReadLine *line) {
        const ScriptShares &scripts = line->found.pieces.first().scripts;
        return scripts[TextMaps::Ideographs] > 2 * (scripts[TextMaps::Kana] + scripts[TextMaps::Hangul]) &&
               scripts[TextMaps::Ideographs] > scripts[TextMaps::Latin];
    });
    std::ranges::stable_sort(telling, {}, [&](const ReadLine *line) { return std::abs(length(line) - few); });
    return telling;
}

bool ScreenPass::isDoubtful(const ReadLine &line) const
{
    constexpr double leastOfCut = 60; // confidence, 0 to 100, of letters that an edge of the image cuts
    const double least = line.found.isCut(m_image.height()) ? leastOfCut : 0;
    return !line.found.isShort() && std::ranges::any_of(line.pieces, [&](const RoutedReading &piece) {
        return piece.best.confidence >= least && m_thorough.isDoubtful(piece);
    });
}

LineNormalizer ScreenPass::normalized(const QRect &ink) const
{
    return {m_image, ink, m_ink, isOn("room") ? roomOf(ink, m_places, m_image.size()) : QRect()};
}

void ScreenPass::read(ReadLine &line) const
{
    const LineRouter &router = m_budget.isScarce() ? m_hasty : m_thorough;
    for (const LinePiece &piece : line.found.pieces) {
        const LineNormalizer normalizer = normalized(piece.ink);
        line.pieces.append(router.read(normalizer, piece.scripts, m_reader, m_screen));
    }
    if (isOn("stretches") && !line.found.stretches.isEmpty() && !m_budget.isScarce())
        readStretches(line);
}

/// How sure the pieces of a line are, each by its width. English passes over what is in other scripts.
double ScreenPass::sureness(const QList<LinePiece> &pieces, const QList<RoutedReading> &readings)
{
    double sum = 0;
    double width = 0;
    for (qsizetype i = 0; i < readings.size(); ++i) {
        const Reading &best = readings[i].best;
        const double unread = best.language == ReadingLanguage::English ? wideShare(pieces[i].scripts) : 0;
        sum += best.confidence * (1 - unread) * pieces[i].ink.width();
        width += pieces[i].ink.width();
    }
    return width > 0 ? sum / width : 0;
}

/// Latin letters among others are hard for who reads those, and single letters hard without their neighbours; so a
/// mixed line that isn't quite sure is read the other way as well, and the surer way stays.
void ScreenPass::readStretches(ReadLine &line) const
{
    constexpr double certain = 92;
    const double whole = sureness(line.found.pieces, line.pieces);
    if (whole >= certain)
        return;
    QList<RoutedReading> readings;
    for (const LinePiece &stretch : line.found.stretches)
        readings.append(m_thorough.read(normalized(stretch.ink), stretch.scripts, m_reader, m_screen));
    const bool isKorean = std::ranges::any_of(line.pieces, [](const RoutedReading &piece) {
        return piece.best.language == ReadingLanguage::Korean; // which is sure of wrong Latin letters
    });
    if (sureness(line.found.stretches, readings) + (isKorean ? 4 : 0) <= whole)
        return;
    line.found.pieces = line.found.stretches;
    line.pieces = readings;
}

/// The last of the columns from `first` to before `end` that have the least ink.
int ScreenPass::lightestColumn(const QRect &ink, int first, int end) const
{
    int lightest = ink.left();
    int least = std::numeric_limits<int>::max();
    for (int x = std::max(ink.left(), first); x < std::min(end, ink.right()); ++x) {
        int sum = 0;
        for (int y = ink.top(); y <= ink.bottom(); ++y)
            sum += m_ink.row(y)[x];
        if (sum <= least) {
            least = sum;
            lightest = x;
        }
    }
    return lightest;
}

/// Takes an icon off the start of a line. It was read as a character or two, before or among ideographs and the like,
/// which stand apart from the rest and are far less sure.
void ScreenPass::dropIcon(ReadLine &line) const
{
    constexpr qsizetype longest = 2; // characters
    constexpr double most = 60;      // confidence, 0 to 100
    constexpr double muchSurer = 25;
    Reading &reading = line.pieces.first().best;
    const qsizetype space = reading.text.indexOf(u' ');
    if (space < 1 || space > longest || scriptsOf(reading.text.left(space + 2)).wide() == 0)
        return;
    const auto rest = std::ranges::find_if(reading.words, [&](const ReadWord &word) { return word.start > space; });
    if (rest == reading.words.end())
        return;
    double icon = 0;
    for (auto word = reading.words.begin(); word != rest; ++word)
        icon = std::max(icon, word->confidence);
    double sum = 0;
    double length = 0;
    for (auto word = rest; word != reading.words.end(); ++word) {
        sum += word->confidence * double(word->length);
        length += double(word->length);
    }
    if (length < 2 || icon >= most || sum / length < icon + muchSurer)
        return;
    LinePiece &piece = line.found.pieces.first();
    const QRect ink = piece.ink;
    const double share = double(rest->left) / reading.words.last().right;
    const int start = ink.left() + int(share * ink.width());
    piece.ink.setLeft(lightestColumn(ink, start - ink.height() / 2, start + ink.height() / 2) + 1);
    line.found.ink.setLeft(piece.ink.left());
    reading.text.remove(0, space + 1);
    reading.confidence = sum / length;
    reading.words.clear();
}

/// Reads the key behind a menu's name or a button's, such as (F), once more as Latin letters: Chinese, Japanese and
/// Korean make characters of it. Keys are letters.
void ScreenPass::readKey(ReadLine &line) const
{
    static const QRegularExpression key(u" ?[(（](?!(?:[A-Z]|\\d+)[)）]$)[^()（）]{0,3}[)）]?$"_s);
    static const QRegularExpression latinKey(u"(?<![A-Za-z0-9])([A-Z01l|])[)\\]}]?$"_s);
    Reading &reading = line.pieces.last().best;
    const QRegularExpressionMatch match = key.match(reading.text);
    if (reading.language == ReadingLanguage::English || !match.hasMatch() || match.capturedStart() == 0)
        return;
    const QRect &ink = line.found.pieces.last().ink;
    // A key is about as wide as the line is high, and cut off at the lightest column before it.
    const int cut = lightestColumn(ink, ink.right() - int(1.9 * ink.height()), ink.right() - int(0.9 * ink.height()));
    const QRect part(QPoint(cut, ink.top()), ink.bottomRight());
    const QString text = m_thorough.read(normalized(part), {1, 0, 0, 0}, m_reader, m_screen).best.text;
    const QRegularExpressionMatch latin = latinKey.match(text);
    if (!latin.hasMatch())
        return;
    const QString letter = latin.captured(1);
    reading.text.truncate(match.capturedStart());
    reading.text += u'(' + (letter == u"0" ? u"O"_s : letter[0].isUpper() ? letter : u"I"_s) + u')';
}

void ScreenPass::readOn(ReadLine &line) const
{
    for (qsizetype i = 0; i < line.pieces.size() && !m_budget.isScarce() && !m_doubts.isSpent(); ++i) {
        const ReadingBudget::Spending spending(m_doubts);
        RoutedReading &piece = line.pieces[i];
        if (isOn("reading on") && m_thorough.isDoubtful(piece))
            piece = m_thorough.readOn(piece, normalized(line.found.pieces[i].ink), line.found.pieces[i].scripts,
                                      m_reader, m_screen);
    }
}

void ScreenPass::compareChinese(ReadLine &line) const
{
    const LineNormalizer normalizer = normalized(line.found.pieces.first().ink);
    const StripShape shape = LineReader::stripShape(ReadingLanguage::TraditionalChinese);
    const Strip strip = normalizer.strip(normalizer.separations().first(), shape);
    line.simplified = simplifiedEvidence(strip);
}

void ScreenPass::readAlike(ReadLine &line) const
{
    for (qsizetype i = 0; i < line.pieces.size(); ++i)
        line.pieces[i].best =
            m_thorough.readAlike(normalized(line.found.pieces[i].ink), line.pieces[i], m_reader, m_screen);
    if (isOn("keys") && !line.pieces.isEmpty())
        readKey(line);
    if (isOn("icons") && !line.pieces.isEmpty())
        dropIcon(line);
}

void ScreenPass::learn(const ReadLine &line)
{
    for (const RoutedReading &piece : line.pieces)
        m_screen.learn(piece);
}

} // namespace lucentra
