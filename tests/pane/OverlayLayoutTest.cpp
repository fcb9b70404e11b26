#include "OverlayLayout.h"
#include "FixedPitchMeasurer.h"

#include <QTest>

#include <limits>

using namespace lucentra;
using namespace Qt::StringLiterals;

class OverlayLayoutTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void frames_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<QRectF>("rect");
        QTest::addColumn<OverlayLimits>("limits");
        QTest::addColumn<QRectF>("pane");
        QTest::addColumn<QRectF>("frame");
        QTest::addColumn<int>("lines");

        const QRectF pane(0, 0, 500, 300);
        // A source 20 high starts at size 18: 9 points a character, lines of 22.
        QTest::newRow("shorter than its source")
            << 5 << QRectF(50, 40, 100, 20) << OverlayLimits{100.0} << pane << QRectF(50, 40, 100, 26) << 1;
        QTest::newRow("grows to fit one line")
            << 20 << QRectF(50, 40, 100, 20) << OverlayLimits{100.0} << pane << QRectF(50, 40, 188, 26) << 1;
        QTest::newRow("grows to at most 220 ...")
            << 40 << QRectF(50, 40, 60, 20) << OverlayLimits{100.0} << pane << QRectF(50, 40, 220, 48) << 2;
        QTest::newRow("... or 2.25 times its source")
            << 60 << QRectF(10, 40, 120, 20) << OverlayLimits{100.0} << pane << QRectF(10, 40, 270, 45) << 2;
        QTest::newRow("moved left to end 4 points inside")
            << 20 << QRectF(440, 40, 50, 20) << OverlayLimits{100.0} << pane << QRectF(308, 40, 188, 26) << 1;
        QTest::newRow("wider than the pane")
            << 20 << QRectF(-20, 40, 600, 20) << OverlayLimits{100.0} << pane << QRectF(4, 40, 492, 26) << 1;
        QTest::newRow("begins left of the usable area")
            << 20 << QRectF(0, 40, 100, 20) << OverlayLimits{100.0} << pane << QRectF(4, 40, 188, 26) << 1;
        QTest::newRow("the limit lies close below")
            << 40 << QRectF(50, 40, 60, 20) << OverlayLimits{70.0} << pane << QRectF(50, 40, 220, 20) << 1;
        QTest::newRow("the limit lies above the bottom edge")
            << 5 << QRectF(50, 40, 100, 20) << OverlayLimits{30.0} << pane << QRectF(50, 40, 100, 20) << 1;
        QTest::newRow("the limit lies below the pane")
            << 5 << QRectF(50, 275, 100, 20) << OverlayLimits{900.0} << pane << QRectF(50, 275, 100, 25) << 1;
        QTest::newRow("ends before its neighbour, at a smaller size")
            << 12 << QRectF(50, 40, 60, 20) << OverlayLimits{100, 160} << pane << QRectF(50, 40, 110, 25) << 1;
        QTest::newRow("... or on two lines")
            << 20 << QRectF(50, 40, 60, 20) << OverlayLimits{100, 160} << pane << QRectF(50, 40, 110, 48) << 2;
        QTest::newRow("passes its limit where it would be cut off")
            << 20 << QRectF(50, 40, 60, 20) << OverlayLimits{62, 120} << pane << QRectF(50, 40, 188, 22) << 1;
        QTest::newRow("a pane without usable area")
            << 5 << QRectF(0, 0, 8, 20) << OverlayLimits{100.0} << QRectF(0, 0, 8, 300) << QRectF(0, 0, 8, 52) << 4;
        QTest::newRow("a limit that is no number")
            << 5 << QRectF(50, 40, 100, 20) << OverlayLimits{std::numeric_limits<double>::quiet_NaN()} << pane
            << QRectF(50, 40, 100, 26) << 1;
    }
    void frames()
    {
        QFETCH(int, length);
        QFETCH(QRectF, rect);
        QFETCH(OverlayLimits, limits);
        QFETCH(QRectF, pane);
        FixedPitchMeasurer measurer;
        const auto layout = layOutOverlay(measurer, QString(length, u'x'), limits, rect, pane, {});
        QVERIFY(layout.has_value());
        QTEST(layout->frame, "frame");
        QTEST(layout->lines, "lines");
    }

    void fixedSizeWidensByItsOwnSize()
    {
        FixedPitchMeasurer measurer;
        const auto layout = layOutOverlay(measurer, QString(10, u'x'), {100}, QRectF(50, 40, 100, 20),
                                          QRectF(0, 0, 500, 300), {.isAuto = false, .storedFontSize = 30});
        QCOMPARE(layout, (OverlayLayout{.frame = {50, 40, 158, 40}, .fontSize = 30, .lines = 1}));
    }

    void specksGetNoOverlay_data()
    {
        QTest::addColumn<QRectF>("rect");
        QTest::newRow("four points wide") << QRectF(10, 10, 4, 20);
        QTest::newRow("four points high") << QRectF(10, 10, 20, 4);
        QTest::newRow("empty") << QRectF();
        QTest::newRow("no number") << QRectF(10, 10, std::numeric_limits<double>::quiet_NaN(), 20);
        QTest::newRow("endless") << QRectF(10, 10, 20, std::numeric_limits<double>::infinity());
    }
    void specksGetNoOverlay()
    {
        QFETCH(QRectF, rect);
        FixedPitchMeasurer measurer;
        QVERIFY(!layOutOverlay(measurer, u"text"_s, {100}, rect, QRectF(0, 0, 500, 300), {}));
    }
};

QTEST_GUILESS_MAIN(OverlayLayoutTest)
#include "OverlayLayoutTest.moc"
