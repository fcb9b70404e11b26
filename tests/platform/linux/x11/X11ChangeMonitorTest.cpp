#include "X11ChangeMonitor.h"
#include "TestClient.h"
#include "VirtualScreen.h"

#include <QTest>

#include <optional>

using namespace lucentra;

class X11ChangeMonitorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void whatOthersDrawBeneathIsReportedOnce();
    void whatIsElsewhereOrOursIsNoChange();
    void windowsThatComeMoveAndGoAreChanges();
    void anotherDesktopPictureIsAChange();
    void anEmptyAreaEndsTheWatch();

private:
    bool reported(int expected);
    void settle(X11ChangeMonitor &monitor);

    std::optional<VirtualScreen> m_screen;
    int m_reports = 0;
};

void X11ChangeMonitorTest::initTestCase()
{
    m_screen.emplace();
    QVERIFY2(m_screen->isRunning(), "Xvfb didn't start");
    qputenv("DISPLAY", m_screen->display());
}

/// Whether there were so many reports, once they and a surplus had time to arrive; begins to count anew.
bool X11ChangeMonitorTest::reported(int expected)
{
    (void)QTest::qWaitFor([&] { return m_reports >= expected; });
    QTest::qWait(100);
    return std::exchange(m_reports, 0) == expected;
}

/// Takes up the changes that are still on their way.
void X11ChangeMonitorTest::settle(X11ChangeMonitor &monitor)
{
    for (int i = 0; i < 10; ++i) {
        m_reports = 0;
        monitor.rearm();
        if (reported(0))
            return;
    }
    QFAIL("reports without a change");
}

void X11ChangeMonitorTest::whatOthersDrawBeneathIsReportedOnce()
{
    TestClient us;
    TestClient other;
    const xcb_window_t window = other.addWindow({100, 100, 300, 200}, 0xff0000);
    X11ChangeMonitor monitor(us.range(), [](const QRectF &area) { return area.toRect(); });
    monitor.watch({150, 150, 100, 100}, [this] { ++m_reports; });
    settle(monitor);
    for (int i = 0; i < 50; ++i)
        other.fill(window, QRgb(i));
    QVERIFY(reported(1));
    settle(monitor);
    other.fill(window, 0x00ff00);
    QVERIFY(reported(1));
}

void X11ChangeMonitorTest::whatIsElsewhereOrOursIsNoChange()
{
    TestClient us;
    TestClient other;
    const xcb_window_t elsewhere = other.addWindow({600, 400, 100, 100}, 0xff0000);
    const xcb_window_t pane = us.addWindow({150, 150, 100, 100}, 0x0000ff);
    X11ChangeMonitor monitor(us.range(), [](const QRectF &area) { return area.toRect(); });
    monitor.watch({150, 150, 100, 100}, [this] { ++m_reports; });
    reported(0);
    other.fill(elsewhere, 0x00ff00);
    us.fill(pane, 0x00ff00);
    QVERIFY(reported(0));
}

void X11ChangeMonitorTest::windowsThatComeMoveAndGoAreChanges()
{
    TestClient us;
    TestClient other;
    X11ChangeMonitor monitor(us.range(), [](const QRectF &area) { return area.toRect(); });
    monitor.watch({150, 150, 100, 100}, [this] { ++m_reports; });
    const xcb_window_t window = other.addWindow({100, 100, 300, 200}, 0xff0000);
    QVERIFY(reported(1));
    settle(monitor);
    other.destroy(window);
    QVERIFY(reported(1));
}

void X11ChangeMonitorTest::anotherDesktopPictureIsAChange()
{
    TestClient us;
    TestClient desktop;
    X11ChangeMonitor monitor(us.range(), [](const QRectF &area) { return area.toRect(); });
    monitor.watch({150, 150, 100, 100}, [this] { ++m_reports; });
    reported(0);
    desktop.forgetDesktopPicture(); // it names another one in any case
    QVERIFY(reported(1));
}

void X11ChangeMonitorTest::anEmptyAreaEndsTheWatch()
{
    TestClient us;
    TestClient other;
    X11ChangeMonitor monitor(us.range(), [](const QRectF &area) { return area.toRect(); });
    monitor.watch({150, 150, 100, 100}, [this] { ++m_reports; });
    monitor.watch({}, [this] { ++m_reports; });
    other.addWindow({100, 100, 300, 200}, 0xff0000);
    QVERIFY(reported(0));
}

QTEST_GUILESS_MAIN(X11ChangeMonitorTest)
#include "X11ChangeMonitorTest.moc"
