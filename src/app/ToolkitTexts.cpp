#include "ToolkitTexts.h"

#include "Language.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace lucentra {

ToolkitTexts::ToolkitTexts() = default;

ToolkitTexts::~ToolkitTexts() = default; // the translator uninstalls itself

void ToolkitTexts::use(const QString &languageCode)
{
    QLocale::setDefault(QLocale(languageCode));
    m_table.reset();
    auto table = std::make_unique<QTranslator>();
    const Language *const language = targetLanguage(languageCode);
    if (!language || languageCode == "en"_L1 ||
        !table->load(u"qtbase_"_s + QString(language->locale), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        return;
    m_table = std::move(table);
    QCoreApplication::installTranslator(m_table.get());
}

} // namespace lucentra
