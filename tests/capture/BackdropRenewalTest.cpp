#include "BackdropRenewal.h"

#include "MainQueue.h"
#include "ManualScheduler.h"
#include "ScreenCaptureService.h"
#include "ScreenChangeMonitor.h"
#include "TestTexts.h"

#include <QTest>

using namespace lucentra;
using namespace std::chrono_literals;

namespace {

class CountingCapture : public ScreenCaptureService
{
public:
    int screenshots = 0;
    StreamConfiguration asked;

    void shareableContent(bool, bool, std::function<void(Result<ShareableContent>)> completion) override
    {
        completion(ShareableContent{.windows = {{1, {100, 100, 480, 280}}}, .displays = {{1, {0, 0, 1920, 1080}}}});
    }
    double pointPixelScale(const ContentFilter &) const override { return 1; }
    void screenshot(const ContentFilter &, const StreamConfiguration &configuration,
                    std::function<void(Result<QImage>)> completion) override
    {
        ++screenshots;
        asked = configuration;
        QImage image(configuration.width, configuration.height, QImage::Format_RGB32);
        image.fill(Qt::gray);
        completion(image);
    }
};

class HandMonitor : public ScreenChangeMonitor
{
public:
    QRectF area;
    int rearmed = 0;
    std::function<void()> changed;

    void watch(const QRectF &newArea, std::function<void()> newChanged) override
    {
        area = newArea;
        changed = std::move(newChanged);
    }
    void rearm() override { ++rearmed; }
};

} // namespace

class BackdropRenewalTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aBusyScreenCostsTenPicturesASecond();
    void withoutChangesThereIsNoWork();
    void aHiddenPaneTakesNone();
    void anOverhangingPaneShowsWhatTheDisplayShows();

private:
    BackdropRenewal::Pane pane()
    {
        return {.area =
                    [] {
                        return GlassArea{{100, 700, 480, 280}, {100, 700, 480, 280}, 1};
                    },
                .display = [this] { return m_display; },
                .screenRect = [] { return QRectF(100, 100, 480, 280); },
                .showBeneath = [this](const QImage &image) { m_shown = image; }};
    }

    TestTexts m_texts;
    MainQueue m_queue;
    ManualScheduler m_clock;
    QImage m_shown;
    QRectF m_display{0, 0, 1920, 1080};
};

void BackdropRenewalTest::aBusyScreenCostsTenPicturesASecond()
{
    CountingCapture capture;
    HandMonitor monitor;
    BackdropRenewal renewal(pane(), capture, monitor, m_texts.manager, m_queue, m_clock);
    renewal.start();
    for (int i = 0; i < 100; ++i) { // a second of changes and moves
        monitor.changed();
        renewal.paneMoved();
        m_queue.drain();
        m_clock.advance(10ms);
    }
    QVERIFY2(capture.screenshots >= 9 && capture.screenshots <= 11, qPrintable(QString::number(capture.screenshots)));
    QCOMPARE(m_shown.size(), QSize(480, 280)); // the whole pane, without the inset
}

void BackdropRenewalTest::withoutChangesThereIsNoWork()
{
    CountingCapture capture;
    HandMonitor monitor;
    BackdropRenewal renewal(pane(), capture, monitor, m_texts.manager, m_queue, m_clock);
    renewal.start();
    m_queue.drain();
    m_clock.advance(10s);
    QCOMPARE(capture.screenshots, 1);
    QCOMPARE(monitor.rearmed, 1);
    QVERIFY(m_clock.isIdle());
    monitor.changed();
    m_queue.drain();
    m_clock.advance(10s);
    QCOMPARE(capture.screenshots, 2);
}

void BackdropRenewalTest::aHiddenPaneTakesNone()
{
    CountingCapture capture;
    HandMonitor monitor;
    BackdropRenewal renewal(pane(), capture, monitor, m_texts.manager, m_queue, m_clock);
    renewal.start();
    renewal.stop();
    m_shown = QImage();
    m_queue.drain(); // the picture under way is no longer wanted
    QVERIFY(m_shown.isNull());
    m_clock.advance(10s);
    renewal.paneMoved();
    QCOMPARE(capture.screenshots, 1);
    QVERIFY(monitor.area.isEmpty());
    renewal.start();
    QCOMPARE(capture.screenshots, 2);
}

void BackdropRenewalTest::anOverhangingPaneShowsWhatTheDisplayShows()
{
    m_display = {200, 0, 300, 900}; // y up: the pane reaches over its left, its right and its upper edge
    CountingCapture capture;
    HandMonitor monitor;
    BackdropRenewal renewal(pane(), capture, monitor, m_texts.manager, m_queue, m_clock);
    renewal.start();
    m_queue.drain();
    QCOMPARE(QSize(capture.asked.width, capture.asked.height), QSize(300, 200));
    QCOMPARE(m_shown.size(), QSize(480, 280));
    QRect filled;
    for (int y = 0; y < m_shown.height(); ++y) {
        for (int x = 0; x < m_shown.width(); ++x) {
            if (qAlpha(m_shown.pixel(x, y)) > 0)
                filled |= QRect(x, y, 1, 1);
        }
    }
    QCOMPARE(filled, QRect(100, 80, 300, 200));
}

QTEST_GUILESS_MAIN(BackdropRenewalTest)
#include "BackdropRenewalTest.moc"
