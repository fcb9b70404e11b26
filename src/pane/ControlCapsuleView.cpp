#include "ControlCapsuleView.h"

#include "CapsuleButton.h"
#include "CapsuleTooltip.h"
#include "LocalizationManager.h"
#include "MenuButtonAccessibility.h"
#include "NotificationCenter.h"
#include "ProgressIndicator.h"
#include "Spring.h"
#include "TargetLanguageOption.h"

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QHBoxLayout>
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

constexpr auto fadeResponse = 300ms;
constexpr int menuDistance = 4;

/// The card's and the capsule's colours; what isn't checked has no box.
constexpr auto menuStyle = R"(
    QMenu { background: #2c2f36; color: rgba(255, 255, 255, 242); border: 1px solid rgba(255, 255, 255, 46);
            border-radius: %1px; padding: 5px; font-size: 13px; }
    QMenu::item { background: transparent; padding: 6px 22px 6px 28px; border-radius: 6px; }
    QMenu::item:selected { background: #2f6fe4; }
    QMenu::indicator { width: 12px; height: 12px; left: 9px; }
    QMenu::indicator:checked { image: url(:/lucentra/symbols/checkmark.svg); }
)"_L1;
constexpr int menuCornerRadius = 10;

struct TranslateForm
{
    QString symbol;
    QString label;
};

TranslateForm translateForm(TranslationActionState state)
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

ControlCapsuleView::ControlCapsuleView(const LocalizationManager &localization, NotificationCenter &notificationCenter,
                                       QWidget *parent)
    : QWidget(parent)
    , m_localization(localization)
    , m_tooltip(new CapsuleTooltip(parent))
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(6, 1, 6, 1);
    row->setSpacing(4);
    row->setSizeConstraint(QLayout::SetFixedSize);
    row->addWidget(m_progress = new ProgressIndicator(this));
    m_copy = addButton(&ControlCapsuleView::onCopyTapped);
    m_translate = addButton(&ControlCapsuleView::onTranslateTapped);
    m_triggerMode = addButton(&ControlCapsuleView::onTriggerModeTapped);
    m_keyboard = addButton(&ControlCapsuleView::onKeyboardTapped);
    m_language = addButton(nullptr);
    m_history = addButton(&ControlCapsuleView::onHistoryTapped);
    m_settings = addButton(&ControlCapsuleView::onSettingsTapped);
    m_translate->setSymbolChange({.fromScale = 0.85, .duration = 120ms, .curve = QEasingCurve::OutSine});
    m_copy->setSymbol(u"doc.on.doc"_s);
    m_history->setSymbol(u"clock"_s);
    m_settings->setSymbol(u"gearshape"_s);
    connect(m_language, &QAbstractButton::clicked, this, &ControlCapsuleView::showLanguageMenu);
    makeMenu();

    m_fade.setDuration(int(springTime(fadeResponse).count()));
    m_fade.setEasingCurve(springCurve());
    connect(&m_fade, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        if (isVisibleStep(m_opacity, value.toDouble(), m_fade.endValue().toDouble()))
            setOpacity(value.toDouble());
    });
    notificationCenter.observe(notifications::appLanguageDidChange, this, [this](const QVariant &) { render(); });
    render();
    setOpacity(0);
}

CapsuleButton *ControlCapsuleView::addButton(std::function<void()> ControlCapsuleView::*callback)
{
    auto *button = new CapsuleButton(this);
    layout()->addWidget(button);
    button->installEventFilter(this);
    m_buttons.append(button);
    if (callback) {
        connect(button, &QAbstractButton::clicked, this, [this, callback] {
            if (const auto &react = this->*callback)
                react();
        });
    }
    return button;
}

void ControlCapsuleView::setState(const ControlCapsuleState &state)
{
    if (m_state == state)
        return;
    m_state = state;
    render();
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
    m_progress->setVisible(m_state.isProcessing);
    m_progress->setTurning(m_state.isProcessing && !m_reduceMotion);

    m_copy->setShown(m_state.isInputMode);
    m_copy->describe(text(u"複製翻譯結果"_s), text(u"複製翻譯結果"_s));
    const TranslateForm form = translateForm(m_state.translationActionState);
    m_translate->setShown(!m_state.isInputMode);
    m_translate->setSymbol(form.symbol);
    m_translate->describe(text(form.label), text(form.label));

    m_triggerMode->setSymbol(m_state.isManual ? u"bolt.fill"_s : u"hand.point.up.left.fill"_s);
    m_triggerMode->describe(
        text(m_state.isManual ? u"切換為自動辨識"_s : u"切換為框選翻譯"_s),
        text(m_state.isManual ? u"切換為自動辨識 (當前:框選翻譯)"_s : u"切換為框選翻譯 (當前:自動辨識)"_s));
    const QString keyboard = text(m_state.isInputMode ? u"切換回框選翻譯"_s : u"切換到手動輸入"_s);
    m_keyboard->setSymbol(m_state.isInputMode ? u"camera.viewfinder"_s : u"keyboard"_s);
    m_keyboard->describe(keyboard, keyboard);

    const TargetLanguageOption &language = targetLanguageOption(m_state.targetLanguageCode);
    const QString languageLabel = m_localization.formatted(u"目標語言：%@"_s, text(language.name));
    m_language->setText(language.shortLabel);
    m_language->describe(languageLabel, languageLabel);
    m_language->setAccessibleDescription(text(u"切換目標語言"_s));
    m_history->describe(text(u"翻譯歷史紀錄"_s), text(u"翻譯歷史紀錄"_s));
    m_settings->describe(text(u"設定"_s), text(u"設定"_s));
    updateVisibility();
    updateTooltip();
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
    for (const TargetLanguageOption &option : targetLanguageOptions()) {
        QAction *entry = m_menu->addAction(m_localization.localized(option.name));
        entry->setCheckable(true);
        entry->setChecked(option.code == m_state.targetLanguageCode);
        connect(entry, &QAction::triggered, this, [this, code = option.code] {
            if (onTargetLanguageSelected)
                onTargetLanguageSelected(code);
        });
    }
    m_hoveredButton = nullptr;
    updateTooltip();
    m_menu->popup(mapToGlobal(QPoint(width() - m_menu->sizeHint().width(), height() + menuDistance)));
}

void ControlCapsuleView::updateVisibility()
{
    const QWidget *focus = QApplication::focusWidget();
    const bool isShown =
        m_state.isHovering || m_state.isProcessing || m_menu->isVisible() || (focus && isAncestorOf(focus));
    const double target = isShown ? 1 : 0;
    if (m_fade.state() == QAbstractAnimation::Running && m_fade.endValue() == target && !m_reduceMotion)
        return;
    m_fade.stop();
    if (m_reduceMotion || !isVisible() || m_opacity == target) {
        setOpacity(target);
        return;
    }
    m_fade.setStartValue(m_opacity);
    m_fade.setEndValue(target);
    m_fade.start();
}

void ControlCapsuleView::setOpacity(double opacity)
{
    const bool appears = m_opacity <= 0 && opacity > 0;
    m_opacity = opacity;
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
    // A pointer that came to rest on a button before there was one is told of it by a move to where it is.
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
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(m_opacity);
    const QRectF row = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(QPen(QColor::fromRgbF(1, 1, 1, 0.18F), 0.8));
    painter.setBrush(QColor(38, 41, 48, 224));
    painter.drawRoundedRect(row, row.height() / 2, row.height() / 2);
}

} // namespace lucentra
