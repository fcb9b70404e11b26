#include "InterfaceFont.h"

#include "OverlayFont.h"

#include <QApplication>
#include <QFontInfo>

namespace lucentra {

void useInterfaceFont(const QString &languageCode)
{
    static const QFont desktopFont = QApplication::font();
    // By its real name: a generic name would be skipped in favour of the next one in the list.
    QStringList families{QFontInfo(desktopFont).family()};
    for (const QString &family : textFamilies(languageCode)) {
        if (!families.contains(family))
            families.append(family);
    }
    QFont font = desktopFont;
    font.setFamilies(families);
    QApplication::setFont(font);
}

} // namespace lucentra
