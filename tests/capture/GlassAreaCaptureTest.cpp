#include "GlassAreaCapture.h"
#include "Columns.h"
#include "TestProgram.h"

#include "LocalizationManager.h"
#include "TestTexts.h"

#include <QTest>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

constexpr quint32 paneNumber = 42;

/// Two displays side by side, the second one left of the origin.
CaptureSurroundings surroundingsOf(const ScreenRect &paneFrame)
{
    return {.paneWindow = paneFrame, .displays = {{0, 0, 1920, 1080}, {-1280, 0, 1280, 1024}}};
}

/// The pane's area when it fills its window.
GlassArea filling(const ScreenRect &window)
{
    return {.glass = window, .windowFrame = window, .windowNumber = paneNumber};
}

class PlayedCapture : public ScreenCapture
{
public:
    Result<CaptureSurroundings> answer;
    Result<QImage> image;

    bool isGranted() const override { return true; }
    Result<CaptureSurroundings> surroundings(quint32 paneWindow) override
    {
        return paneWindow == paneNumber ? answer : CaptureSurroundings();
    }
    Result<QImage> capture(const ScreenRect &) override { return image; }
};

} // namespace

class GlassAreaCaptureTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theAreaMustLieWholeOnOneDisplay_data()
    {
        // code: 0: captured
        const auto row = columns<ScreenRect, int, ScreenRect>("pane", "code", "captured");
        row("inside", ScreenRect(100, 40, 480, 280), 0, ScreenRect(102, 42, 476, 276));
        row("on the display left of the origin", ScreenRect(-1180, 40, 480, 280), 0, ScreenRect(-1178, 42, 476, 276));
        row("two points over the edge: the inset is cut", ScreenRect(1442, 40, 480, 280), 0,
            ScreenRect(1444, 42, 476, 276));
        row("less than a point outside is cropped", ScreenRect(1442.5, 40, 480, 280), 0,
            ScreenRect(1444.5, 42, 475.5, 276));
        row("a point outside", ScreenRect(1443, 40, 480, 280), -3, {});
        row("astride two displays", ScreenRect(-200, 40, 480, 280), -3, {});
        row("centre above every display", ScreenRect(100, -400, 480, 280), -2, {});
        row("centre on the far edge is outside", ScreenRect(1680, 40, 480, 280), -2, {});
    }
    void theAreaMustLieWholeOnOneDisplay()
    {
        const auto [pane, code] = fetched<ScreenRect, int>();
        const auto plan = planGlassCapture(surroundingsOf(pane), filling(pane), m_texts.manager);
        QCOMPARE(plan ? 0 : plan.error().code, code);
        if (plan)
            QTEST(*plan, "captured");
        else
            QCOMPARE(plan.error().domain, u"ScreenCapture"_s);
    }

    void aPaneInsideItsWindowIsFoundByItsDistanceFromTheWindowsCorner()
    {
        // A title bar of 28 points above the pane and a border of 3 around it. The toolkit takes the window to be
        // elsewhere than the window system does, which counts.
        const GlassArea area{
            .glass = {203, 328, 480, 280}, .windowFrame = {200, 300, 486, 311}, .windowNumber = paneNumber};
        const auto plan = planGlassCapture(surroundingsOf({200, 469, 486, 311}), area, m_texts.manager);
        QVERIFY(plan);
        QCOMPARE(*plan, ScreenRect(205, 499, 476, 276));
    }

    void failuresArePassedOn_data()
    {
        const Failure theirs{.domain = u"X11"_s, .code = 5, .description = u"gone"_s};
        const auto row = columns<Result<CaptureSurroundings>, Result<QImage>, int>("surroundings", "image", "code");
        const Result<CaptureSurroundings> surroundings = surroundingsOf({100, 40, 480, 280});
        const Result<QImage> image = QImage(952, 552, QImage::Format_RGB32);
        row("the window system is gone", Result<CaptureSurroundings>(tl::unexpected(theirs)), image, 5);
        row("no such window", Result<CaptureSurroundings>(CaptureSurroundings()), image, -1);
        row("the capture fails", surroundings, Result<QImage>(tl::unexpected(theirs)), 5);
        row("neither image nor error", surroundings, Result<QImage>(QImage()), -4);
        row("an image", surroundings, image, 0);
    }
    void failuresArePassedOn()
    {
        const auto [surroundings, image] = fetched<Result<CaptureSurroundings>, Result<QImage>>();
        PlayedCapture capture;
        capture.answer = surroundings;
        capture.image = image;
        const auto result = captureGlassArea(capture, filling({100, 40, 480, 280}), m_texts.manager);
        QTEST(result ? 0 : result.error().code, "code");
    }

private:
    TestTexts m_texts;
};

static const TestClass<GlassAreaCaptureTest> glassAreaCaptureTest;
#include "GlassAreaCaptureTest.moc"
