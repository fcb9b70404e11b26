#include "judge/LineBox.h"

#include <algorithm>
#include <cmath>

namespace lucentra {
namespace {

/// How far ink reaches from the baseline, in ems; negative where it ends before the baseline.
struct Reach
{
    double above = 0;
    double below = 0;
};

// Between DejaVu Sans, Liberation Sans, Noto Sans and Roboto, whose glyphs Qt measured at 1000 pixels; each of the four
// lies within 0.05 em of these.
constexpr double xHeight = 0.54;
constexpr double capitals = 0.72; // and digits
constexpr double ascenders = 0.75;
constexpr double letterT = 0.67;
constexpr double accents = 0.92; // on capitals
constexpr double descenders = 0.22;
constexpr double tails = 0.14;    // of commas and Q, below the baseline
constexpr double brackets = 0.18; // likewise
// Noto Sans CJK, measured likewise. Few ideographs fill their square; the tallest of a line come near to it.
constexpr Reach ideographs{0.85, 0.08};
constexpr Reach kana{0.80, 0.05};
constexpr Reach hangul{0.81, 0.09};

constexpr double bleeding = 0.7;   // pixels; squares aren't hinted to whole ones, so their ink spreads to more rows
constexpr double leastReach = 0.4; // em; lower ink (a dash, dots) tells no size
constexpr double oneFont = 1.1;    // ratio of two ems
constexpr Reach latinBox{0.76, 0.24};
constexpr Reach wideBox{0.88, 0.12};

bool isWide(QChar::Script script)
{
    return script == QChar::Script_Han || script == QChar::Script_Hiragana || script == QChar::Script_Katakana ||
           script == QChar::Script_Hangul;
}

/// How far a letter's accent reaches, where it has one.
Reach reachOfAccent(QChar c, bool isCapital)
{
    constexpr unsigned char above = 230; // classes of combining marks; the others stand below or beside
    const QString parts = c.decomposition();
    if (parts.size() < 2)
        return {};
    if (parts[1].combiningClass() == above)
        return {isCapital ? accents : ascenders, 0};
    return {0, descenders};
}

Reach reachOfLetter(QChar c)
{
    const bool isCapital = c.isUpper();
    const Reach accent = reachOfAccent(c, isCapital);
    Reach reach{capitals, c == u'Q' ? tails : 0};
    if (!isCapital && !c.isDigit()) {
        const bool isHigh = QStringView(u"bdfhijklßþđ").contains(c);
        const bool isLow = QStringView(u"gjpqyþµ").contains(c);
        reach = {isHigh ? ascenders : c == u't' ? letterT : xHeight, isLow ? descenders : 0};
    }
    return {std::max(reach.above, accent.above), std::max(reach.below, accent.below)};
}

Reach reachOfMark(QChar c)
{
    if (QStringView(u".…_,").contains(c))
        return {0.1, c == u'_' || c == u',' ? tails : 0};
    if (QStringView(u"-–—~·•").contains(c))
        return {0.36, -0.2};
    if (QStringView(u"=+<>:;").contains(c))
        return {xHeight, c == u';' ? tails : 0};
    if (QStringView(u"'\"`^*°‘’“”").contains(c))
        return {capitals, -0.4};
    if (QStringView(u"()[]{}|\\@$").contains(c))
        return {ascenders, brackets};
    if (QStringView(u"「」『』（）《》〈〉【】").contains(c))
        return ideographs;
    if (QStringView(u"、。，．：；ー・～").contains(c))
        return {0.5, 0};
    return {capitals, 0};
}

Reach reachOf(QChar c)
{
    switch (c.script()) {
    case QChar::Script_Han:
        return c == u'一' ? Reach{0.42, -0.3} : ideographs;
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
        return kana;
    case QChar::Script_Hangul:
        return hangul;
    default:
        return c.isLetterOrNumber() ? reachOfLetter(c) : reachOfMark(c);
    }
}

/// A line's type, in pixels; no em where its text tells none.
struct Type
{
    double em = 0;
    double baseline = 0;
    bool hasSquares = false;
};

Type typeOf(const TypeLine &line)
{
    Reach reach{-1, -1};
    Type type;
    for (const QChar c : line.text) {
        if (c.isSpace())
            continue;
        const Reach one = reachOf(c);
        reach = {std::max(reach.above, one.above), std::max(reach.below, one.below)};
        type.hasSquares |= isWide(c.script());
    }
    if (reach.above + reach.below < leastReach)
        return {};
    const double spread = type.hasSquares ? bleeding : 0;
    type.em = (line.ink.height() - spread) / (reach.above + reach.below);
    type.baseline = line.ink.bottom() + 1 - spread / 2 - reach.below * type.em;
    return type;
}

/// The median of the ems that are like this one, each as often as its line has letters.
double sharedEm(double em, const QList<Type> &types, const QList<TypeLine> &lines)
{
    QList<double> alike;
    for (qsizetype i = 0; i < types.size(); ++i) {
        if (types[i].em <= oneFont * em && em <= oneFont * types[i].em)
            alike.insert(alike.size(), std::min<qsizetype>(20, lines[i].text.size()), types[i].em);
    }
    const auto middle = alike.begin() + alike.size() / 2;
    std::nth_element(alike.begin(), middle, alike.end());
    return *middle;
}

} // namespace

QList<QRect> typographicBoxes(const QList<TypeLine> &lines, const QRect &image)
{
    QList<Type> types;
    for (const TypeLine &line : lines)
        types.append(typeOf(line));
    QList<QRect> boxes;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QRect box = lines[i].ink;
        if (types[i].em > 0) {
            const double em = sharedEm(types[i].em, types, lines);
            const double above = types[i].hasSquares ? wideBox.above : latinBox.above;
            box.setTop(int(std::lround(types[i].baseline - above * em)));
            box.setHeight(int(std::lround(em)));
        }
        boxes.append(box & image);
    }
    return boxes;
}

} // namespace lucentra
