#include "HistorySearch.h"

#include <QTextBoundaryFinder>

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <utility>

namespace lucentra {

namespace {

/// Separates an entry's texts, so that no match spans both. It is not a character of any text.
constexpr QChar separator(0xFFFF);

} // namespace

HistorySearch::HistorySearch(QString text, const QLocale &locale)
    : m_text(std::move(text))
    , m_foldingOptions(locale.language() == QLocale::Turkish || locale.language() == QLocale::Azerbaijani
                           ? U_FOLD_CASE_EXCLUDE_SPECIAL_I
                           : U_FOLD_CASE_DEFAULT)
    , m_folded(folded(m_text))
{
}

QString HistorySearch::folded(const QString &text) const
{
    const QString composed = text.normalized(QString::NormalizationForm_C);
    constexpr qsizetype mostUnits = 3; // of the folding of one unit
    QString result(composed.size() * mostUnits, Qt::Uninitialized);
    UErrorCode error = U_ZERO_ERROR;
    const int size = u_strFoldCase(reinterpret_cast<char16_t *>(result.data()), int32_t(result.size()),
                                   reinterpret_cast<const char16_t *>(composed.constData()), int32_t(composed.size()),
                                   m_foldingOptions, &error);
    result.truncate(size);
    return result;
}

QString HistorySearch::folded(const HistoryItem &item) const
{
    return folded(item.originalText) + separator + folded(item.translatedText);
}

bool HistorySearch::matches(const HistoryItem &item) const
{
    return isEmpty() || matchesFolded(folded(item));
}

QList<TextRange> HistorySearch::rangesIn(const QString &text) const
{
    if (isEmpty())
        return {};
    // Folding may change lengths, so each character is folded separately, with its range in the text.
    QString foldedText;
    QList<std::pair<qsizetype, TextRange>> characters; // start in the folded text, range in the text
    QTextBoundaryFinder boundaries(QTextBoundaryFinder::Grapheme, text);
    for (qsizetype start = 0, end = boundaries.toNextBoundary(); end > start; end = boundaries.toNextBoundary()) {
        characters.emplaceBack(foldedText.size(), TextRange{start, end - start});
        foldedText += folded(text.sliced(start, end - start));
        start = end;
    }
    const auto characterAt = [&](qsizetype place) {
        const auto after = std::upper_bound(characters.cbegin(), characters.cend(), place,
                                            [](qsizetype value, const auto &each) { return value < each.first; });
        return std::prev(after)->second;
    };
    QList<TextRange> ranges;
    for (qsizetype at = foldedText.indexOf(m_folded); at >= 0;
         at = foldedText.indexOf(m_folded, at + m_folded.size())) {
        const TextRange first = characterAt(at);
        const TextRange last = characterAt(at + m_folded.size() - 1);
        ranges.append({first.start, last.start + last.length - first.start});
    }
    return ranges;
}

} // namespace lucentra
