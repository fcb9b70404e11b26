#include "ToolkitTexts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// The toolkit names Chinese by its countries.
QString toolkitCode(const QString &languageCode)
{
    if (languageCode == "zh-Hant"_L1)
        return u"zh_TW"_s;
    if (languageCode == "zh-Hans"_L1)
        return u"zh_CN"_s;
    return languageCode;
}

} // namespace

ToolkitTexts::ToolkitTexts() = default;

ToolkitTexts::~ToolkitTexts() = default; // a translator that goes takes itself out

void ToolkitTexts::use(const QString &languageCode)
{
    QLocale::setDefault(QLocale(languageCode));
    m_table.reset();
    auto table = std::make_unique<QTranslator>();
    if (languageCode == "en"_L1 ||
        !table->load(u"qtbase_"_s + toolkitCode(languageCode), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        return;
    m_table = std::move(table);
    QCoreApplication::installTranslator(m_table.get());
}

} // namespace lucentra
