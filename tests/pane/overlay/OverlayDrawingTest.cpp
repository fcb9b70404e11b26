#include "Columns.h"
#include "OverlayConstants.h"
#include "OverlayLayout.h"
#include "OverlayPicture.h"
#include "OverlayTypesetter.h"
#include "Pixels.h"
#include "TestProgram.h"

#include <QApplication>
#include <QPainter>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

constexpr double scale = 2; // pixels per point of what the tests look at
constexpr QRectF canvas(-20, -20, 680, 280);

/// The text alone, white on nothing, with the corner of its first line at the origin.
QImage drawnText(OverlayText &text, double width, double size, int lines)
{
    QImage image((canvas.size() * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.scale(scale, scale);
    painter.translate(-canvas.topLeft());
    painter.setPen(Qt::white);
    text.draw(painter, QPointF(), width, size, lines);
    return image;
}

/// The points that a picture of the canvas blackens, below some y.
QRectF inkOf(const QImage &image, double below = canvas.top())
{
    const int top = int((below - canvas.top()) * scale);
    const QRectF pixels = boundsOf(image.copy(0, top, image.width(), image.height() - top), [](QRgb pixel) {
                              return qAlpha(pixel) > 40;
                          }).translated(0, top);
    return {pixels.topLeft() / scale + canvas.topLeft(), pixels.size() / scale};
}

QImage painted(const QString &language, const QString &text, double size = 20)
{
    OverlayTypesetter typesetter(language);
    return drawnText(*typesetter.typeset(text), 600, size, 4);
}

bool isBright(QRgb pixel)
{
    return qGray(pixel) > 122;
}

/// The middle grey level of a row of a picture.
double rowBrightness(const QImage &image, int y)
{
    double sum = 0;
    for (int x = 0; x < image.width(); ++x)
        sum += qGray(image.pixel(x, y));
    return sum / image.width();
}

const QString traditionalChinese = u"在螢幕上任何一段文字的上方拖曳玻璃板，譯文就會直接顯示在原文的位置。"_s;
const QString english =
    u"Drag the pane over any text on the screen; the translation appears right where the source is."_s;
const QString japanese =
    u"画面上の文字にガラス板を重ねると、訳文が元の位置に表示されます。「設定」から変更できます。"_s;
const QString korean = u"화면의 글자 위로 유리판을 끌어다 놓으면 번역문이 원문 자리에 바로 나타납니다."_s;
const QString arabic = u"اسحب اللوح الزجاجي فوق أي نص على الشاشة لتظهر الترجمة في مكان النص الأصلي (v2)."_s;
const QString longWord = u"Donaudampfschifffahrtselektrizitätenhauptbetriebswerkbauunterbeamtengesellschaft"_s;
const QString tallMarks = u"Ắ Ǻ ế ỷ ฎีผู้ที่น้ำ नमस्ते g̲j̲ 🎉❤️"_s;

} // namespace

class OverlayDrawingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatFitsIsDrawnWholeInItsFrame_data()
    {
        const auto row = columns<QString, QString>("language", "text");
        row("Traditional Chinese", u"zh-Hant"_s, traditionalChinese);
        row("English", u"en"_s, english);
        row("Japanese", u"ja"_s, japanese);
        row("Korean", u"ko"_s, korean);
        row("Arabic", u"ar"_s, arabic);
        row("a word longer than the line", u"de"_s, longWord);
        row("marks above and below, emoji", u"en"_s, tallMarks);
        row("English among ideographs", u"zh-Hant"_s, u"按 Ctrl+Shift+Escape 開啟 Task Manager 視窗"_s);
    }
    void whatFitsIsDrawnWholeInItsFrame()
    {
        const auto [language, text] = fetched<QString, QString>();
        OverlayTypesetter typesetter(language);
        int whole = 0;
        for (const double height : {9.0, 14.0, 21.5, 40.0}) {
            for (const double sourceWidth : {30.0, 111.0, 260.0}) {
                const auto layout = layOutOverlay(typesetter, text, {250}, QRectF(0, 0, sourceWidth, height),
                                                  QRectF(0, 0, 640, 260), {});
                QVERIFY(layout);
                const double width = layout->frame.width() - 2 * overlay::sidePadding;
                const auto typeset = typesetter.typeset(text);
                const QImage image = drawnText(*typeset, width, layout->fontSize, layout->lines);
                const QRectF ink = inkOf(image).translated(overlay::sidePadding, overlay::verticalPadding);
                const QRectF frame = layout->frame.translated(-layout->frame.topLeft());
                QVERIFY2(frame.contains(ink),
                         qPrintable(QString::asprintf("ink %g,%g %gx%g", ink.x(), ink.y(), ink.width(), ink.height())));
                const double needed = typesetter.boundingHeight(text, width, layout->fontSize, 1e9);
                if (needed > layout->lines * typeset->lineHeight(layout->fontSize) + 0.01)
                    continue; // the fit gave up at its least size
                ++whole;
                QCOMPARE(image, drawnText(*typeset, width, layout->fontSize, 100));
            }
        }
        QVERIFY(whole >= 6);
    }

    void whatIsCutOffKeepsItsLines_data()
    {
        const auto row = columns<QString, int>("text", "lines");
        row("one line of words", english, 1);
        row("four lines of words", english.repeated(4), 4);
        row("ideographs", traditionalChinese.repeated(3), 3);
        row("one long word", longWord, 1);
        row("right to left", arabic.repeated(3), 2);
        row("emoji of several characters", u"👨‍👩‍👧👍🏽🇹🇼"_s.repeated(12), 1);
        row("far too long", english.repeated(2000), 4);
    }
    void whatIsCutOffKeepsItsLines()
    {
        const auto [text, lines] = fetched<QString, int>();
        OverlayTypesetter typesetter(u"zh-Hant"_s);
        const auto typeset = typesetter.typeset(text);
        const double size = 20;
        const QRectF ink = inkOf(drawnText(*typeset, 200, size, lines));
        QVERIFY(ink.left() >= -1);
        QVERIFY(ink.right() <= 201);
        QVERIFY(ink.width() > 150); // the last lines reach nearly as far as there is room
        QVERIFY(ink.bottom() <= lines * typeset->lineHeight(size) + 1 / scale); // glyphs are on whole pixels
        QVERIFY(ink.bottom() > (lines - 1) * typeset->lineHeight(size));
        QVERIFY(drawnText(*typeset, 200, size, lines) != drawnText(*typeset, 200, size, lines + 1));
    }

    void limitDoesNotChangeTheMeasure()
    {
        OverlayTypesetter typesetter(u"zh-Hant"_s);
        for (const QString &text : {traditionalChinese, english, japanese, arabic, longWord, tallMarks}) {
            for (double size = 10; size <= 48; size += 0.5) {
                for (const double width : {35.0, 120.0, 333.3}) {
                    const double height = typesetter.boundingHeight(text, width, size, 1e9);
                    for (const double limit : {0.0, 13.0, 40.0, 97.5, 200.0}) {
                        const double limited = typesetter.boundingHeight(text, width, size, limit);
                        if (height <= limit)
                            QCOMPARE(limited, height);
                        else
                            QVERIFY(limited > limit + 1e-4 && limited <= height);
                    }
                }
            }
        }
    }

    void sizesBetweenWholePixels()
    {
        OverlayTypesetter typesetter(u"en"_s);
        const auto text = typesetter.typeset(u"|Measured and drawn at eleven and a quarter|"_s);
        const double at11 = inkOf(drawnText(*text, 600, 11, 1)).width();
        for (const double size : {11.25, 11.5, 14.4, 22.0}) {
            const double ink = inkOf(drawnText(*text, 600, size, 1)).width();
            QVERIFY(std::abs(ink - at11 * size / 11) <= 1.01);
            QVERIFY(text->lineWidth(size) > ink && text->lineWidth(size) < 1.04 * ink);
        }
    }

    void rightToLeftTextLeadsAtTheRight()
    {
        OverlayTypesetter typesetter(u"ar"_s);
        const QRectF oneLine = inkOf(drawnText(*typesetter.typeset(u"مرحبا"_s), 300, 20, 1));
        QVERIFY(oneLine.left() > 200);
        QVERIFY(oneLine.right() > 295 && oneLine.right() <= 301);
        const auto text = typesetter.typeset(u"مرحبا بالعالم مرحبا بالعالم مرحبا"_s);
        const QRectF shortLastLine = inkOf(drawnText(*text, 180, 20, 4), text->lineHeight(20) + 2);
        QVERIFY(shortLastLine.left() > 60);
        QVERIFY(shortLastLine.right() > 170);
    }

    void familyFollowsTheTargetLanguage()
    {
        // Each region writes this character in a shape of its own.
        const QString text = u"骨"_s;
        const QStringList languages{u"zh-Hant"_s, u"zh-Hans"_s, u"ja"_s};
        for (const QString &each : languages) {
            for (const QString &other : languages)
                QCOMPARE(painted(each, text) == painted(other, text), each == other);
        }
        QCOMPARE(painted(u"zh-TW"_s, text), painted(u"zh-Hant"_s, text));
        QCOMPARE(painted(u"zh-CN"_s, text), painted(u"zh-Hans"_s, text));
        QCOMPARE(painted(u"heb"_s, u"x"_s), painted(u"en-US"_s, u"x"_s));
    }

    void noEmptyBoxes_data()
    {
        const auto row = columns<QString, QString>("text", "drawn");
        row("private use", u"A\U000F0001\uE000B"_s, u"AB"_s);
        row("not assigned", u"A\u0378B"_s, u"A\uFFFDB"_s);
        row("half of a pair", u"A"_s + QChar(0xD83D), u"A\uFFFD"_s);
        row("controls", u"A\u0007\u001B\u0000B"_s, u"AB"_s);
        row("line breaks and tabs are spaces", u"\nA\tB\r\nC\u2028D\n"_s, u"A B  C D"_s);
        row("only spaces", u" \n "_s, {});
        row("marks that show nothing", u"A\u200B\u200D\uFE0F\u2060B"_s, u"AB"_s);
    }
    void noEmptyBoxes()
    {
        const auto [text, drawn] = fetched<QString, QString>();
        QCOMPARE(painted(u"zh-Hant"_s, text), painted(u"zh-Hant"_s, drawn));
    }

    void paintingKeepsToPointsAtAnyScale()
    {
        for (const auto &[ratio, offset] :
             {std::pair(1.0, QPointF()), std::pair(1.25, QPointF()), std::pair(2.0, QPointF()),
              std::pair(3.0, QPointF(0.4, 0.7))}) { // the last one is off the grid
            OverlayTypesetter typesetter(u"en"_s);
            const QString text = u"HHHH"_s;
            const auto layout =
                layOutOverlay(typesetter, text, {60}, QRectF(10, 20, 90, 30), QRectF(0, 0, 200, 80), {});
            OverlayPainter overlayPainter(typesetter.typeset(text), *layout);

            QImage image(int(200 * ratio), int(80 * ratio), QImage::Format_ARGB32_Premultiplied);
            image.setDevicePixelRatio(ratio);
            image.fill(Qt::black);
            QPainter painter(&image);
            painter.translate(offset);
            overlayPainter.paint(painter);
            painter.end();

            const QRect bright = boundsOf(image, isBright);
            const double size = layout->fontSize;
            const QRectF ink(bright.left() / ratio, bright.top() / ratio, bright.width() / ratio,
                             bright.height() / ratio);
            // A letter H is 0.714 em high and begins at the padding.
            QVERIFY(std::abs(ink.bottom() - (20 + 2 + 0.714 * size + offset.y())) < 1.01);
            QVERIFY(std::abs(ink.height() - 0.714 * size) < 1.01);
            QVERIFY(std::abs(ink.left() - (10 + 4 + 0.09 * size + offset.x())) < 1.01);
            QVERIFY(overlayPainter.paintedArea().translated(offset).contains(ink));
            const QRgb brightest = image.pixel(bright.left() + 1, bright.center().y());
            QVERIFY(qGray(brightest) >= 200 && qGray(brightest) <= 245);
        }
    }

    void aParagraphFillsItsOwnArea()
    {
        const QRectF source(20, 10, 300, 88); // four lines of 16 points, 24 apart
        const OverlayLimits limits{
            .bottom = 120, .lineHeight = 16, .lineCount = 4, .lineDistance = 24, .alignment = Qt::AlignHCenter};
        const auto laidOut = [&](const QString &text) {
            OverlayPicture picture;
            picture.setOverlays({{text, source, limits}}, {.paneSize = {400, 200}, .targetLanguage = u"en"_s});
            return picture.overlayAt({100, 50})->painter->layout();
        };
        const auto brief = laidOut(u"Two lines, at the distance of the source's, are enough."_s);
        QCOMPARE(brief.fontSize, 0.9 * 16);
        QCOMPARE(std::pair(brief.lines, brief.lineDistance), std::pair(2, 24.0));
        const auto longer = laidOut(u"Bread is mixed at ten. "_s.repeated(9));
        QVERIFY(longer.fontSize < brief.fontSize && longer.fontSize >= 0.8 * brief.fontSize);
        QVERIFY(longer.frame.bottom() <= source.bottom() + overlay::verticalSlack);
        const QString endless = u"Bread is mixed at ten. "_s.repeated(60);
        const auto cutOff = laidOut(endless);
        QCOMPARE(cutOff.fontSize, overlay::minimumAutomaticSize);
        QVERIFY(cutOff.frame.bottom() > source.bottom() && cutOff.frame.bottom() <= limits.bottom);
        QVERIFY(brief.isWhole && longer.isWhole && !cutOff.isWhole);

        OverlayTypesetter typesetter(u"en"_s);
        QImage image(400, 200, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::black);
        QPainter painter(&image);
        const QString text = u"HHHH HHHH HHHH HHHH HHHH HHHH HHHH HHHH HHHH"_s;
        OverlayPainter(typesetter.typeset(text),
                       *layOutParagraph(*typesetter.typeset(text), limits, source, QRectF(0, 0, 400, 200), {}))
            .paint(painter);
        painter.end();
        const QRect secondLine = boundsOf(image.copy(0, 36, image.width(), 10), isBright);
        QVERIFY(secondLine.width() > 20 && secondLine.width() < 250);
        QVERIFY(std::abs(secondLine.center().x() - source.center().x()) < 3);
    }

    void shadowIsSoftAndLiesBelow()
    {
        OverlayTypesetter typesetter(u"en"_s);
        const QString text = u"————"_s; // one thick line
        const auto layout = layOutOverlay(typesetter, text, {100}, QRectF(10, 20, 150, 40), QRectF(0, 0, 200, 100), {});
        QImage image(200, 100, QImage::Format_RGB32);
        image.fill(qRgb(245, 245, 245)); // as bright as the text
        QPainter painter(&image);
        OverlayPainter(typesetter.typeset(text), *layout).paint(painter);
        painter.end();

        const QImage middle = image.copy(60, 0, 30, 100);
        QList<int> darkness;
        for (int y = 0; y < middle.height(); ++y)
            darkness.append(245 - int(rowBrightness(middle, y)));
        // The stroke itself is the least dark row between its shadow's upper and lower part.
        const double baseline = 20 + overlay::verticalPadding + 0.714 * layout->fontSize;
        const auto expected = darkness.begin() + int(baseline - 0.3 * layout->fontSize);
        const int stroke = int(std::min_element(expected - 2, expected + 3) - darkness.begin());
        QVERIFY(darkness[stroke] < 20);
        const int above = std::accumulate(darkness.begin(), darkness.begin() + stroke, 0);
        const int below = std::accumulate(darkness.begin() + stroke, darkness.end(), 0);
        QVERIFY(above > 30);
        QVERIFY(below > 2 * above);
        // It fades away row by row, and within a few points.
        const auto darkest = std::max_element(darkness.begin() + stroke, darkness.end());
        QVERIFY(std::is_sorted(darkest, darkness.end(), std::greater<>()));
        QVERIFY(*(darkest + 3) > 5);
        QVERIFY(*(darkest + 8) == 0);
    }

    void aNewListKeepsWhatItSharesWithTheOldOne()
    {
        const TranslationOverlayCandidate kept{u"kept"_s, {10, 10, 100, 20}, {36}};
        const TranslationOverlayCandidate gone{u"gone"_s, {10, 60, 100, 20}, {90}};
        const TranslationOverlayCandidate added{u"new"_s, {10, 110, 100, 20}, {200}};
        const OverlayPicture::Setting setting{.paneSize = {480, 280}, .targetLanguage = u"en"_s};
        OverlayPicture picture;
        picture.setOverlays({kept, gone, kept}, setting);
        const QRegion changed = picture.setOverlays({added, kept, kept}, setting);
        QVERIFY(changed.contains(QPoint(20, 70)) && changed.contains(QPoint(20, 120)));
        QVERIFY(!changed.contains(QPoint(20, 20)));
        QCOMPARE(picture.overlays()[1].candidate, kept);
        QVERIFY(picture.overlays()[0].painter && picture.overlays()[2].painter);
        // Other lines leave it more or less room: it stays, unless it extends to a new line's place.
        auto crowded = kept;
        crowded.rect.setLeft(12);
        for (const auto &[bottom, isKept] : {std::pair(36.0, true), {90.0, true}, {25.0, false}}) {
            crowded.limits.bottom = bottom;
            auto wide = crowded;
            wide.text = kept.text;
            QCOMPARE(picture.setOverlays({added, wide, kept}, setting).contains(QPoint(20, 20)), !isKept);
        }
        const QRegion refitted = picture.setOverlays({added, kept, kept}, {setting.paneSize, u"ja"_s, setting.font});
        QVERIFY(refitted.contains(QPoint(20, 20)) && refitted.contains(QPoint(20, 120)));
    }
};

static const TestClass<OverlayDrawingTest, QApplication> overlayDrawingTest;
#include "OverlayDrawingTest.moc"
