#include "FormLink.h"

#include "Mnemonics.h"
#include "SettingsForm.h"

#include <QDesktopServices>
#include <QStyleOptionFocusRect>
#include <QStylePainter>

#include <utility>

namespace lucentra {

namespace {

constexpr int margin = 2; ///< around the text, for the focus frame

} // namespace

FormLink::FormLink(SettingsForm &form, const QString &textKey, std::function<QUrl()> address, QWidget *parent)
    : QPushButton(parent)
{
    setAutoDefault(true); // for the Return key
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    form.keepText([this, &form, textKey] { setMnemonicText(*this, form.text(textKey)); });
    connect(this, &QPushButton::clicked, this,
            [address = std::move(address)] { QDesktopServices::openUrl(address()); });
}

QSize FormLink::sizeHint() const
{
    return fontMetrics().size(Qt::TextSingleLine | Qt::TextShowMnemonic, text()) + QSize(2 * margin, 2 * margin);
}

QSize FormLink::minimumSizeHint() const
{
    return sizeHint();
}

void FormLink::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    QFont shown = font();
    shown.setUnderline(underMouse());
    painter.setFont(shown);
    painter.setPen(palette().color(QPalette::Link));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine | Qt::TextShowMnemonic, text());
    if (!hasFocus())
        return;
    QStyleOptionFocusRect focus;
    focus.initFrom(this);
    painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
}

} // namespace lucentra
