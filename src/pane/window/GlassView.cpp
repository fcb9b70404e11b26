#include "GlassView.h"

#include "ControlCapsuleView.h"
#include "GlassBackdropView.h"
#include "GlassErrorCard.h"
#include "LocalizationManager.h"
#include "NeonBorderView.h"
#include "PassThroughContainerView.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "TipCard.h"

#include <QAccessible>
#include <QGraphicsOpacityEffect>
#include <QPainter>
#include <QPropertyAnimation>
#include <QPushButton>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lucentra {

namespace {

constexpr int capsuleTop = 5;
constexpr int capsuleRight = 16;
constexpr int leastCapsuleRight = 6;
constexpr int leftOfCapsule = 68; ///< where the window's buttons end
constexpr int inputPanelTop = 40;
constexpr auto inputPanelAppears = 250ms;
constexpr auto inputPanelGoes = 200ms;

/// Three strokes across the pane's lower right corner, where it can be resized. Takes no clicks.
class GripView : public PassThroughContainerView
{
public:
    static constexpr int side = 24;

    explicit GripView(QWidget *parent)
        : PassThroughContainerView(parent)
    {
        setFixedSize(side, side);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        constexpr double inset = 6; // of the strokes' ends from the pane's edges
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor::fromRgbF(0.5F, 0.5F, 0.5F, 0.4F), 1.5, Qt::SolidLine, Qt::RoundCap));
        const QPointF corner(width() - inset, height() - inset);
        for (const double length : {14.0, 9.0, 4.0})
            painter.drawLine(corner - QPointF(0, length), corner - QPointF(length, 0));
    }
};

/// Animates a widget's opacity (0 to 1), and then calls `done`, which may be empty. Ends silently if the widget is
/// deleted.
void fadeWidget(QWidget &widget, double from, double to, std::chrono::milliseconds duration, std::function<void()> done)
{
    auto *effect = new QGraphicsOpacityEffect(&widget);
    effect->setOpacity(from);
    widget.setGraphicsEffect(effect); // ends the fade before it
    auto *animation = new QPropertyAnimation(effect, "opacity", effect);
    animation->setStartValue(from);
    animation->setEndValue(to);
    animation->setDuration(int(duration.count()));
    animation->setEasingCurve(QEasingCurve::OutSine);
    QObject::connect(animation, &QPropertyAnimation::finished, &widget,
                     [&widget, isOpaque = to >= 1, done = std::move(done)] {
                         if (done)
                             done();
                         if (isOpaque)
                             widget.setGraphicsEffect(nullptr); // an effect costs a picture per frame
                     });
    animation->start();
}

} // namespace

GlassView::GlassView(const Services &services, const AccessibilityDisplayOptions &displayOptions)
    : m_services(services)
    , m_displayOptions(displayOptions)
    , m_visualEffect(new GlassBackdropView(this))
    , m_neonBorderView(new NeonBorderView(services.settings, this))
    , m_grip(new GripView(this))
    , m_overlayView(new OverlayView(this))
    , m_overlayActions(*this, *m_overlayView, services.texts)
    , m_capsule(new ControlCapsuleView(services.texts, *m_visualEffect, this))
    , m_hints(
          new PaneHints(services.scheduler,
                        {.changed = [this] { updateCalmAreas(); },
                         .isOverText = [this] { return isTextShown() || m_visualEffect->tone() == GlassTone::Light; }},
                        this))
{
    setFocusPolicy(Qt::ClickFocus);
    m_hints->stackUnder(m_capsule);
    const SettingsStore &store = services.settings;
    store.observe(notifications::updateGlassOpacity, this,
                  [this](double opacity) { m_visualEffect->setOpacity(opacity, !m_displayOptions.reduceMotion); });
    store.observe(settings::glassTone, this, [this] { updateTone(); });
    store.observe(settings::overlayFontFamily, this, [this] { setOverlays(m_overlayView->candidates()); });
    m_overlayActions.onCopied = [this] { m_hints->showHint(m_services.texts.localized(u"已複製"_s), true); };
    accessibilityDisplayOptionsChanged(displayOptions);
    updateTone();
}

void GlassView::addBelowCapsule(QWidget *view)
{
    view->stackUnder(m_capsule);
    view->show();
    m_hints->stackUnder(m_capsule);
}

bool GlassView::isTextShown() const
{
    return !m_overlayView->picture().calmAreas().isEmpty() || m_errorCard || m_inputPanel;
}

void GlassView::updateCalmAreas()
{
    QList<CalmArea> areas = m_overlayView->picture().calmAreas();
    if (m_hints->opacity() > 0 && !m_hints->hasGround()) {
        CalmArea band = calmBand(m_hints->textRect(), m_visualEffect->content(), size());
        band.strength = m_hints->opacity();
        areas.append(band);
    }
    if (m_inputPanel)
        areas.append({.rect = m_inputPanel->geometry()});
    m_visualEffect->setCalmAreas(areas);
    // A grip that is partly covered would look like a stray mark.
    m_grip->setVisible(!m_inputPanel && !(m_errorCard && m_errorCard->cardRect().intersects(m_grip->geometry())));
    onTextsChanged();
}

QRegion GlassView::textPlaces() const
{
    QRegion places(m_grip->geometry());
    for (const OverlayPicture::Overlay *overlay : m_overlayView->shown()) {
        if (overlay->candidate.text != overlay->candidate.source)
            places |= overlay->painter->textArea().toAlignedRect();
    }
    if (m_hints->opacity() > 0)
        places |= m_hints->textRect();
    if (m_errorCard)
        places |= m_errorCard->cardRect();
    if (m_inputPanel)
        places |= m_inputPanel->geometry();
    return places;
}

TipCard *GlassView::addTip(const QString &text, const QString &actionTitle)
{
    auto *tip = new TipCard(text, actionTitle, m_services.texts.localized(u"知道了"_s), *m_visualEffect, this);
    tip->stackUnder(m_capsule);
    m_hints->stackUnder(m_capsule);
    return tip;
}

void GlassView::removeView(QWidget *view)
{
    if (view->isAncestorOf(focusWidget()))
        setFocus(); // otherwise the first of the window's buttons would get the focus
    view->hide();
    view->deleteLater();
}

/// Typed text is white.
void GlassView::updateTone()
{
    m_visualEffect->setTone(m_inputPanel ? GlassTone::Dark : m_services.settings.read(settings::glassTone));
    setOverlays(m_overlayView->candidates());
}

void GlassView::setInputPanel(QWidget *panel)
{
    const QPointer<QWidget> former = std::exchange(m_inputPanel, panel);
    const bool isAnimated = !m_displayOptions.reduceMotion;
    updateTone();
    if (panel) {
        m_hints->dismissPristineHint();
        clearOverlays();
        panel->setGeometry(0, inputPanelTop, width(), std::max(0, height() - inputPanelTop));
        addBelowCapsule(panel);
        updateCalmAreas();
        panel->setFocus();
        if (isAnimated)
            fadeWidget(*panel, 0, 1, inputPanelAppears, {});
    } else if (former && isAnimated) {
        if (former->isAncestorOf(focusWidget()))
            setFocus(); // keys pressed while it fades out are not for it
        fadeWidget(*former, 1, 0, inputPanelGoes, [former] { former->deleteLater(); });
    } else if (former) {
        removeView(former);
    }
}

void GlassView::setBackdropContent(const QImage &content)
{
    m_visualEffect->setContent(content);
    if (m_hints->opacity() > 0)
        updateCalmAreas();
    updateCorners();
}

void GlassView::setComposited(bool composited)
{
    m_isComposited = composited;
    m_visualEffect->setComposited(composited);
    m_capsule->setComposited(composited);
    updateCorners();
}

void GlassView::updateCorners()
{
    onCornersCut(!m_isComposited && !m_visualEffect->hasContent());
}

void GlassView::accessibilityDisplayOptionsChanged(const AccessibilityDisplayOptions &options)
{
    m_displayOptions = options;
    m_visualEffect->setOpaque(options.reduceTransparency);
    m_visualEffect->setOpacity(m_services.settings.read(settings::glassOpacity), false);
    m_neonBorderView->accessibilityDisplayOptionsChanged(options);
    m_hints->setReduceMotion(options.reduceMotion);
    m_capsule->setReduceMotion(options.reduceMotion);
}

void GlassView::clearOverlays()
{
    m_overlayView->clear();
    removeErrorCard();
    updateCalmAreas();
}

void GlassView::removeErrorCard()
{
    if (m_errorCard)
        removeView(std::exchange(m_errorCard, nullptr));
}

void GlassView::setProcessing(bool processing)
{
    if (processing) {
        m_hints->dismissPristineHint();
        clearOverlays();
        m_hints->endNote();
    }
    m_neonBorderView->isProcessing = processing;
    m_neonBorderView->updatePulse();
    m_capsule->set(&ControlCapsuleState::isProcessing, processing);
}

void GlassView::setOverlays(const QList<TranslationOverlayCandidate> &candidates)
{
    m_overlayView->setOverlays(candidates, {.paneSize = size(),
                                            .targetLanguage = m_services.settings.read(settings::targetLanguageCode),
                                            .font = overlayFontSettings(m_services.settings)});
    updateCalmAreas();
}

void GlassView::showTranslations(const QList<TranslationOverlayCandidate> &candidates, const QString &note)
{
    setOverlays(candidates);
    m_capsule->set(&ControlCapsuleState::translationActionState, TranslationActionState::retranslate);
    if (!note.isEmpty())
        m_hints->showNote(note);
}

void GlassView::changeTranslations(const QList<TranslationOverlayCandidate> &candidates)
{
    if (!candidates.isEmpty())
        m_hints->dismissPristineHint();
    removeErrorCard();
    showTranslations(candidates, {});
}

void GlassView::showErrorCard(const QString &title, const QString &message, const QString &actionTitle,
                              std::function<void()> action)
{
    m_capsule->set(&ControlCapsuleState::translationActionState, TranslationActionState::retry);
    clearOverlays();
    m_errorCard = new GlassErrorCard(title, message, actionTitle, std::move(action), *m_visualEffect, this);
    m_errorCard->placeOn(size());
    addBelowCapsule(m_errorCard);
    updateCalmAreas();
    if (QPushButton *button = m_errorCard->actionButton(); button && isActiveWindow())
        button->setFocus();
    QAccessibleEvent alert(m_errorCard, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void GlassView::resizeEvent(QResizeEvent *)
{
    m_visualEffect->setGeometry(rect());
    m_neonBorderView->setGeometry(rect());
    m_overlayView->setGeometry(rect());
    m_grip->move(rect().bottomRight() + QPoint(1, 1) - QPoint(GripView::side, GripView::side));
    m_hints->setGeometry(rect());
    // In a narrow pane the margin shrinks before the capsule covers the window's buttons.
    const int right = std::clamp(width() - m_capsule->width() - leftOfCapsule, leastCapsuleRight, capsuleRight);
    m_capsule->move(width() - right - m_capsule->width(), capsuleTop);
    if (m_errorCard)
        m_errorCard->placeOn(size());
    if (m_inputPanel)
        m_inputPanel->setGeometry(0, inputPanelTop, width(), std::max(0, height() - inputPanelTop));
    updateCalmAreas();
}

} // namespace lucentra
