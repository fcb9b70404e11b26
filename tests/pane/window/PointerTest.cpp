#include "ClickRecognizer.h"
#include "Columns.h"
#include "ManualScheduler.h"
#include "TestProgram.h"
#include "UserMoveTracker.h"
#include "WindowDrag.h"

#include <QTest>

using namespace lucentra;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

/// One press of the button and what became of it.
struct Gesture
{
    int time = 0; ///< of the press, milliseconds
    QPointF at;
    QPointF pointerTravel;
    QPointF windowTravel;
};

constexpr ClickRecognizer::PairLimits limits{400ms, 5};

/// A window on a screen, and the pointer's button.
struct Desk
{
    bool isButtonDown = false;
    QRect frame{100, 100, 480, 280};
    int reports = 0;
    bool isTaken = false;
    std::chrono::milliseconds sinceRelease{};
    ManualScheduler scheduler;
    UserMoveTracker tracker{scheduler,
                            {[this] { return isButtonDown; }, [this] { return frame; }},
                            {.began = [this] { isTaken = true; },
                             .unchanged = [this] { isTaken = false; },
                             .moved =
                                 [this](std::chrono::milliseconds ago) {
                                     ++reports;
                                     isTaken = false;
                                     sinceRelease = ago;
                                 }}};

    void moveTo(QPoint corner)
    {
        frame.moveTopLeft(corner);
        tracker.frameChanged();
    }

    /// "x,y" moves the window, "+ms" waits; the other steps are named by what happens.
    void perform(const QString &steps)
    {
        for (const QString &step : steps.split(u' ')) {
            if (step.startsWith(u'+'))
                scheduler.advance(std::chrono::milliseconds(step.toInt()));
            else if (step.contains(u','))
                moveTo({step.section(u',', 0, 0).toInt(), step.section(u',', 1).toInt()});
            else if (step == u"press" || step == u"release")
                isButtonDown = step == u"press";
            else if (step == u"grabbed")
                tracker.grabbed();
            else if (step == u"held" || step == u"let-go")
                tracker.held(step == u"held");
            else
                tracker.windowHidden();
        }
    }
};

} // namespace

class PointerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void clicksAndDrags_data()
    {
        // clicks: 0: no click
        const auto row = columns<QList<Gesture>, QList<int>>("gestures", "clicks");
        row("four quick clicks are two pairs", {{0}, {150}, {300}, {450}}, {1, 2, 1, 2});
        row("two slow clicks", {{0}, {401}}, {1, 1});
        row("the second click just in time", {{0}, {400}}, {1, 2});
        row("two quick clicks far apart", {{0}, {100, {6, 0}}}, {1, 1});
        row("a third click after a slow second", {{0}, {500}, {600}}, {1, 1, 2});
        row("unrest of the hand stays a click", {{0, {}, {5.6, 5.6}}, {100}}, {1, 2});
        row("eight points are a drag", {{0, {}, {8, 0}}}, {0});
        row("eight points aslant are a drag", {{0, {}, {5.7, -5.7}}}, {0});
        row("the window has moved beneath a resting pointer", {{0, {}, {}, {0, 2}}}, {0});
        row("the window has hardly moved", {{0, {}, {}, {1.2, 1.2}}}, {1});
        row("a drag is no first click of a pair", {{0, {}, {20, 0}}, {100}}, {0, 1});
        row("a click, a drag, a click", {{0}, {100, {}, {9, 0}}, {200}}, {1, 0, 1});
    }
    void clicksAndDrags()
    {
        const auto [gestures, clicks] = fetched<QList<Gesture>, QList<int>>();
        ClickRecognizer recognizer;
        QList<int> seen;
        for (const Gesture &gesture : gestures) {
            recognizer.press(gesture.at, {}, std::chrono::milliseconds(gesture.time), limits);
            seen.append(recognizer.release(gesture.at + gesture.pointerTravel, gesture.windowTravel).value_or(0));
        }
        QCOMPARE(seen, clicks);
    }

    void dragIsToldOnceAndEndsThePress()
    {
        ClickRecognizer recognizer;
        recognizer.press({10, 10}, {}, 0ms, limits);
        QVERIFY(!recognizer.move({17, 10}));
        QCOMPARE(recognizer.move({18, 10}), QPointF(10, 10));
        QVERIFY(!recognizer.move({40, 10}));
        // A window manager that moves the window for us gives the release back at the place of the press.
        QVERIFY(!recognizer.release({10, 10}, {}));
    }

    void movesAreReportedOnceAfterTheRelease_data()
    {
        // isTaken: by the user, after these steps
        const auto row = columns<QString, bool, QString, int>("steps", "isTaken", "end", "reports");
        row("by its body, held still, with a last step after the release",
            u"press grabbed 101,100 +20 102,100 +10000"_s, true, u"release +30 150,100 +1000"_s, 1);
        row("back to where it began, as Escape does", u"press grabbed 300,300 +200 100,100 release"_s, true, u"+1000"_s,
            0);
        // With a modifier key, on the window: the toolkit hears of nothing but the moves.
        row("by the window manager", u"press held 110,100 +100"_s, true, u"release let-go +10 120,100 +1000"_s, 1);
        row("by one that reports it after the release", u"press held +100"_s, true, u"release let-go +10 120,100 +1000"_s,
            1);
        row("by its keys", u"held 110,100 +1000 120,100 +1000"_s, true, u"let-go +1000"_s, 1);
        row("a zoom, however slow the answer", u"grabbed +400 0,0"_s, true, u"+1000"_s, 1);
        row("hidden in the middle of it", u"press grabbed 300,300 hidden"_s, false, u"release +1000"_s, 0);
    }
    void movesAreReportedOnceAfterTheRelease()
    {
        const auto [steps, isTaken, end] = fetched<QString, bool, QString>();
        Desk desk;
        desk.tracker.windowShown();
        desk.perform(steps);
        QTEST(desk.isTaken, "isTaken");
        QCOMPARE(desk.reports, 0);
        desk.perform(end);
        QTEST(desk.reports, "reports");
        QVERIFY(!desk.isTaken && desk.scheduler.isIdle());
        QVERIFY(!desk.reports || !steps.startsWith(u"press"_s) ||
                (desk.sinceRelease > 0ms && desk.sinceRelease <= 120ms));
    }

    void changesThatNobodyAskedFor()
    {
        Desk desk;
        desk.isButtonDown = true; // the menu entry that shows the window is still pressed
        desk.tracker.held(true);
        desk.tracker.windowShown();
        desk.moveTo({0, 24}); // the window manager places it
        desk.scheduler.advance(200ms);
        desk.isButtonDown = false;
        desk.tracker.held(false);
        desk.scheduler.advance(1s);
        desk.moveTo({1000, 24});  // a display has gone
        desk.isButtonDown = true; // somewhere else on the screen
        desk.moveTo({1010, 24});
        desk.isButtonDown = false;
        desk.scheduler.advance(10s);
        desk.tracker.held(true); // a click that moves nothing, and a change long after it
        desk.tracker.held(false);
        desk.scheduler.advance(1s);
        desk.moveTo({1020, 24});
        desk.scheduler.advance(1s);
        QCOMPARE(desk.reports, 0);
        QVERIFY(desk.scheduler.isIdle());
    }

    void frameUnderTheHand_data()
    {
        const auto row = columns<Qt::Edges, QPoint, QRect>("edges", "travel", "frame");
        row("body", {}, QPoint(-7, 9), QRect(93, 109, 480, 280));
        row("right edge ignores up and down", Qt::Edges(Qt::RightEdge), QPoint(10, 50), QRect(100, 100, 490, 280));
        row("left edge", Qt::Edges(Qt::LeftEdge), QPoint(10, 0), QRect(110, 100, 470, 280));
        row("left edge past the smallest size keeps the right one", Qt::Edges(Qt::LeftEdge), QPoint(400, 0),
            QRect(260, 100, 320, 280));
        row("lower right corner past the smallest size", (Qt::RightEdge | Qt::BottomEdge), QPoint(-900, -900),
            QRect(100, 100, 320, 100));
        row("upper left corner past the smallest size", (Qt::LeftEdge | Qt::TopEdge), QPoint(900, 900),
            QRect(260, 280, 320, 100));
    }
    void frameUnderTheHand()
    {
        const auto [edges, travel] = fetched<Qt::Edges, QPoint>();
        const WindowDrag drag{{100, 100, 480, 280}, {500, 300}, edges};
        QTEST(drag.frameFor(QPoint(500, 300) + travel, {320, 100}), "frame");
    }
};

static const TestClass<PointerTest> pointerTest;
#include "PointerTest.moc"
