#include "BackdropRenewal.h"

#include "MainQueue.h"
#include "ManualScheduler.h"
#include "ScreenCapture.h"
#include "ScreenChangeMonitor.h"
#include "TestTexts.h"

#include <QTest>
#include <QThreadPool>

#include <atomic>

using namespace lucentra;
using namespace std::chrono_literals;

namespace {

class CountingCapture : public ScreenCapture
{
public:
    std::atomic<int> captures = 0;
    QRectF asked;

    bool isGranted() const override { return true; }
    Result<CaptureSurroundings> surroundings(quint32) override
    {
        return CaptureSurroundings{.paneWindow = QRectF(100, 100, 480, 280), .displays = {{0, 0, 1920, 1080}}};
    }
    Result<QImage> capture(const QRectF &area) override
    {
        ++captures;
        asked = area;
        QImage image(area.size().toSize(), QImage::Format_RGB32);
        image.fill(Qt::gray);
        return image;
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
    void aBusyScreenCostsTenPicturesASecond()
    {
        CountingCapture capture;
        HandMonitor monitor;
        BackdropRenewal renewal(pane(), capture, monitor, m_texts.manager, m_worker, m_queue, m_clock);
        renewal.start();
        for (int i = 0; i < 100; ++i) { // a second of changes and moves
            monitor.changed();
            renewal.paneMoved();
            deliver();
            m_clock.advance(10ms);
        }
        QVERIFY2(capture.captures >= 9 && capture.captures <= 11, qPrintable(QString::number(capture.captures)));
        QCOMPARE(m_shown.size(), QSize(480, 280)); // the whole pane, without the inset
    }

    void withoutChangesThereIsNoWork()
    {
        CountingCapture capture;
        HandMonitor monitor;
        BackdropRenewal renewal(pane(), capture, monitor, m_texts.manager, m_worker, m_queue, m_clock);
        renewal.start();
        deliver();
        m_clock.advance(10s);
        QCOMPARE(capture.captures, 1);
        QCOMPARE(monitor.rearmed, 1);
        QVERIFY(m_clock.isIdle());
        monitor.changed();
        deliver();
        m_clock.advance(10s);
        QCOMPARE(capture.captures, 2);
    }

    void aHiddenPaneTakesNone()
    {
        CountingCapture capture;
        HandMonitor monitor;
        BackdropRenewal renewal(pane(), capture, monitor, m_texts.manager, m_worker, m_queue, m_clock);
        renewal.start();
        renewal.stop();
        m_shown = QImage();
        deliver(); // the picture under way is no longer wanted
        QVERIFY(m_shown.isNull());
        m_clock.advance(10s);
        renewal.paneMoved();
        QCOMPARE(capture.captures, 1);
        QVERIFY(monitor.area.isEmpty());
        renewal.start();
        deliver();
        QCOMPARE(capture.captures, 2);
    }

    void anOverhangingPaneShowsWhatTheDisplayShows()
    {
        m_display = {200, 180, 300, 900}; // the pane reaches over its left, its right and its upper edge
        CountingCapture capture;
        HandMonitor monitor;
        BackdropRenewal renewal(pane(), capture, monitor, m_texts.manager, m_worker, m_queue, m_clock);
        renewal.start();
        deliver();
        QCOMPARE(capture.asked, QRectF(200, 180, 300, 200));
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

private:
    BackdropRenewal::Pane pane()
    {
        return {.area =
                    [] {
                        return GlassArea{{100, 100, 480, 280}, {100, 100, 480, 280}, 1};
                    },
                .display = [this] { return m_display; },
                .showBeneath = [this](const QImage &image) { m_shown = image; }};
    }

    /// Waits for a picture under way and delivers it.
    void deliver()
    {
        m_worker.waitForDone();
        m_queue.drain();
    }

    TestTexts m_texts;
    QThreadPool m_worker;
    MainQueue m_queue;
    ManualScheduler m_clock;
    QImage m_shown;
    QRectF m_display{0, 0, 1920, 1080};
};

QTEST_GUILESS_MAIN(BackdropRenewalTest)
#include "BackdropRenewalTest.moc"
