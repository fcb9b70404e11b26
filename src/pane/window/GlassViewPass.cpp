// What a pass and the pane's window do with the pane.

#include "ControlCapsuleView.h"
#include "GlassErrorCard.h"
#include "GlassView.h"
#include "NeonBorderView.h"
#include "OverlayPainter.h"
#include "OverlayTypesetter.h"
#include "PassThroughContainerView.h"
#include "PassThroughHostingView.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "TransparentWindow.h"
#include "WindowButton.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QPainter>
#include <QPushButton>
#include <QScreen>

#include <algorithm>

namespace lucentra {

bool GlassView::isOnScreen() const
{
    if (!isWindowVisible())
        return false;
    const QList<QScreen *> screens = QGuiApplication::screens();
    return std::any_of(screens.begin(), screens.end(),
                       [this](const QScreen *screen) { return screen->geometry().intersects(window()->geometry()); });
}

bool GlassView::isWindowVisible() const
{
    const TransparentWindow *window = paneWindow();
    return window && window->isShown();
}

void GlassView::makeKeyAndOrderFront()
{
    if (TransparentWindow *window = paneWindow())
        window->makeKeyAndOrderFront();
}

GlassArea GlassView::glassArea() const
{
    return {.glass = {mapToGlobal(QPointF(0, 0)), QSizeF(size())},
            .windowFrame = window()->geometry(),
            .windowNumber = quint32(window()->winId())};
}

QRectF GlassView::displayArea() const
{
    const QScreen *screen = QGuiApplication::screenAt(mapToGlobal(rect().center()));
    return screen ? QRectF(screen->geometry()) : QRectF();
}

QList<QRectF> GlassView::windowControlExclusionRects(double padding) const
{
    const TransparentWindow *window = paneWindow();
    if (!window)
        return {};
    QRectF controls;
    for (const WindowButton *button : window->standardButtons()) {
        if (!button->isHidden())
            controls |= QRectF(mapFrom(window, button->pos()), button->size());
    }
    if (controls.isEmpty())
        return {};
    controls = controls.adjusted(-padding, -padding, padding, padding).intersected(rect());
    return controls.isEmpty() ? QList<QRectF>() : QList{controls};
}

void GlassView::submitManualInput()
{
    if (manualInput.submit)
        manualInput.submit();
}

void GlassView::translateTapped()
{
    if (onTranslateTapped)
        onTranslateTapped();
}

void GlassView::clearOverlays()
{
    for (const QPointer<QWidget> &view : std::as_const(m_overlayViews)) {
        if (view) {
            if (view->isAncestorOf(focusWidget()))
                setFocus(); // or else the first of the window's buttons would have it
            view->hide();
            view->deleteLater(); // a card goes by a click on its own button
        }
    }
    m_overlayViews.clear();
    m_overlayFrames.clear();
    m_errorCard.clear();
    updateCalmAreas();
}

void GlassView::setProcessing(bool processing)
{
    m_isProcessing = processing;
    if (processing)
        m_hints.endNote();
    m_neonBorderView->isProcessing = processing;
    m_neonBorderView->updatePulse();
    updateCapsuleState();
}

void GlassView::setTranslationActionState(TranslationActionState state)
{
    m_translationActionState = state;
    updateCapsuleState();
}

void GlassView::addTranslationOverlay(const QString &text, const OverlayLimits &limits, const QRectF &rect)
{
    if (!m_typesetter)
        m_typesetter = std::make_unique<OverlayTypesetter>(m_targetLanguageCode);
    const auto layout =
        layOutOverlay(*m_typesetter, text, limits, rect, this->rect(), overlayFontSettings(m_services.settings));
    if (!layout)
        return;
    const auto painter = std::make_shared<OverlayPainter>(m_typesetter->typeset(text), *layout);
    // The shadow reaches beyond the overlay's frame, and so does its view.
    const QRect place = painter->paintedArea().toAlignedRect();
    auto *container = new PassThroughContainerView(this);
    container->setGeometry(place);
    auto *host = new PassThroughHostingView(
        text,
        [painter, corner = place.topLeft()](QPainter &onView) {
            onView.translate(-corner);
            painter->paint(onView);
        },
        container);
    host->setGeometry(container->rect());
    addBelowCapsule(container);
    m_overlayViews.append(container);
    m_overlayFrames.append(layout->frame.united(rect));
    updateCalmAreas();
}

void GlassView::showErrorCard(const QString &title, const QString &message, const QString &actionTitle,
                              std::function<void()> action)
{
    setTranslationActionState(TranslationActionState::retry);
    clearOverlays();
    m_errorCard = new GlassErrorCard(title, message, actionTitle, std::move(action), *m_visualEffect, this);
    m_errorCard->placeOn(size());
    addBelowCapsule(m_errorCard);
    m_overlayViews.append(m_errorCard.data());
    updateCalmAreas();
    if (QPushButton *button = m_errorCard->actionButton(); button && isActiveWindow())
        button->setFocus();
    QAccessibleEvent alert(m_errorCard, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

} // namespace lucentra
