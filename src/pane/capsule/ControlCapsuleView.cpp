#include "ControlCapsuleView.h"

#include "CapsuleButton.h"
#include "CapsuleTooltip.h"
#include "GlassBackdropView.h"
#include "LocalizationManager.h"
#include "MenuButtonAccessibility.h"
#include "ProgressIndicator.h"
#include "Spring.h"
#include "TargetLanguageOption.h"

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lucentra {

namespace {

constexpr int capsuleHeight = 32;
constexpr int endPadding = 6;
constexpr int buttonStep = CapsuleButton::side + 4;
constexpr int buttonCount = 6;
constexpr auto fadeResponse = 300ms;
constexpr auto progressTime = 150ms;
constexpr double groundLead = 2; ///< the ground appears before the progress indicator and disappears after it
constexpr int menuDistance = 4;
constexpr double outlineWidth = 0.8;

/// Similar to the ground of the card. Items that aren't checked have no box.
constexpr auto menuStyle = R"(
    QMenu { background: #30343d; color: rgba(255, 255, 255, 242); border: 1px solid rgba(255, 255, 255, 46);
            border-radius: %1px; padding: 5px; font-size: 13px; }
    QMenu::item { background: transparent; padding: 6px 22px 6px 28px; border-radius: 6px; }
    QMenu::item:selected { background: #2f6fe4; }
    QMenu::indicator { width: 12px; height: 12px; left: 9px; }
    QMenu::indicator:checked { image: url(:/lucentra/symbols/checkmark.svg); }
)"_L1;
constexpr int menuCornerRadius = 10;

/// The length of the row of buttons, in points, including the visible part of the progress indicator (0 to 1).
double rowWidth(double progressPresence)
{
    constexpr int gap = buttonStep - CapsuleButton::side;
    return 2 * endPadding + buttonCount * buttonStep - gap + progressPresence * buttonStep;
}

struct ActionForm
{
    QString symbol;
    QString label;
};

ActionForm translateForm(TranslationActionState state)
{
    switch (state) {
    case TranslationActionState::retranslate:
        return {u"arrow.clockwise"_s, u"重新翻譯"_s};
    case TranslationActionState::retry:
        return {u"arrow.clockwise.circle"_s, u"重試翻譯"_s};
    case TranslationActionState::translate:
        break;
    }
    return {u"viewfinder"_s, u"翻譯目前區域"_s};
}

} // namespace

ControlCapsuleView::ControlCapsuleView(const LocalizationManager &localization, const GlassBackdropView &glass,
                                       QWidget *parent)
    : QWidget(parent)
    , m_localization(localization)
    , m_glass(glass)
    , m_opacity(0, springTime(fadeResponse), springCurve(), [this] { opacityChanged(); })
    , m_progress(new ProgressIndicator(this))
    , m_progressPresence(0, progressTime, QEasingCurve::OutSine, [this] { progressChanged(); })
    , m_tooltip(new CapsuleTooltip(parent))
{
    setFixedSize(int(rowWidth(1)), capsuleHeight);
    m_progress->move(endPadding, (capsuleHeight - CapsuleButton::side) / 2);
    m_action = addButton([this] { m_state.isInputMode ? onCopyTapped() : onTranslateTapped(); });
    m_triggerMode = addButton([this] { onTriggerModeTapped(); });
    m_keyboard = addButton([this] { onKeyboardTapped(); });
    m_language = addButton([this] { showLanguageMenu(); });
    m_history = addButton([this] { onHistoryTapped(); });
    m_settings = addButton([this] { onSettingsTapped(); });
    m_history->setSymbol(u"clock"_s);
    m_settings->setSymbol(u"gearshape"_s);
    makeMenu();

    localization.observeLanguage(this, [this] { render(); });
    progressChanged();
    render();
    opacityChanged();
}

CapsuleButton *ControlCapsuleView::addButton(std::function<void()> callback)
{
    auto *button = new CapsuleButton(this);
    button->move(m_progress->pos() + QPoint(buttonStep * int(m_buttons.size() + 1), 0));
    button->installEventFilter(this);
    m_buttons.append(button);
    connect(button, &QAbstractButton::clicked, this, std::move(callback));
    return button;
}

void ControlCapsuleView::setReduceMotion(bool reduceMotion)
{
    m_reduceMotion = reduceMotion;
    m_tooltip->setReduceMotion(reduceMotion);
    for (CapsuleButton *button : std::as_const(m_buttons))
        button->setReduceMotion(reduceMotion);
    render();
}

void ControlCapsuleView::render()
{
    const auto text = [this](const QString &key) { return m_localization.localized(key); };
    m_progress->setAccessibleName(text(u"正在辨識與翻譯"_s));
    m_progress->setToolTip(text(u"正在辨識與翻譯"_s));
    updateProgress();
    renderAction();
    m_triggerMode->setSymbol(m_state.isManual ? u"bolt.fill"_s : u"hand.point.up.left.fill"_s);
    m_triggerMode->describe(
        text(m_state.isManual ? u"切換為自動辨識"_s : u"切換為框選翻譯"_s),
        text(m_state.isManual ? u"切換為自動辨識 (當前:框選翻譯)"_s : u"切換為框選翻譯 (當前:自動辨識)"_s));
    const QString keyboard = text(m_state.isInputMode ? u"切換回框選翻譯"_s : u"切換到手動輸入"_s);
    m_keyboard->setSymbol(m_state.isInputMode ? u"camera.viewfinder"_s : u"keyboard"_s);
    m_keyboard->describe(keyboard, keyboard);

    const TargetLanguageOption &language = targetLanguageOption(m_state.targetLanguageCode);
    const QString languageLabel = m_localization.formatted(u"目標語言：%@"_s, text(language.name.toString()));
    m_language->setText(language.shortLabel.toString());
    m_language->describe(languageLabel, languageLabel);
    m_language->setAccessibleDescription(text(u"切換目標語言"_s));
    m_history->describe(text(u"翻譯歷史紀錄"_s), text(u"翻譯歷史紀錄"_s));
    m_settings->describe(text(u"設定"_s), text(u"設定"_s));
    updateVisibility();
    updateTooltip();
}

void ControlCapsuleView::renderAction()
{
    const ActionForm form = m_state.isInputMode ? ActionForm{u"doc.on.doc"_s, u"複製翻譯結果"_s}
                                                : translateForm(m_state.translationActionState);
    const QString label = m_localization.localized(form.label);
    const bool isLive = m_state.isLive && !m_state.isInputMode;
    m_action->setSign(!isLive                         ? CapsuleButton::Sign::None
                      : m_state.liveTrouble.isEmpty() ? CapsuleButton::Sign::Live
                                                      : CapsuleButton::Sign::Trouble);
    m_action->describe(label, !isLive ? label
                              : m_state.liveTrouble.isEmpty()
                                  ? label + u'\n' + m_localization.localized(u"即時翻譯中"_s)
                                  : m_state.liveTrouble);
    m_action->setAccessibleDescription(isLive ? m_action->toolTip() : QString());
    const bool offeredCopy = std::exchange(m_offersCopy, m_state.isInputMode);
    if (offeredCopy != m_offersCopy)
        m_action->setSymbol(form.symbol, {.smallestScale = 0.8, .duration = springTime(250ms), .curve = springCurve()});
    else
        m_action->setSymbol(form.symbol, {.smallestScale = 0.85, .duration = 120ms, .curve = QEasingCurve::OutSine});
}

void ControlCapsuleView::updateProgress()
{
    m_progress->setTurning(m_state.isProcessing && !m_reduceMotion);
    m_progressPresence.moveTo(m_state.isProcessing ? 1 : 0, !m_reduceMotion && isVisible() && m_opacity.value() > 0);
}

void ControlCapsuleView::progressChanged()
{
    m_progress->setVisible(m_progressPresence.value() > 0);
    m_progress->setPresence(m_progressPresence.value());
    update();
}

void ControlCapsuleView::setComposited(bool composited)
{
    if (std::exchange(m_isComposited, composited) != composited)
        makeMenu();
}

void ControlCapsuleView::makeMenu()
{
    delete m_menu;
    m_menu = new QMenu(this);
    m_menu->setWindowFlags(m_menu->windowFlags() | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint);
    m_menu->setAttribute(Qt::WA_TranslucentBackground, m_isComposited);
    m_menu->setStyleSheet(QString(menuStyle).arg(m_isComposited ? menuCornerRadius : 0));
    showMenuInAccessibleTree(*m_language, m_menu);
    connect(m_menu, &QMenu::aboutToHide, this, &ControlCapsuleView::updateVisibility, Qt::QueuedConnection);
}

void ControlCapsuleView::showLanguageMenu()
{
    m_menu->clear();
    for (const TargetLanguageOption &option : targetLanguages) {
        QAction *entry = m_menu->addAction(m_localization.localized(option.name.toString()));
        entry->setCheckable(true);
        entry->setChecked(option.code == m_state.targetLanguageCode);
        connect(entry, &QAction::triggered, this,
                [this, code = QString(option.code)] { onTargetLanguageSelected(code); });
    }
    m_hoveredButton = nullptr;
    updateTooltip();
    const int right = m_language->geometry().right() + 1;
    m_menu->popup(mapToGlobal(QPoint(right - m_menu->sizeHint().width(), height() + menuDistance)));
}

void ControlCapsuleView::updateVisibility()
{
    const QWidget *focus = QApplication::focusWidget();
    const bool isShown = m_state.isHovering || m_state.isProcessing || !m_state.liveTrouble.isEmpty() ||
                         m_menu->isVisible() || (focus && isAncestorOf(focus));
    m_opacity.moveTo(isShown ? 1 : 0, !m_reduceMotion && isVisible());
}

void ControlCapsuleView::opacityChanged()
{
    const double opacity = m_opacity.value();
    const bool appears = testAttribute(Qt::WA_TransparentForMouseEvents) && opacity > 0;
    for (CapsuleButton *button : std::as_const(m_buttons))
        button->setOpacity(opacity);
    m_progress->setOpacity(opacity);
    setAttribute(Qt::WA_TransparentForMouseEvents, opacity <= 0);
    update();
    if (appears)
        findPointer();
}

void ControlCapsuleView::findPointer()
{
    QWindow *handle = window()->windowHandle();
    if (!handle || !m_state.isHovering || QGuiApplication::mouseButtons() != Qt::NoButton)
        return;
    // A button that appears under a resting pointer gets no enter event without this move.
    const QPointF onScreen = QCursor::pos();
    const QPointF onWindow = window()->mapFromGlobal(onScreen);
    QCoreApplication::postEvent(handle, new QMouseEvent(QEvent::MouseMove, onWindow, onWindow, onScreen, Qt::NoButton,
                                                        Qt::NoButton, QGuiApplication::keyboardModifiers()));
}

void ControlCapsuleView::updateTooltip()
{
    if (m_hoveredButton && m_hoveredButton->isVisible())
        m_tooltip->showText(m_hoveredButton->toolTip(), geometry());
    else
        m_tooltip->hideText();
}

void ControlCapsuleView::moveEvent(QMoveEvent *)
{
    updateTooltip();
}

void ControlCapsuleView::resizeEvent(QResizeEvent *)
{
    updateTooltip();
}

bool ControlCapsuleView::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        QMetaObject::invokeMethod(this, &ControlCapsuleView::updateVisibility, Qt::QueuedConnection);
        break;
    case QEvent::Enter:
        m_hoveredButton = static_cast<CapsuleButton *>(watched);
        updateTooltip();
        break;
    case QEvent::MouseButtonPress: // what the press brings is not to be covered
    case QEvent::Leave:
        if (m_hoveredButton == watched)
            m_hoveredButton = nullptr;
        updateTooltip();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void ControlCapsuleView::keyPressEvent(QKeyEvent *event)
{
    const bool isForward = event->key() == Qt::Key_Right || event->key() == Qt::Key_Down;
    const bool isBackward = event->key() == Qt::Key_Left || event->key() == Qt::Key_Up;
    QList<CapsuleButton *> shown;
    std::copy_if(m_buttons.begin(), m_buttons.end(), std::back_inserter(shown),
                 [](const CapsuleButton *button) { return button->isVisible(); });
    const auto focused =
        std::find_if(shown.begin(), shown.end(), [](const CapsuleButton *button) { return button->hasFocus(); });
    if (focused == shown.end() || isForward == isBackward) {
        QWidget::keyPressEvent(event);
        return;
    }
    const qsizetype next = focused - shown.begin() + (isForward ? 1 : shown.size() - 1);
    shown[next % shown.size()]->setFocus(Qt::TabFocusReason);
}

void ControlCapsuleView::paintEvent(QPaintEvent *)
{
    const GroundKey key{m_glass.surfaceVersion(), m_glass.size(), pos(), m_progressPresence.value(),
                        devicePixelRatioF()};
    if (key != m_groundKey) {
        m_groundKey = key;
        renderGround();
    }
    QPainter painter(this);
    painter.setOpacity(m_opacity.value());
    painter.drawPixmap(0, 0, m_ground);
}

void ControlCapsuleView::renderGround()
{
    m_ground = QPixmap((QSizeF(size()) * devicePixelRatioF()).toSize());
    m_ground.setDevicePixelRatio(devicePixelRatioF());
    m_ground.fill(Qt::transparent);
    QPainter painter(&m_ground);
    painter.setRenderHint(QPainter::Antialiasing);
    QRectF row = rect();
    row.setLeft(row.right() - rowWidth(std::min(1.0, groundLead * m_progressPresence.value())));
    const double radius = row.height() / 2;
    m_glass.paintSurface(painter, row, radius, *this);
    painter.setBrush(QColor::fromRgbF(0, 0, 0, 0.15F));
    painter.drawRoundedRect(row, radius, radius);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor::fromRgbF(1, 1, 1, 0.18F), outlineWidth));
    constexpr double inset = outlineWidth / 2;
    painter.drawRoundedRect(row.adjusted(inset, inset, -inset, -inset), radius, radius);
}

} // namespace lucentra
