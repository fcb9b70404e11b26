#include "Columns.h"
#include "ControlCapsuleView.h"
#include "GlassErrorCard.h"
#include "OverlayView.h"
#include "PaneFixture.h"
#include "TestProgram.h"
#include "WindowButton.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMouseEvent>
#include <QTest>

#include <array>

using namespace lucentra;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

/// Empty if there is none.
QString hintText(PaneFixture &pane)
{
    return pane.view->hints().text();
}

/// Quick clicks as the toolkit delivers them: every second press comes as a double click.
void click(QWidget *view, QPoint at, int count)
{
    static quint64 time = 1000;
    time += 10000;
    const auto send = [&](QEvent::Type type, Qt::MouseButtons buttons) {
        QMouseEvent event(type, at, view->mapToGlobal(at), Qt::LeftButton, buttons, Qt::NoModifier);
        event.setTimestamp(time += 50);
        QCoreApplication::sendEvent(view, &event);
    };
    for (int i = 0; i < count; ++i) {
        send(i % 2 ? QEvent::MouseButtonDblClick : QEvent::MouseButtonPress, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, Qt::NoButton);
    }
}

} // namespace

class GlassViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startHint()
    {
        PaneFixture pane;
        pane.controls.showPristineHint();
        QCOMPARE(hintText(pane), u"移動或縮放後自動翻譯・雙擊翻譯"_s);
        pane.settings.write(settings::triggerMode, TriggerMode::Manual);
        pane.texts.setLanguage(AppLanguage::English);
        QCOMPARE(hintText(pane), u"雙擊翻譯・拖曳移動"_s);
        pane.view->hints().dismissPristineHint();
        QTRY_COMPARE(hintText(pane), QString());
        pane.texts.setLanguage(AppLanguage::Japanese);
        QCOMPARE(hintText(pane), QString());
    }

    void temporaryHintGoesAfterItsTimeAndANewOneTakesItsPlace()
    {
        ShownPane pane;
        pane.controls.toggleTriggerMode();
        QCOMPARE(pane.settings.read(settings::triggerMode), TriggerMode::Manual);
        QCOMPARE(hintText(pane), u"框選翻譯"_s);
        QVERIFY(!pane.view->hints().isPristine());
        pane.scheduler.advance(1400ms);
        pane.controls.toggleTriggerMode();
        QCOMPARE(pane.settings.read(settings::triggerMode), TriggerMode::AfterMoving);
        pane.scheduler.advance(1400ms); // the first one's time is over, not the second one's
        QTest::qWait(200);
        QCOMPARE(hintText(pane), u"自動辨識"_s);
        pane.scheduler.advance(200ms);
        QTRY_COMPARE(hintText(pane), QString());
    }

    void notesEndWithWhatTheUserDoes_data()
    {
        const auto row = columns<std::function<void(PaneFixture &)>>("act");
        row("a click", [](PaneFixture &pane) { click(pane.view, {200, 200}, 1); });
        row("a key", [](PaneFixture &pane) { QTest::keyClick(&pane.window, Qt::Key_Shift); });
        row("a pass", [](PaneFixture &pane) { pane.view->setProcessing(true); });
        row("reading it", [](PaneFixture &pane) { pane.scheduler.advance(7100ms); });
    }
    void notesEndWithWhatTheUserDoes()
    {
        QFETCH(std::function<void(PaneFixture &)>, act);
        ShownPane pane;
        pane.view->hints().showNote(QString(100, u'n'));
        pane.scheduler.advance(6900ms);
        QCOMPARE(pane.view->hints().opacity(), 1);
        act(pane);
        QTRY_COMPARE(hintText(pane), QString());
    }

    void hintsOverOtherTextHaveADarkGround()
    {
        ShownPane pane;
        pane.view->setBackdropContent([] {
            QImage white(480, 280, QImage::Format_RGB32);
            white.fill(Qt::white);
            return white;
        }());
        pane.view->hints().showHint(u"目標語言：日文"_s, true);
        const QPoint besideText = pane.view->hints().textRect().topLeft() - QPoint(10, 4);
        QVERIFY(pane.picture().pixelColor(besideText).lightness() > 60);
        pane.view->showTranslations({{u"譯文"_s, {100, 130, 280, 30}, {280}}}, {}); // beneath the hint, though later
        QVERIFY(pane.picture().pixelColor(besideText).lightness() < 40);
        pane.view->showTranslations({{QString(40, u'█'), {100, 100, 280, 80}, {280}}}, {});
        QVERIFY(pane.picture().pixelColor(QPoint(110, besideText.y())).lightness() > 150);
        QVERIFY(pane.picture().pixelColor(besideText).lightness() < 80);
    }

    void clicks()
    {
        constexpr int unknown = 5;
        for (const auto &[gesture, count, passes] : std::initializer_list<std::array<int, 3>>{
                 {1, 1, 0}, {1, 3, 1}, {1, 4, 2}, {0, 1, 1}, {0, 2, 1}, {unknown, 2, 1}}) {
            ShownPane pane;
            if (gesture != 1) // the default: a change shows a hint
                pane.settings.setValue(settings::translationClickGesture.key, gesture);
            click(pane.view, {200, 200}, count);
            QCOMPARE(pane.passes, passes);
            QCOMPARE(pane.view->hints().isPristine(), passes == 0);
        }
    }

    void presenceIsToldAfterEveryShowing()
    {
        PaneFixture pane;
        QList<bool> shown;
        pane.window.onShown = [&](bool isShown) { shown.append(isShown); };
        QVERIFY(!pane.window.isAppearing());
        pane.window.show();
        QVERIFY(pane.window.isAppearing());
        QVERIFY(QTest::qWaitForWindowExposed(&pane.window));
        QVERIFY(pane.window.isShown());
        QVERIFY(!pane.window.isAppearing());
        pane.settings.write(settings::showInDock, false);
        QTest::mouseClick(buttonNamed(&pane.window, u"關閉"_s), Qt::LeftButton);
        QVERIFY(!pane.window.isShown());
        pane.window.makeKeyAndOrderFront();
        QTRY_VERIFY(pane.window.isShown());
        QCOMPARE(pane.hints.applied, (QList<PaneWindowPresence>{{.isListed = true}, {.isListed = false}}));
        QCOMPARE(shown, (QList<bool>{true, false, true}));
        pane.window.close();
        QVERIFY(!pane.window.isOnScreen());
    }

    void exclusionOfTheWindowsButtons()
    {
        PaneFixture pane;
        const auto &buttons = pane.window.standardButtons();
        QCOMPARE(pane.window.windowControlExclusionRects(7), QList<QRectF>{QRectF(3, 5, 72, 32)});
        buttons[0]->hide();
        QCOMPARE(pane.window.windowControlExclusionRects(0), QList<QRectF>{QRectF(30, 12, 38, 18)});
        buttons[1]->hide();
        buttons[2]->hide();
        QCOMPARE(pane.window.windowControlExclusionRects(7), QList<QRectF>());
    }

    void inputMode()
    {
        PaneFixture pane;
        QStringList calls;
        QPointer<QWidget> panel;
        pane.controls.manualInput = {.makePanel = [&](QWidget *parent) { return panel = new QWidget(parent); },
                                     .submit = [&] { calls << u"submit"_s; },
                                     .copy = [&] { calls << u"copy"_s; },
                                     .reset = [&] { calls << u"reset"_s; }};
        pane.window.show();
        pane.view->showErrorCard(u"標題"_s, u"訊息"_s, {}, {});
        QVERIFY(!only<GlassErrorCard>(pane.view)->actionButton());
        QTest::mouseClick(buttonNamed(pane.view, u"切換到手動輸入"_s), Qt::LeftButton);
        QVERIFY(pane.view->isInputMode());
        QCOMPARE(hintText(pane), u"手動輸入"_s);
        QTRY_VERIFY(!only<GlassErrorCard>(pane.view));
        QCOMPARE(panel->geometry(), QRect(0, 40, 480, 240));
        click(pane.view, {200, 20}, 2);
        pane.controls.performTranslateAction();
        QVERIFY(!buttonNamed(pane.view, u"重試翻譯"_s));
        QTest::mouseClick(buttonNamed(pane.view, u"複製翻譯結果"_s), Qt::LeftButton);
        QTest::mouseClick(buttonNamed(pane.view, u"切換回框選翻譯"_s), Qt::LeftButton);
        QCOMPARE(only<ControlCapsuleView>(pane.view)->state().translationActionState,
                 TranslationActionState::translate);
        QCOMPARE(calls, (QStringList{u"reset"_s, u"submit"_s, u"copy"_s, u"reset"_s}));
        QCOMPARE(pane.passes, 0);
        QCOMPARE(hintText(pane), u"框選翻譯"_s);
        QTRY_VERIFY(!panel);
    }

    void overlaysAreLabelsToAssistivePrograms()
    {
        ShownPane pane;
        pane.view->showTranslations({{u"R&D <b>"_s, {50, 60, 200, 24}, {280}}, {u"speck"_s, {50, 60, 4, 4}, {280}}},
                                    {});
        QCOMPARE(pane.view->childAt(150, 72), nullptr); // clicks go through it
        QAccessibleInterface *overlays = QAccessible::queryAccessibleInterface(only<OverlayView>(pane.view));
        QCOMPARE(overlays->childCount(), 1);
        QAccessibleInterface *label = overlays->child(0);
        QCOMPARE(overlays->indexOfChild(label), 0);
        QCOMPARE(label->role(), QAccessible::StaticText);
        QCOMPARE(label->text(QAccessible::Name), u"R&D <b>"_s);
        QVERIFY(label->rect().contains(pane.view->mapToGlobal(QPoint(60, 72))));
        pane.view->clearOverlays();
        QCOMPARE(overlays->childCount(), 0);
    }

    void textsOfOverlaysByKeysAndByMenu()
    {
        PaneFixture pane;
        QStringList opened;
        pane.view->overlayActions().onOpenInHistory = [&](const QString &source, const QString &text) {
            opened << source << text;
        };
        pane.window.makeKeyAndOrderFront();
        QVERIFY(QTest::qWaitForWindowActive(&pane.window));
        const auto press = [&](auto key) { QTest::keySequence(pane.window.windowHandle(), QKeySequence(key)); };
        const auto copied = [] { return QGuiApplication::clipboard()->text(); };
        const QPoint onSecond(60, 112);
        pane.view->showTranslations(
            {{u"<b>一"_s, {50, 60, 200, 24}, {280}, u"one"_s},
             {u"二"_s, {50, 100, 200, 60}, {.bottom = 280, .lineCount = 3, .lineDistance = 20}, u"two"_s}},
            {});
        QAccessibleInterface *overlays = QAccessible::queryAccessibleInterface(only<OverlayView>(pane.view));
        QVERIFY(!overlays->focusChild());
        press(Qt::Key_Down);
        QCOMPARE(overlays->focusChild(), overlays->child(0));
        press(QKeySequence::Copy);
        QCOMPARE(copied(), u"<b>一"_s);
        press(Qt::Key_Down);
        press(Qt::Key_Down); // the second is the last one
        QVERIFY(overlays->child(1)->state().focused);
        press(Qt::CTRL | Qt::SHIFT | Qt::Key_C);
        QCOMPARE(copied(), u"two"_s);
        QCOMPARE(hintText(pane), u"已複製"_s);

        QVERIFY(pane.view->overlayActions().menuItemsAt({400, 250}).isEmpty());
        QCOMPARE(pane.view->overlayActions().menuItemsAt({60, 72}).first()->text(), u"複製這一行的翻譯"_s);
        const QList<QAction *> items = pane.view->overlayActions().menuItemsAt(onSecond);
        QCOMPARE(items.first()->text(), u"複製這一段的翻譯"_s);
        pane.view->changeTranslations({{u"三"_s, {50, 100, 200, 60}, {280}, u"three"_s}}); // while the menu is open
        QStringList byMenu;
        for (QAction *item : items) {
            item->trigger();
            byMenu.append(copied());
        }
        QCOMPARE(byMenu.first(3), (QStringList{u"二"_s, u"two"_s, u"<b>一\n二"_s}));
        QCOMPARE(opened, (QStringList{u"two"_s, u"二"_s}));
        QCOMPARE(overlays->focusChild(), overlays->child(0)); // the one that is left
        pane.view->clearOverlays();
        QVERIFY(pane.view->hasFocus());
    }
};

static const TestClass<GlassViewTest, QApplication> glassViewTest;
#include "GlassViewTest.moc"
