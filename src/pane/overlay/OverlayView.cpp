#include "OverlayView.h"

#include <QAccessibleWidget>
#include <QPaintEvent>
#include <QPainter>
#include <QWindow>

namespace lucentra {

namespace {

class AccessibleOverlay : public QAccessibleInterface
{
public:
    AccessibleOverlay(OverlayView &view, const OverlayPicture::Overlay &overlay)
        : m_view(view)
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
    QAccessible::State state() const override { return parent()->state(); }

private:
    OverlayView &m_view;
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
    }

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
        for (const OverlayPicture::Overlay &overlay : m_view.picture().overlays()) {
            if (overlay.painter)
                m_labels.append(QAccessible::registerAccessibleInterface(new AccessibleOverlay(m_view, overlay)));
        }
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

void OverlayView::changed(const QRegion &area)
{
    if (area.isEmpty())
        return;
    update(area);
    if (onChanged)
        onChanged();
}

void OverlayView::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    m_picture.paint(painter, event->region());
}

} // namespace lucentra
