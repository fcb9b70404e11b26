#include "CapsuleTooltip.h"
#include "Columns.h"
#include "ControlCapsuleView.h"
#include "FirstTips.h"
#include "GlassErrorCard.h"
#include "PaneFixture.h"
#include "TestProgram.h"
#include "TipCard.h"
#include "WindowButton.h"

#include <QAccessible>
#include <QApplication>
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
        ShownPane pane;
        const auto *capsule = only<ControlCapsuleView>(pane.view);
        const auto isClickable = [&] {
            return qobject_cast<QAbstractButton *>(pane.view->childAt(capsule->geometry().center() + QPoint(60, 0)));
        };
        QCOMPARE(capsule->opacity(), 0.0);
        QVERIFY(!isClickable());
        pane.view->setProcessing(true);
        QCOMPARE(capsule->opacity(), 1.0);
        QCOMPARE(capsule->geometry().top(), 5);
        QCOMPARE(capsule->geometry().right() + 1, 480 - 16);
        pane.view->setProcessing(false);
        QCOMPARE(capsule->opacity(), 0.0);
        pane.view->capsule().set(&ControlCapsuleState::isHovering, true);
        QCOMPARE(capsule->opacity(), 1.0);
        QVERIFY(isClickable());
        pane.window.resize(TransparentWindow::smallestSize);
        const QPoint resting = buttonNamed(pane.view, u"設定"_s)->mapTo(pane.view, QPoint());
        pane.view->setProcessing(true);
        QCOMPARE(buttonNamed(pane.view, u"設定"_s)->mapTo(pane.view, QPoint()), resting);
        QVERIFY(capsule->geometry().left() > pane.window.standardButtons().last()->geometry().right());
    }

    void tooltipsFollowThePointerAndTheState()
    {
        ShownPane pane;
        pane.view->capsule().set(&ControlCapsuleState::isHovering, true);
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
        pane.controls.toggleTriggerMode();
        QCOMPARE(tooltip->text(), u"切換為自動辨識 (當前:框選翻譯)"_s);
        QVERIFY(pane.view->rect().contains(tooltip->geometry()));
        move(settings, true);
        move(mode, false);
        QCOMPARE(tooltip->text(), u"設定"_s);
        QTest::mousePress(settings, Qt::LeftButton);
        QVERIFY(tooltip->text().isEmpty()); // it would cover what the press brings
        move(settings, false);
        QVERIFY(tooltip->isHidden());
    }

    void errorCardPlace_data()
    {
        const auto row = columns<QSize, int>("pane", "width");
        row("initial size", QSize(480, 280), 380);
        row("between the sides", QSize(400, 280), 352);
        row("narrower than the card's least width allows", QSize(320, 280), 280);
        row("smallest size", TransparentWindow::smallestSize, 280);
    }
    void errorCardPlace()
    {
        const auto [pane, width] = fetched<QSize, int>();
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

    void errorCardsButtonByKeyboard()
    {
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
        QTest::keyClick(pane.window.windowHandle(), Qt::Key_Space);
        QCOMPARE(retries, 1);
        QTRY_VERIFY(!only<GlassErrorCard>(pane.view));
        QVERIFY(pane.view->hasFocus());
    }

    void tipsComeOnceAndCoverNoText()
    {
        ShownPane pane;
        int opened = 0;
        QString missing;
        const auto makeTips = [&] {
            return std::make_unique<FirstTips>(*pane.view, pane.settings, pane.texts,
                                               FirstTips::Circumstances{.missing = [&] { return missing; },
                                                                        .lacksModels = [] { return true; },
                                                                        .hotkey = [] { return u"Alt+T"_s; },
                                                                        .openModels = [&] { ++opened; }});
        };
        auto tips = makeTips();
        const auto text = [&] {
            const auto *card = only<TipCard>(pane.view);
            return card && card->isVisible() ? card->accessibleName() : QString();
        };
        const QRectF upperLines(10, 44, 460, 100);
        const auto translate = [&](const QRectF &place) {
            pane.view->setProcessing(true);
            pane.view->showTranslations({{u"一"_s.repeated(40), place, {place.bottom()}}}, {});
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        };
        QCOMPARE(text(), u"把這塊翻譯板拖到您看不懂的文字上。"_s);
        QVERIFY(!pane.view->textPlaces().intersects(only<TipCard>(pane.view)->geometry())); // the start hint
        translate({0, 0, 480, 280});
        QCOMPARE(text(), QString()); // no room
        pane.view->changeTranslations({{u"一"_s.repeated(40), upperLines, {upperLines.bottom()}}});
        QVERIFY(text().startsWith(u"這部電腦已經能翻譯"_s));
        QVERIFY(!pane.view->textPlaces().intersects(only<TipCard>(pane.view)->geometry()));
        QTest::mouseClick(only<TipCard>(pane.view)->findChildren<QPushButton *>().first(), Qt::LeftButton);
        QCOMPARE(opened, 1);
        missing = u"一"_s.repeated(400); // has no room, and keeps no other from being shown
        translate(upperLines);
        QCOMPARE(text(), u"按 Alt+T 可隨時顯示或隱藏翻譯板。"_s);
        tips.reset();
        tips = makeTips(); // another start: it wasn't read
        translate(upperLines);
        QVERIFY(!text().isEmpty());
        QTest::mouseClick(only<TipCard>(pane.view)->findChild<QPushButton *>(), Qt::LeftButton);
        QCOMPARE(pane.passes, 0);
        translate(upperLines);
        QCOMPARE(text(), QString());
        missing = u"一"_s;
        tips->update();
        QCOMPARE(text(), missing);
    }
};

static const TestClass<PaneControlsTest, QApplication> paneControlsTest;
#include "PaneControlsTest.moc"
