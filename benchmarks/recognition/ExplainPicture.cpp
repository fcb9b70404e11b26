// Draws what each stage makes of a picture, for docs/recognition.md: explain-picture PICTURE FOLDER.
#include "ScreenTextRecognizer.h"
#include "find/MapLines.h"
#include "find/TextNet.h"
#include "judge/ReadingFilter.h"
#include "read/ReaderPool.h"
#include "read/ScreenPass.h"

#include <QDir>
#include <QGuiApplication>
#include <QPainter>

#include <leptonica/allheaders.h>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

QImage imageOf(const Strip &strip)
{
    QImage image(pixGetWidth(strip.get()), pixGetHeight(strip.get()), QImage::Format_Grayscale8);
    for (int y = 0; y < image.height(); ++y) {
        const l_uint32 *row = pixGetData(strip.get()) + std::ptrdiff_t(y) * pixGetWpl(strip.get());
        for (int x = 0; x < image.width(); ++x)
            image.scanLine(y)[x] = uchar(GET_DATA_BYTE(row, x));
    }
    return image;
}

QColor colourOf(ReadingLanguage language)
{
    switch (language) {
    case ReadingLanguage::English:
        return {0, 120, 230};
    case ReadingLanguage::Japanese:
        return {220, 60, 150};
    default:
        return {0, 160, 60};
    }
}

/// Grey, so that what is drawn on it stands out.
QImage faded(const QImage &image)
{
    return image.convertToFormat(QImage::Format_Grayscale8).convertToFormat(QImage::Format_RGB32);
}

QList<ReadLine> linesReadOn(const QImage &image, const TextMaps &maps)
{
    QList<ReadLine> lines;
    for (const FoundLine &found : linesOf(maps, 5))
        lines.append({found, {}, {}});
    LineReader reader;
    ReaderPool pool(2, std::chrono::hours(1), [] {});
    const LineRouter router({ReadingLanguage::TraditionalChinese, ReadingLanguage::English, ReadingLanguage::Japanese},
                            {ReadingLanguage::Korean}, true);
    ScreenPass(image, maps.ink, lines, router, router, reader, pool, {}).run();
    return lines;
}

void explain(const QImage &image, const QDir &folder)
{
    QImage lines = faded(image);
    QImage readers = faded(image);
    QImage kept = faded(image);
    QPainter linesPainter(&lines);
    QPainter readersPainter(&readers);
    QPainter keptPainter(&kept);
    QList<QImage> strips;
    const TextMaps maps = TextNet(ScreenTextRecognizer::Options().weights).seen(image, 2);
    for (const ReadLine &line : linesReadOn(image, maps)) {
        linesPainter.setPen(QPen(QColor(230, 40, 40), 2));
        for (qsizetype i = 0; i < line.found.pieces.size(); ++i) {
            const LinePiece &piece = line.found.pieces[i];
            linesPainter.drawRect(piece.ink.adjusted(-2, -2, 1, 1));
            const LineNormalizer normalizer(image, piece.ink, maps.ink);
            const RoutedReading routed = line.pieces.value(i);
            strips.append(imageOf(normalizer.strip(routed.separation, StripShape())));
            const Reading &best = routed.best;
            readersPainter.setPen(QPen(colourOf(best.language), 2));
            readersPainter.drawRect(piece.ink.adjusted(-2, -2, 1, 1));
            const bool isKept = isPlausible(best, line.found);
            keptPainter.setPen(QPen(isKept ? QColor(0, 160, 60) : QColor(230, 40, 40), 2));
            keptPainter.drawRect(piece.ink.adjusted(-2, -2, 1, 1));
            if (!isKept)
                keptPainter.drawLine(piece.ink.topLeft(), piece.ink.bottomRight());
        }
    }
    QImage sheet(image.width(), int(strips.size()) * 42 + 6, QImage::Format_RGB32);
    sheet.fill(QColor(200, 205, 215));
    QPainter painter(&sheet);
    for (int i = 0; i < strips.size(); ++i)
        painter.drawImage(6, 6 + 42 * i, strips[i]);
    lines.save(folder.filePath(u"found-lines.png"_s));
    sheet.save(folder.filePath(u"strips.png"_s));
    readers.save(folder.filePath(u"readers.png"_s));
    kept.save(folder.filePath(u"kept.png"_s));
}

} // namespace

int main(int count, char **arguments)
{
    const QGuiApplication application(count, arguments);
    const QStringList given = QGuiApplication::arguments();
    const QImage image = given.size() == 3 ? QImage(given[1]).convertToFormat(QImage::Format_RGB32) : QImage();
    if (image.isNull() || !QDir().mkpath(given[2])) {
        qWarning("explain-picture PICTURE FOLDER");
        return 2;
    }
    explain(image, QDir(given[2]));
    return 0;
}
