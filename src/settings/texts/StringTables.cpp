#include "StringTables.h"

#include "AppLanguage.h"

#include <QCoreApplication>
#include <QDir>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace lucentra {

StringTables::StringTables(const QString &folder)
{
    for (const AppLanguage language : allAppLanguages) {
        if (language == AppLanguage::System)
            continue;
        const QString code = rawValue(language);
        auto table = std::make_unique<QTranslator>();
        if (table->load(folder + u"/lucentra_"_s + code + u".qm"_s))
            m_tables.emplace(code, std::move(table));
    }
}

StringTables::~StringTables() = default;

QString StringTables::text(const QString &languageCode, const QString &key) const
{
    const QByteArray utf8 = key.toUtf8();
    if (QString found = entry(languageCode, utf8); !found.isNull())
        return found;
    if (languageCode == "zh-Hant"_L1 || !m_tables.contains(languageCode))
        return key;
    QString english = entry(u"en"_s, utf8);
    return english.isNull() ? key : english;
}

QString StringTables::entry(const QString &languageCode, const QByteArray &key) const
{
    const auto table = m_tables.find(languageCode);
    return table == m_tables.end() ? QString() : table->second->translate("Lucentra", key.constData());
}

QString stringTablesFolder()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + u"/../share/lucentra/i18n"_s);
}

} // namespace lucentra
