#include "Sentences.h"

#include <QLocale>
#include <QRegularExpression>

#include <unicode/ubrk.h>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

bool hasSpaces(const QString &language)
{
    return !language.startsWith(u"zh") && !language.startsWith(u"ja");
}

const QRegularExpression &protectedPattern()
{
    static const QRegularExpression pattern(
        uR"((?:https?|ftp|file)://[^\s<>"]+|www\.[^\s<>"]+|(?<![\w.+-])[\w.+-]+@[\w-]+(?:\.[\w-]+)+)"_s // addresses
        uR"(|</?[A-Za-z][^<>]*>|&#?\w+;)"                                                   // tags
        uR"(|%(?:\d+\$|\(\w+\))?[-+#0]*\d*(?:\.\d+)?(?:hh?|ll?|[zjt])?(?:[sdiuxXcfgpLn]\b|@)|%L?\d+)"
        uR"(|\$?\{[\w.:-]*\}|\$[A-Za-z_]\w*)"                              // placeholders
        uR"(|(?:~|\B)/[\w.-]+(?:/[\w.-]*)+|(?<!\w)--?[A-Za-z][\w-]*)"      // paths and options
        uR"(|\b\w+(?:(?:::|->)\w+)+|\b[A-Za-z0-9]+_\w+|\b\w+\(\))",        // names in programs
        QRegularExpression::UseUnicodePropertiesOption);
    return pattern;
}

bool hasLetters(const QString &text)
{
    static const QRegularExpression letter(u"\\p{L}"_s);
    return letter.match(text).hasMatch();
}

bool isInCapitals(const QString &text)
{
    return text.toLower() != text && text.toUpper() == text;
}

/// The sign that ends a sentence, and its form in languages without spaces.
struct EndRow
{
    QChar narrow;
    QChar wide;
};
constexpr EndRow ends[] = {{u'.', u'。'}, {u'!', u'！'}, {u'?', u'？'}, {u':', u'：'}, {u'…', u'…'}, {u';', u'；'}};

const EndRow *endOf(const QString &text)
{
    const auto found = std::find_if(std::begin(ends), std::end(ends), [&text](const EndRow &row) {
        return text.endsWith(row.narrow) || text.endsWith(row.wide);
    });
    return found == std::end(ends) ? nullptr : found;
}

} // namespace

QList<TextPart> partsOfText(const QString &text, const QString &language)
{
    QList<TextPart> parts;
    const auto append = [&parts](const QString &piece) {
        qsizetype start = 0;
        while (start < piece.size() && piece[start].isSpace())
            ++start;
        qsizetype end = piece.size();
        while (end > start && piece[end - 1].isSpace())
            --end;
        if (start > 0)
            parts.append({.separator = piece.first(start)});
        if (end == start)
            return;
        const QString sentence = piece.sliced(start, end - start);
        QString rest = sentence;
        parts.append({.sentence = sentence,
                      .separator = piece.sliced(end),
                      .isLanguage = hasLetters(rest.remove(protectedPattern()))});
    };
    // "ss" keeps usual abbreviations from ending a sentence.
    const QByteArray locale = language.toLatin1() + "@ss=standard";
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UBreakIterator, decltype(&ubrk_close)> sentences(
        ubrk_open(UBRK_SENTENCE, locale.constData(), reinterpret_cast<const UChar *>(text.utf16()),
                  int32_t(text.size()), &status),
        &ubrk_close);
    if (U_FAILURE(status) || !sentences) {
        append(text);
        return parts;
    }
    int32_t start = ubrk_first(sentences.get());
    for (int32_t end = ubrk_next(sentences.get()); end != UBRK_DONE; end = ubrk_next(sentences.get())) {
        // Within an address or a number, a sign ends no sentence.
        const QChar last = text[end - 1];
        if (end < text.size() && !last.isSpace() && last < QChar(0x80))
            continue;
        append(text.sliced(start, end - start));
        start = end;
    }
    return parts;
}

QString joinedText(const QList<TextPart> &parts, const QString &targetLanguage)
{
    QString text;
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const TextPart &part = parts[i];
        text += part.sentence;
        const bool isLast = i + 1 == parts.size();
        const bool isWide = endOf(text) && text.endsWith(endOf(text)->wide);
        if (isLast || !part.isLanguage || part.separator.contains(u'\n'))
            text += part.separator;
        else if (hasSpaces(targetLanguage))
            text += part.separator.isEmpty() ? u" "_s : part.separator;
        else if (!isWide)
            text += part.separator;
    }
    return text;
}

QStringList protectedWords(const QString &sentence)
{
    QStringList words;
    for (const QRegularExpressionMatch &match : protectedPattern().globalMatch(sentence))
        words.append(match.captured());
    return words;
}

bool hasWords(const QString &translation, const QStringList &words)
{
    return std::all_of(words.begin(), words.end(), [&](const QString &word) {
        return translation.count(word) == words.count(word);
    });
}

QString readableSentence(const QString &sentence)
{
    // One short word in capitals is an abbreviation.
    constexpr qsizetype longestAbbreviation = 5;
    const bool isOneWord = !sentence.contains(u' ') && sentence.size() <= longestAbbreviation;
    if (!isInCapitals(sentence) || isOneWord || !protectedWords(sentence).isEmpty())
        return sentence;
    QString ordinary = sentence.toLower();
    const auto first = std::find_if(ordinary.begin(), ordinary.end(), [](QChar c) { return c.isLetter(); });
    if (first != ordinary.end())
        *first = first->toUpper();
    return ordinary;
}

QString restoredSentence(const QString &translation, const QString &source, const QString &targetLanguage)
{
    QString restored = translation.trimmed();
    if (restored.isEmpty())
        return restored;
    if (readableSentence(source) != source && hasSpaces(targetLanguage))
        restored = restored.toUpper();
    else if (source.front().isUpper() && restored.front().isLower() && protectedWords(restored.left(20)).isEmpty())
        restored[0] = restored[0].toUpper();
    const EndRow *const wanted = endOf(source);
    const EndRow *const found = endOf(restored);
    if (!wanted && found && (found->narrow == u'.' || found->narrow == u':'))
        restored.chop(1);
    else if (wanted && !found && restored.back().isLetterOrNumber())
        restored += hasSpaces(targetLanguage) ? wanted->narrow : wanted->wide;
    return restored;
}

} // namespace lucentra
