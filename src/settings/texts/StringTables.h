#pragma once

#include <QString>

#include <map>
#include <memory>

class QTranslator;

namespace lucentra {

/// The interface's texts by language code, read once from the compiled string tables of one folder
/// ("lucentra_<code>.qm"). A missing or unreadable table counts as empty. Any thread.
class StringTables
{
public:
    explicit StringTables(const QString &folder);
    ~StringTables();

    /// The text for a key in a language. If its table has no entry, returns the key for Traditional Chinese, and for
    /// other languages the English text, or the key if that is missing too. Returns the key for a language without a
    /// table.
    QString text(const QString &languageCode, const QString &key) const;

private:
    QString entry(const QString &languageCode, const QByteArray &key) const;

    std::map<QString, std::unique_ptr<QTranslator>> m_tables; ///< constant after construction
};

/// The folder of this program's tables: "../share/lucentra/i18n" relative to the executable's folder, both in the build
/// tree and installed. Needs the application object.
QString stringTablesFolder();

} // namespace lucentra
