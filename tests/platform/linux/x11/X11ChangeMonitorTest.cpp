#include "X11ChangeMonitor.h"
#include "TestClient.h"
#include "TestProgram.h"
#include "VirtualScreen.h"

#include <QTest>

#include <optional>

using namespace lucentra;

class X11ChangeMonitorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_screen.emplace();
        QVERIFY2(m_screen->use(), "Xvfb didn't start");
    }

    void init()
    {
        m_us.emplace();
        m_other.emplace();
        m_monitor.emplace(m_us->range(), [](const QRectF &area) { return area.toRect(); });
    }

    void cleanup() { m_monitor.reset(); }

    void whatOthersDrawBeneathIsReportedOnce()
    {
        const xcb_window_t window = m_other->addWindow({100, 100, 300, 200}, 0xff0000);
        watch();
        settle();
        for (int i = 0; i < 50; ++i)
            m_other->fill(window, QRgb(i));
        QVERIFY(reported(1));
        m_other->fill(window, 0x0000ff); // the picture that was taken upon the report may lack it
        QVERIFY(reported(0));
        m_monitor->rearm();
        QVERIFY(reported(1));
        m_other->fill(window, 0xff00ff);
        QVERIFY(reported(0));
        watch(); // the pane has moved
        m_other->fill(window, 0x00ff00);
        QVERIFY(reported(1));
    }

    void whatIsElsewhereOrOursIsNoChange()
    {
        const xcb_window_t elsewhere = m_other->addWindow({600, 400, 100, 100}, 0xff0000);
        const xcb_window_t pane = m_us->addWindow({150, 150, 100, 100}, 0x0000ff);
        watch();
        reported(0);
        m_other->fill(elsewhere, 0x00ff00);
        m_us->fill(pane, 0x00ff00);
        QVERIFY(reported(0));
        m_monitor->watch({}, [this](const QRect &) { ++m_reports; }); // no area: the watch ends
        m_other->addWindow({100, 100, 300, 200}, 0xff0000);
        QVERIFY(reported(0));
    }

    void windowsThatComeAndGoAndAnotherDesktopPictureAreChanges()
    {
        watch();
        const xcb_window_t window = m_other->addWindow({100, 100, 300, 200}, 0xff0000);
        QVERIFY(reported(1));
        settle();
        m_other->destroy(window);
        QVERIFY(reported(1));
        settle();
        m_other->forgetDesktopPicture(); // it names another one in any case
        QVERIFY(reported(1));
    }

private:
    void watch()
    {
        m_monitor->watch({150, 150, 100, 100}, [this](const QRect &) { ++m_reports; });
    }

    /// Whether there were so many reports, once they and a surplus had time to arrive; begins to count anew.
    bool reported(int expected)
    {
        (void)QTest::qWaitFor([&] { return m_reports >= expected; });
        QTest::qWait(100);
        return std::exchange(m_reports, 0) == expected;
    }

    /// Takes up the changes that are still on their way.
    void settle()
    {
        for (int i = 0; i < 10; ++i) {
            m_reports = 0;
            m_monitor->rearm();
            if (reported(0))
                return;
        }
        QFAIL("reports without a change");
    }

    std::optional<VirtualScreen> m_screen;
    std::optional<TestClient> m_us;
    std::optional<TestClient> m_other;
    std::optional<X11ChangeMonitor> m_monitor;
    int m_reports = 0;
};

static const TestClass<X11ChangeMonitorTest> x11ChangeMonitorTest;
#include "X11ChangeMonitorTest.moc"
