#include "HotkeyButton.h"

#include "LocalizationManager.h"
#include "VirtualKeys.h"

#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

quint32 flagsOf(Qt::KeyboardModifiers modifiers)
{
    quint32 flags = 0;
    if (modifiers & Qt::ShiftModifier)
        flags |= modifierFlag::shift;
    if (modifiers & Qt::ControlModifier)
        flags |= modifierFlag::control;
    if (modifiers & Qt::AltModifier)
        flags |= modifierFlag::option;
    if (modifiers & Qt::MetaModifier)
        flags |= modifierFlag::command;
    return flags;
}

/// The displayed key: its name, or its character in the layout without modifiers.
QString shownKey(const QKeyEvent &event, quint32 keyCode)
{
    QString name = virtualKeyName(keyCode);
    if (!name.isEmpty())
        return name;
    // Qt's codes up to this one are Unicode characters; those above are keys without a character, such as dead keys.
    const auto character = char32_t(event.key());
    constexpr char32_t firstNamedKey = 0x01000000;
    if (character > U' ' && character < firstNamedKey)
        return QString::fromUcs4(&character, 1);
    return americanKeyLabel(keyCode);
}

} // namespace

HotkeyButton::HotkeyButton(const LocalizationManager &texts, Scheduler &scheduler)
    : m_texts(texts)
    , m_scheduler(scheduler)
{
    setAutoDefault(false);
    setDefaultTitle(texts.localized(u"未設定"_s));
    // For the keyboard; the mouse starts at the press.
    connect(this, &QAbstractButton::clicked, this, [this] { startRecording(); });
}

void HotkeyButton::setDefaultTitle(const QString &title)
{
    m_defaultTitle = title;
    if (m_isRecording)
        return;
    // The button is never wider than with the prompt.
    const int width = fontMetrics().horizontalAdvance(recordingPrompt());
    setText(fontMetrics()
                .elidedText(desktopNameOfHotkey(title), Qt::ElideRight, width)
                .replace(u'&', u"&&"_s)); // it may be the key
}

QString HotkeyButton::recordingPrompt() const
{
    return m_texts.localized(u"請按下組合鍵... (按 ESC 取消)"_s);
}

void HotkeyButton::startRecording()
{
    if (m_isRecording)
        return;
    setFocus();
    setText(recordingPrompt());
    m_isRecording = true;
    onRecordingChanged(true);
}

void HotkeyButton::finishRecording(const std::optional<QString> &title)
{
    m_focusLoss.reset();
    const bool wasRecording = m_isRecording;
    m_isRecording = false;
    setDefaultTitle(title.value_or(m_defaultTitle));
    if (!wasRecording)
        return;
    clearFocus();
    onRecordingChanged(false);
}

bool HotkeyButton::handleRecordingKey(const QKeyEvent &event)
{
    if (!m_isRecording)
        return false;
    const auto keyCode = virtualKeyOfXKeyCode(event.nativeScanCode());
    if (!keyCode || event.isAutoRepeat() || isModifierKey(*keyCode))
        return true;
    if (*keyCode == virtualKey::returnKey || *keyCode == virtualKey::escape) {
        finishRecording();
        return true;
    }
    const quint32 flags = flagsOf(event.modifiers());
    const QString combination = hotkeyDisplayString(flags, shownKey(event, *keyCode));
    if (combination.isEmpty())
        return true;
    onHotkeyChanged(flags, *keyCode, combination);
    finishRecording(combination);
    return true;
}

bool HotkeyButton::event(QEvent *event)
{
    // keyPressEvent doesn't get the keys that move the focus.
    if (event->type() == QEvent::KeyPress && handleRecordingKey(*static_cast<QKeyEvent *>(event)))
        return true;
    if (event->type() == QEvent::ShortcutOverride && m_isRecording) {
        event->accept(); // the key is recorded instead of triggering a shortcut
        return true;
    }
    return QPushButton::event(event);
}

void HotkeyButton::mousePressEvent(QMouseEvent *event)
{
    QPushButton::mousePressEvent(event);
    if (event->button() == Qt::LeftButton)
        startRecording();
}

void HotkeyButton::focusInEvent(QFocusEvent *event)
{
    m_focusLoss.reset();
    QPushButton::focusInEvent(event);
}

void HotkeyButton::focusOutEvent(QFocusEvent *event)
{
    if (m_isRecording && event->reason() == Qt::ActiveWindowFocusReason)
        m_focusLoss = m_scheduler.after(focusPatience, [this] { finishRecording(); });
    else if (m_isRecording)
        finishRecording();
    QPushButton::focusOutEvent(event);
}

void HotkeyButton::hideEvent(QHideEvent *event)
{
    if (m_isRecording)
        finishRecording();
    QPushButton::hideEvent(event);
}

} // namespace lucentra
