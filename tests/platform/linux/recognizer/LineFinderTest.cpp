#include "Columns.h"
#include "Pictures.h"
#include "TestProgram.h"
#include "find/TextColumns.h"
#include "strip/LineNormalizer.h"

#include <leptonica/allheaders.h>

#include <QGuiApplication>
#include <QTest>

#include <algorithm>
#include <ctime>

using namespace lucentra;
using namespace lucentra::pictures;
using namespace Qt::StringLiterals;

namespace {

double overlap(const QRect &a, const QRect &b)
{
    const QRect both = a & b;
    const double common = double(both.width()) * both.height();
    return both.isEmpty() ? 0 : common / (double(a.width()) * a.height() + double(b.width()) * b.height() - common);
}

/// The boxes that were found, from the top to the bottom and from the left to the right.
QList<QRect> boxesIn(const QImage &image, int minimumHeight = 5)
{
    QList<QRect> boxes;
    for (const FoundLine &line : findLines(image, minimumHeight))
        boxes.append(line.ink);
    std::sort(boxes.begin(), boxes.end(), [](const QRect &a, const QRect &b) {
        return std::pair(a.top() / 10, a.left()) < std::pair(b.top() / 10, b.left());
    });
    return boxes;
}

bool areFound(const QList<QRect> &found, const QList<QRect> &written)
{
    const bool areAll = found.size() == written.size() &&
                        std::equal(found.begin(), found.end(), written.begin(),
                                   [](const QRect &a, const QRect &b) { return overlap(a, b) > 0.8; });
    if (!areAll)
        qWarning() << "found" << found << "written" << written;
    return areAll;
}

} // namespace

class LineFinderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void boxesAreTight_data()
    {
        columns<QString, QFont, QColor, QColor>("text", "face", "paper", "ink");
        QTest::newRow("dark on light") << u"Open the report"_s << font(latin, 14) << QColor(Qt::white)
                                       << QColor(Qt::black);
        QTest::newRow("light on dark") << u"Open the report"_s << font(latin, 14) << QColor(30, 30, 34)
                                       << QColor(230, 230, 230);
        QTest::newRow("faint grey") << u"Last edited today"_s << font(latin, 13) << QColor(Qt::white)
                                    << QColor(160, 160, 160);
        QTest::newRow("colours of one brightness")
            << u"Red on green"_s << font(latin, 18) << QColor(0, 130, 0) << QColor(225, 30, 30);
        QTest::newRow("small ideographs")
            << u"深色模式與字型大小"_s << font(han, 12) << QColor(Qt::white) << QColor(20, 20, 20);
        QTest::newRow("large type") << u"關於本機"_s << font(han, 72) << QColor(Qt::white) << QColor(20, 20, 20);
        QTest::newRow("underscores") << u"make_shared_from_node"_s << font(u"DejaVu Sans Mono"_s, 15)
                                     << QColor(Qt::white) << QColor(Qt::black);
        QTest::newRow("dots between the words")
            << u"小米 · 12 分鐘前"_s << font(han, 14) << QColor(Qt::white) << QColor(90, 90, 90);
    }

    void boxesAreTight()
    {
        QFETCH(const QString, text);
        QFETCH(const QFont, face);
        QFETCH(const QColor, paper);
        QFETCH(const QColor, ink);
        QImage image = blank({640, 140}, paper);
        const QRect box = write(image, {20, 100}, text, face, ink);
        QVERIFY(areFound(boxesIn(image), {box}));
    }

    void neighboursStayApart_data()
    {
        QTest::addColumn<QPoint>("second");
        QTest::newRow("columns") << QPoint(240, 60);
        QTest::newRow("entries of a menu bar") << QPoint(190, 60);
        QTest::newRow("rows set solid") << QPoint(20, 76);
    }

    void neighboursStayApart()
    {
        QFETCH(const QPoint, second);
        QImage image = blank({480, 120}, Qt::white);
        const QRect a = write(image, {20, 60}, u"Backup and restore"_s, font(latin, 14), Qt::black);
        const QRect b = write(image, second, u"Keyboard shortcuts"_s, font(latin, 14), Qt::black);
        QVERIFY(areFound(boxesIn(image), {a, b}));
    }

    void textsSideBySideComeApart_data()
    {
        // gap: pixels; the letters are 14 high
        columns<QStringList, QString, int, bool, bool>("texts", "family", "gap", "isFramed", "areApart");
        const QStringList menu{u"Open"_s, u"Edit"_s, u"Options"_s, u"View"_s};
        const QStringList entries{u"檔案"_s, u"編輯"_s, u"檢視"_s, u"工具"_s};
        QTest::newRow("words") << menu << latin << 5 << false << false;
        QTest::newRow("spaced ideographs") << entries << han << 8 << false << false;
        QTest::newRow("label and field") << QStringList{u"Name"_s, u"Anna"_s} << latin << 12 << true << true;
        QTest::newRow("field close to ideographs") << QStringList{u"姓名"_s, u"安娜"_s} << han << 8 << true << true;
    }

    /// One line, unless a frame stands between them.
    void textsSideBySideComeApart()
    {
        QFETCH(const QStringList, texts);
        QFETCH(const QString, family);
        QFETCH(const int, gap);
        QFETCH(const bool, isFramed);
        QFETCH(const bool, areApart);
        QImage image = blank({480, 80}, Qt::white);
        QList<QRect> boxes;
        QRect all;
        for (const QString &text : texts) {
            boxes.append(write(image, {boxes.isEmpty() ? 20 : boxes.last().right() + gap, 50}, text, font(family, 14),
                               Qt::black));
            all |= boxes.last();
        }
        if (isFramed) {
            QPainter painter(&image);
            painter.setPen(QColor(150, 150, 150));
            painter.drawRect(boxes.last().adjusted(-5, -6, 90, 6));
        }
        QVERIFY(areFound(boxesIn(image), areApart ? boxes : QList<QRect>{all}));
    }

    /// The gap is hardly wider than a space. What shows that it is one between cells is that all rows have it.
    void columnsOfATableComeApart()
    {
        QImage image = blank({480, 220}, Qt::white);
        QList<QRect> boxes;
        for (int row = 0; row < 7; ++row) {
            const QString size = QString::number(12.1 + 57.3 * row, 'f', 1) + u" KiB"_s;
            QImage scratch = blank(image.size(), Qt::white);
            const int width = write(scratch, {20, 20}, size, font(latin, 14), Qt::black).width();
            boxes.append(write(image, {120 - width, 30 + 28 * row}, size, font(latin, 14), Qt::black));
            boxes.append(write(image, {135, 30 + 28 * row}, u"Document"_s, font(latin, 14), Qt::black));
        }
        QVERIFY(areFound(boxesIn(image), boxes));
    }

    void surroundingsAreNoPartOfTheLine_data()
    {
        QTest::addColumn<QString>("surroundings");
        QTest::newRow("button") << u"button"_s;
        QTest::newRow("faint bubble") << u"bubble"_s;
        QTest::newRow("grid of a table") << u"grid"_s;
        QTest::newRow("avatar beside it") << u"avatar"_s;
        QTest::newRow("rule beneath") << u"rule"_s;
        QTest::newRow("outline of a roof that touches it") << u"roof"_s;
    }

    void surroundingsAreNoPartOfTheLine()
    {
        QFETCH(const QString, surroundings);
        QImage image = blank({480, 160}, QColor(250, 250, 250));
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        const QColor accent(40, 110, 220);
        if (surroundings == u"button"_s || surroundings == u"bubble"_s) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(surroundings == u"button"_s ? accent.lighter(170) : QColor(225, 228, 232));
            painter.drawRoundedRect(44, 60, 180, 34, 12, 12);
        } else if (surroundings == u"grid"_s) {
            painter.setPen(QColor(200, 200, 200));
            for (int i = 0; i < 5; ++i) {
                painter.drawLine(10, 30 + 32 * i, 470, 30 + 32 * i);
                painter.drawLine(40 + 105 * i, 30, 40 + 105 * i, 158);
            }
        } else if (surroundings == u"avatar"_s) {
            painter.setBrush(accent);
            painter.drawEllipse(6, 58, 36, 36);
        } else if (surroundings == u"roof"_s) {
            painter.fillRect(20, 81, 400, 79, QColor(205, 205, 205));
        } else {
            painter.fillRect(20, 92, 440, 2, accent);
        }
        painter.end();
        const QRect box = write(image, {52, 82}, u"筆記本 A5"_s, font(han, 14), Qt::black);
        QVERIFY(areFound(boxesIn(image), {box}));
    }

    void controlsAreNoPartOfTheLabel_data()
    {
        columns<QString, bool>("control", "isDark");
        for (const bool isDark : {false, true}) {
            for (const QString &control : {u"checked"_s, u"unchecked"_s, u"ring"_s, u"tick"_s, u"folder"_s, u"list"_s})
                QTest::addRow("%s, %s", qPrintable(control), isDark ? "dark" : "light") << control << isDark;
        }
    }

    void controlsAreNoPartOfTheLabel()
    {
        QFETCH(const QString, control);
        QFETCH(const bool, isDark);
        const QColor paper = isDark ? QColor(45, 45, 48) : QColor(239, 239, 239);
        const QColor ink = isDark ? QColor(235, 235, 235) : QColor(20, 20, 20);
        QImage image = blank({300, 60}, paper);
        QPainter painter(&image);
        painter.setPen(QPen(isDark ? QColor(110, 110, 110) : QColor(150, 150, 150), 1));
        painter.setBrush(control == u"folder"_s ? QColor(60, 140, 230)
                         : isDark               ? QColor(25, 25, 28)
                                                : QColor(Qt::white));
        if (control == u"checked"_s || control == u"unchecked"_s || control == u"folder"_s)
            painter.drawRect(20, 26, 14, 14);
        painter.setRenderHint(QPainter::Antialiasing);
        if (control == u"ring"_s)
            painter.drawEllipse(20, 26, 14, 14);
        painter.setPen(QPen(ink, 2));
        if (control == u"checked"_s || control == u"tick"_s)
            painter.drawPolyline(QPolygonF({{23, 33}, {26, 37}, {32, 28}}));
        if (control == u"list"_s) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(ink);
            painter.drawPolygon(QPolygonF({{94, 30}, {104, 30}, {99, 35}}));
        }
        painter.end();
        const QRect box = write(image, {40, 38}, u"Vocal"_s, font(latin, 14), ink);
        const QList<QRect> found = boxesIn(image);
        QVERIFY(std::any_of(found.begin(), found.end(), [&](const QRect &line) { return overlap(line, box) > 0.8; }));
    }

    void smallThingsAreFoundWhole_data()
    {
        columns<QString, QStringList, double>("family", "texts", "share");
        QTest::newRow("letters that look like controls")
            << latin << QStringList{u"O captain, 0 left"_s, u"Option 0"_s, u"V or x"_s, u"a letter"_s, u"Loading..."_s}
            << 0.9;
        QTest::newRow("ideographs that look like controls")
            << han << QStringList{u"口日回國田"_s, u"回 3 次 10 日"_s, u"三個項目"_s, u"四國 日"_s} << 0.75;
        QTest::newRow("words of a terminal")
            << u"DejaVu Sans Mono"_s
            << QStringList{u"int n = none; auto i"_s, u"let x = 1; y = 2;"_s, u"$ cp a b"_s, u"for i in 1 2 3; do"_s}
            << 0.35;
    }

    /// A net may miss any single one, so each text is drawn at many sizes.
    void smallThingsAreFoundWhole()
    {
        QFETCH(const QString, family);
        QFETCH(const QStringList, texts);
        QFETCH(const double, share);
        qsizetype whole = 0;
        qsizetype all = 0;
        for (const QString &text : texts) {
            for (int size = 12; size <= 32; size += size / 6) {
                QImage image = blank({640, 80}, QColor(239, 239, 239));
                const QRect box = write(image, {20, 55}, text, font(family, size), QColor(20, 20, 20));
                const QList<QRect> found = boxesIn(image);
                const int near = 2 + size / 16;
                whole += found.size() == 1 && std::abs(found[0].left() - box.left()) <= near &&
                         std::abs(found[0].right() - box.right()) <= near;
                ++all;
            }
        }
        QVERIFY2(double(whole) >= share * double(all), qPrintable(u"%1 of %2"_s.arg(whole).arg(all)));
    }

    void lowLinesAreLeftOut()
    {
        QImage image = blank({400, 100}, Qt::white);
        write(image, {20, 30}, u"small print of the page"_s, font(latin, 10), Qt::black);
        const QRect title = write(image, {20, 80}, u"Title"_s, font(latin, 28), Qt::black);
        QCOMPARE(boxesIn(image).size(), 2);
        QVERIFY(areFound(boxesIn(image, 16), {title}));
    }

    void marksCutALine_data()
    {
        columns<QString, QStringList>("text", "joints");
        QTest::newRow("none") << u"Open the report"_s << QStringList{u""_s};
        QTest::newRow("dots of abbreviations and of i") << u"args.get(1) i.e. this"_s << QStringList{u""_s};
        QTest::newRow("middle dot") << u"adrian · May 19"_s << QStringList{u" · "_s, u""_s};
        QTest::newRow("three dots at the end") << u"Save as..."_s << QStringList{u"…"_s};
    }

    void marksCutALine()
    {
        QFETCH(const QString, text);
        QImage image = blank({400, 80}, Qt::white);
        write(image, {20, 50}, text, font(latin, 20), Qt::black);
        const QList<FoundLine> lines = findLines(image, 5);
        QCOMPARE(lines.size(), 1);
        QStringList joints;
        for (const LinePiece &piece : lines.first().pieces)
            joints.append(piece.joint);
        QTEST(joints, "joints");
    }

    void columnsMayBeFoundAsCharacters()
    {
        const auto character = [](int x, int y) {
            return FoundLine{.ink = {x, y, 20, 20}, .pieces = {{{x, y, 20, 20}, {}, {0, 1, 0, 0}}}};
        };
        // None is below another, as where only one character of each column was found.
        QList<FoundLine> lines{character(100, 0), character(70, 60), character(40, 130)};
        QVERIFY(mayBeColumns(lines));
        lines.append({.ink = {0, 200, 200, 20}, .pieces = {{{0, 200, 200, 20}, {}, {0, 1, 0, 0}}}});
        QVERIFY(!mayBeColumns(lines));
        lines.append(character(40, 152));
        lines.append(character(40, 174));
        QVERIFY(mayBeColumns(lines));
    }

    void stripsAreDarkOnWhite_data()
    {
        columns<QColor, QColor>("paper", "ink");
        QTest::newRow("light theme") << QColor(Qt::white) << QColor(Qt::black);
        QTest::newRow("dark theme") << QColor(20, 22, 30) << QColor(220, 220, 220);
        QTest::newRow("white on an accent colour") << QColor(200, 60, 30) << QColor(Qt::white);
        QTest::newRow("yellow on blue") << QColor(10, 20, 160) << QColor(250, 230, 60);
    }

    void stripsAreDarkOnWhite()
    {
        QFETCH(const QColor, paper);
        QFETCH(const QColor, ink);
        QImage image = blank({300, 60}, paper);
        const QRect box = write(image, {20, 40}, u"Polarity"_s, font(latin, 20), ink);
        const TextMaps maps = seen(image);
        const LineNormalizer normalizer(image, box, maps.ink);
        QCOMPARE(normalizer.separations().first(), Separation::Axis);
        const Strip strip = normalizer.strip(Separation::Axis, StripShape());
        QCOMPARE(pixGetHeight(strip.get()), StripShape().height);
        int dark = 0;
        int light = 0;
        for (int y = 0; y < pixGetHeight(strip.get()); ++y) {
            for (int x = 0; x < pixGetWidth(strip.get()); ++x) {
                l_uint32 value = 0;
                pixGetPixel(strip.get(), x, y, &value);
                dark += value < 64;
                light += value > 192;
            }
        }
        QVERIFY(light > 2 * dark);
        QVERIFY(20 * dark > light);
    }

    void randomPicturesAreBounded()
    {
        QRandomGenerator random(20);
        for (int round = 0; round < 150; ++round) {
            const bool isLong = round % 3 == 0;
            QImage image = noise({1 + random.bounded(isLong ? 1200 : 70), 1 + random.bounded(isLong ? 4 : 70)});
            QPainter painter(&image);
            painter.fillRect(image.rect(), QColor(0, 0, 0, random.bounded(256))); // from noise to black
            for (int i = random.bounded(30); i > 0; --i) {
                const QRect box(random.bounded(image.width()), random.bounded(image.height()), 1 + random.bounded(40),
                                1 + random.bounded(20));
                painter.setPen(QColor::fromRgb(random.generate()));
                if (i % 2 == 0)
                    painter.drawRect(box);
                else
                    painter.fillRect(box, painter.pen().color());
            }
            painter.end();
            const TextMaps maps = seen(image);
            for (const FoundLine &line : linesOf(maps, 5)) {
                QVERIFY(image.rect().contains(line.ink));
                const LineNormalizer normalizer(image, line.ink, maps.ink);
                for (const Separation separation : normalizer.separations())
                    QVERIFY(normalizer.strip(separation, StripShape()));
            }
        }
    }

    void hostilePicturesAreBounded_data()
    {
        QTest::addColumn<QImage>("image");
        QTest::newRow("no picture") << QImage();
        QTest::newRow("one pixel") << blank({1, 1}, Qt::black);
        QTest::newRow("one column") << noise({1, 500});
        QTest::newRow("one row") << noise({500, 1});
        QTest::newRow("black") << blank({1920, 1080}, Qt::black);
        QTest::newRow("noise") << noise({1600, 900});
        QTest::newRow("dots everywhere") << dots({1600, 900});
    }

    void hostilePicturesAreBounded()
    {
        QFETCH(const QImage, image);
        const std::clock_t begin = std::clock(); // processor time: others may be at work
        for (const FoundLine &line : findLines(image, 5)) {
            QVERIFY(image.rect().contains(line.ink));
            QVERIFY(!line.pieces.isEmpty());
        }
        QVERIFY2(std::clock() - begin < 20 * CLOCKS_PER_SEC, "generous, for sanitizers; it takes about 50 ms without");
    }
};

static const TestClass<LineFinderTest, QGuiApplication> lineFinderTest;
#include "LineFinderTest.moc"
