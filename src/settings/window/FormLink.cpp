#include "FormLink.h"

#include "SettingsForm.h"

#include <QDesktopServices>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

FormLink::FormLink(SettingsForm &form, const QString &textKey, std::function<QUrl()> address, QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::RichText);
    setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    setFocusPolicy(Qt::StrongFocus);
    form.keepText([this, &form, textKey] {
        const QString text = form.text(textKey);
        setText(u"<a href=\"#\">"_s + text.toHtmlEscaped() + u"</a>"_s);
        setAccessibleName(text);
    });
    connect(this, &QLabel::linkActivated, this,
            [address = std::move(address)] { QDesktopServices::openUrl(address()); });
}

} // namespace lucentra
