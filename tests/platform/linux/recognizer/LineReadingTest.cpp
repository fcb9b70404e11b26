#include "Columns.h"
#include "Mask.h"
#include "Pictures.h"
#include "TestProgram.h"
#include "judge/ReadingFilter.h"
#include "judge/ReadingOrder.h"
#include "read/LineReader.h"
#include "read/ReaderPool.h"
#include "strip/LineNormalizer.h"
#include "strip/StripParts.h"
#include "strip/StrokeShape.h"

#include <QGuiApplication>
#include <QTest>

#include <latch>
#include <thread>

using namespace lucentra;
using namespace lucentra::pictures;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

class LineReadingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textIsTidied_data()
    {
        columns<QString, QString>("read", "meant");
        QTest::newRow("spaces between ideographs") << u"深 色 模式"_s << u"深色模式"_s;
        QTest::newRow("spaces before full-width marks") << u"開始 。 「 結束 」"_s << u"開始。「結束」"_s;
        QTest::newRow("a space between the scripts stays") << u"第 3 章 Linux 版"_s << u"第 3 章 Linux 版"_s;
    }

    void textIsTidied()
    {
        QFETCH(const QString, read);
        QTEST(tidied(read), "meant");
    }

    void plausibility_data()
    {
        columns<QString, double, double, bool>("text", "confidence", "sureness", "isPlausible");
        QTest::newRow("a line") << u"Open the report"_s << 33.0 << 0.6 << true;
        QTest::newRow("an unsure line") << u"Open the report"_s << 31.0 << 0.6 << false;
        QTest::newRow("punctuation alone") << u"--- |"_s << 95.0 << 0.6 << false;
        QTest::newRow("a brace") << u"}"_s << 83.0 << 0.6 << true;
        QTest::newRow("a digit") << u"7"_s << 80.0 << 0.6 << true;
        QTest::newRow("a letter") << u"A"_s << 92.0 << 0.6 << true;
        QTest::newRow("an ideograph that the net sees clearly") << u"遠"_s << 80.0 << 0.7 << true;
        QTest::newRow("an icon that looks like one") << u"国"_s << 83.0 << 0.58 << false;
        QTest::newRow("an icon") << u"A"_s << 80.0 << 0.6 << false;
        QTest::newRow("a button's label") << u"確定"_s << 90.0 << 0.6 << true;
        QTest::newRow("an unsure label of ideographs") << u"補間"_s << 74.0 << 0.56 << true;
        QTest::newRow("as unsure, but letters") << u"Bo"_s << 74.0 << 0.56 << false;
        QTest::newRow("two letters of an icon") << u"my"_s << 76.0 << 0.6 << false;
        QTest::newRow("a label that the net hardly sees") << u"攻擊"_s << 96.0 << 0.5 << true;
        QTest::newRow("what else it hardly sees") << u"Bo"_s << 88.0 << 0.5 << false;
    }

    void plausibility()
    {
        QFETCH(const QString, text);
        QFETCH(const double, confidence);
        QFETCH(const double, sureness);
        FoundLine line;
        line.sureness = sureness;
        line.ink = QRect(0, 0, int(text.size()) * 8, 12);
        QTEST(isPlausible({text, confidence}, line), "isPlausible");
    }

    void order_data()
    {
        columns<QList<QRect>, QList<int>>("boxes", "order");
        const auto box = [](int x, int y, int width = 200, int height = 14) { return QRect(x, y, width, height); };
        QTest::newRow("nothing") << QList<QRect>() << QList<int>();
        QTest::newRow("rows") << QList<QRect>{box(0, 60), box(0, 20), box(0, 40)} << QList<int>{1, 2, 0};
        QTest::newRow("cells of a row, not quite level")
            << QList<QRect>{box(300, 20), box(0, 23), box(600, 18)} << QList<int>{1, 0, 2};
        QTest::newRow("a number beside two rows of text")
            << QList<QRect>{box(40, 20), box(40, 38), box(400, 28, 20, 12)} << QList<int>{0, 2, 1};
        QTest::newRow("two columns of a text") << QList<QRect>{box(0, 20), box(300, 20), box(0, 40), box(300, 40),
                                                               box(0, 60), box(300, 60), box(0, 80), box(300, 80)}
                                               << QList<int>{0, 2, 4, 6, 1, 3, 5, 7};
        QTest::newRow("a heading above two columns")
            << QList<QRect>{box(0, 40),   box(300, 40), box(0, 60),    box(300, 60),      box(0, 80),
                            box(300, 80), box(0, 100),  box(300, 100), box(0, 0, 480, 24)}
            << QList<int>{8, 0, 2, 4, 6, 1, 3, 5, 7};
        QTest::newRow("a table with narrow cells")
            << QList<QRect>{box(0, 20, 40), box(300, 20, 40), box(0, 40, 40), box(300, 40, 40),
                            box(0, 60, 40), box(300, 60, 40), box(0, 80, 40), box(300, 80, 40)}
            << QList<int>{0, 1, 2, 3, 4, 5, 6, 7};
    }

    void order()
    {
        QFETCH(const QList<QRect>, boxes);
        QTEST(readingOrder(boxes), "order");
    }

    void aTablesRulesAreNoLetters()
    {
        QImage image = blank({120, 60}, Qt::white);
        const QRect word = write(image, {30, 40}, u"lib"_s, font(latin, 16), Qt::black);
        const int x = word.left() - 4;
        QPainter(&image).fillRect(x, 0, 1, 60, Qt::black);
        const QRect box = word.united(QRect(x, word.top(), 1, 1));
        SureMap seen(120, 60);
        std::ranges::fill(seen.values, std::uint8_t(255));
        const StripShape shape;
        const Strip strip = LineNormalizer(image, box, seen).strip(Separation::Axis, shape);
        const std::vector<std::uint8_t> darkest = darkestOfColumns(strip);
        const double scale = shape.height * shape.inkShare / box.height() * shape.widthScale;
        const auto column = [&](int pixel) { return darkest.begin() + shape.padding + int((pixel - x) * scale); };
        QVERIFY(std::all_of(darkest.begin(), column(word.left() - 1), [](int grey) { return grey >= lightestInk; }));
        QVERIFY(std::any_of(column(word.left()), darkest.end(), [](int grey) { return grey < 0x40; }));
    }

    void onesAreToldFromBars_data()
    {
        columns<QString, QString, StrokeShape>("character", "family", "shape");
        QTest::newRow("I") << u"I"_s << latin << StrokeShape::Bar;
        QTest::newRow("l") << u"l"_s << latin << StrokeShape::Bar;
        QTest::newRow("1 with a foot") << u"1"_s << latin << StrokeShape::One;
        QTest::newRow("1 without a foot") << u"1"_s << u"Noto Sans"_s << StrokeShape::One;
        QTest::newRow("l with a curved foot") << u"l"_s << u"DejaVu Sans Mono"_s << StrokeShape::Other;
        QTest::newRow("another character") << u"7"_s << latin << StrokeShape::Other;
    }

    void onesAreToldFromBars()
    {
        QFETCH(const QString, character);
        QFETCH(const QString, family);
        QFETCH(const StrokeShape, shape);
        for (const int size : {16, 24}) {
            QImage image = blank({120, 60}, Qt::white);
            const QRect box = write(image, {30, 40}, u"X %1 X"_s.arg(character), font(family, size), Qt::black);
            SureMap seen(120, 60);
            std::ranges::fill(seen.values, std::uint8_t(255));
            const Strip strip = LineNormalizer(image, box, seen).strip(Separation::Axis, StripShape());
            const int middle = pixGetWidth(strip.get()) / 2;
            QVERIFY2(strokeShapeAt(strip, middle - 2, middle + 2) == shape, qPrintable(QString::number(size)));
        }
    }

    void whatIsBesideALineIsNoPartOfIt_data()
    {
        columns<QRect, QColor>("beside", "colour"); // the word is 20 pixels high and begins at y = 30
        QTest::newRow("the tops of the line below") << QRect(30, 50, 60, 3) << QColor(Qt::white);
        QTest::newRow("a window lit in another colour") << QRect(98, 36, 8, 10) << QColor(255, 220, 150);
    }

    void whatIsBesideALineIsNoPartOfIt()
    {
        QFETCH(const QRect, beside);
        QFETCH(const QColor, colour);
        QImage image = blank({140, 80}, QColor(30, 30, 60));
        const QRect box(20, 30, 90, 20);
        QPainter painter(&image);
        for (int x = 20; x < 90; x += 12)
            painter.fillRect(x, 30, 4, 20, Qt::white);
        painter.fillRect(beside, colour);
        painter.end();
        SureMap seen(140, 80);
        std::ranges::fill(seen.values, std::uint8_t(255));
        const StripShape shape;
        const Strip strip = LineNormalizer(image, box, seen, QRect(0, 0, 140, 50)).strip(Separation::BrightFill, shape);
        const double scale = shape.height * shape.inkShare / box.height();
        const auto isDarkAt = [&](const QPoint &pixel) {
            l_uint32 value = 0;
            pixGetPixel(strip.get(), shape.padding + int((pixel.x() - 18) * scale * shape.widthScale),
                        int(shape.height * (1 - shape.inkShare) / 2 + (pixel.y() - 30) * scale), &value);
            return value < 128;
        };
        QVERIFY(isDarkAt({22, 40}));
        QVERIFY(!isDarkAt(beside.center()));
    }

    void everyTaskOfThePoolIsDone()
    {
        std::atomic<int> rests = 0;
        std::atomic<int> sum = 0;
        {
            ReaderPool pool(3, 20ms, [&] { ++rests; });
            for (int round = 0; round < 3; ++round) {
                std::latch done(100);
                for (int i = 0; i < 100; ++i) {
                    pool.post([&] {
                        ++sum;
                        done.count_down();
                    });
                }
                done.wait();
            }
            QTRY_COMPARE(rests.load(), 1); // once after the work, not again and again
        }
        QCOMPARE(sum.load(), 300);
    }
};

static const TestClass<LineReadingTest, QGuiApplication> lineReadingTest;
#include "LineReadingTest.moc"
