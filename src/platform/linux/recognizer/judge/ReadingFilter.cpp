#include "judge/ReadingFilter.h"

#include "Rules.h"
#include "read/Writing.h"

#include <QRegularExpression>

#include <algorithm>

namespace lucentra {

using namespace Qt::StringLiterals;

QString tidied(const QString &text)
{
    static const QRegularExpression spaceBetweenWide(
        u"(?<=[\\p{Han}\\p{Hiragana}\\p{Katakana}ー、。，．：；！？「」『』（）《》〈〉【】・…—～]) +(?=[\\p{Han}\\p{Hiragana}\\p{Katakana}ー、。，．：；！？「」『』（）《》〈〉【】・…—～])"_s);
    static const QRegularExpression stopTwice(u"[，,、]。"_s);
    static const QRegularExpression loneBar(u"(?<![^ ])\\|(?=[ '’][a-zA-Z])"_s);
    // Keys are no words, so the model's dictionary is no help with them.
    static const QRegularExpression controlKey(u"\\b[Cc]tr[il1|I]{0,2}\\+"_s);
    static const QRegularExpression letterKey(u"^[Cc]tr.{1,3}?([A-Z])$"_s);
    static const QRegularExpression functionKey(u"^((?:Shift|Ctrl|Alt)\\+)?F[il1|I]{2,3}$"_s);
    static const QRegularExpression hexadecimal(u"\\b[Oo]x(?=[0-9A-F]{2,}\\b)"_s);
    static const QRegularExpression doubledLetter(u"^([CcOoSsVvWwXxZzKkPpUu])(?i:\\1)$"_s);
    QString result = text;
    if (isOn("key names"))
        result.replace(controlKey, u"Ctrl+"_s).replace(letterKey, u"Ctrl+\\1"_s).replace(functionKey, u"\\1F11"_s);
    if (isOn("hexadecimal numbers"))
        result.replace(hexadecimal, u"0x"_s);
    if (isOn("one letter seen twice"))
        result.replace(doubledLetter, u"\\1"_s);
    result.replace(spaceBetweenWide, QString());
    if (isOn("full stop seen twice"))
        result.replace(stopTwice, u"。"_s);
    if (isOn("a bar for I"))
        result.replace(loneBar, u"I"_s);
    return result;
}

QString withFullStop(const QString &text)
{
    static const QRegularExpression end(u"(?<=[\\p{Han}\\p{Hiragana}\\p{Katakana}ー])[ 。，,、.．·・:：]*$"_s);
    const QRegularExpressionMatch match = end.match(text);
    return match.hasMatch() ? text.left(match.capturedStart()) + u'。' : text;
}

void settleTwins(QList<TypeLine> &lines)
{
    static const QString ideographs = u"工力口二八夕卜一千"_s;
    static const QString kana = u"エカロニハタトーチ"_s;
    constexpr int reach = 20; // sizes of a character
    const auto isLone = [](const TypeLine &line) { return line.text.size() == 1; };
    const auto isTwin = [](const TypeLine &line) { return ideographs.contains(line.text) || kana.contains(line.text); };
    for (TypeLine &line : lines) {
        if (!isLone(line) || !isTwin(line))
            continue;
        bool isKana = kana.contains(line.text);
        int nearest = reach * std::max(line.ink.width(), line.ink.height());
        for (const TypeLine &other : std::as_const(lines)) {
            const Scripts scripts = scriptsOf(other.text);
            const int middle = line.ink.center().y();
            const int away = std::abs(other.ink.center().x() - line.ink.center().x());
            const bool isOnRow = other.ink.top() <= middle && middle <= other.ink.bottom();
            if (isLone(other) && !isTwin(other) && scripts.kana + scripts.han > 0 && isOnRow && away < nearest) {
                nearest = away;
                isKana = scripts.kana > 0;
            }
        }
        const qsizetype place = std::max(ideographs.indexOf(line.text), kana.indexOf(line.text));
        line.text = isKana ? kana[place] : ideographs[place];
    }
}

namespace {

/// A figure alone that was read as a character or two: an arrow, a switch, a tool's picture.
bool isRatherIcon(const Reading &reading, const FoundLine &line)
{
    constexpr double sure = 90;   // letters are read like that, figures seldom
    constexpr double rather = 80; // nor are ideographs made of them as surely as that
    const QString &text = reading.text;
    const bool isWide = text.at(0).unicode() >= 0x2E80;
    if (reading.confidence >= (isWide ? rather : sure) || line.shapeCount > 2)
        return false;
    if (text.size() == 1)
        return isWide;
    const bool hasDigit = std::any_of(text.begin(), text.end(), [](QChar c) { return c.isDigit(); });
    // A word's letters may run together; it is longer than an icon then.
    return text.size() <= 4 && !isWide && !hasDigit && line.shapeCount == 1 &&
           (line.isShort() || reading.confidence < 70);
}

/// Many parts of syllables alone, or syllables among kana: what Korean makes of rings, bars and waves.
bool isGibberish(const QString &text)
{
    static const QRegularExpression lonePart(u"[\\x{1100}-\\x{11FF}\\x{3130}-\\x{318F}]"_s);
    const Scripts scripts = scriptsOf(text);
    return 3 * text.count(lonePart) >= text.size() || (scripts.hangul > 0 && scripts.kana > 0);
}

/// A line of code that closes or opens what others are in.
bool isBrace(const Reading &reading, const FoundLine &line, bool isOnPicture)
{
    constexpr double sure = 90;
    static const QRegularExpression brace(u"^(?:[{}]|[})\\]]{1,4}[;,]?)$"_s);
    return !isOnPicture && reading.confidence >= sure && brace.match(reading.text).hasMatch() &&
           qsizetype(2) * line.ink.height() >=
               qsizetype(3) * line.ink.width() / std::max<qsizetype>(1, reading.text.size());
}

} // namespace

bool isPlausible(const Reading &reading, const FoundLine &line, bool isOnPicture)
{
    static const QRegularExpression letter(u"[\\p{L}\\p{N}]"_s);
    // What icons look like: a ring, a cross, an arrow, a box, a tick.
    static const QRegularExpression icon(u"^[xXvVyYoOQ0〇口ロ□ソンヽ一ーLLJ人八入〈〉]$"_s);
    static const QRegularExpression repeated(u"^(.{1,2}?)( ?\\1){3,}$"_s);
    const QString &text = reading.text;
    if (isOn("braces") && isBrace(reading, line, isOnPicture))
        return true;
    if (!text.contains(letter) || (isOn("gibberish") && isGibberish(text)) ||
        (isOn("signs of icons") && line.isShort() && icon.match(text).hasMatch()) ||
        (isOn("repeated letters") && repeated.match(text).hasMatch()))
        return false;
    constexpr double leastSureness = 0.52; // on real screens three of five icons have less, and one of twenty short texts
    constexpr double sureWriting = 0.6;
    if (isOn("sureness of the net") && text.size() <= 3 && line.sureness < leastSureness)
        return false;
    static const QRegularExpression key(u"^(?:(?:Ctrl|Shift|Alt)\\+)*(?:Ctrl\\+\\S+|F1?\\d)$"_s);
    if (isOn("unsure keys") && key.match(text).hasMatch())
        return reading.confidence >= 20;
    if (isOn("rather an icon") && line.sureness < sureWriting && isRatherIcon(reading, line))
        return false;
    double least = isOnPicture ? 55 : 32;
    if (line.isShort())
        least += 15;
    else if (isOnPicture && text.size() <= 3)
        least += 25;
    return reading.confidence >= least;
}

bool isPlausibleOnPictures(const Reading &reading, const FoundLine &line, bool isOnPicture)
{
    constexpr double sure = 90;
    const Scripts scripts = scriptsOf(reading.text);
    // An ideograph says as much as two letters; kana is what blades of grass are read as.
    const int letters = scripts.latin + scripts.kana + 2 * (scripts.han + scripts.hangul);
    if (line.isShort()) // the label of a button, perhaps
        return !isOnPicture && letters >= 2 && reading.confidence >= sure;
    return reading.confidence >= (letters <= 3 ? 80 : 50);
}

} // namespace lucentra
