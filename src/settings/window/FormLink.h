#pragma once

#include <QPushButton>
#include <QUrl>

#include <functional>

namespace lucentra {

class SettingsForm;

/// A link that the desktop opens: with the pointer, its letter, or Return or Space while it has the focus. Main thread
/// only.
class FormLink : public QPushButton
{
public:
    /// The address is asked for when the link is used.
    FormLink(SettingsForm &form, const QString &textKey, std::function<QUrl()> address, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace lucentra
