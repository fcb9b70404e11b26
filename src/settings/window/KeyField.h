#pragma once

#include "Callback.h"

#include <QWidget>

class QToolButton;

namespace lucentra {

class SecretEdit;
class SettingsForm;

/// A field for a secret, with a button that shows it in clear.
class KeyField : public QWidget
{
public:
    explicit KeyField(SettingsForm &form);

    QString key() const;
    /// Fills in a stored key, unless something was typed already.
    void setStoredKey(const QString &key);
    bool wasTyped() const { return m_wasTyped; }
    Callback<const QString &> onTyped;

private:
    void showInClear(bool inClear);
    void labelButton();

    SettingsForm &m_form;
    SecretEdit *m_field;
    QToolButton *m_show;
    bool m_wasTyped = false;
};

} // namespace lucentra
