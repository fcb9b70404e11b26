#include "PaneFixture.h"
#include "TestProgram.h"
#include "VirtualScreen.h"
#include "WindowButton.h"

#include "X11PaneWindowHints.h"

#include <QApplication>
#include <QProcess>
#include <QTest>
#include <QWindow>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

QString output(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput());
}

/// The pane as the program wires it to an X server.
struct RealPane : PaneFixture
{
    RealPane()
        : window(TransparentWindow::Services{hints, settings, texts, scheduler})
        , view(new GlassView({settings, texts, scheduler}, {.reduceMotion = true}))
    {
        window.setContentView(view);
        window.onUserMoved = [this](std::chrono::milliseconds) { ++moves; };
        window.makeKeyAndOrderFront();
    }

    QString property(const QString &name)
    {
        return output(u"xprop"_s, {u"-id"_s, QString::number(window.winId()), name});
    }

    X11PaneWindowHints hints;
    EventLoopScheduler scheduler;
    TransparentWindow window;
    GlassView *view;
    int moves = 0;
};

} // namespace

/// Against a real X server with a window manager.
class PaneWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hintsSurviveHidingAndShowing()
    {
        RealPane pane;
        pane.settings.write(settings::showInDock, false);
        const QPoint place = pane.window.pos();
        for (int showing = 0; showing < 2; ++showing) {
            pane.window.makeKeyAndOrderFront();
            QTRY_VERIFY(pane.property(u"_NET_WM_STATE"_s).contains(u"_NET_WM_STATE_ABOVE"_s));
            QTRY_VERIFY(pane.property(u"_NET_WM_DESKTOP"_s).contains(u"4294967295"_s));
            if (showing == 0)
                pane.window.updatePresence();
            QTRY_VERIFY(pane.property(u"_NET_WM_STATE"_s).contains(u"SKIP_TASKBAR"_s));
            QTRY_VERIFY(pane.property(u"_NET_WM_STATE"_s).contains(u"SKIP_PAGER"_s));
            QTRY_COMPARE(pane.window.pos(), place);
            pane.window.orderOut();
            // A window manager that hasn't heard of it yet would take the hints away after the next showing.
            QTRY_VERIFY(!pane.property(u"WM_STATE"_s).contains(u"Normal"_s));
        }
        pane.settings.write(settings::showInDock, true);
        pane.window.makeKeyAndOrderFront();
        QTRY_VERIFY(pane.window.isShown());
        pane.window.updatePresence();
        QTRY_VERIFY(!pane.property(u"_NET_WM_STATE"_s).contains(u"SKIP_TASKBAR"_s));
        QTest::qWait(300);
        QCOMPARE(pane.moves, 0);
    }

    void zoomedOrMinimizedAndBack()
    {
        RealPane pane;
        QTRY_VERIFY(pane.window.isShown());
        const QRect before = pane.window.geometry();
        pane.window.standardButtons()[2]->click();
        QTRY_VERIFY(pane.window.width() > 1000);
        QTRY_COMPARE(pane.moves, 1);
        pane.window.standardButtons()[2]->click();
        QTRY_COMPARE(pane.window.geometry(), before);
        QTRY_COMPARE(pane.moves, 2);
        pane.window.standardButtons()[1]->click();
        QTRY_VERIFY(!pane.window.isOnScreen());
        pane.window.makeKeyAndOrderFront();
        QTRY_VERIFY(pane.window.isOnScreen());
    }
};

static int runOnScreen(int argc, char **argv)
{
    VirtualScreen screen;
    if (!screen.use())
        return 1;
    qputenv("QT_QPA_PLATFORM", "xcb");
    QProcess windowManager;
    windowManager.setStandardErrorFile(QProcess::nullDevice());
    windowManager.start(u"openbox"_s, {});
    windowManager.waitForStarted();
    int result = 0;
    {
        QApplication application(argc, argv);
        // Windows that are shown before there is a window manager would be shown anew by it.
        if (!QTest::qWaitFor(
                [] {
                    return output(u"xprop"_s, {u"-root"_s, u"_NET_SUPPORTING_WM_CHECK"_s}).contains(u"window id"_s);
                },
                30000))
            return 1;
        PaneWindowTest test;
        result = QTest::qExec(&test, argc, argv);
    }
    windowManager.terminate();
    windowManager.waitForFinished();
    return result;
}

static const TestClass<PaneWindowTest> paneWindowTest(runOnScreen);
#include "PaneWindowTest.moc"
