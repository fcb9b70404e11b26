#include "OverlayFit.h"
#include "FixedPitchMeasurer.h"

#include <QTest>

#include <limits>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// A measurer whose answers are broken in one place.
class BrokenMeasurer : public OverlayTextMeasurer
{
public:
    BrokenMeasurer(double lineHeight, double width, double boundingHeight)
        : m_line{lineHeight, width}
        , m_boundingHeight(boundingHeight)
    {
    }
    SingleLineMeasure measureSingleLine(const QString &, double) override { return m_line; }
    double boundingHeight(const QString &, double, double, double) override { return m_boundingHeight; }

private:
    const SingleLineMeasure m_line;
    const double m_boundingHeight;
};

} // namespace

class OverlayFitTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void automatic_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<double>("sourceHeight");
        QTest::addColumn<double>("width");
        QTest::addColumn<double>("maxHeight");
        QTest::addColumn<int>("lines");
        QTest::addColumn<double>("size");
        QTest::addColumn<double>("height");

        QTest::newRow("short in tall: nine tenths of the height") << 2 << 40.0 << 100.0 << 40.0 << 1 << 36.0 << 48.0;
        QTest::newRow("never above 48") << 2 << 200.0 << 100.0 << 300.0 << 1 << 48.0 << 200.0;
        QTest::newRow("never below 10") << 2 << 5.0 << 100.0 << 5.0 << 1 << 10.0 << 16.0;
        QTest::newRow("exactly as wide as there is room") << 10 << 20.0 << 90.0 << 20.0 << 1 << 18.0 << 26.0;
        QTest::newRow("a little too wide: one smaller line") << 20 << 20.0 << 160.0 << 100.0 << 1 << 16.0 << 24.0;
        QTest::newRow("one smaller line, though there is room for two")
            << 20 << 20.0 << 150.0 << 200.0 << 1 << 15.0 << 22.0;
        // 143 would need size 14.3, below 0.8 * 18; two lines at 18 are 44 high.
        QTest::newRow("too small for one line: two at full size") << 20 << 20.0 << 143.0 << 48.0 << 2 << 18.0 << 48.0;
        // Two lines need 2 * 1.2 * s + 4 <= 40: the first half point below is 15.
        QTest::newRow("two lines at the first half point that fits")
            << 20 << 20.0 << 100.0 << 40.0 << 2 << 15.0 << 40.0;
        // The starting size of 11.7 steps to 11.2, 10.7 and 10.2, never to 10.
        QTest::newRow("steps keep the start's fraction") << 100 << 13.0 << 130.0 << 56.0 << 4 << 10.2 << 53.0;
        // At 18, 13 characters a line need 8 lines; at 10, 24 a line need 5: cut off.
        QTest::newRow("nothing fits: least size, cut off") << 100 << 20.0 << 120.0 << 200.0 << 4 << 10.0 << 52.0;
        QTest::newRow("room for less than a line: one, as high as allowed")
            << 100 << 8.0 << 120.0 << 9.0 << 1 << 10.0 << 9.0;
        QTest::newRow("a limit below the source's height is lifted to it")
            << 100 << 30.0 << 120.0 << 10.0 << 2 << 10.0 << 30.0;
        QTest::newRow("no width at all") << 10 << 20.0 << -5.0 << 20.0 << 1 << 10.0 << 20.0;
        QTest::newRow("an empty text") << 0 << 20.0 << 100.0 << 20.0 << 1 << 18.0 << 26.0;
    }
    void automatic()
    {
        QFETCH(int, length);
        QFETCH(double, sourceHeight);
        QFETCH(double, width);
        QFETCH(double, maxHeight);
        FixedPitchMeasurer measurer;
        const OverlayFit fit =
            fitOverlayText(measurer, QString(length, u'x'), true, sourceHeight, width, maxHeight, 30 /* not read */);
        QTEST(fit.lines, "lines");
        QTEST(fit.fontSize, "size");
        QTEST(fit.height, "height");
    }

    void fixed_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<double>("stored");
        QTest::addColumn<double>("maxHeight");
        QTest::addColumn<int>("lines");
        QTest::addColumn<double>("size");
        QTest::addColumn<double>("height");

        // Sources are 20 high and 150 wide.
        QTest::newRow("one line") << 10 << 30.0 << 20.0 << 1 << 30.0 << 40.0;
        QTest::newRow("never stored") << 5 << 0.0 << 20.0 << 1 << 22.0 << 31.0;
        QTest::newRow("a stored size below the least") << 5 << 4.0 << 20.0 << 1 << 12.0 << 20.0;
        QTest::newRow("a stored size above the greatest") << 5 << 90.0 << 20.0 << 1 << 48.0 << 62.0;
        QTest::newRow("stored nonsense") << 5 << notANumber << 20.0 << 1 << 22.0 << 31.0;
        QTest::newRow("two lines that fit") << 20 << 30.0 << 100.0 << 2 << 30.0 << 76.0;
        QTest::newRow("six lines: four") << 60 << 30.0 << 500.0 << 4 << 30.0 << 148.0;
        QTest::newRow("six lines, room for three and a half") << 60 << 30.0 << 130.0 << 3 << 30.0 << 112.0;
        QTest::newRow("two lines, room for none: one, as high as allowed") << 20 << 30.0 << 25.0 << 1 << 30.0 << 25.0;
    }
    void fixed()
    {
        QFETCH(int, length);
        QFETCH(double, stored);
        QFETCH(double, maxHeight);
        FixedPitchMeasurer measurer;
        const OverlayFit fit = fitOverlayText(measurer, QString(length, u'x'), false, 20, 150, maxHeight, stored);
        QTEST(fit.lines, "lines");
        QTEST(fit.fontSize, "size");
        QTEST(fit.height, "height");
    }

    void brokenMeasuresCountAsOneLine_data()
    {
        QTest::addColumn<double>("lineHeight");
        QTest::addColumn<double>("width");
        QTest::addColumn<double>("boundingHeight");
        for (const double broken : {0.0, -1.0, notANumber, infinity})
            QTest::addRow("line height %f", broken) << broken << 500.0 << 40.0;
        for (const double broken : {notANumber, infinity}) {
            QTest::addRow("width %f", broken) << 24.0 << broken << 40.0;
            QTest::addRow("height of the lines %f", broken) << 24.0 << 500.0 << broken;
        }
    }
    void brokenMeasuresCountAsOneLine()
    {
        QFETCH(double, lineHeight);
        QFETCH(double, width);
        QFETCH(double, boundingHeight);
        BrokenMeasurer measurer(lineHeight, width, boundingHeight);
        QCOMPARE(fitOverlayText(measurer, u"text"_s, true, 20, 100, 80, 0), (OverlayFit{1, 18, 20}));
        QCOMPARE(fitOverlayText(measurer, u"text"_s, false, 20, 100, 80, 0), (OverlayFit{1, 22, 20}));
    }

    void searchEndsAtTheFirstSizeThatFits()
    {
        FixedPitchMeasurer measurer;
        fitOverlayText(measurer, QString(20, u'x'), true, 20, 100, 40, 0);
        QCOMPARE(measurer.layouts, 7); // 18, 17.5, ... 15
    }
};

QTEST_GUILESS_MAIN(OverlayFitTest)
#include "OverlayFitTest.moc"
