#pragma once

#include <QWidget>

#include <functional>

class QLineEdit;
class QToolButton;

namespace lucentra {

class SettingsForm;

/// A field for a secret with a button that shows it in clear. While it is shown nothing of it can be selected, for
/// what is selected would be on the clipboard of selections. Main thread only.
class KeyField : public QWidget
{
public:
    explicit KeyField(SettingsForm &form, QWidget *parent = nullptr);

    QString key() const;
    /// Fills in a stored key, unless something was typed already.
    void setStoredKey(const QString &key);
    std::function<void(const QString &key)> onTyped;

private:
    void showInClear(bool inClear);
    void labelButton();

    SettingsForm &m_form;
    QLineEdit *m_field;
    QToolButton *m_show;
    bool m_wasTyped = false;
};

} // namespace lucentra
