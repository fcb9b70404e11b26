#include "ToolkitLanguage.h"

#include "Language.h"
#include "OverlayFont.h"

#include <QApplication>
#include <QFontInfo>
#include <QLibraryInfo>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

void useFonts(const QString &languageCode)
{
    static const QFont desktopFont = QApplication::font();
    // By its real name: a generic name would be skipped in favour of the next one in the list.
    QStringList families = QStringList{QFontInfo(desktopFont).family()} + textFamilies(languageCode);
    families.removeDuplicates();
    QFont font = desktopFont;
    font.setFamilies(families);
    QApplication::setFont(font);
}

} // namespace

void ToolkitLanguage::useTexts(const QString &languageCode)
{
    m_table.reset();
    const Language *const language = targetLanguage(languageCode);
    if (!language || languageCode == "en"_L1)
        return;
    m_table.emplace();
    if (m_table->load(u"qtbase_"_s + QString(language->locale), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&*m_table);
}

void ToolkitLanguage::use(const QString &languageCode)
{
    QLocale::setDefault(QLocale(languageCode));
    useTexts(languageCode);
    useFonts(languageCode);
}

} // namespace lucentra
