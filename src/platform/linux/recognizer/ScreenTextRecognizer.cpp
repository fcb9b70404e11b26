#include "ScreenTextRecognizer.h"

#include "LineBox.h"
#include "LineFinder.h"
#include "LineLooks.h"
#include "LineRouter.h"
#include "Memory.h"
#include "ReaderPool.h"
#include "ReadingFilter.h"
#include "ReadingOrder.h"
#include "ThreadClock.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <latch>
#include <span>

namespace lucentra {

using namespace Qt::StringLiterals;

namespace {

constexpr int leastHeight = 5; // pixels; what is lower can't be told apart

/// The installed ones of the languages asked for, each once. What has no model of its own is written in Latin letters
/// for all we know.
QList<ReadingLanguage> languagesOf(const TextRecognitionRequest &request)
{
    QList<ReadingLanguage> languages;
    for (const QString &tag : request.languages) {
        ReadingLanguage language = ReadingLanguage::English;
        if (tag.startsWith(u"zh-Hans"_s) || tag == u"zh-CN"_s)
            language = ReadingLanguage::SimplifiedChinese;
        else if (tag.startsWith(u"zh"_s))
            language = ReadingLanguage::TraditionalChinese;
        else if (tag.startsWith(u"ja"_s))
            language = ReadingLanguage::Japanese;
        else if (tag.startsWith(u"ko"_s))
            language = ReadingLanguage::Korean;
        if (!languages.contains(language) && LineReader::isInstalled(language))
            languages.append(language);
    }
    return languages;
}

/// The installed languages that weren't asked for.
QList<ReadingLanguage> extrasTo(const QList<ReadingLanguage> &languages)
{
    QList<ReadingLanguage> extras;
    for (const ReadingLanguage language : {ReadingLanguage::SimplifiedChinese, ReadingLanguage::Korean}) {
        if (!languages.contains(language) && LineReader::isInstalled(language))
            extras.append(language);
    }
    return extras;
}

/// Seconds of processor time that each worker has for reading an image. A screen full of small print is read to its
/// end; on one of 8K it can't be, and finding the lines takes its share as well.
double readingTime(const QSize &size)
{
    constexpr double most = 3;
    constexpr double least = 1.5;
    constexpr double usual = 3840.0 * 2160; // pixels
    return std::clamp(most * usual / (double(size.width()) * size.height()), least, most);
}

QRectF normalized(const QRect &box, const QSize &size)
{
    return {box.x() / double(size.width()), 1 - (box.y() + box.height()) / double(size.height()),
            box.width() / double(size.width()), box.height() / double(size.height())};
}

/// The processor time that reading an image may take. It is not the clock's, so that a busy machine reads as much.
class ReadingBudget
{
public:
    explicit ReadingBudget(double seconds)
        : m_whole(qint64(seconds * 1e6))
        , m_left(m_whole)
    {
    }

    bool isSpent() const { return left() <= 0; }

    /// Whether so much of it is spent that nothing doubtful is read on any more, lest other lines aren't read at all.
    bool isScarce() const { return 2 * left() <= m_whole; }

    /// Takes from the budget what its thread worked during its life.
    class Spending
    {
    public:
        explicit Spending(ReadingBudget &budget)
            : m_budget(budget)
            , m_start(worked())
        {
        }
        ~Spending() { m_budget.m_left.fetch_sub(worked() - m_start, std::memory_order_relaxed); }
        Q_DISABLE_COPY_MOVE(Spending)

    private:
        /// Loading an engine is no reading: the first image after a rest may take as much as any other.
        static qint64 worked() { return (threadTime() - LineReader::loadingTime()).count(); }

        ReadingBudget &m_budget;
        qint64 m_start;
    };

private:
    qint64 left() const { return m_left.load(std::memory_order_relaxed); }

    const qint64 m_whole; // microseconds
    std::atomic<qint64> m_left;
};

struct ReadLine
{
    FoundLine found;
    QList<LineLooks> looks;      ///< one for each of the line's pieces
    QList<RoutedReading> pieces; ///< likewise
    Comparison comparison;       ///< of the two ways to write Chinese
    bool isOnPicture = false;
};

void lookAt(ReadLine &line, const QImage &image)
{
    for (const LinePiece &piece : line.found.pieces) {
        const LineNormalizer normalizer(image, piece.ink);
        line.isOnPicture |= normalizer.isVaried();
        const Separation separation = normalizer.isVaried() ? Separation::BrightFill : Separation::Axis;
        line.looks.append(looksOf(normalizer.strip(separation, StripShape())));
    }
}

void expectLanguages(ScreenLanguages &screen, const QList<ReadLine> &lines)
{
    std::array<int, 3> heights{};
    for (const ReadLine &line : lines) {
        for (qsizetype i = 0; i < line.looks.size(); ++i) {
            const QRect &ink = line.found.pieces[i].ink;
            heights[std::size_t(line.looks[i])] += ink.width() / ink.height();
        }
    }
    screen.expect(heights[0], heights[1], heights[2]);
}

void readLine(ReadLine &line, const QImage &image, const LineRouter &router, LineReader &reader,
              const ScreenLanguages &screen)
{
    // A letter alone isn't written on a picture; its details that look like one are many.
    if (line.found.isShort() && line.isOnPicture)
        return;
    for (qsizetype i = 0; i < line.looks.size(); ++i) {
        const LineNormalizer normalizer(image, line.found.pieces[i].ink);
        line.pieces.append(router.read(normalizer, line.looks[i], line.found.isShort(), reader, screen));
    }
}

void readLineOn(ReadLine &line, const QImage &image, const LineRouter &router, LineReader &reader,
                const ScreenLanguages &screen)
{
    for (qsizetype i = 0; i < line.pieces.size(); ++i) {
        RoutedReading &piece = line.pieces[i];
        if (router.isDoubtful(piece))
            piece = router.readOn(piece, LineNormalizer(image, line.found.pieces[i].ink), reader, screen);
    }
}

void readLineAlike(ReadLine &line, const QImage &image, const LineRouter &router, LineReader &reader,
                   const ScreenLanguages &screen)
{
    for (qsizetype i = 0; i < line.pieces.size(); ++i) {
        RoutedReading &piece = line.pieces[i];
        piece.best = router.readAlike(LineNormalizer(image, line.found.pieces[i].ink), piece,
                                      i == 0 ? line.comparison : Comparison(), reader, screen);
    }
}

bool isDoubtful(const ReadLine &line, const LineRouter &router)
{
    return !line.found.isShort() && std::any_of(line.pieces.begin(), line.pieces.end(),
                                                [&](const RoutedReading &piece) { return router.isDoubtful(piece); });
}

/// Two short lines that don't look Latin and stand on flat ground: they tell soon what language a screen is in.
std::vector<ReadLine *> samplesOf(QList<ReadLine> &lines)
{
    constexpr std::size_t most = 2;
    constexpr double best = 9; // heights; an ideograph is as wide as it is high
    const auto distance = [](const ReadLine &line) {
        return std::abs(line.found.ink.width() / double(line.found.ink.height()) - best);
    };
    std::vector<ReadLine *> samples;
    for (ReadLine &line : lines) {
        // Without looks, the time was over before it was looked at.
        if (!line.looks.isEmpty() && line.looks.first() != LineLooks::Latin && !line.isOnPicture && distance(line) < 6)
            samples.push_back(&line);
    }
    std::ranges::stable_sort(samples, {}, [&](const ReadLine *line) { return distance(*line); });
    samples.resize(std::min(most, samples.size()));
    return samples;
}

void compareLine(ReadLine &line, const QImage &image, const LineRouter &router, LineReader &reader)
{
    if (!line.pieces.isEmpty() && router.comparableCharacters(line.pieces.first()) > 0)
        line.comparison =
            router.compared(line.pieces.first(), LineNormalizer(image, line.found.pieces.first().ink), reader);
}

std::vector<ReadLine *> doubtfulOf(const std::vector<ReadLine *> &lines, const LineRouter &router)
{
    std::vector<ReadLine *> doubtful;
    std::ranges::copy_if(lines, std::back_inserter(doubtful),
                         [&](const ReadLine *line) { return isDoubtful(*line, router); });
    return doubtful;
}

/// The lines by which traditional is told from simplified Chinese, the best first: of a few ideographs, since one says
/// little and many take long.
std::vector<ReadLine *> tellingOf(const std::vector<ReadLine *> &lines, const LineRouter &router)
{
    constexpr int few = 9;
    const auto distance = [&](const ReadLine &line) {
        return std::abs(router.comparableCharacters(line.pieces.first()) - few);
    };
    std::vector<ReadLine *> telling;
    std::ranges::copy_if(lines, std::back_inserter(telling), [&](const ReadLine *line) {
        return !line->pieces.isEmpty() && !isDoubtful(*line, router) &&
               router.comparableCharacters(line->pieces.first()) > 0;
    });
    std::ranges::stable_sort(telling, {}, [&](const ReadLine *line) { return distance(*line); });
    return telling;
}

/// Takes away the first ones.
std::vector<ReadLine *> takenFrom(std::vector<ReadLine *> &lines, std::size_t most)
{
    const auto end = lines.begin() + std::ptrdiff_t(std::min(most, lines.size()));
    std::vector<ReadLine *> taken(lines.begin(), end);
    lines.erase(lines.begin(), end);
    return taken;
}

/// How many lines are asked about further. The few of the first round tell which language needn't be asked any more.
struct Round
{
    std::size_t doubtful;
    std::size_t telling;
};
constexpr std::array rounds{Round{3, 2}, Round{SIZE_MAX, SIZE_MAX}};

/// A piece's text without what has been seen of the ellipsis behind it.
QString withoutDots(QString text, const QString &joint)
{
    static const QRegularExpression dots(u"[.．。・·‧…‥ ]+$"_s);
    return joint == u"…"_s ? text.remove(dots) : text;
}

/// The pieces' text as one, with the mean of their confidences.
Reading wholeOf(const ReadLine &line)
{
    Reading whole;
    for (qsizetype i = 0; i < line.pieces.size(); ++i) {
        const LinePiece &piece = line.found.pieces[i];
        whole.text += withoutDots(line.pieces[i].best.text, piece.joint) + piece.joint;
        whole.confidence += line.pieces[i].best.confidence * piece.ink.width() / line.found.ink.width();
    }
    whole.text = tidied(whole.text);
    if (line.found.endsInRing)
        whole.text = withFullStop(whole.text);
    return whole;
}

/// What is writing of the lines, in reading order.
QList<RecognizedTextObservation> observationsOf(const QList<ReadLine> &lines, const QSize &size)
{
    QList<Reading> readings;
    qsizetype doubtful = 0;
    for (const ReadLine &line : lines) {
        readings.append(wholeOf(line));
        if (!isPlausible(readings.last(), line.found, line.isOnPicture))
            readings.last().text.clear();
        doubtful += readings.last().text.isEmpty() || line.isOnPicture ? 1 : 0;
    }
    const bool isPicture = doubtful > std::max<qsizetype>(3, lines.size() / 4);
    QList<TypeLine> texts;
    QList<QRect> inks;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const bool isText =
            !readings[i].text.isEmpty() && (!isPicture || isPlausibleOnPictures(readings[i], lines[i].found));
        if (isText) {
            texts.append({lines[i].found.ink, readings[i].text});
            inks.append(lines[i].found.ink);
        }
    }
    const QList<QRect> boxes = typographicBoxes(texts, QRect(QPoint(), size));
    QList<RecognizedTextObservation> observations;
    for (const int index : readingOrder(inks))
        observations.append({{texts[index].text}, normalized(boxes[index], size)});
    return observations;
}

QList<ReadLine> linesIn(const QImage &image, double minimumTextHeight)
{
    const double minimumShare = std::clamp(minimumTextHeight, 0.0, 1.0);
    const int minimumHeight = std::max(leastHeight, int(std::ceil(minimumShare * image.height())));
    QList<ReadLine> lines;
    for (const FoundLine &found : findLines(image, minimumHeight))
        lines.append({found, {}, {}, {}, false});
    // Long lines first: they take longest, and specks, which are many on a picture, come last.
    std::sort(lines.begin(), lines.end(),
              [](const ReadLine &a, const ReadLine &b) { return a.found.ink.width() > b.found.ink.width(); });
    return lines;
}

} // namespace

ScreenTextRecognizer::ScreenTextRecognizer()
    : ScreenTextRecognizer(Options())
{
}

ScreenTextRecognizer::ScreenTextRecognizer(const Options &options)
{
    const int workers =
        options.workers > 0 ? options.workers : std::clamp(int(std::thread::hardware_concurrency()), 1, 4);
    const int engines = 4 * workers; // the three usual languages for each worker, and the extra ones once
    m_correctingReader = std::make_unique<LineReader>(true, engines);
    m_literalReader = std::make_unique<LineReader>(false, engines);
    m_pool = std::make_unique<ReaderPool>(workers, options.keepEngines, [this] {
        m_correctingReader->release();
        m_literalReader->release();
        giveBackFreeMemory();
    });
}

ScreenTextRecognizer::~ScreenTextRecognizer() = default;

void ScreenTextRecognizer::warmUp()
{
    m_pool->post([this] {
        for (const ReadingLanguage language :
             {ReadingLanguage::TraditionalChinese, ReadingLanguage::English, ReadingLanguage::Japanese})
            m_correctingReader->prepare(language);
    });
}

Result<QList<RecognizedTextObservation>> ScreenTextRecognizer::perform(const TextRecognitionRequest &request,
                                                                       const QImage &picture)
{
    const QList<ReadingLanguage> languages = languagesOf(request);
    if (languages.isEmpty())
        return tl::unexpected(Failure{u"TextRecognition"_s, 1, {}});
    const QImage image = picture.convertToFormat(QImage::Format_RGB32);
    if (image.isNull())
        return {};
    QList<ReadLine> lines = linesIn(image, request.minimumTextHeight);
    LineReader &reader = request.usesLanguageCorrection ? *m_correctingReader : *m_literalReader;
    const LineRouter thorough(languages, extrasTo(languages), request.level == RecognitionLevel::Accurate);
    const LineRouter hasty(languages, {}, false);
    ScreenLanguages screen;
    ReadingBudget budget(m_pool->workers() * readingTime(image.size()));
    const auto withEach = [&](const std::vector<ReadLine *> &some, const auto &work) {
        std::latch done(std::ssize(some));
        for (ReadLine *line : some) {
            m_pool->post([&, line] {
                if (!budget.isSpent() && (!request.isWanted || request.isWanted())) {
                    const ReadingBudget::Spending spending(budget);
                    work(*line);
                }
                done.count_down();
            });
        }
        done.wait();
    };
    std::vector<ReadLine *> all;
    for (ReadLine &line : lines)
        all.push_back(&line);
    withEach(all, [&](ReadLine &line) { lookAt(line, image); });
    expectLanguages(screen, lines);

    const auto readOn = [&](ReadLine &line) {
        if (!budget.isScarce())
            readLineOn(line, image, thorough, reader, screen);
    };
    const auto compare = [&](ReadLine &line) {
        if (!budget.isScarce())
            compareLine(line, image, thorough, reader);
    };
    const auto learn = [&](const ReadLine *line) {
        for (const RoutedReading &piece : line->pieces)
            screen.learn(piece);
        screen.learn(line->comparison);
    };

    const std::vector<ReadLine *> samples = samplesOf(lines);
    withEach(samples, [&](ReadLine &line) {
        readLine(line, image, budget.isScarce() ? hasty : thorough, reader, screen);
        readOn(line);
        compare(line);
    });
    std::ranges::for_each(samples, learn);

    std::vector<ReadLine *> others = all;
    std::erase_if(others, [&](ReadLine *line) { return std::ranges::find(samples, line) != samples.end(); });
    withEach(others,
             [&](ReadLine &line) { readLine(line, image, budget.isScarce() ? hasty : thorough, reader, screen); });
    std::vector<ReadLine *> doubtful = doubtfulOf(others, thorough);
    std::vector<ReadLine *> telling = tellingOf(others, thorough);
    std::erase_if(others, [&](const ReadLine *line) { return isDoubtful(*line, thorough); });
    std::ranges::for_each(others, learn);

    for (const Round &round : rounds) {
        const std::vector<ReadLine *> asked = takenFrom(doubtful, round.doubtful);
        const std::vector<ReadLine *> compared = takenFrom(telling, screen.isSimplifiedOpen() ? round.telling : 0);
        std::vector<ReadLine *> both = asked;
        std::ranges::copy(compared, std::back_inserter(both));
        // What is read on is doubtful, what is compared isn't.
        withEach(both, [&](ReadLine &line) { isDoubtful(line, thorough) ? readOn(line) : compare(line); });
        std::ranges::for_each(asked, learn);
        for (const ReadLine *line : compared)
            screen.learn(line->comparison);
    }
    withEach(all, [&](ReadLine &line) { readLineAlike(line, image, thorough, reader, screen); });
    return observationsOf(lines, image.size());
}

} // namespace lucentra
