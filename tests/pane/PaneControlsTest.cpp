#include "CapsuleTooltip.h"
#include "ControlCapsuleView.h"
#include "GlassErrorCard.h"
#include "PaneFixture.h"
#include "WindowButton.h"

#include <QAccessible>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTextDocumentFragment>
#include <QWindow>

using namespace lucentra;
using namespace Qt::StringLiterals;

/// The capsule of buttons and the error card.
class PaneControlsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void capsuleIsSeenWhenItIsNeeded()
    {
        PaneFixture pane;
        pane.window.show();
        const auto *capsule = only<ControlCapsuleView>(pane.view);
        QCOMPARE(capsule->opacity(), 0.0);
        pane.view->setProcessing(true);
        QCOMPARE(capsule->opacity(), 1.0);
        QCOMPARE(capsule->geometry().top(), 5);
        QCOMPARE(capsule->geometry().right() + 1, 480 - 16);
        pane.view->setProcessing(false);
        QCOMPARE(capsule->opacity(), 0.0);
        pane.view->setHovering(true);
        QCOMPARE(capsule->opacity(), 1.0);
        pane.window.resize(TransparentWindow::smallestSize);
        const QPoint resting = buttonNamed(pane.view, u"設定"_s)->mapTo(pane.view, QPoint());
        pane.view->setProcessing(true);
        QCOMPARE(buttonNamed(pane.view, u"設定"_s)->mapTo(pane.view, QPoint()), resting);
        QVERIFY(capsule->geometry().left() > pane.window.standardButtons().last()->geometry().right());
    }

    void capsuleByKeyboard_data()
    {
        QTest::addColumn<QList<Qt::Key>>("keys"); // after Tab has reached the first button
        QTest::addColumn<QString>("focused");
        QTest::addColumn<int>("passes");
        QTest::newRow("Return presses") << QList{Qt::Key_Return} << u"翻譯目前區域"_s << 1;
        QTest::newRow("Space presses") << QList{Qt::Key_Space} << u"翻譯目前區域"_s << 1;
        QTest::newRow("an arrow goes on") << QList{Qt::Key_Right, Qt::Key_Down} << u"切換到手動輸入"_s << 0;
        QTest::newRow("back over the row's start") << QList{Qt::Key_Left} << u"設定"_s << 0;
        QTest::newRow("on over its end") << QList{Qt::Key_Up, Qt::Key_Right} << u"翻譯目前區域"_s << 0;
    }
    void capsuleByKeyboard()
    {
        QFETCH(QList<Qt::Key>, keys);
        QFETCH(QString, focused);
        PaneFixture pane;
        pane.window.makeKeyAndOrderFront();
        QVERIFY(QTest::qWaitForWindowActive(&pane.window));
        const auto *capsule = only<ControlCapsuleView>(pane.view);
        pane.view->setFocus();
        QTest::keyClick(pane.window.windowHandle(), Qt::Key_Tab);
        QTRY_COMPARE(capsule->opacity(), 1.0);
        for (const Qt::Key key : keys)
            QTest::keyClick(pane.window.windowHandle(), key);
        QCOMPARE(QApplication::focusWidget()->accessibleName(), focused);
        QTEST(pane.passes, "passes");
    }

    void capsuleTakesNoClicksWhileItIsInvisible()
    {
        PaneFixture pane;
        pane.window.show();
        const QPoint onSettings = only<ControlCapsuleView>(pane.view)->geometry().center() + QPoint(60, 0);
        QVERIFY(!qobject_cast<QAbstractButton *>(pane.view->childAt(onSettings)));
        pane.view->setHovering(true);
        QVERIFY(qobject_cast<QAbstractButton *>(pane.view->childAt(onSettings)));
    }

    void tooltipsFollowThePointerAndTheState()
    {
        PaneFixture pane;
        pane.window.show();
        pane.view->setHovering(true);
        const auto *tooltip = only<CapsuleTooltip>(pane.view);
        QAbstractButton *mode = buttonNamed(pane.view, u"切換為框選翻譯"_s);
        QAbstractButton *settings = buttonNamed(pane.view, u"設定"_s);
        const auto move = [](QWidget *widget, bool enters) {
            QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
            QEvent leave(QEvent::Leave);
            QCoreApplication::sendEvent(widget, enters ? &enter : &leave);
        };
        move(mode, true);
        QCOMPARE(tooltip->text(), u"切換為框選翻譯 (當前:自動辨識)"_s);
        pane.view->toggleTriggerMode();
        QCOMPARE(tooltip->text(), u"切換為自動辨識 (當前:框選翻譯)"_s);
        QVERIFY(pane.view->rect().contains(tooltip->geometry()));
        move(settings, true);
        move(mode, false);
        QCOMPARE(tooltip->text(), u"設定"_s);
        move(settings, false);
        QVERIFY(tooltip->isHidden());
    }

    void errorCardPlace_data()
    {
        QTest::addColumn<QSize>("pane");
        QTest::addColumn<int>("width");
        QTest::newRow("initial size") << QSize(480, 280) << 380;
        QTest::newRow("between the sides") << QSize(400, 280) << 352;
        QTest::newRow("narrower than the card's least width allows") << QSize(320, 280) << 280;
        QTest::newRow("smallest size") << TransparentWindow::smallestSize << 280;
    }
    void errorCardPlace()
    {
        QFETCH(QSize, pane);
        QFETCH(int, width);
        for (const QString &message : {u"短訊息"_s, u"很長的訊息。"_s.repeated(50), u"x"_s.repeated(260),
                                       u"<img src=\"/dev/zero\"> &amp;"_s.repeated(30)}) {
            PaneFixture fixture;
            fixture.window.resize(pane);
            fixture.window.show();
            fixture.view->showErrorCard(u"翻譯失敗"_s, message, u"重試"_s, {});
            const auto *card = only<GlassErrorCard>(fixture.view);
            QVERIFY(card);
            QCOMPARE(card->cardRect().width(), width);
            QCOMPARE(card->cardRect().left(), (pane.width() - width) / 2);
            QVERIFY2(fixture.view->rect().contains(card->cardRect()), qPrintable(message.first(3)));
            const QRect button(card->actionButton()->mapTo(fixture.view, QPoint()), card->actionButton()->size());
            QVERIFY(card->cardRect().contains(button));
            QCOMPARE(card->accessibleDescription(), message);
            for (const QLabel *label : card->findChildren<QLabel *>()) {
                const QRect text =
                    label->fontMetrics().boundingRect(label->contentsRect(), Qt::TextWordWrap, label->text());
                QVERIFY2(label->contentsRect().contains(text), qPrintable(label->text()));
                if (const QString toolTip = label->toolTip(); !toolTip.isEmpty())
                    QCOMPARE(QTextDocumentFragment::fromHtml(toolTip).toPlainText(), message);
            }
        }
    }

    void errorCardsButtonByKeyboard_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Return") << Qt::Key_Return;
        QTest::newRow("Space") << Qt::Key_Space;
    }
    void errorCardsButtonByKeyboard()
    {
        QFETCH(Qt::Key, key);
        PaneFixture pane;
        pane.window.makeKeyAndOrderFront();
        QVERIFY(QTest::qWaitForWindowActive(&pane.window));
        int retries = 0;
        pane.view->showErrorCard(u"翻譯失敗"_s, u"訊息"_s, u"重試"_s, [&] {
            ++retries;
            pane.view->clearOverlays(); // as a new pass does
        });
        QVERIFY(buttonNamed(pane.view, u"重試翻譯"_s));
        auto *card = only<GlassErrorCard>(pane.view);
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(card);
        QCOMPARE(accessible->role(), QAccessible::AlertMessage);
        QCOMPARE(accessible->text(QAccessible::Name), u"翻譯失敗"_s);
        QVERIFY(card->actionButton()->hasFocus());
        QTest::keyClick(pane.window.windowHandle(), key);
        QCOMPARE(retries, 1);
        QTRY_VERIFY(!only<GlassErrorCard>(pane.view));
        QVERIFY(pane.view->hasFocus());
    }

    void errorCardWithoutActionHasNoButton()
    {
        PaneFixture pane;
        pane.view->showErrorCard(u"標題"_s, u"訊息"_s, {}, {});
        QVERIFY(!only<GlassErrorCard>(pane.view)->actionButton());
    }
};

QTEST_MAIN(PaneControlsTest)
#include "PaneControlsTest.moc"
