#include "GlassView.h"

#include "ControlCapsuleView.h"
#include "GlassBackdropView.h"
#include "GlassErrorCard.h"
#include "GripView.h"
#include "LocalizationManager.h"
#include "NeonBorderView.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "TargetLanguageOption.h"
#include "TipCard.h"
#include "WidgetFade.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPushButton>
#include <QToolTip>

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

} // namespace

GlassView::GlassView(const Services &services, const AccessibilityDisplayOptions &displayOptions, QWidget *parent)
    : QWidget(parent)
    , m_services(services)
    , m_displayOptions(displayOptions)
    , m_visualEffect(new GlassBackdropView(this))
    , m_neonBorderView(new NeonBorderView(services.settings, this))
    , m_grip(new GripView(this))
    , m_overlayView(new OverlayView(this))
    , m_overlayActions(*this, *m_overlayView, services.texts)
    , m_capsule(new ControlCapsuleView(services.texts, *m_visualEffect, this))
    , m_hints(*this, services.scheduler,
              {.add = [this](QWidget *view) { addBelowCapsule(view); },
               .changed = [this] { updateCalmAreas(); },
               .isOverText = [this] { return isTextShown() || m_visualEffect->tone() == GlassTone::Light; }})
    , m_targetLanguageCode(services.settings.read(settings::targetLanguageCode))
{
    setFocusPolicy(Qt::ClickFocus);
    observeNotifications();
    accessibilityDisplayOptionsChanged(displayOptions);
    updateTone();
    setupControlCapsule();
}

void GlassView::observeNotifications()
{
    const SettingsStore &store = m_services.settings;
    store.observe(notifications::updateGlassOpacity, this,
                  [this](double opacity) { m_visualEffect->setOpacity(opacity, !m_displayOptions.reduceMotion); });
    store.observe(settings::triggerMode, this, [this] { updateCapsuleState(); });
    store.observe(settings::glassTone, this, [this] { updateTone(); });
    store.observe(settings::overlayFontFamily, this, [this] { setOverlays(m_overlayView->candidates()); });
    store.observe(notifications::targetLanguageChanged, this, [this](const QString &code) {
        m_targetLanguageCode = code;
        updateCapsuleState();
    });
    store.observe(notifications::translationClickGestureChanged, this, [this] {
        showHint(m_services.texts.localized(isDoubleClickGesture() ? u"雙擊玻璃板即可翻譯"_s : u"單擊玻璃板即可翻譯"_s),
                 true);
    });
    m_services.texts.observeLanguage(this, [this] {
        if (isPristine())
            showPristineHint();
    });
}

void GlassView::setupControlCapsule()
{
    const auto call = [this](std::function<void()> GlassView::*callback) {
        return [this, callback] {
            if (const auto &react = this->*callback)
                react();
        };
    };
    m_capsule->onTranslateTapped = [this] { performTranslateAction(); };
    m_capsule->onTriggerModeTapped = [this] { toggleTriggerMode(); };
    m_capsule->onKeyboardTapped = [this] { toggleInputMode(); };
    m_capsule->onHistoryTapped = call(&GlassView::onHistoryTapped);
    m_capsule->onSettingsTapped = call(&GlassView::onSettingsTapped);
    m_capsule->onCopyTapped = [this] {
        if (manualInput.copy)
            manualInput.copy();
    };
    m_overlayActions.onCopied = [this] { showHint(m_services.texts.localized(u"已複製"_s), true); };
    m_overlayActions.onOpenInHistory = [this](const QString &source, const QString &translation) {
        onOpenInHistory(source, translation);
    };
    m_capsule->onTargetLanguageSelected = [this](const QString &code) { selectTargetLanguage(code); };
    updateCapsuleState();
}

void GlassView::updateCapsuleState()
{
    m_capsule->setState({.isHovering = m_isHovering,
                         .isManual = m_services.settings.read(settings::triggerMode) == TriggerMode::Manual,
                         .isInputMode = m_isInputMode,
                         .isProcessing = m_isProcessing,
                         .isLive = m_isLive,
                         .liveTrouble = m_liveTrouble,
                         .targetLanguageCode = m_targetLanguageCode,
                         .translationActionState = m_translationActionState});
    placeCapsule();
}

void GlassView::placeCapsule()
{
    const QSize capsule = m_capsule->size();
    // In a narrow pane the margin shrinks before the capsule covers the window's buttons.
    const int right = std::clamp(width() - capsule.width() - leftOfCapsule, leastCapsuleRight, capsuleRight);
    m_capsule->move(width() - right - capsule.width(), capsuleTop);
}

void GlassView::addBelowCapsule(QWidget *view)
{
    view->stackUnder(m_capsule);
    view->show();
    m_hints.stackUnder(m_capsule);
}

bool GlassView::isTextShown() const
{
    return !m_overlayView->picture().calmAreas().isEmpty() || m_errorCard || m_inputPanel;
}

void GlassView::updateCalmAreas()
{
    QList<CalmArea> areas = m_overlayView->picture().calmAreas();
    if (m_hints.opacity() > 0 && !m_hints.hasGround()) {
        CalmArea band = calmBand(m_hints.textRect(), m_visualEffect->content(), size());
        band.strength = m_hints.opacity();
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
    if (m_hints.opacity() > 0)
        places |= m_hints.textRect();
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
    return tip;
}

void GlassView::showPristineHint()
{
    const LocalizationManager &texts = m_services.texts;
    const QString gesture = texts.localized(isDoubleClickGesture() ? u"雙擊翻譯"_s : u"單擊翻譯"_s);
    const bool isManual = m_services.settings.read(settings::triggerMode) == TriggerMode::Manual;
    m_hints.showStart(texts.formatted(isManual ? u"%@・拖曳移動"_s : u"移動或縮放後自動翻譯・%@"_s, gesture));
}

bool GlassView::isDoubleClickGesture() const
{
    return m_services.settings.read(settings::translationClickGesture) == ClickGesture::DoubleClick;
}

void GlassView::performTranslateAction()
{
    dismissPristineHint();
    if (const auto &act = m_isInputMode ? manualInput.submit : onTranslateTapped)
        act();
}

void GlassView::bodyClicked(int count)
{
    if (!m_isInputMode && count == (isDoubleClickGesture() ? 2 : 1))
        performTranslateAction();
}

void GlassView::toggleTriggerMode()
{
    SettingsStore &store = m_services.settings;
    const bool becomesManual = store.read(settings::triggerMode) != TriggerMode::Manual;
    store.write(settings::triggerMode, becomesManual ? TriggerMode::Manual : TriggerMode::AfterMoving);
    showHint(m_services.texts.localized(becomesManual ? u"框選翻譯"_s : u"自動辨識"_s), true);
}

void GlassView::selectTargetLanguage(const QString &code)
{
    m_services.settings.write(settings::targetLanguageFollowsInterface, false);
    m_services.settings.write(settings::targetLanguageCode, code);
    const LocalizationManager &texts = m_services.texts;
    showHint(texts.formatted(u"目標語言：%@"_s, texts.localized(targetLanguageOption(code).name.toString())), true);
}

void GlassView::toggleInputMode()
{
    m_isInputMode = !m_isInputMode;
    updateTone();
    updateCapsuleState();
    if (manualInput.reset)
        manualInput.reset();
    if (m_isInputMode) {
        dismissPristineHint();
        clearOverlays();
        setTranslationActionState(TranslationActionState::translate);
        showManualInput();
    } else {
        hideManualInput();
    }
    showHint(m_services.texts.localized(m_isInputMode ? u"手動輸入"_s : u"框選翻譯"_s), true);
}

/// Typed text is white.
void GlassView::updateTone()
{
    m_visualEffect->setTone(m_isInputMode ? GlassTone::Dark : m_services.settings.read(settings::glassTone));
    setOverlays(m_overlayView->candidates());
}

void GlassView::showManualInput()
{
    if (!manualInput.makePanel)
        return;
    m_inputPanel = manualInput.makePanel(this);
    m_inputPanel->setGeometry(0, inputPanelTop, width(), std::max(0, height() - inputPanelTop));
    addBelowCapsule(m_inputPanel);
    updateCalmAreas();
    m_inputPanel->setFocus();
    if (!m_displayOptions.reduceMotion)
        fadeWidget(*m_inputPanel, 0, 1, inputPanelAppears, {});
}

void GlassView::hideManualInput()
{
    if (!m_inputPanel)
        return;
    QWidget *panel = m_inputPanel;
    m_inputPanel.clear();
    updateCalmAreas();
    if (panel->isAncestorOf(focusWidget()))
        setFocus(); // keys pressed while it fades out are not for it
    if (m_displayOptions.reduceMotion)
        delete panel;
    else
        fadeWidget(*panel, 1, 0, inputPanelGoes, [panel] { panel->deleteLater(); });
}

void GlassView::setBackdropContent(const QImage &content)
{
    m_visualEffect->setContent(content);
    if (m_hints.opacity() > 0)
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
    m_hints.setReduceMotion(options.reduceMotion);
    m_capsule->setReduceMotion(options.reduceMotion);
}

void GlassView::setHovering(bool hovering)
{
    m_isHovering = hovering;
    updateCapsuleState();
}

void GlassView::clearOverlays()
{
    m_overlayView->clear();
    removeErrorCard();
    updateCalmAreas();
}

void GlassView::removeErrorCard()
{
    if (!m_errorCard)
        return;
    if (m_errorCard->isAncestorOf(focusWidget()))
        setFocus(); // otherwise the first of the window's buttons would get the focus
    m_errorCard->hide();
    m_errorCard->deleteLater(); // it may be handling a click on its own button
    m_errorCard.clear();
}

void GlassView::passStarted()
{
    dismissPristineHint();
    clearOverlays();
    setProcessing(true);
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

void GlassView::setLive(bool isLive, const QString &trouble)
{
    m_isLive = isLive;
    m_liveTrouble = trouble;
    updateCapsuleState();
}

void GlassView::setOverlays(const QList<TranslationOverlayCandidate> &candidates)
{
    m_overlayView->setOverlays(
        candidates,
        {.paneSize = size(), .targetLanguage = m_targetLanguageCode, .font = overlayFontSettings(m_services.settings)});
    updateCalmAreas();
}

void GlassView::showTranslations(const QList<TranslationOverlayCandidate> &candidates, const QString &note)
{
    setOverlays(candidates);
    setTranslationActionState(TranslationActionState::retranslate);
    if (!note.isEmpty())
        showNote(note);
}

void GlassView::changeTranslations(const QList<TranslationOverlayCandidate> &candidates)
{
    if (!candidates.isEmpty())
        dismissPristineHint();
    removeErrorCard();
    setOverlays(candidates);
    setTranslationActionState(TranslationActionState::retranslate);
}

void GlassView::showErrorCard(const QString &title, const QString &message, const QString &actionTitle,
                              std::function<void()> action)
{
    setTranslationActionState(TranslationActionState::retry);
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

bool GlassView::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const OverlayPicture::Overlay *overlay = m_overlayView->picture().overlayAt(help->pos());
    const QString text = overlay && !overlay->painter->layout().isWhole ? overlay->candidate.text : QString();
    // Rich text breaks its lines.
    QToolTip::showText(help->globalPos(), text.isEmpty() ? QString() : u"<p>"_s + text.toHtmlEscaped() + u"</p>"_s,
                       this);
    return true;
}

void GlassView::keyPressEvent(QKeyEvent *event)
{
    const bool isArrow = event->key() >= Qt::Key_Left && event->key() <= Qt::Key_Down;
    if (isArrow && event->modifiers() == Qt::NoModifier && !m_overlayView->shown().empty())
        m_overlayView->setFocus(Qt::TabFocusReason);
    else
        QWidget::keyPressEvent(event);
}

void GlassView::resizeEvent(QResizeEvent *)
{
    m_visualEffect->setGeometry(rect());
    m_neonBorderView->setGeometry(rect());
    m_overlayView->setGeometry(rect());
    m_grip->move(rect().bottomRight() + QPoint(1, 1) - QPoint(GripView::side, GripView::side));
    m_hints.layOut();
    placeCapsule();
    if (m_errorCard)
        m_errorCard->placeOn(size());
    if (m_inputPanel)
        m_inputPanel->setGeometry(0, inputPanelTop, width(), std::max(0, height() - inputPanelTop));
    updateCalmAreas();
}

} // namespace lucentra
