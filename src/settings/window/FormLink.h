#pragma once

#include <QLabel>
#include <QUrl>

#include <functional>

namespace lucentra {

class SettingsForm;

/// A link that the desktop opens: with the pointer, or with Return while it has the focus. Main thread only.
class FormLink : public QLabel
{
public:
    /// The address is asked for when the link is used.
    FormLink(SettingsForm &form, const QString &textKey, std::function<QUrl()> address, QWidget *parent = nullptr);
};

} // namespace lucentra
