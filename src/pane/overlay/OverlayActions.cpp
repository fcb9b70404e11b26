#include "OverlayActions.h"

#include "LocalizationManager.h"
#include "OverlayView.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDrag>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QToolTip>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

OverlayActions::OverlayActions(QWidget &pane, OverlayView &overlays, const LocalizationManager &texts)
    : m_pane(pane)
    , m_overlays(overlays)
    , m_texts(texts)
{
    pane.installEventFilter(this);
    overlays.onCopy = [this](const OverlayPicture::Overlay &overlay, bool isSource) {
        copy(isSource ? overlay.candidate.source : overlay.candidate.text);
    };
}

QAction *OverlayActions::add(const QString &textKey, std::function<void()> act)
{
    auto *item = new QAction(m_texts.localized(textKey), m_items.get());
    item->setShortcutContext(Qt::WidgetShortcut); // of the menu, where the keys are only shown
    connect(item, &QAction::triggered, this, std::move(act));
    return item;
}

QList<QAction *> OverlayActions::menuItemsAt(QPoint place)
{
    m_items = std::make_unique<QObject>();
    const OverlayPicture::Overlay *overlay = m_overlays.overlayAt(place);
    if (!overlay)
        return {};
    const TranslationOverlayCandidate chosen = overlay->candidate;
    QStringList all;
    for (const OverlayPicture::Overlay *each : m_overlays.shown())
        all.append(each->candidate.text);

    QList<QAction *> items;
    items.append(add(chosen.limits.lineCount > 1 ? u"複製這一段的翻譯"_s : u"複製這一行的翻譯"_s,
                     [this, text = chosen.text] { copy(text); }));
    items.last()->setShortcut(QKeySequence::Copy);
    items.append(add(u"複製原文"_s, [this, text = chosen.source] { copy(text); }));
    items.last()->setShortcut(OverlayView::copySource);
    items.append(add(u"複製全部翻譯"_s, [this, text = all.join(u'\n')] { copy(text); }));
    items.append(add(u"在歷史紀錄中開啟"_s, [this, chosen] { onOpenInHistory(chosen.source, chosen.text); }));
    items.append(new QAction(m_items.get()));
    items.last()->setSeparator(true);
    return items;
}

void OverlayActions::copy(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
    onCopied();
}

bool OverlayActions::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::ToolTip:
        showWhole(*static_cast<QHelpEvent *>(event));
        return true;
    case QEvent::KeyPress: {
        const auto *press = static_cast<QKeyEvent *>(event);
        const bool isArrow = press->key() >= Qt::Key_Left && press->key() <= Qt::Key_Down;
        if (!isArrow || press->modifiers() != Qt::NoModifier || m_overlays.shown().empty())
            return false;
        m_overlays.setFocus(Qt::TabFocusReason);
        return true;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return press(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseMove:
        if (m_held.isEmpty())
            return false;
        if ((static_cast<QMouseEvent *>(event)->pos() - m_pressed).manhattanLength() >=
            QApplication::startDragDistance())
            drag();
        return true;
    case QEvent::MouseButtonRelease:
        return !std::exchange(m_held, {}).isEmpty();
    default:
        return QObject::eventFilter(watched, event);
    }
}

void OverlayActions::showWhole(const QHelpEvent &event)
{
    const OverlayPicture::Overlay *overlay = m_overlays.picture().overlayAt(event.pos());
    const QString text = overlay && !overlay->painter->layout().isWhole ? overlay->candidate.text : QString();
    // Rich text breaks its lines.
    QToolTip::showText(event.globalPos(), text.isEmpty() ? QString() : u"<p>"_s + text.toHtmlEscaped() + u"</p>"_s,
                       &m_pane);
}

bool OverlayActions::press(const QMouseEvent &event)
{
    m_held.clear();
    // Without Ctrl, a drag moves the pane.
    if (event.button() != Qt::LeftButton || event.modifiers() != Qt::ControlModifier)
        return false;
    if (const OverlayPicture::Overlay *overlay = m_overlays.overlayAt(event.pos()))
        m_held = overlay->candidate.text;
    m_pressed = event.pos();
    return !m_held.isEmpty();
}

void OverlayActions::drag()
{
    auto *data = new QMimeData;
    data->setText(std::exchange(m_held, {}));
    auto *drag = new QDrag(&m_pane); // deletes itself after the drop
    drag->setMimeData(data);
    drag->exec(Qt::CopyAction);
}

} // namespace lucentra
