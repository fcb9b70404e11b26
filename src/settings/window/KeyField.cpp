#include "KeyField.h"

#include "SecretEdit.h"
#include "SettingsForm.h"
#include "Symbol.h"

#include <QHBoxLayout>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace lucentra {

KeyField::KeyField(SettingsForm &form, QWidget *parent)
    : QWidget(parent)
    , m_form(form)
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
