// Lines that stand close to what is none: bullets, icons, arrows, stars, a picture's strokes, the row beneath.

#include "Pictures.h"
#include "Columns.h"
#include "strip/LineNormalizer.h"
#include "TestProgram.h"

#include <leptonica/allheaders.h>

#include <QGuiApplication>
#include <QPainterPath>
#include <QTest>

#include <algorithm>

using namespace lucentra;
using namespace lucentra::pictures;
using namespace Qt::StringLiterals;

namespace {

/// Whether a box is that of a text, but for a pixel or two: wider outlines, softer edges.
bool isAbout(const QRect &found, const QRect &written, int margin = 3)
{
    return written.adjusted(-margin, -margin, margin, margin).contains(found) &&
           found.adjusted(-margin, -margin, margin, margin).contains(written);
}

bool isFound(const QImage &image, const QRect &written, int margin = 3)
{
    const QList<FoundLine> lines = findLines(image, 5);
    const bool isThere = std::any_of(lines.begin(), lines.end(),
                                     [&](const FoundLine &line) { return isAbout(line.ink, written, margin); });
    if (!isThere) {
        for (const FoundLine &line : lines)
            qWarning() << "found" << line.ink << "written" << written;
    }
    return isThere;
}

/// White letters with a black outline of 2 pixels, as players draw subtitles. Returns the box of the white.
QRect writeOutlined(QImage &image, const QPoint &start, const QString &text, const QFont &font)
{
    QPainterPath path;
    path.addText(start, font, text);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.strokePath(path, QPen(Qt::black, 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.fillPath(path, Qt::white);
    return path.boundingRect().toAlignedRect();
}

/// Blades of grass: long strokes, bright and dark, that touch whatever stands in them.
QImage grass(const QSize &size)
{
    QImage image = blank(size, QColor(150, 120, 60));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QRandomGenerator random(3);
    for (int i = 0; i < 350; ++i) {
        const QPointF foot(random.bounded(size.width()), size.height() + random.bounded(40));
        const QPointF tip = foot + QPointF(random.bounded(160) - 80, -random.bounded(size.height()) - 40);
        painter.setPen(QPen(QColor::fromHsv(40 + random.bounded(20), 180, 90 + random.bounded(150)), 2));
        painter.drawLine(foot, tip);
    }
    return image;
}

} // namespace

class CrowdedLinesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bulletsAreNoPartOfTheLine_data()
    {
        columns<QString, int, bool, QColor, bool>("text", "size", "isDisc", "colour", "isDark");
        const QColor red(190, 60, 50);
        QTest::newRow("square, dark") << u"信任的裝置"_s << 12 << false << red << true;
        QTest::newRow("square, light") << u"運送地址"_s << 12 << false << red << false;
        QTest::newRow("disc") << u"權限グループ"_s << 13 << true << QColor(20, 20, 20) << false;
        QTest::newRow("before a word") << u"Cloud sync"_s << 13 << false << QColor(40, 110, 220) << false;
    }

    void bulletsAreNoPartOfTheLine()
    {
        QFETCH(const QString, text);
        QFETCH(const int, size);
        QFETCH(const bool, isDisc);
        QFETCH(const QColor, colour);
        QFETCH(const bool, isDark);
        QImage image = blank({260, 60}, isDark ? QColor(45, 38, 50) : QColor(247, 247, 247));
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
        painter.drawRoundedRect(QRect(20, 27, 7, 7), isDisc ? 3.5 : 1, isDisc ? 3.5 : 1);
        painter.end();
        const QRect box = write(image, {34, 35}, text, font(han, size), isDark ? Qt::white : Qt::black);
        QVERIFY(isFound(image, box));
    }

    void digitsAreNoIcons_data()
    {
        columns<QString, QString>("text", "family");
        for (const QString &text : {u"11:14"_s, u"1,393"_s, u"1"_s, u"4 月 8 日"_s}) {
            QTest::addRow("%s, narrow", qPrintable(text)) << text << latin;
            QTest::addRow("%s, wide", qPrintable(text)) << text << han;
        }
    }

    void digitsAreNoIcons()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, family);
        for (const int size : {11, 12, 13, 14, 18}) {
            QImage image = blank({200, 50}, Qt::white);
            const QRect box = write(image, {20, 30}, text, font(family, size), QColor(60, 60, 60));
            QVERIFY2(isFound(image, box), qPrintable(QString::number(size)));
        }
    }

    void rowsBesideAnIconComeApart_data()
    {
        QTest::addColumn<QString>("icon");
        for (const QString &icon : {u"square"_s, u"frame"_s, u"disc"_s, u"triangle"_s})
            QTest::newRow(qPrintable(icon)) << icon;
    }

    void rowsBesideAnIconComeApart()
    {
        QFETCH(const QString, icon);
        QImage image = blank({320, 80}, QColor(55, 46, 62));
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        const QColor accent(208, 140, 255);
        painter.setPen(icon == u"frame"_s ? QPen(accent, 2) : QPen(Qt::NoPen));
        painter.setBrush(icon == u"frame"_s ? QBrush(Qt::NoBrush) : QBrush(accent));
        const QRect place(16, 26, 26, 26);
        if (icon == u"disc"_s)
            painter.drawEllipse(place);
        else if (icon == u"triangle"_s)
            painter.drawPolygon(QPolygon({place.bottomLeft(), place.bottomRight(), {29, 26}}));
        else
            painter.drawRect(place);
        painter.end();
        const QRect title = write(image, {58, 37}, u"發票歸戶"_s, font(han, 13), Qt::white);
        const QRect detail =
            write(image, {58, 56}, u"以縮圖方式顯示圖片資料夾"_s, font(han, 11), QColor(170, 165, 180));
        QVERIFY(isFound(image, title));
        QVERIFY(isFound(image, detail));
    }

    void starsAreNoPartOfTheLine()
    {
        QImage image = blank({480, 200}, QColor(12, 14, 30));
        QRandomGenerator random(5);
        for (int i = 0; i < 120; ++i) {
            const int size = 1 + random.bounded(3);
            QPainter(&image).fillRect(random.bounded(480), random.bounded(200), size, size, Qt::white);
        }
        const QRect box = write(image, {120, 110}, u"我應該早點告訴你"_s, font(han, 28), Qt::white);
        QPainter(&image).fillRect(box.left() - 14, box.top() - 20, 3, 3, Qt::white); // above, beside and beneath
        QPainter(&image).fillRect(box.right() + 34, box.center().y(), 3, 3, Qt::white);
        QPainter(&image).fillRect(box.center().x(), box.bottom() + 18, 3, 3, Qt::white);
        // A star may stand where an accent or punctuation would.
        const QList<FoundLine> lines = findLines(image, 5);
        QVERIFY(std::any_of(lines.begin(), lines.end(), [&](const FoundLine &line) {
            return line.ink.contains(box.adjusted(2, 2, -2, -2)) && box.adjusted(-22, -12, 22, 12).contains(line.ink);
        }));
    }

    void partsOfALetterAreNoRows_data()
    {
        columns<QString, QString>("text", "family");
        const QString japanese = u"Noto Sans CJK JP"_s;
        const QString korean = u"Noto Sans CJK KR"_s;
        for (const QString &text : {u"売上"_s, u"予告"_s, u"言う"_s, u"合計 1"_s})
            QTest::newRow(qPrintable(text)) << text << japanese;
        for (const QString &text : {u"로그인"_s, u"한국어"_s, u"제목 1"_s, u"모두 보기"_s})
            QTest::newRow(qPrintable(text)) << text << korean;
        QTest::newRow("dots at the end") << u"Loading..."_s << u"Liberation Serif"_s;
        QTest::newRow("an ellipsis") << u"Please wait…"_s << u"Liberation Serif"_s;
    }

    void partsOfALetterAreNoRows()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, family);
        for (const int size : {20, 28, 32, 40, 48, 56}) {
            QImage image = blank({400, 100}, QColor(250, 250, 250));
            const QRect box = write(image, {20, 70}, text, font(family, size), QColor(20, 20, 20));
            QVERIFY2(isFound(image, box, 3 + size / 16), qPrintable(QString::number(size)));
        }
    }

    void outlinedLettersAreFoundInAPicture()
    {
        QImage image = grass({640, 240});
        const QRect box = writeOutlined(image, {120, 150}, u"你答應過我要一起看雪"_s, font(han, 28));
        QVERIFY(isFound(image, box, 14));
    }

    void brightGroundIsNoPartOfOutlinedLetters()
    {
        QImage image = blank({400, 80}, Qt::white);
        QPainter painter(&image);
        for (int x = 0; x < 400; x += 7) // not flat, and as bright as the letters in places
            painter.fillRect(x, 0, 4, 80, QColor(255, 245 - x % 5 * 8, 200 - x % 90));
        painter.end();
        const QRect box = writeOutlined(image, {20, 50}, u"Bright letters on sand"_s, font(latin, 24));
        const TextMaps maps = seen(image);
        const LineNormalizer normalizer(image, box, maps.ink);
        const Strip strip = normalizer.strip(Separation::BrightFill, StripShape());
        int dark = 0;
        for (int x = 0; x < pixGetWidth(strip.get()); ++x) {
            for (const int y : {4, pixGetHeight(strip.get()) - 5}) { // above and below the letters
                l_uint32 value = 0;
                pixGetPixel(strip.get(), x, y, &value);
                dark += value < 128 ? 1 : 0;
            }
        }
        QVERIFY2(dark < pixGetWidth(strip.get()) / 10, qPrintable(QString::number(dark)));
    }
};

static const TestClass<CrowdedLinesTest, QGuiApplication> crowdedLinesTest;
#include "CrowdedLinesTest.moc"
