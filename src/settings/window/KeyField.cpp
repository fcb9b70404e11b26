#include "KeyField.h"

#include "SettingsForm.h"
#include "Symbol.h"

#include <QAccessible>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMouseEvent>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QStylePainter>
#include <QTextLayout>
#include <QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Replaces the letters by dots in the accessibility events of secret fields, since the toolkit reports the letters in
/// every echo mode. Installed only while such a field may change, because it slows all other events down.
class SecretFieldAccessibility
{
public:
    static void begin() { QAccessible::installUpdateHandler(&handle); }
    static void end() { QAccessible::installUpdateHandler(nullptr); }

private:
    static void handle(QAccessibleEvent *event);
    static void passOn(QAccessibleEvent *event)
    {
        end();
        QAccessible::updateAccessibility(event);
        begin();
    }
    static QString dots(const QString &text) { return QString(text.size(), u'•'); }
};

} // namespace

/// A field for a secret that can be shown in clear, by painting alone. Screen readers and everything else that reads
/// the field always get dots, also for its changes. While the secret is shown, nothing can be selected, since the
/// selection would be on the clipboard of selections.
class SecretEdit : public QLineEdit
{
public:
    SecretEdit()
    {
        setEchoMode(Password);
        setAcceptDrops(false); // a drop would change the field without the focus
        setInputMethodHints(Qt::ImhHiddenText | Qt::ImhSensitiveData | Qt::ImhNoPredictiveText |
                            Qt::ImhNoAutoUppercase);
        connect(this, &QLineEdit::selectionChanged, this, [this] {
            if (m_isInClear)
                deselect();
        });
        connect(this, &QLineEdit::cursorPositionChanged, this, qOverload<>(&QWidget::update));
    }

    ~SecretEdit() override
    {
        if (hasFocus())
            SecretFieldAccessibility::end();
    }

    /// Use it instead of `setText`, which would report the text to screen readers.
    void setSecret(const QString &secret)
    {
        SecretFieldAccessibility::begin();
        setText(secret);
        if (!hasFocus())
            SecretFieldAccessibility::end();
    }

    void showInClear(bool inClear)
    {
        deselect();
        m_isInClear = inClear;
        update();
    }

protected:
    void focusInEvent(QFocusEvent *event) override
    {
        SecretFieldAccessibility::begin();
        QLineEdit::focusInEvent(event);
    }

    void focusOutEvent(QFocusEvent *event) override
    {
        QLineEdit::focusOutEvent(event);
        if (event->reason() != Qt::PopupFocusReason) // the context menu, which can paste
            SecretFieldAccessibility::end();
    }

    void paintEvent(QPaintEvent *event) override
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
    void mousePressEvent(QMouseEvent *event) override
    {
        if (!m_isInClear || event->button() != Qt::LeftButton) {
            QLineEdit::mousePressEvent(event);
            return;
        }
        QTextLayout layout;
        layOut(layout);
        setCursorPosition(layout.lineAt(0).xToCursor(event->position().x() - textRect().left() + offset(layout)));
    }

    void mouseMoveEvent(QMouseEvent *event) override
    {
        if (!m_isInClear)
            QLineEdit::mouseMoveEvent(event);
    }

    void mouseDoubleClickEvent(QMouseEvent *event) override
    {
        if (!m_isInClear)
            QLineEdit::mouseDoubleClickEvent(event);
    }

private:
    QRect textRect() const
    {
        constexpr int horizontalMargin = 2; // as in QLineEdit
        QStyleOptionFrame panel;
        initStyleOption(&panel);
        return style()->subElementRect(QStyle::SE_LineEditContents, &panel, this) -
               (textMargins() + QMargins(horizontalMargin, 0, horizontalMargin, 0));
    }

    void layOut(QTextLayout &layout) const
    {
        layout.setText(text());
        layout.setFont(font());
        layout.beginLayout();
        layout.createLine();
        layout.endLayout();
    }

    /// How far the text is scrolled to the left to show the cursor.
    qreal offset(const QTextLayout &layout) const
    {
        const QTextLine line = layout.lineAt(0);
        const qreal width = textRect().width() - 1;
        const qreal cursor = line.cursorToX(cursorPosition());
        return std::clamp(cursor - width / 2, 0.0, std::max(0.0, line.naturalTextWidth() - width));
    }

    bool m_isInClear = false;
};

void SecretFieldAccessibility::handle(QAccessibleEvent *event)
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

KeyField::KeyField(SettingsForm &form)
    : m_form(form)
    , m_field(new SecretEdit)
    , m_show(new QToolButton)
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(m_field, 1);
    layout->addWidget(m_show);
    constexpr int fieldWidth = 300; // including the button
    setMinimumWidth(fieldWidth);
    setFocusProxy(m_field);
    m_show->setCheckable(true);
    m_show->setAutoRaise(true);
    connect(m_field, &QLineEdit::textEdited, this, [this](const QString &text) {
        m_wasTyped = true;
        onTyped(text);
    });
    connect(m_show, &QToolButton::toggled, this, &KeyField::showInClear);
    form.keepText([this] { labelButton(); });
}

QString KeyField::key() const
{
    return m_field->text();
}

void KeyField::setStoredKey(const QString &key)
{
    if (!m_wasTyped)
        m_field->setSecret(key);
}

void KeyField::showInClear(bool inClear)
{
    m_field->showInClear(inClear);
    labelButton();
}

void KeyField::labelButton()
{
    m_field->setAccessibleName(m_form.text(u"API Key"_s));
    const QString name = m_form.text(m_show->isChecked() ? u"隱藏 API Key"_s : u"顯示 API Key"_s);
    m_show->setAccessibleName(name);
    m_show->setToolTip(name);
    m_show->setIcon(symbolIcon(m_show->isChecked() ? u"eye-crossed"_s : u"eye"_s,
                               palette().color(QPalette::Active, QPalette::ButtonText)));
}

} // namespace lucentra
