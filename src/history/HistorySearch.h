#pragma once

#include "HistoryItem.h"

#include <QList>
#include <QLocale>
#include <QString>

namespace lucentra {

/// A part of a text, in UTF-16 units.
struct TextRange
{
    qsizetype start = 0;
    qsizetype length = 0;

    bool operator==(const TextRange &) const = default;
};

/// Searches the originals and translations of entries for a text. Blanks count; case ("ss" finds "ß") and the encoding
/// of accents don't. Case depends on the locale (Turkish I and ı).
class HistorySearch
{
public:
    /// An empty text matches every entry.
    explicit HistorySearch(QString text = {}, const QLocale &locale = QLocale::system());

    const QString &text() const { return m_text; }
    bool isEmpty() const { return m_text.isEmpty(); }

    bool matches(const HistoryItem &item) const;

    /// The folded texts of an entry for `matchesFolded`, to be cached if the same entries are searched repeatedly.
    QString folded(const HistoryItem &item) const;
    bool matchesFolded(const QString &folded) const { return folded.contains(m_folded); }

    /// The matches in a text, without overlaps, extended to whole user-perceived characters.
    QList<TextRange> rangesIn(const QString &text) const;

private:
    QString folded(const QString &text) const;

    QString m_text;
    quint32 m_foldingOptions;
    QString m_folded;
};

} // namespace lucentra
