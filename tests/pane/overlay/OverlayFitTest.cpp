#include "OverlayFit.h"
#include "Columns.h"
#include "FixedPitchMeasurer.h"
#include "TestProgram.h"

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
    SingleLineMeasure line;
    double height = 0;

    SingleLineMeasure measureSingleLine(const QString &, double) override { return line; }
    double boundingHeight(const QString &, double, double, double) override { return height; }
};

} // namespace

class OverlayFitTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fits_data()
    {
        const auto row = columns<int, double, double, double, double, int, double, double>(
            "length", "sourceHeight", "width", "maxHeight", "stored", "lines", "size", "height");
        constexpr double automatic = -1;
        row("short in tall: nine tenths of the height", 2, 40, 100, 40, automatic, 1, 36, 48);
        row("never above 48", 2, 200, 100, 300, automatic, 1, 48, 200);
        row("never below 10", 2, 5, 100, 5, automatic, 1, 10, 16);
        row("exactly as wide as there is room", 10, 20, 90, 20, automatic, 1, 18, 26);
        row("a little too wide: one smaller line", 20, 20, 160, 100, automatic, 1, 16, 24);
        row("one smaller line, though there is room for two", 20, 20, 150, 200, automatic, 1, 15, 22);
        // 143 would need size 14.3, below 0.8 * 18; two lines at 18 are 44 high.
        row("too small for one line: two at full size", 20, 20, 143, 48, automatic, 2, 18, 48);
        // Two lines need 2 * 1.2 * s + 4 <= 40: the first half point below is 15.
        row("two lines at the first half point that fits", 20, 20, 100, 40, automatic, 2, 15, 40);
        // The starting size of 11.7 steps to 11.2, 10.7 and 10.2, never to 10.
        row("steps keep the start's fraction", 100, 13, 130, 56, automatic, 4, 10.2, 53);
        // At 18, 13 characters a line need 8 lines; at 10, 24 a line need 5: cut off.
        row("nothing fits: least size, cut off", 100, 20, 120, 200, automatic, 4, 10, 52);
        row("room for less than a line: one, as high as allowed", 100, 8, 120, 9, automatic, 1, 10, 9);
        row("a limit below the source's height is lifted to it", 100, 30, 120, 10, automatic, 2, 10, 30);
        row("no width at all", 10, 20, -5, 20, automatic, 1, 10, 20);
        row("an empty text", 0, 20, 100, 20, automatic, 1, 18, 26);
        row("fixed, one line", 10, 20, 150, 20, 30, 1, 30, 40);
        row("fixed, never stored", 5, 20, 150, 20, 0, 1, 22, 31);
        row("a stored size below the least", 5, 20, 150, 20, 4, 1, 12, 20);
        row("a stored size above the greatest", 5, 20, 150, 20, 90, 1, 48, 62);
        row("stored nonsense", 5, 20, 150, 20, notANumber, 1, 22, 31);
        row("fixed, two lines that fit", 20, 20, 150, 100, 30, 2, 30, 76);
        row("fixed, six lines: four", 60, 20, 150, 500, 30, 4, 30, 148);
        row("fixed, six lines, room for three and a half", 60, 20, 150, 130, 30, 3, 30, 112);
        row("fixed, two lines, room for none: one, as high as allowed", 20, 20, 150, 25, 30, 1, 30, 25);
    }
    void fits()
    {
        const auto [length, sourceHeight, width, maxHeight, stored] = fetched<int, double, double, double, double>();
        FixedPitchMeasurer measurer;
        const OverlayFit fit =
            fitOverlayText(measurer, QString(length, u'x'), stored == -1, sourceHeight, width, maxHeight, stored);
        QTEST(fit.lines, "lines");
        QTEST(fit.fontSize, "size");
        QTEST(fit.height, "height");
    }

    void brokenMeasuresCountAsOneLine()
    {
        const auto check = [](double lineHeight, double width, double boundingHeight) {
            BrokenMeasurer measurer;
            measurer.line = {lineHeight, width};
            measurer.height = boundingHeight;
            QCOMPARE(fitOverlayText(measurer, u"text"_s, true, 20, 100, 80, 0), (OverlayFit{1, 18, 20}));
            QCOMPARE(fitOverlayText(measurer, u"text"_s, false, 20, 100, 80, 0), (OverlayFit{1, 22, 20}));
        };
        for (const double broken : {0.0, -1.0, notANumber, infinity})
            check(broken, 500, 40);
        for (const double broken : {notANumber, infinity}) {
            check(24, broken, 40);
            check(24, 500, broken);
        }
    }
};

static const TestClass<OverlayFitTest> overlayFitTest;
#include "OverlayFitTest.moc"
