#include "ScreenTextRecognizer.h"

#include "Memory.h"
#include "Rules.h"
#include "find/MapLines.h"
#include "find/TextNet.h"
#include "judge/LineBox.h"
#include "judge/ReadingFilter.h"
#include "judge/ReadingOrder.h"
#include "read/ColumnReading.h"
#include "read/LineRouter.h"
#include "read/ReaderPool.h"
#include "read/ScreenPass.h"

#include <QRegularExpression>
#include <QTransform>

#include <algorithm>
#include <cmath>

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
    return whole;
}

/// What is writing of the lines, in reading order.
QList<RecognizedTextObservation> observationsOf(const QList<ReadLine> &lines, const QSize &size)
{
    QList<TypeLine> texts;
    QList<QRect> inks;
    for (const ReadLine &line : lines) {
        const Reading reading = wholeOf(line);
        if (!isPlausible(reading, line.found))
            continue;
        texts.append({line.found.ink, reading.text});
        inks.append(line.found.ink);
    }
    if (isOn("twins"))
        settleTwins(texts);
    const QList<QRect> boxes = typographicBoxes(texts, QRect(QPoint(), size));
    QList<RecognizedTextObservation> observations;
    for (const int index : readingOrder(inks))
        observations.append({{texts[index].text}, NormBox::of(boxes[index], size)});
    return observations;
}

/// Adds columns to lines, before the first line that is below all of them.
QList<RecognizedTextObservation> withColumns(QList<RecognizedTextObservation> lines,
                                             const QList<RecognizedTextObservation> &columns)
{
    double bottom = 0;
    for (const RecognizedTextObservation &column : columns)
        bottom = std::max(bottom, column.boundingBox.unitRect().bottom());
    const auto place = std::ranges::find_if(
        lines, [&](const RecognizedTextObservation &line) { return line.boundingBox.unitRect().top() > bottom; });
    qsizetype index = place - lines.begin();
    for (const RecognizedTextObservation &column : columns)
        lines.insert(index++, column);
    return lines;
}

QList<ReadLine> linesIn(const TextMaps &maps, double minimumTextHeight)
{
    const double minimumShare = std::clamp(minimumTextHeight, 0.0, 1.0);
    const int minimumHeight = std::max(leastHeight, int(std::ceil(minimumShare * maps.ink.height)));
    QList<ReadLine> lines;
    for (const FoundLine &found : linesOf(maps, minimumHeight))
        lines.append({found, {}, 0});
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
    m_reader = std::make_unique<LineReader>();
    m_net = std::make_unique<TextNet>(options.weights);
    m_pool = std::make_unique<ReaderPool>(workers, options.keepMemory, [this] {
        m_net->release();
        giveBackFreeMemory();
    });
}

ScreenTextRecognizer::~ScreenTextRecognizer() = default;

void ScreenTextRecognizer::warmUp()
{
    m_pool->post([this] { m_reader->prepare(ReadingLanguage::English); });
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
    const TextMaps maps = m_net->seen(image, m_pool->workers());
    QList<ReadLine> lines = linesIn(maps, request.minimumTextHeight);
    const LineRouter thorough(languages, extrasTo(languages), request.level == RecognitionLevel::Accurate);
    const LineRouter hasty(languages, {}, false);
    const QList<ReadColumns> columns = takeColumns(lines, maps.ink, image, request);
    ScreenPass pass(image, maps.ink, lines, thorough, hasty, *m_reader, *m_pool, request);
    for (const ReadColumns &column : columns)
        pass.learnSimplified(column.simplified);
    pass.run();
    if (request.onLinesLeftOut && pass.hasLeftOutLines())
        request.onLinesLeftOut();
    return withColumns(observationsOf(lines, image.size()), observationsOf(columns, image.size()));
}

QList<ReadColumns> ScreenTextRecognizer::takeColumns(QList<ReadLine> &lines, const SureMap &ink, const QImage &image,
                                                     const TextRecognitionRequest &request)
{
    QList<FoundLine> upright;
    for (const ReadLine &line : std::as_const(lines))
        upright.append(line.found);
    if (!mayBeColumns(upright))
        return {};
    const QImage turned = image.transformed(QTransform().rotate(-90)).convertToFormat(QImage::Format_RGB32);
    TextMaps maps = m_net->seen(turned, m_pool->workers());
    const QList<ColumnGroup> groups = columnsOf(linesOf(maps, leastHeight), upright, image.width());
    addUprightInk(maps.ink, ink);
    const QList<ReadingLanguage> languages = verticalLanguagesOf(request.languages);
    QList<ReadColumns> read;
    if (!languages.isEmpty())
        read = readColumns(groups, turned, maps.ink, languages, *m_reader, *m_pool, request.isWanted);
    read.removeIf([](const ReadColumns &columns) { return !columns.isPlausible(); });
    lines.removeIf([&](const ReadLine &line) {
        const QRect place = turnedRect(line.found.ink, image.width());
        // Without a model the columns stay unread rather than being read as lines.
        return std::ranges::any_of(read, [&](const ReadColumns &c) { return isWithin(place, c.group); }) ||
               (languages.isEmpty() && std::ranges::any_of(groups, [&](const ColumnGroup &group) {
                    return group.isSure && isWithin(place, group);
                }));
    });
    return read;
}

} // namespace lucentra
