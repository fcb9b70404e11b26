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

/// Finds a text in the entries' originals and translations: as a part of them, as typed (blanks count), whatever the
/// case of its letters ("ss" finds "ß") and however its accents are encoded. Which letters are cases of each other is
/// the locale's business (a Turkish I and ı).
class HistorySearch
{
public:
    /// An empty text is found everywhere.
    explicit HistorySearch(QString text = {}, const QLocale &locale = QLocale::system());

    const QString &text() const { return m_text; }
    bool isEmpty() const { return m_text.isEmpty(); }

    bool matches(const HistoryItem &item) const;

    /// What `matchesFolded` compares with: both texts without what doesn't count. It is worth keeping where the same
    /// entries are searched again and again.
    QString folded(const HistoryItem &item) const;
    bool matchesFolded(const QString &folded) const { return folded.contains(m_folded); }

    /// Where the text is found, without overlaps, in whole user-perceived characters.
    QList<TextRange> rangesIn(const QString &text) const;

private:
    QString folded(const QString &text) const;

    QString m_text;
    bool m_hasDotlessI;
    QString m_folded;
};

} // namespace lucentra
