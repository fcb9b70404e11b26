#include "HistorySearch.h"

#include <QTextBoundaryFinder>

#include <algorithm>
#include <utility>

namespace lucentra {

namespace {

/// Stands between an entry's texts, so that nothing is found across them; no character of any text.
constexpr QChar separator(0xFFFF);

/// Whether a letter's cases differ in length ("ß" and "SS", ligatures, Greek with an iota below), which the toolkit's
/// folding leaves out. A few others are among them, which it doesn't harm.
bool hasLongerCase(QChar letter)
{
    const char16_t code = letter.unicode();
    return code == 0x00DF || code == 0x0149 || code == 0x01F0 || code == 0x0390 || code == 0x03B0 || code == 0x0587 ||
           (code >= 0x1E96 && code <= 0x1E9E) || (code >= 0x1F50 && code <= 0x1FFC) ||
           (code >= 0xFB00 && code <= 0xFB17);
}

QString foldedWhole(const QString &text)
{
    QString simple = text.toCaseFolded();
    if (std::none_of(simple.cbegin(), simple.cend(), hasLongerCase))
        return simple;
    QString result;
    result.reserve(simple.size() + 8);
    for (const QChar letter : std::as_const(simple))
        result += hasLongerCase(letter) ? QString(letter).toUpper().toCaseFolded() : QString(letter);
    return result;
}

} // namespace

HistorySearch::HistorySearch(QString text, const QLocale &locale)
    : m_text(std::move(text))
    , m_hasDotlessI(locale.language() == QLocale::Turkish || locale.language() == QLocale::Azerbaijani)
    , m_folded(folded(m_text))
{
}

QString HistorySearch::folded(const QString &text) const
{
    QString result = text.normalized(QString::NormalizationForm_C);
    if (m_hasDotlessI)
        result.replace(QChar(u'I'), QChar(u'ı')).replace(QChar(u'İ'), QChar(u'i'));
    return foldedWhole(result);
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
    // Folding may change lengths, so each character is folded by itself and remembered by where it came from.
    QString foldedText;
    QList<std::pair<qsizetype, TextRange>> characters; // start in the folded text, range in the text
    QTextBoundaryFinder boundaries(QTextBoundaryFinder::Grapheme, text);
    for (qsizetype start = 0, end = boundaries.toNextBoundary(); end > start; end = boundaries.toNextBoundary()) {
        characters.append({foldedText.size(), {start, end - start}});
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
