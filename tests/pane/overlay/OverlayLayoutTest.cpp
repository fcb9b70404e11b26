#include "OverlayLayout.h"
#include "Columns.h"
#include "FixedPitchMeasurer.h"
#include "TestProgram.h"

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
        columns<int, QRectF, OverlayLimits, QRectF, QRectF, int>("length", "rect", "limits", "pane", "frame", "lines");
        const auto row = [](const char *name, int length, const QRectF &rect, const OverlayLimits &limits,
                            const QRectF &frame, int lines, const QRectF &pane = {0, 0, 500, 300}) {
            QTest::newRow(name) << length << rect << limits << pane << frame << lines;
        };
        constexpr double nan = std::numeric_limits<double>::quiet_NaN();
        // A source 20 high starts at size 18: 9 points a character, lines of 22.
        row("shorter than its source", 5, {50, 40, 100, 20}, {100}, {50, 40, 100, 26}, 1);
        row("grows to fit one line", 20, {50, 40, 100, 20}, {100}, {50, 40, 188, 26}, 1);
        row("grows to at most 220 ...", 40, {50, 40, 60, 20}, {100}, {50, 40, 220, 48}, 2);
        row("... or 2.25 times its source", 60, {10, 40, 120, 20}, {100}, {10, 40, 270, 45}, 2);
        row("moved left to end 4 points inside", 20, {440, 40, 50, 20}, {100}, {308, 40, 188, 26}, 1);
        row("wider than the pane", 20, {-20, 40, 600, 20}, {100}, {4, 40, 492, 26}, 1);
        row("begins left of the usable area", 20, {0, 40, 100, 20}, {100}, {4, 40, 188, 26}, 1);
        row("the limit lies close below", 40, {50, 40, 60, 20}, {70}, {50, 40, 220, 20}, 1);
        row("the limit lies above the bottom edge", 5, {50, 40, 100, 20}, {30}, {50, 40, 100, 20}, 1);
        row("the limit lies below the pane", 5, {50, 275, 100, 20}, {900}, {50, 275, 100, 25}, 1);
        row("ends before its neighbour, at a smaller size", 12, {50, 40, 60, 20}, {100, 160}, {50, 40, 110, 25}, 1);
        row("... or on two lines", 20, {50, 40, 60, 20}, {100, 160}, {50, 40, 110, 48}, 2);
        row("passes its limit where it would be cut off", 20, {50, 40, 60, 20}, {62, 120}, {50, 40, 188, 22}, 1);
        row("a pane without usable area", 5, {0, 0, 8, 20}, {100}, {0, 0, 8, 52}, 4, {0, 0, 8, 300});
        row("a limit that is no number", 5, {50, 40, 100, 20}, {nan}, {50, 40, 100, 26}, 1);
    }
    void frames()
    {
        const auto [length, rect, limits, pane] = fetched<int, QRectF, OverlayLimits, QRectF>();
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

    void specksGetNoOverlay()
    {
        constexpr double nan = std::numeric_limits<double>::quiet_NaN();
        constexpr double infinity = std::numeric_limits<double>::infinity();
        FixedPitchMeasurer measurer;
        for (const QRectF &rect : {QRectF(10, 10, 4, 20), QRectF(10, 10, 20, 4), QRectF(), QRectF(10, 10, nan, 20),
                                   QRectF(10, 10, 20, infinity)})
            QVERIFY(!layOutOverlay(measurer, u"text"_s, {100}, rect, QRectF(0, 0, 500, 300), {}));
    }
};

static const TestClass<OverlayLayoutTest> overlayLayoutTest;
#include "OverlayLayoutTest.moc"
