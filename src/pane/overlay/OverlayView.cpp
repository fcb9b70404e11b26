#include "OverlayView.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QWindow>

#include <algorithm>

namespace lucentra {

namespace {

constexpr double ringRadius = 5;

class AccessibleOverlay : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    AccessibleOverlay(OverlayView &view, const OverlayPicture::Overlay &overlay, int number)
        : m_view(view)
        , m_number(number)
        , m_text(overlay.candidate.text)
        , m_frame(overlay.painter->layout().frame.toAlignedRect())
    {
    }

    bool isValid() const override { return true; }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return m_view.window()->windowHandle(); }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(&m_view); }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QString text(QAccessible::Text kind) const override { return kind == QAccessible::Name ? m_text : QString(); }
    void setText(QAccessible::Text, const QString &) override {}
    QRect rect() const override { return m_frame.translated(m_view.mapToGlobal(QPoint())); }
    QAccessible::Role role() const override { return QAccessible::StaticText; }
    QAccessible::State state() const override
    {
        QAccessible::State state = parent()->state();
        state.focusable = true;
        state.focused = m_view.chosen() == m_number;
        return state;
    }
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this) : nullptr;
    }

    QStringList actionNames() const override { return {showMenuAction(), setFocusAction()}; }
    void doAction(const QString &name) override
    {
        m_view.choose(m_number);
        if (name != showMenuAction())
            return;
        const QPoint place = m_frame.center();
        QContextMenuEvent event(QContextMenuEvent::Keyboard, place, m_view.mapToGlobal(place));
        QCoreApplication::sendEvent(&m_view, &event);
    }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    OverlayView &m_view;
    const int m_number;
    const QString m_text;
    const QRect m_frame;
};

class AccessibleOverlayView : public QAccessibleWidget
{
public:
    explicit AccessibleOverlayView(OverlayView &view)
        : QAccessibleWidget(&view)
        , m_view(view)
    {
        makeLabels();
        view.onChanged = [this] {
            report(QAccessible::ObjectDestroyed);
            deleteLabels();
            makeLabels();
            report(QAccessible::ObjectCreated);
        };
        view.onChosen = [this] {
            if (QAccessibleInterface *label = focusChild()) {
                QAccessibleEvent event(label, QAccessible::Focus);
                QAccessible::updateAccessibility(&event);
            }
        };
    }

    QAccessibleInterface *focusChild() const override { return child(m_view.chosen()); }

    int childCount() const override { return int(m_labels.size()); }
    QAccessibleInterface *child(int index) const override
    {
        return QAccessible::accessibleInterface(m_labels.value(index));
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        return int(m_labels.indexOf(QAccessible::uniqueId(const_cast<QAccessibleInterface *>(child))));
    }

protected:
    ~AccessibleOverlayView() override { deleteLabels(); }

private:
    void report(QAccessible::Event what) const
    {
        for (auto label = m_labels.crbegin(); label != m_labels.crend(); ++label) {
            QAccessibleEvent event(QAccessible::accessibleInterface(*label), what);
            QAccessible::updateAccessibility(&event);
        }
    }

    void makeLabels()
    {
        for (const OverlayPicture::Overlay *overlay : m_view.shown())
            m_labels.append(QAccessible::registerAccessibleInterface(
                new AccessibleOverlay(m_view, *overlay, int(m_labels.size()))));
    }

    void deleteLabels()
    {
        while (!m_labels.isEmpty())
            QAccessible::deleteAccessibleInterface(m_labels.takeLast());
    }

    OverlayView &m_view;
    QList<QAccessible::Id> m_labels;
};

} // namespace

OverlayView::OverlayView(QWidget *parent)
    : PassThroughContainerView(parent)
{
    static const bool isInstalled =
        (QAccessible::installFactory([](const QString &, QObject *object) -> QAccessibleInterface * {
             auto *view = dynamic_cast<OverlayView *>(object);
             return view ? new AccessibleOverlayView(*view) : nullptr;
         }),
         true);
    Q_UNUSED(isInstalled);
}

void OverlayView::setOverlays(const QList<TranslationOverlayCandidate> &candidates,
                              const OverlayPicture::Setting &setting)
{
    changed(m_picture.setOverlays(candidates, setting));
}

void OverlayView::clear()
{
    changed(m_picture.clear());
}

QList<TranslationOverlayCandidate> OverlayView::candidates() const
{
    QList<TranslationOverlayCandidate> all;
    for (const OverlayPicture::Overlay &overlay : m_picture.overlays())
        all.append(overlay.candidate);
    return all;
}

void OverlayView::changed(const QRegion &area)
{
    if (area.isEmpty())
        return;
    update(area);
    const int count = int(shown().size());
    m_chosen = std::clamp(m_chosen, 0, std::max(0, count - 1));
    setFocusPolicy(count > 0 ? Qt::TabFocus : Qt::NoFocus);
    if (hasFocus()) {
        update();
        if (count == 0)
            parentWidget()->setFocus();
    }
    onChanged();
}

std::vector<const OverlayPicture::Overlay *> OverlayView::shown() const
{
    std::vector<const OverlayPicture::Overlay *> overlays;
    for (const OverlayPicture::Overlay &overlay : m_picture.overlays()) {
        if (overlay.painter)
            overlays.push_back(&overlay);
    }
    return overlays;
}

void OverlayView::choose(int number)
{
    m_chosen = std::clamp(number, 0, std::max(0, int(shown().size()) - 1));
    if (!hasFocus())
        setFocus(Qt::TabFocusReason);
    else if (onChosen)
        onChosen();
    update();
}

const OverlayPicture::Overlay *OverlayView::overlayAt(QPointF point) const
{
    const auto overlays = shown();
    if (chosen() >= 0 && chosen() < int(overlays.size()) && overlays[size_t(chosen())]->place().contains(point))
        return overlays[size_t(chosen())];
    return m_picture.overlayAt(point);
}

QVariant OverlayView::inputMethodQuery(Qt::InputMethodQuery query) const
{
    const auto overlays = shown();
    if (query != Qt::ImCursorRectangle || m_chosen >= int(overlays.size()))
        return PassThroughContainerView::inputMethodQuery(query);
    return overlays[size_t(m_chosen)]->painter->layout().frame.toRect();
}

void OverlayView::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    m_picture.paint(painter, event->region());
    const auto overlays = shown();
    if (chosen() < 0 || chosen() >= int(overlays.size()))
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF ring = overlays[size_t(chosen())]->painter->layout().frame.adjusted(-2, -2, 2, 2);
    for (const auto &[color, width] : {std::pair(QColor(255, 255, 255), 4.0), std::pair(QColor(0x2f6fe4), 2.0)}) {
        painter.setPen(QPen(color, width));
        painter.drawRoundedRect(ring, ringRadius, ringRadius);
    }
}

void OverlayView::keyPressEvent(QKeyEvent *event)
{
    const auto overlays = shown();
    const bool isSource = event->keyCombination() == copySource;
    if (event->matches(QKeySequence::Copy) || isSource) {
        if (onCopy && m_chosen < int(overlays.size()))
            onCopy(*overlays[size_t(m_chosen)], isSource);
        return;
    }
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Left:
        return choose(m_chosen - 1);
    case Qt::Key_Down:
    case Qt::Key_Right:
        return choose(m_chosen + 1);
    case Qt::Key_Home:
        return choose(0);
    case Qt::Key_End:
        return choose(int(overlays.size()) - 1);
    default:
        PassThroughContainerView::keyPressEvent(event);
    }
}

void OverlayView::focusInEvent(QFocusEvent *)
{
    update();
    // After the toolkit has reported that this view has the focus.
    QMetaObject::invokeMethod(
        this, [this] { onChosen(); }, Qt::QueuedConnection);
}

void OverlayView::focusOutEvent(QFocusEvent *)
{
    update();
}

} // namespace lucentra
