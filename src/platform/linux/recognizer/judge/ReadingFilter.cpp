#include "judge/ReadingFilter.h"

#include "Rules.h"
#include "read/Writing.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace lucentra {

using namespace Qt::StringLiterals;

QString tidied(const QString &text)
{
    static const QRegularExpression spaceBetweenWide(
        u"(?<=[\\p{Han}\\p{Hiragana}\\p{Katakana}ー、。，．：；！？「」『』（）《》〈〉【】・…—～]) +(?=[\\p{Han}\\p{Hiragana}\\p{Katakana}ー、。，．：；！？「」『』（）《》〈〉【】・…—～])"_s);
    return QString(text).remove(spaceBetweenWide);
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

/// A line of code that closes or opens what others are in.
bool isBrace(const Reading &reading, const FoundLine &line)
{
    constexpr double sure = 80;
    static const QRegularExpression brace(u"^(?:[{}]|[})\\]]{1,4}[;,]?)$"_s);
    return reading.confidence >= sure && brace.match(reading.text).hasMatch() &&
           qsizetype(2) * line.ink.height() >=
               qsizetype(3) * line.ink.width() / std::max<qsizetype>(1, reading.text.size());
}

} // namespace

bool isPlausible(const Reading &reading, const FoundLine &line)
{
    // Confidences, 0 to 100, by the number of characters, where the net is as sure of its ink as usual. Icons and parts
    // of pictures are read as a few characters, and seldom surely. Digits are alike in all models. Chosen on
    // 7,500 lines of screens, where a false line weighed as much as a missed one.
    constexpr std::array<double, 5> least{100, 88, 84, 70, 55};
    constexpr double leastOfLong = 32;
    constexpr double leastOfIdeographs = 60; // two or more and nothing else, as icons are hardly ever read
    constexpr double digits = 14;            // less, for one or two characters with a digit
    constexpr double usual = 0.6;            // sureness; a hundredth more or less weighs as much as one of confidence
    static const QRegularExpression letter(u"[\\p{L}\\p{N}]"_s);
    static const QRegularExpression digit(u"\\d"_s);
    if (isOn("braces") && isBrace(reading, line))
        return true;
    if (!reading.text.contains(letter))
        return false;
    const auto size = std::size_t(reading.text.size() - reading.text.count(u' '));
    if (size >= least.size() || !isOn("short readings"))
        return reading.confidence >= leastOfLong;
    double worth = reading.confidence;
    if (isOn("sureness of the net"))
        worth += 100 * (line.sureness - usual);
    if (size <= 2 && reading.text.contains(digit))
        worth += digits;
    if (size > 1 && scriptsOf(reading.text).han == qsizetype(size) && worth >= leastOfIdeographs)
        return true;
    return worth >= least[size];
}

} // namespace lucentra
