#include "SecretEdit.h"

#include <QAccessible>
#include <QFocusEvent>
#include <QMouseEvent>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QStylePainter>
#include <QTextLayout>

#include <algorithm>

namespace lucentra {

namespace {

constexpr int horizontalMargin = 2; ///< as in QLineEdit

/// Replaces the letters by dots in the accessibility events of secret fields, since the toolkit reports the letters in
/// every echo mode. Installed only while such a field may change, because it slows all other events down.
class SecretFieldAccessibility
{
public:
    static void begin() { QAccessible::installUpdateHandler(&handle); }
    static void end() { QAccessible::installUpdateHandler(nullptr); }

private:
    static void handle(QAccessibleEvent *event)
    {
        if (event->type() == QAccessible::TableModelChanged)
            return; // it has been handled already
        if (!dynamic_cast<SecretEdit *>(event->object())) {
            passOn(event);
            return;
        }
        QObject *field = event->object();
        if (event->type() == QAccessible::TextInserted) {
            const auto *inserted = static_cast<QAccessibleTextInsertEvent *>(event);
            QAccessibleTextInsertEvent masked(field, inserted->changePosition(), dots(inserted->textInserted()));
            passOn(&masked);
        } else if (event->type() == QAccessible::TextRemoved) {
            const auto *removed = static_cast<QAccessibleTextRemoveEvent *>(event);
            QAccessibleTextRemoveEvent masked(field, removed->changePosition(), dots(removed->textRemoved()));
            passOn(&masked);
        } else if (event->type() == QAccessible::TextUpdated) {
            const auto *updated = static_cast<QAccessibleTextUpdateEvent *>(event);
            QAccessibleTextUpdateEvent masked(field, updated->changePosition(), dots(updated->textRemoved()),
                                              dots(updated->textInserted()));
            passOn(&masked);
        } else if (event->type() != QAccessible::ValueChanged) {
            passOn(event);
        }
    }
    static void passOn(QAccessibleEvent *event)
    {
        end();
        QAccessible::updateAccessibility(event);
        begin();
    }
    static QString dots(const QString &text) { return QString(text.size(), u'•'); }
};

} // namespace

SecretEdit::SecretEdit(QWidget *parent)
    : QLineEdit(parent)
{
    setEchoMode(Password);
    setAcceptDrops(false); // a drop would change the field without the focus
    setInputMethodHints(Qt::ImhHiddenText | Qt::ImhSensitiveData | Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
    connect(this, &QLineEdit::selectionChanged, this, [this] {
        if (m_isInClear)
            deselect();
    });
    connect(this, &QLineEdit::cursorPositionChanged, this, qOverload<>(&QWidget::update));
}

SecretEdit::~SecretEdit()
{
    if (hasFocus())
        SecretFieldAccessibility::end();
}

void SecretEdit::setSecret(const QString &secret)
{
    SecretFieldAccessibility::begin();
    setText(secret);
    if (!hasFocus())
        SecretFieldAccessibility::end();
}

void SecretEdit::focusInEvent(QFocusEvent *event)
{
    SecretFieldAccessibility::begin();
    QLineEdit::focusInEvent(event);
}

void SecretEdit::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason) // the context menu, which can paste
        SecretFieldAccessibility::end();
}

void SecretEdit::showInClear(bool inClear)
{
    deselect();
    m_isInClear = inClear;
    update();
}

QRect SecretEdit::textRect() const
{
    QStyleOptionFrame panel;
    initStyleOption(&panel);
    return style()->subElementRect(QStyle::SE_LineEditContents, &panel, this) -
           (textMargins() + QMargins(horizontalMargin, 0, horizontalMargin, 0));
}

void SecretEdit::layOut(QTextLayout &layout) const
{
    layout.setText(text());
    layout.setFont(font());
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
}

/// How far the text is scrolled to the left to show the cursor.
qreal SecretEdit::offset(const QTextLayout &layout) const
{
    const QTextLine line = layout.lineAt(0);
    const qreal width = textRect().width() - 1;
    const qreal cursor = line.cursorToX(cursorPosition());
    return std::clamp(cursor - width / 2, 0.0, std::max(0.0, line.naturalTextWidth() - width));
}

void SecretEdit::paintEvent(QPaintEvent *event)
{
    if (!m_isInClear) {
        QLineEdit::paintEvent(event);
        return;
    }
    QStylePainter painter(this);
    QStyleOptionFrame panel;
    initStyleOption(&panel);
    painter.drawPrimitive(QStyle::PE_PanelLineEdit, panel);
    const QRect room = textRect();
    painter.setClipRect(room);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Text));
    QTextLayout layout;
    layOut(layout);
    const QPointF place(room.left() - offset(layout), room.top() + (room.height() - layout.lineAt(0).height()) / 2);
    layout.draw(&painter, place);
    if (hasFocus())
        layout.drawCursor(&painter, place, cursorPosition(),
                          style()->pixelMetric(QStyle::PM_TextCursorWidth, &panel, this));
}

/// QLineEdit would use the positions of the dots instead of the letters.
void SecretEdit::mousePressEvent(QMouseEvent *event)
{
    if (!m_isInClear || event->button() != Qt::LeftButton) {
        QLineEdit::mousePressEvent(event);
        return;
    }
    QTextLayout layout;
    layOut(layout);
    setCursorPosition(layout.lineAt(0).xToCursor(event->position().x() - textRect().left() + offset(layout)));
}

void SecretEdit::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_isInClear)
        QLineEdit::mouseMoveEvent(event);
}

void SecretEdit::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (!m_isInClear)
        QLineEdit::mouseDoubleClickEvent(event);
}

} // namespace lucentra
