#include "CalmGlass.h"
#include "FrostedBackdrop.h"
#include "Pixels.h"
#include "SoftBlur.h"
#include "TestProgram.h"

#include <QPainter>
#include <QTest>

#include <cmath>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

double luminance(QRgb color)
{
    const auto linear = [](int channel) {
        const double value = channel / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) + 0.0722 * linear(qBlue(color));
}

/// The contrast ratio of the accessibility guidelines; 4.5 is wanted for text, 3 for large or bold text.
double contrastToText(QRgb background)
{
    return (luminance(qRgb(245, 245, 245)) + 0.05) / (luminance(background) + 0.05);
}

QImage plain(QColor color)
{
    QImage image(200, 120, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

/// Black lines of "text" on white.
QImage page()
{
    QImage image = plain(Qt::white);
    QPainter painter(&image);
    for (int y = 4; y < image.height(); y += 18) {
        for (int x = 2; x < image.width(); x += 7)
            painter.fillRect(x, y, 4, 11, Qt::black);
    }
    return image;
}

QImage glassOver(const QImage &content, double opacity)
{
    QImage result = content;
    QPainter painter(&result);
    FrostedBackdrop(content).paint(painter, QRectF(content.rect()), opacity);
    return result;
}

} // namespace

class GlassTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void blurHasTheWantedDeviation()
    {
        constexpr int barWidth = 9, center = 60;
        for (const double deviation : {0.5, 1.0, 2.0, 3.3, 7.0}) {
            QImage image(121, 5, QImage::Format_Alpha8);
            image.fill(0);
            for (int y = 0; y < image.height(); ++y)
                std::fill_n(image.scanLine(y) + center - barWidth / 2, barWidth, uchar(255));
            softBlur(image, deviation);
            double sum = 0, spread = 0;
            for (int x = 0; x < image.width(); ++x) {
                const double value = image.constScanLine(2)[x];
                sum += value;
                spread += value * (x - center) * (x - center);
            }
            const double barVariance = (barWidth * barWidth - 1) / 12.0;
            QVERIFY(std::abs(sum - 255 * barWidth) < 0.02 * 255 * barWidth);
            QVERIFY(std::abs(std::sqrt(spread / sum - barVariance) - deviation) < 0.05 * deviation + 0.05);
        }
    }

    void blurKeepsPlainPicturesAndOddSizes()
    {
        for (const QSize size : {QSize(1, 1), QSize(1, 40), QSize(40, 1), QSize(33, 17)}) {
            QImage image(size, QImage::Format_RGB32);
            image.fill(QColor(10, 120, 250));
            const QImage before = image;
            softBlur(image, 9.7);
            QCOMPARE(image, before);
        }
        QImage unknown(8, 8, QImage::Format_RGB16);
        unknown.fill(Qt::red);
        softBlur(unknown, 2);
        QCOMPARE(unknown.pixelColor(3, 3), QColor(Qt::red));
    }

    void textIsLegibleOverAnything()
    {
        for (const auto &[content, opacity, contrast] :
             {std::tuple(Qt::white, 0.75, 7.0), std::tuple(Qt::black, 0.75, 14.0), std::tuple(Qt::yellow, 0.75, 7.0),
              std::tuple(Qt::white, 0.65, 4.5), std::tuple(Qt::white, 1.0, 14.0)}) {
            const QImage glass = glassOver(plain(content), opacity);
            QVERIFY(contrastToText(glass.pixel(100, 60)) >= contrast);
            QCOMPARE(glass.pixel(3, 3), glass.pixel(100, 60));
        }
    }

    void linesOfTextMelt()
    {
        const QImage glass = glassOver(page(), 1.0);
        const auto [darkest, brightest] = greys(glass, glass.rect().adjusted(20, 20, -20, -20));
        QVERIFY(brightest - darkest <= 4);
        // At the pane's usual opacity the brightest spot of a page is still dark enough.
        const QImage usual = glassOver(page(), 0.75);
        for (int y = 0; y < usual.height(); ++y) {
            for (int x = 0; x < usual.width(); ++x)
                QVERIFY(contrastToText(usual.pixel(x, y)) > 6);
        }
    }

    void colourShinesThrough()
    {
        const QRgb blue = glassOver(plain(QColor(60, 60, 200)), 1.0).pixel(50, 50);
        QVERIFY(qBlue(blue) > qRed(blue) + 20);
    }

    void withoutContentThereIsATint()
    {
        QImage image = plain(Qt::white);
        QPainter painter(&image);
        FrostedBackdrop().paint(painter, QRectF(0, 0, 100, 120), 0.75);
        painter.end();
        QVERIFY(contrastToText(image.pixel(50, 50)) >= 7.0);
        QCOMPARE(image.pixel(150, 50), qRgb(255, 255, 255));
    }

    void aBandEndsBetweenLines()
    {
        for (const int scale : {1, 2}) {
            const QImage content = page().scaled(QSize(200, 120) * scale);
            const CalmArea band = calmBand(QRectF(60, 50, 80, 1), content, QSizeF(200, 120));
            QCOMPARE(band.rect.left(), 0.0);
            QCOMPARE(band.rect.width(), 200.0);
            // The lines from 40 to 51 and from 58 to 69 are covered; the one above ends at 33, the one below begins
            // at 76.
            QVERIFY(band.rect.top() <= 40 && band.rect.top() - band.slopeAbove >= 32);
            QVERIFY(band.rect.bottom() >= 69 && band.rect.bottom() + band.slopeBelow <= 77);
        }
    }

    void joinedLinesHaveNoSteps()
    {
        const QList<CalmArea> lines{
            {.rect = {20, 50, 60, 16}}, {.rect = {22, 24, 140, 16}}, {.rect = {120, 90, 60, 16}}};
        const auto calmness = [&](bool joined, int x, int y) {
            return qAlpha(calmMask(QSizeF(200, 120), lines, joined).pixel(x / 2, y / 2));
        };
        QVERIFY(calmness(false, 150, 60) < 20);
        QVERIFY(calmness(true, 150, 60) > 240); // beside the short line, beneath the long one
        QVERIFY(calmness(true, 60, 98) < 20);   // what starts elsewhere is apart
    }
};

static const TestClass<GlassTest> glassTest;
#include "GlassTest.moc"
