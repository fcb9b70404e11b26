#include "LineText.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace lucentra::lines {

namespace {

bool isHangul(QChar character)
{
    return character.unicode() >= 0xAC00 && character.unicode() <= 0xD7A3;
}

bool matches(const QString &text, const QRegularExpression &expression)
{
    return expression.match(text).hasMatch();
}

/// The approximate width of a character in a proportional font.
double advance(QChar character)
{
    if (isIdeographic(character) || isHangul(character))
        return 1;
    if (u" .,;:'|!iljtfrI()[]"_s.contains(character))
        return 0.3;
    return character.isUpper() || u"mw@%"_s.contains(character) ? 0.7 : 0.53;
}

/// Whether there are enough words that code, if there is any, is only mentioned.
bool isProse(const QString &text)
{
    static const QRegularExpression word(u"(?<=^|\\s)\\p{L}{2,}[,.;:]?(?=\\s|$)"_s);
    constexpr int enoughWords = 5;
    constexpr int enoughIdeographs = 8;
    int words = 0;
    for (auto found = word.globalMatch(text); found.hasNext(); found.next())
        ++words;
    return words >= enoughWords || std::count_if(text.begin(), text.end(), isIdeographic) >= enoughIdeographs;
}

/// Whether a Korean word is broken between two lines, which programs do at any syllable: the lower one begins with what
/// only follows other syllables, or the word is elsewhere on the page.
bool isBrokenKorean(const QString &upper, const QString &lower, const QString &page)
{
    static const QRegularExpression wordsStart(u"[\\x{AC00}-\\x{D7A3}]+$"_s);
    static const QRegularExpression wordsRest(u"^[\\x{AC00}-\\x{D7A3}]+"_s);
    static const QRegularExpression ending(
        u"^(은|는|을|를|의|에|에서|에게|으로|로|와|과|도|만|까지|부터|보다|처럼|들|들은|들이|들을|들의|"
        "다|니다|습니다|했다|했습니다|합니다|됩니다|입니다|이다|하는|하고|하여|하지|해서|하면|된다|되는|되었다|지만|면서|어요|아요|세요)(?=[\\s.,!?]|$)"_s);
    const QString start = wordsStart.match(upper).captured();
    const QString end = wordsRest.match(lower).captured();
    if (start.isEmpty() || end.isEmpty())
        return false;
    return ending.match(lower).hasMatch() || page.contains(start + end);
}

} // namespace

bool isIdeographic(QChar character)
{
    const char16_t unit = character.unicode();
    return (unit >= 0x2E80 && unit <= 0x9FFF) || (unit >= 0xF900 && unit <= 0xFAFF) ||
           (unit >= 0xFF00 && unit <= 0xFFEF) || (unit >= 0xD840 && unit <= 0xD8BF);
}

bool hasSquares(const QString &text)
{
    return std::any_of(text.begin(), text.end(), [](QChar each) { return isIdeographic(each) || isHangul(each); });
}

bool hasListMark(const QString &text)
{
    // Numbers are also the ideographs of one to ten.
    static const QRegularExpression mark(
        u"^(\\S+ --? "
        u"|[•·‧∙▪▫◦●○■□◆◇▶►▸★☆※✓✔✗–—*+>-]\\s|[•▪◦●■◆▶►★※✓✔・①-⑳]|[0-9]+(\\.[0-9]+)+\\.?\\s|[(（]?([0-9]{1,3}|[a-zA-Z]|"
        "[\\x{4e00}\\x{4e03}\\x{4e09}\\x{4e5d}\\x{4e8c}\\x{4e94}\\x{516b}\\x{516d}\\x{5341}\\x{56db}]{1,3})([.．)）、:：]\\s|[)）、．]))"_s);
    return matches(text, mark);
}

bool endsSentence(const QString &text)
{
    static const QRegularExpression end(u"([.!?]['\"”’)\\]]*|[。！？．」』”）])$"_s);
    static const QRegularExpression menuEntry(u"(\\.\\.\\.|…)$"_s);
    return matches(text, end) && !matches(text, menuEntry);
}

bool isComplete(const QString &upper, const QString &lower)
{
    static const QRegularExpression entry(u"(\\.\\.\\.|…|[(（][A-Z][)）]|[:：]|니다|십시오|세요)$"_s);
    static const QRegularExpression polite(u"(ます|です|ました|ません|ください)$"_s);
    return (matches(upper, entry) && !beginsInLowerCase(lower)) ||
           (matches(upper, polite) && !u"がかのとよねしけ"_s.contains(lower.left(1)));
}

bool hasSentenceMarks(const QString &text)
{
    static const QRegularExpression mark(u"[，。！？；、]|,(\\s|$)|[^.][.;!?]['\"”’)]*(\\s|$)"_s);
    return matches(text, mark);
}

bool isBrokenWord(const QString &upper, const QString &lower)
{
    static const QRegularExpression start(u"\\p{Ll}[-\u2010\u00ad]$"_s);
    return matches(upper, start) && !lower.isEmpty() && lower[0].isLower();
}

bool isCode(const QString &text)
{
    static const QRegularExpression code(u"[{}]$|[)\"'\\]];$|^\\s*(#include|#define|(if|for|while|switch)\\s?\\(|//|/"
                                         u"\\*|[$#]\\s|>>>|sudo\\s)|^[\\w.-]+@[\\w.-]+[:~]|^[\\w.]+\\s=\\s"_s);
    static const QRegularExpression sign(u"[=!<>]=|=>|->|::|\\w\\(\\)|\\w\\([a-z_]\\w+[(),]|\\)\\.\\w|&&|\\|\\|"_s);
    if (matches(text, code))
        return true;
    if (isProse(text))
        return false;
    if (matches(text, sign))
        return true;
    static const QRegularExpression note(u"\\[[0-9]+\\]"_s);
    const auto isSymbol = [](QChar character) { return u"{}<>=_|\\$#~^@[]"_s.contains(character); };
    const QString rest = QString(text).remove(note);
    return std::count_if(rest.begin(), rest.end(), isSymbol) * 16 > rest.size();
}

bool isMostlyDigits(const QString &text)
{
    const auto count = std::count_if(text.begin(), text.end(), [](QChar c) { return c.isDigit(); });
    return count * 3 > text.size();
}

std::optional<QChar> firstLetter(const QString &text)
{
    const auto letter = std::find_if(text.begin(), text.end(), [](QChar c) { return c.isLetterOrNumber(); });
    return letter == text.end() ? std::nullopt : std::optional(*letter);
}

bool hasCase(QChar character)
{
    return character.isLower() || character.isUpper();
}

bool beginsInLowerCase(const QString &text)
{
    const auto letter = firstLetter(text);
    return letter && letter->isLower();
}

double advance(QStringView text)
{
    return std::accumulate(text.begin(), text.end(), 0.0,
                           [](double sum, QChar character) { return sum + advance(character); });
}

QStringView firstWord(QStringView text)
{
    static const QString opening = u"（「『《〈【“‘"_s;
    static const QString closing = u"，。、！？；：」』）》〉】ー～ぁぃぅぇぉっゃゅょァィゥェォッャュョ々"_s;
    qsizetype end = 0;
    while (end < text.size() && opening.contains(text[end]))
        ++end;
    if (end < text.size() && isIdeographic(text[end])) {
        ++end;
    } else {
        while (end < text.size() && !text[end].isSpace() && !isIdeographic(text[end]))
            ++end;
    }
    while (end < text.size() && closing.contains(text[end]))
        ++end;
    return text.first(end);
}

QString joinedLines(const QString &upper, const QString &lower, const QString &page)
{
    static const QRegularExpression brokenWord(u"([\\p{L}-]+)[-\u2010]$"_s);
    static const QSet<QString> compoundStarts{u"self"_s, u"well"_s, u"non"_s,  u"ex"_s,    u"all"_s,   u"half"_s,
                                              u"high"_s, u"low"_s,  u"long"_s, u"short"_s, u"full"_s,  u"open"_s,
                                              u"real"_s, u"user"_s, u"two"_s,  u"three"_s, u"third"_s, u"one"_s};
    if (upper.isEmpty() || lower.isEmpty())
        return upper + lower;
    if (upper.endsWith(QChar::SoftHyphen))
        return upper.chopped(1) + lower;
    constexpr qsizetype longestWord = 64;
    const QString lastWord = upper.right(longestWord); // the text may be a long one
    const auto broken = brokenWord.match(lastWord);
    if (broken.hasMatch() && lower[0].isLower()) {
        const QString start = broken.captured(1);
        static const QRegularExpression word(u"^\\p{L}+"_s);
        const QString end = word.match(lower).captured();
        const bool isWrittenTogether = page.contains(start + end, Qt::CaseInsensitive);
        const bool isCompound = start.contains(u'-') || compoundStarts.contains(start.toLower()) ||
                                page.contains(u' ' + start + u'-' + end, Qt::CaseInsensitive);
        return (isCompound && !isWrittenTogether ? upper : upper.chopped(1)) + lower;
    }
    const bool needsNoSpace =
        (isIdeographic(upper.back()) && isIdeographic(lower[0])) || isBrokenKorean(lastWord, lower, page);
    return upper + (needsNoSpace || broken.hasMatch() ? u""_s : u" "_s) + lower;
}

} // namespace lucentra::lines
