#pragma once

#include <QString>

#include <map>
#include <memory>

class QTranslator;

namespace lucentra {

/// The interface's texts by language code, read once from the compiled string tables of one folder
/// ("lucentra_<code>.qm"). A table that is missing or unreadable counts as empty. Any thread.
class StringTables
{
public:
    explicit StringTables(const QString &folder);
    ~StringTables();

    /// The text for a key in a language. Where its table has no entry, Traditional Chinese gives the key itself, any
    /// other language the English text, and the key where that is missing too; a language without a table gives the
    /// key.
    QString text(const QString &languageCode, const QString &key) const;

private:
    QString entry(const QString &languageCode, const QByteArray &key) const;

    std::map<QString, std::unique_ptr<QTranslator>> m_tables; // never changes after construction
};

/// The folder of the tables that belong to this program: "../share/lucentra/i18n" from the executable's folder, in the
/// build tree and installed alike. Needs the application object.
QString stringTablesFolder();

} // namespace lucentra
