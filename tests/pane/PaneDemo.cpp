// Not a test: shows the pane over a light or dark page and writes pictures of its states to be looked at. It needs a
// display: PaneDemo <folder> light|dark. At the end it prints what share of a core the idle and the pulsing pane take.

#include "PaneFixture.h"

#include "X11CompositingMonitor.h"
#include "X11PaneWindowHints.h"

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QScreen>
#include <QTest>

#include <cstdio>
#include <ctime>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

/// A page of another program.
class Page : public QWidget
{
public:
    explicit Page(bool isDark)
        : QWidget(nullptr, Qt::FramelessWindowHint)
        , m_isDark(isDark)
    {
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), m_isDark ? QColor(24, 26, 32) : QColor(250, 250, 247));
        painter.fillRect(0, 0, width(), 56, m_isDark ? QColor(60, 30, 90) : QColor(40, 110, 220));
        painter.fillRect(700, 200, 220, 160, QColor(230, 120, 60));
        painter.setPen(m_isDark ? QColor(225, 228, 235) : QColor(30, 32, 36));
        QFont font = painter.font();
        font.setPixelSize(17);
        painter.setFont(font);
        for (int line = 0; line < 24; ++line)
            painter.drawText(70, 100 + 30 * line, u"Line %1: The quick brown fox jumps over the lazy dog."_s.arg(line));
    }

private:
    const bool m_isDark;
};

void save(const QString &folder, const QString &name)
{
    QTest::qWait(450);
    QGuiApplication::primaryScreen()->grabWindow(0).save(QDir(folder).filePath(name + u".png"_s));
}

double coreShare(int milliseconds)
{
    const std::clock_t start = std::clock();
    QTest::qWait(milliseconds);
    return 100.0 * double(std::clock() - start) / CLOCKS_PER_SEC * 1000 / milliseconds;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QString folder = application.arguments().value(1);
    const bool isDark = application.arguments().value(2) == u"dark"_s;
    const QString prefix = application.arguments().value(2) + u'-';
    Page page(isDark);
    page.setGeometry(QGuiApplication::primaryScreen()->geometry());
    page.show();

    PaneFixture pane(AccessibilityDisplayOptions{});
    X11PaneWindowHints hints;
    X11CompositingMonitor compositing;
    pane.window.onFrameChanged = [&] {
        pane.view->setBackdropContent(page.grab(pane.window.geometry().translated(-page.pos())).toImage());
    };
    pane.window.onShown = [&](bool) { pane.window.onFrameChanged(); };
    pane.view->setComposited(compositing.isComposited());
    pane.window.makeKeyAndOrderFront();
    hints.apply(*pane.window.windowHandle(), {});
    save(folder, prefix + u"hint"_s);
    pane.view->dismissPristineHint();
    pane.view->setHovering(true);
    pane.view->setProcessing(true);
    save(folder, prefix + u"processing"_s);
    pane.view->setProcessing(false);
    pane.view->clearOverlays();
    for (int line = 0; line < 5; ++line)
        pane.view->addTranslationOverlay(u"第 %1 行：敏捷的棕色狐狸跳過懶狗。"_s.arg(line), {280},
                                         {20, 50.0 + 40 * line, 300, 22});
    pane.view->setTranslationActionState(TranslationActionState::retranslate);
    save(folder, prefix + u"overlays"_s);
    pane.view->showErrorCard(u"翻譯失敗"_s, u"服務目前忙碌，請稍後再試一次。(HTTP 429)"_s, u"重試"_s, {});
    save(folder, prefix + u"error"_s);
    pane.window.resize(TransparentWindow::smallestSize);
    save(folder, prefix + u"smallest-error"_s);
    pane.view->clearOverlays();
    pane.view->setProcessing(true);
    save(folder, prefix + u"smallest-processing"_s);
    pane.view->setProcessing(false);
    pane.window.resize(TransparentWindow::initialSize);
    pane.view->accessibilityDisplayOptionsChanged({.reduceMotion = true, .reduceTransparency = true});
    pane.view->showHint(u"自動辨識"_s, true);
    save(folder, prefix + u"opaque"_s);
    pane.view->accessibilityDisplayOptionsChanged({});
    QTest::qWait(1000);
    const double idle = coreShare(4000);
    pane.view->setProcessing(true);
    std::printf("idle %.2f %%, pulsing %.2f %% of a core\n", idle, coreShare(8000));
    return 0;
}
