#include "GlassAreaCapture.h"

#include "LocalizationManager.h"
#include "TestTexts.h"

#include <QTest>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

constexpr quint32 paneNumber = 42;
constexpr qint64 ourProcess = 1000;

/// Two displays side by side, the second one left of the origin.
ShareableContent content(const QRectF &paneFrame, bool listsUs = true)
{
    ShareableContent content{.windows = {{7, {0, 0, 1920, 1080}}, {paneNumber, paneFrame}},
                             .displays = {{1, {0, 0, 1920, 1080}}, {2, {-1280, 0, 1280, 1024}}}};
    content.applications.append(ShareableApplication{1});
    if (listsUs)
        content.applications.append(ShareableApplication{ourProcess});
    return content;
}

/// The pane's area when it fills its window; global, y up.
GlassArea filling(const QRectF &window)
{
    return {.glass = window, .windowFrame = window, .windowNumber = paneNumber};
}

class PlayedCapture : public ScreenCaptureService
{
public:
    Result<ShareableContent> answer;
    Result<QImage> image;
    StreamConfiguration asked;
    int screenshots = 0;

    void shareableContent(bool excludingDesktopWindows, bool onScreenWindowsOnly,
                          std::function<void(Result<ShareableContent>)> completion) override
    {
        QVERIFY(!excludingDesktopWindows && onScreenWindowsOnly);
        completion(answer);
    }
    double pointPixelScale(const ContentFilter &) const override { return 2; }
    void screenshot(const ContentFilter &, const StreamConfiguration &configuration,
                    std::function<void(Result<QImage>)> completion) override
    {
        asked = configuration;
        ++screenshots;
        completion(image);
    }
};

} // namespace

class GlassAreaCaptureTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theAreaMustLieWholeOnOneDisplay_data();
    void theAreaMustLieWholeOnOneDisplay();
    void aPaneInsideItsWindowIsFoundByItsDistanceFromTheTop();
    void ourOwnWindowsAreLeftOut();
    void theImageHasTheDisplaysPixels_data();
    void theImageHasTheDisplaysPixels();
    void failuresArePassedOn_data();
    void failuresArePassedOn();

private:
    TestTexts m_texts;
};

void GlassAreaCaptureTest::theAreaMustLieWholeOnOneDisplay_data()
{
    QTest::addColumn<QRectF>("pane");
    QTest::addColumn<int>("code"); // 0: captured
    QTest::addColumn<QRectF>("sourceRect");
    QTest::newRow("inside") << QRectF(100, 40, 480, 280) << 0 << QRectF(102, 42, 476, 276);
    QTest::newRow("on the display left of the origin") << QRectF(-1180, 40, 480, 280) << 0 << QRectF(102, 42, 476, 276);
    QTest::newRow("two points over the edge: the inset is cut")
        << QRectF(1442, 40, 480, 280) << 0 << QRectF(1444, 42, 476, 276);
    QTest::newRow("less than a point outside is cropped")
        << QRectF(1442.5, 40, 480, 280) << 0 << QRectF(1444.5, 42, 475.5, 276);
    QTest::newRow("a point outside") << QRectF(1443, 40, 480, 280) << -3 << QRectF();
    QTest::newRow("astride two displays") << QRectF(-200, 40, 480, 280) << -3 << QRectF();
    QTest::newRow("centre above every display") << QRectF(100, -400, 480, 280) << -2 << QRectF();
    QTest::newRow("centre on the far edge is outside") << QRectF(1680, 40, 480, 280) << -2 << QRectF();
}

void GlassAreaCaptureTest::theAreaMustLieWholeOnOneDisplay()
{
    QFETCH(QRectF, pane);
    QFETCH(int, code);
    const auto plan = planGlassCapture(content(pane), filling(pane), ourProcess, m_texts.manager);
    QCOMPARE(plan ? 0 : plan.error().code, code);
    if (plan)
        QTEST(plan->sourceRect, "sourceRect");
    else
        QCOMPARE(plan.error().domain, u"ScreenCapture"_s);
}

void GlassAreaCaptureTest::aPaneInsideItsWindowIsFoundByItsDistanceFromTheTop()
{
    // A title bar of 28 points above the pane and a border of 3 around it; y up in the program, down in the content.
    const GlassArea area{
        .glass = {203, 303, 480, 280}, .windowFrame = {200, 300, 486, 311}, .windowNumber = paneNumber};
    const auto plan = planGlassCapture(content({200, 469, 486, 311}), area, ourProcess, m_texts.manager);
    QVERIFY(plan);
    QCOMPARE(plan->sourceRect, QRectF(205, 499, 476, 276));
}

void GlassAreaCaptureTest::ourOwnWindowsAreLeftOut()
{
    const QRectF pane(100, 40, 480, 280);
    const auto listed = planGlassCapture(content(pane), filling(pane), ourProcess, m_texts.manager);
    QVERIFY(listed);
    QCOMPARE(listed->filter.excludedApplications, QList<ShareableApplication>{{ourProcess}});
    QVERIFY(listed->filter.excludedWindows.isEmpty());
    const auto unlisted = planGlassCapture(content(pane, false), filling(pane), ourProcess, m_texts.manager);
    QVERIFY(unlisted);
    QVERIFY(unlisted->filter.excludedApplications.isEmpty());
    QCOMPARE(unlisted->filter.excludedWindows.first().identifier, paneNumber);
    auto strange = filling(pane);
    strange.windowNumber = 43;
    QCOMPARE(planGlassCapture(content(pane), strange, ourProcess, m_texts.manager).error().code, -1);
}

void GlassAreaCaptureTest::theImageHasTheDisplaysPixels_data()
{
    QTest::addColumn<QRectF>("sourceRect");
    QTest::addColumn<double>("scale");
    QTest::addColumn<QSize>("pixels");
    QTest::newRow("ten points wide at two pixels a point") << QRectF(2, 2, 6, 26) << 2.0 << QSize(12, 52);
    QTest::newRow("a fraction of a pixel counts") << QRectF(0, 0, 475.5, 276) << 1.25 << QSize(595, 345);
    QTest::newRow("a display below one pixel a point") << QRectF(0, 0, 100, 50) << 0.5 << QSize(100, 50);
    QTest::newRow("nothing left") << QRectF(0, 0, 0, 0) << 1.0 << QSize(1, 1);
}

void GlassAreaCaptureTest::theImageHasTheDisplaysPixels()
{
    QFETCH(QRectF, sourceRect);
    QFETCH(double, scale);
    const auto configuration = glassCaptureConfiguration(sourceRect, scale);
    QTEST(QSize(configuration.width, configuration.height), "pixels");
    QCOMPARE(configuration.captureResolution, CaptureResolution::Best);
    QVERIFY(!configuration.showsCursor);
}

void GlassAreaCaptureTest::failuresArePassedOn_data()
{
    QTest::addColumn<bool>("hasContent");
    QTest::addColumn<bool>("listsPane");
    QTest::addColumn<bool>("hasScreenshot");
    QTest::addColumn<QSize>("image");
    QTest::addColumn<QString>("domain");
    QTest::addColumn<int>("code");
    QTest::newRow("the content query fails") << false << false << false << QSize() << u"X11"_s << 5;
    QTest::newRow("no window at all") << true << false << true << QSize(1, 1) << u"ScreenCapture"_s << -1;
    QTest::newRow("the screenshot fails") << true << true << false << QSize() << u"X11"_s << 5;
    QTest::newRow("neither image nor error") << true << true << true << QSize() << u"ScreenCapture"_s << -4;
    QTest::newRow("an image") << true << true << true << QSize(952, 552) << QString() << 0;
}

void GlassAreaCaptureTest::failuresArePassedOn()
{
    QFETCH(bool, hasContent);
    QFETCH(bool, listsPane);
    QFETCH(bool, hasScreenshot);
    QFETCH(QSize, image);
    QFETCH(QString, domain);
    QFETCH(int, code);
    const Failure theirs{.domain = u"X11"_s, .code = 5, .description = u"gone"_s};
    const QRectF pane(100, 40, 480, 280);
    PlayedCapture capture;
    if (hasContent)
        capture.answer = listsPane ? content(pane) : ShareableContent{};
    else
        capture.answer = tl::unexpected(theirs);
    if (hasScreenshot)
        capture.image = QImage(image, QImage::Format_RGB32);
    else
        capture.image = tl::unexpected(theirs);
    int completions = 0;
    captureGlassArea(capture, filling(pane), m_texts.manager, [&](const Result<QImage> &result) {
        ++completions;
        QCOMPARE(result ? QString() : result.error().domain, domain);
        QCOMPARE(result ? 0 : result.error().code, code);
    });
    QCOMPARE(completions, 1);
    if (capture.screenshots)
        QCOMPARE(QSize(capture.asked.width, capture.asked.height), QSize(952, 552));
}

QTEST_GUILESS_MAIN(GlassAreaCaptureTest)
#include "GlassAreaCaptureTest.moc"
