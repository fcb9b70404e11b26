// Whether the texts on the pane are in their places and readable over what is beneath.

#include "CapsuleTooltip.h"
#include "ControlCapsuleView.h"
#include "GlassErrorCard.h"
#include "PaneFixture.h"
#include "Pixels.h"
#include "TestProgram.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPainter>
#include <QTest>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

constexpr QRect source(40, 120, 400, 24);

/// A page with thick lines of "writing", on a screen without a compositor: the pane's picture is all that is seen.
void layOver(PaneFixture &pane, const QColor &paper, const QColor &ink)
{
    QImage page(pane.view->size(), QImage::Format_RGB32);
    page.fill(paper);
    QPainter painter(&page);
    for (int y = 0; y < 240; y += 30) {
        for (int x = 40; x < 440; x += 11)
            painter.fillRect(x, y + 4, 6, 16, ink);
    }
    painter.end();
    pane.view->setComposited(false);
    pane.view->setBackdropContent(page);
    pane.view->hints().dismissPristineHint();
    QTRY_COMPARE(pane.view->hints().opacity(), 0);
}

} // namespace

class ReadabilityTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noSourceShinesThroughBehindATranslation()
    {
        using enum GlassTone;
        for (const auto &[paper, ink, opacity, tone] :
             {std::tuple(Qt::white, Qt::black, 0.75, Dark), std::tuple(Qt::black, Qt::white, 0.75, Dark),
              std::tuple(Qt::white, Qt::black, 0.2, Dark), // very clear glass
              std::tuple(Qt::white, Qt::black, 0.2, Light), std::tuple(Qt::black, Qt::white, 0.75, Light)}) {
            PaneFixture pane;
            pane.settings.write(settings::glassOpacity, opacity);
            pane.settings.write(settings::glassTone, tone);
            layOver(pane, paper, ink);
            const auto spread = [&](const QRect &area) {
                const auto [least, greatest] = greys(pane.picture(), area);
                return greatest - least;
            };
            const QRect behind =
                source.adjusted(200, 3, 0, -3); // where a short translation leaves the source uncovered
            const int clear = spread(behind);
            QVERIFY(clear > 40);
            pane.view->showTranslations({{u"短"_s, source, {280}}}, {});
            QVERIFY(spread(behind) < 12);
            // The text is seen on it.
            const QRect text = source.adjusted(0, 0, -380, 0);
            QVERIFY(tone == Light ? greys(pane.picture(), behind).first > 145 && greys(pane.picture(), text).first < 50
                                  : greys(pane.picture(), behind).second < 110);
            QVERIFY(spread(source.translated(0, 60)) > 40);      // elsewhere the glass is as clear as the user wants it
            pane.view->clearOverlays();
            QCOMPARE(spread(behind), clear);
        }
    }

    void nothingSharpShowsThroughCapsuleAndCard()
    {
        ShownPane pane;
        pane.settings.write(settings::glassOpacity, 0.1);
        layOver(pane, Qt::white, Qt::black);
        pane.view->capsule().set(&ControlCapsuleState::isHovering, true);
        pane.view->showErrorCard(u"標題"_s, u"訊息"_s, {}, {});
        const QRect capsule = only<ControlCapsuleView>(pane.view)->geometry();
        const QRect card = only<GlassErrorCard>(pane.view)->cardRect();
        // Where neither symbols nor words are.
        for (const QRect &area : {capsule.adjusted(50, 2, -20, -25), card.adjusted(card.width() / 2, 4, -10, -4)}) {
            const auto [least, greatest] = greys(pane.picture(), area);
            QVERIFY2(greatest - least < 12 && greatest < 80, qPrintable(u"%1 to %2"_s.arg(least).arg(greatest)));
        }
    }

    void aHintFitsThePane()
    {
        ShownPane fixture;
        for (const QSize pane : {TransparentWindow::initialSize, TransparentWindow::smallestSize}) {
            fixture.window.resize(pane);
            fixture.view->hints().showHint(u"Translates after moving or resizing · Double-click to translate"_s, false);
            const QRect text = fixture.view->hints().textRect();
            QVERIFY(fixture.view->rect().adjusted(8, 8, -8, -8).contains(text));
            QVERIFY(!text.intersects(QRect(0, 0, 75, 27))); // the window's buttons
            QVERIFY2(std::abs(text.center().x() - pane.width() / 2) <= 4, "in the middle");
        }
    }

    void theTooltipStaysBeneathTheCapsule()
    {
        ShownPane pane;
        pane.window.resize(TransparentWindow::smallestSize);
        pane.view->capsule().set(&ControlCapsuleState::isHovering, true);
        pane.view->setProcessing(true); // the row is as wide as it gets
        auto *capsule = only<ControlCapsuleView>(pane.view);
        QVERIFY(capsule);
        QEvent enter(QEvent::Enter);
        QCoreApplication::sendEvent(capsule->findChildren<QAbstractButton *>().at(3), &enter);
        pane.view->setProcessing(false);
        const auto *tooltip = only<CapsuleTooltip>(pane.view);
        QVERIFY(tooltip && !tooltip->text().isEmpty());
        QCOMPARE(tooltip->geometry().right() - capsule->geometry().right(), 8); // its shadow
    }
};

static const TestClass<ReadabilityTest, QApplication> readabilityTest;
#include "ReadabilityTest.moc"
