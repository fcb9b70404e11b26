#pragma once

#include <QPushButton>
#include <QUrl>

#include <functional>

namespace lucentra {

class SettingsForm;

/// A link that the desktop opens at a click, at its mnemonic, or at Return or Space while it has the focus.
class FormLink : public QPushButton
{
public:
    /// `address` is called when the link is used.
    FormLink(SettingsForm &form, const QString &textKey, std::function<QUrl()> address, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace lucentra
