#include "ClickRecognizer.h"
#include "ManualScheduler.h"
#include "UserMoveTracker.h"
#include "WindowDrag.h"

#include <QTest>

using namespace lucentra;
using namespace std::chrono_literals;

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
};

} // namespace

class PointerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void clicksAndDrags_data()
    {
        QTest::addColumn<QList<Gesture>>("gestures");
        QTest::addColumn<QList<int>>("clicks"); ///< 0: no click

        QTest::newRow("four quick clicks are two pairs")
            << QList<Gesture>{{0}, {150}, {300}, {450}} << QList<int>{1, 2, 1, 2};
        QTest::newRow("two slow clicks") << QList<Gesture>{{0}, {401}} << QList<int>{1, 1};
        QTest::newRow("the second click just in time") << QList<Gesture>{{0}, {400}} << QList<int>{1, 2};
        QTest::newRow("two quick clicks far apart") << QList<Gesture>{{0}, {100, {6, 0}}} << QList<int>{1, 1};
        QTest::newRow("a third click after a slow second") << QList<Gesture>{{0}, {500}, {600}} << QList<int>{1, 1, 2};
        QTest::newRow("unrest of the hand stays a click")
            << QList<Gesture>{{0, {}, {5.6, 5.6}}, {100}} << QList<int>{1, 2};
        QTest::newRow("eight points are a drag") << QList<Gesture>{{0, {}, {8, 0}}} << QList<int>{0};
        QTest::newRow("eight points aslant are a drag") << QList<Gesture>{{0, {}, {5.7, -5.7}}} << QList<int>{0};
        QTest::newRow("the window has moved beneath a resting pointer")
            << QList<Gesture>{{0, {}, {}, {0, 2}}} << QList<int>{0};
        QTest::newRow("the window has hardly moved") << QList<Gesture>{{0, {}, {}, {1.2, 1.2}}} << QList<int>{1};
        QTest::newRow("a drag is no first click of a pair")
            << QList<Gesture>{{0, {}, {20, 0}}, {100}} << QList<int>{0, 1};
        QTest::newRow("a click, a drag, a click")
            << QList<Gesture>{{0}, {100, {}, {9, 0}}, {200}} << QList<int>{1, 0, 1};
    }
    void clicksAndDrags()
    {
        QFETCH(QList<Gesture>, gestures);
        QFETCH(QList<int>, clicks);
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

    void dragByBodyIsReportedOnceAfterTheRelease()
    {
        Desk desk;
        desk.tracker.windowShown();
        desk.isButtonDown = true;
        desk.tracker.grabbed();
        for (int x = 101; x < 140; ++x) {
            desk.moveTo({x, 100});
            desk.scheduler.advance(20ms);
        }
        desk.scheduler.advance(10s); // held still
        QVERIFY(desk.isTaken && desk.reports == 0);
        desk.isButtonDown = false;
        desk.scheduler.advance(30ms);
        desk.moveTo({150, 100}); // the last step comes after the release
        desk.scheduler.advance(1s);
        QCOMPARE(desk.reports, 1);
        QVERIFY(desk.sinceRelease >= 40ms && desk.sinceRelease <= 120ms);
        QVERIFY(desk.scheduler.isIdle() && !desk.isTaken);
    }

    void dragThatEndsWhereItBeganIsNotReported()
    {
        Desk desk;
        desk.tracker.windowShown();
        desk.isButtonDown = true;
        desk.tracker.grabbed();
        desk.moveTo({300, 300});
        desk.scheduler.advance(200ms);
        desk.moveTo({100, 100}); // Escape, in most window managers
        desk.isButtonDown = false;
        QVERIFY(desk.isTaken);
        desk.scheduler.advance(1s);
        QVERIFY(!desk.isTaken);
        QCOMPARE(desk.reports, 0);
    }

    void windowManagersOwnDrag_data()
    {
        QTest::addColumn<bool>("tellsAtOnce");
        QTest::newRow("tells the window of each step") << true;
        QTest::newRow("tells the window after the release") << false;
    }
    void windowManagersOwnDrag()
    {
        QFETCH(bool, tellsAtOnce);
        Desk desk;
        desk.tracker.windowShown();
        desk.isButtonDown = true; // with a modifier key, on the window: the toolkit hears of nothing but the moves
        desk.tracker.held(true);
        if (tellsAtOnce)
            desk.moveTo({110, 100});
        desk.scheduler.advance(100ms);
        QVERIFY(desk.isTaken);
        desk.isButtonDown = false;
        desk.tracker.held(false);
        desk.scheduler.advance(10ms);
        desk.moveTo({120, 100});
        desk.scheduler.advance(1s);
        QCOMPARE(desk.reports, 1);
    }

    void windowManagersKeys()
    {
        Desk desk;
        desk.tracker.windowShown();
        desk.tracker.held(true);
        desk.moveTo({110, 100});
        desk.scheduler.advance(1s);
        desk.moveTo({120, 100});
        desk.scheduler.advance(1s);
        QCOMPARE(desk.reports, 0);
        desk.tracker.held(false);
        desk.scheduler.advance(1s);
        QCOMPARE(desk.reports, 1);
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

    void zoomIsTheUsersOwnHoweverSlowTheAnswer()
    {
        Desk desk;
        desk.tracker.windowShown();
        desk.tracker.requested();
        desk.scheduler.advance(400ms);
        desk.frame = {0, 0, 1280, 800};
        desk.tracker.frameChanged();
        desk.scheduler.advance(1s);
        QCOMPARE(desk.reports, 1);
    }

    void windowHiddenInMidDrag()
    {
        Desk desk;
        desk.tracker.windowShown();
        desk.isButtonDown = true;
        desk.tracker.grabbed();
        desk.moveTo({300, 300});
        desk.tracker.windowHidden();
        desk.isButtonDown = false;
        desk.scheduler.advance(1s);
        QVERIFY(!desk.isTaken);
        QCOMPARE(desk.reports, 0);
    }

    void frameUnderTheHand_data()
    {
        QTest::addColumn<Qt::Edges>("edges");
        QTest::addColumn<QPoint>("travel");
        QTest::addColumn<QRect>("frame");

        QTest::newRow("body") << Qt::Edges() << QPoint(-7, 9) << QRect(93, 109, 480, 280);
        QTest::newRow("right edge ignores up and down")
            << Qt::Edges(Qt::RightEdge) << QPoint(10, 50) << QRect(100, 100, 490, 280);
        QTest::newRow("left edge") << Qt::Edges(Qt::LeftEdge) << QPoint(10, 0) << QRect(110, 100, 470, 280);
        QTest::newRow("left edge past the smallest size keeps the right one")
            << Qt::Edges(Qt::LeftEdge) << QPoint(400, 0) << QRect(260, 100, 320, 280);
        QTest::newRow("lower right corner past the smallest size")
            << (Qt::RightEdge | Qt::BottomEdge) << QPoint(-900, -900) << QRect(100, 100, 320, 100);
        QTest::newRow("upper left corner past the smallest size")
            << (Qt::LeftEdge | Qt::TopEdge) << QPoint(900, 900) << QRect(260, 280, 320, 100);
    }
    void frameUnderTheHand()
    {
        QFETCH(Qt::Edges, edges);
        QFETCH(QPoint, travel);
        const WindowDrag drag{{100, 100, 480, 280}, {500, 300}, edges};
        QTEST(drag.frameFor(QPoint(500, 300) + travel, {320, 100}), "frame");
    }
};

QTEST_GUILESS_MAIN(PointerTest)
#include "PointerTest.moc"
