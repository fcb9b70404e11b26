#include "PhraseLookup.h"

#include "PhraseLanguage.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// A line may be longer than its phrase: it contains values (a path, an address) and other parts. Longer texts
/// aren't phrases of programs, and the cost of dividing them grows with the square of their length.
constexpr qsizetype longestLine = 4 * longestPhrase;
/// The shortest text in which a misread character is corrected: in a shorter one it may just be another word.
constexpr qsizetype shortestRepairable = 8;
/// Factors of the confidence for lines of which only parts are known, and for repaired lines.
constexpr double partsFactor = 0.7;
constexpr double repairFactor = 0.8;
constexpr double spellingFactor = 0.9;
/// A value after a colon with more unknown words is a sentence, which has to be translated as a whole.
constexpr qsizetype mostUnknownWords = 3;

struct Confusion
{
    QStringView read;
    QStringView meant;
};

/// Characters that recognizers confuse in small type; texts are in lower case.
constexpr std::array confusions{
    Confusion{u"l", u"i"},  Confusion{u"i", u"l"},  Confusion{u"1", u"l"},  Confusion{u"1", u"i"},
    Confusion{u"|", u"l"},  Confusion{u"|", u"i"},  Confusion{u"0", u"o"},  Confusion{u"o", u"0"},
    Confusion{u"5", u"s"},  Confusion{u"8", u"b"},  Confusion{u"6", u"b"},  Confusion{u"9", u"g"},
    Confusion{u"q", u"g"},  Confusion{u"g", u"q"},  Confusion{u"2", u"z"},  Confusion{u"c", u"e"},
    Confusion{u"e", u"c"},  Confusion{u"rn", u"m"}, Confusion{u"m", u"rn"}, Confusion{u"vv", u"w"},
    Confusion{u"cl", u"d"}, Confusion{u"d", u"cl"}, Confusion{u"ii", u"u"}, Confusion{u"u", u"ii"},
    Confusion{u"h", u"b"},  Confusion{u"b", u"h"},  Confusion{u"t", u"f"},  Confusion{u"f", u"t"},
    Confusion{u"v", u"y"},  Confusion{u"y", u"v"},  Confusion{u"n", u"h"},  Confusion{u"t", u"l"},
    Confusion{u"l", u"t"},  Confusion{u"ri", u"n"}, Confusion{u"j", u"i"},  Confusion{u"!", u"l"},
};

double confidence(const PhraseMatch &match)
{
    return (1 - std::pow(0.5, match.votes)) * match.votes / std::max(1, match.voters);
}

qsizetype wordCount(QStringView text)
{
    return std::count(text.begin(), text.end(), u' ') + 1;
}

/// Other spellings of an English phrase that mean the same where the target has no plural: "Full Screen" and
/// "Fullscreen", "Log-in" and "Log in", "Find & Replace" and "Find and Replace", "Passwords" and "Password".
QStringList otherSpellings(const QString &key)
{
    QStringList spellings;
    for (qsizetype at = 0; at < key.size(); ++at) {
        if (key[at] != u' ' && key[at] != u'-')
            continue;
        spellings.append(key.first(at) + key.sliced(at + 1));
        spellings.append(key.first(at) + (key[at] == u' ' ? u'-' : u' ') + key.sliced(at + 1));
    }
    if (key.contains(u" & "))
        spellings.append(QString(key).replace(u" & "_s, u" and "_s));
    if (key.contains(u" and "))
        spellings.append(QString(key).replace(u" and "_s, u" & "_s));
    constexpr qsizetype shortestPlural = 5;
    if (key.size() >= shortestPlural && key.endsWith(u's') && !key.endsWith(u"ss"))
        spellings.append(key.endsWith(u"ies") ? key.chopped(3) + u'y' : key.chopped(1));
    else if (key.size() + 1 >= shortestPlural && key.back().isLetter())
        spellings.append(key + u's');
    return spellings;
}

} // namespace

PhraseLookup::PhraseLookup(const PhraseFile &file, std::optional<int> source, std::optional<int> target,
                           QString targetCode)
    : m_file(file)
    , m_source(source)
    , m_target(target)
    , m_targetCode(std::move(targetCode))
{
}

std::optional<PhraseLookup> PhraseLookup::between(const PhraseFile &file, const LanguagePair &pair)
{
    const auto source = phraseLanguage(pair.source);
    const auto target = phraseLanguage(pair.target);
    const bool hasSource = isEnglish(pair.source) || (source && file.phrasesOutOf(*source) > 0);
    const bool hasTarget = isEnglish(pair.target) || (target && file.phrasesInto(*target) > 0);
    if (!hasSource || !hasTarget || source == target)
        return std::nullopt;
    return PhraseLookup(file, source, target, pair.target);
}

std::optional<PhraseMatch> PhraseLookup::find(const QString &key) const
{
    if (key.size() > longestPhrase)
        return std::nullopt;
    if (!m_source)
        return m_file.fromEnglish(*m_target, key);
    auto english = m_file.intoEnglish(*m_source, key);
    if (!english || !m_target)
        return english;
    auto match = m_file.fromEnglish(*m_target, phraseKey(english->text));
    if (match) {
        match->voters += english->voters - english->votes;
        match->votes = std::min(match->votes, english->votes);
    }
    return match;
}

QString PhraseLookup::englishKey(const QString &word) const
{
    const QString key = phraseKey(word);
    const auto english = m_source ? m_file.intoEnglish(*m_source, key) : std::nullopt;
    return english ? phraseKey(english->text) : key;
}

std::optional<LineTranslation> PhraseLookup::phrase(const ScreenPhrase &phrase) const
{
    for (const ScreenForm &form : phrase.forms) {
        if (const auto match = find(phraseKey(form.text)))
            return LineTranslation{.text = fillSlots(match->text, form.values), .confidence = confidence(*match)};
    }
    return std::nullopt;
}

std::optional<LineTranslation> PhraseLookup::respelled(const QString &text) const
{
    const QString key = phraseKey(text);
    if (m_source || !m_target || key.size() > longestPhrase) // from English into a language without plural
        return std::nullopt;
    for (const QString &spelling : otherSpellings(key)) {
        if (const auto match = find(spelling))
            return LineTranslation{.text = match->text, .confidence = confidence(*match) * spellingFactor};
    }
    return std::nullopt;
}

std::optional<LineTranslation> PhraseLookup::repaired(const QString &text) const
{
    const QString key = phraseKey(text);
    if (key.size() < shortestRepairable || key.size() > longestPhrase)
        return std::nullopt;
    for (const Confusion &confusion : confusions) {
        for (qsizetype at = key.indexOf(confusion.read); at >= 0; at = key.indexOf(confusion.read, at + 1)) {
            QString candidate = key;
            candidate.replace(at, confusion.read.size(), confusion.meant.data(), confusion.meant.size());
            if (const auto match = find(candidate))
                return LineTranslation{.text = match->text, .confidence = confidence(*match) * repairFactor};
        }
    }
    return std::nullopt;
}

std::optional<LineTranslation> PhraseLookup::parts(const ScreenPhrase &whole) const
{
    static const QRegularExpression separator(u"\\s+[-–—|]\\s+|[:：]\\s+|：|\\t"_s);
    static const QRegularExpression colons(u"[:：]"_s);
    const QString &text = whole.forms.first().text;
    QString result;
    double sureness = 1;
    qsizetype start = 0;
    int known = 0;
    int count = 0;
    auto match = separator.globalMatch(text);
    for (bool isLast = false; !isLast; ++count) {
        isLast = !match.hasNext();
        const auto found = isLast ? QRegularExpressionMatch() : match.next();
        const QString part = text.sliced(start, (isLast ? text.size() : found.capturedStart()) - start);
        if (isLast && count == 0)
            return std::nullopt;
        const ScreenPhrase taken = screenPhrase(part);
        auto translation = phrase(taken);
        if (!translation)
            translation = respelled(taken.forms.first().text);
        if (!translation)
            translation = repaired(taken.forms.first().text);
        const bool isLabel = !isLast && found.captured().contains(colons);
        if (!translation && hasLetter(part) && (isLabel || wordCount(part) > mostUnknownWords))
            return std::nullopt;
        if (translation)
            sureness = std::min(sureness, translation->confidence);
        known += translation ? 1 : 0;
        result += translation ? taken.prefix + translation->text + taken.suffix : part;
        if (!isLast) {
            const QString between = found.captured();
            const QString colon = tailText(PhraseTail::Colon, m_targetCode);
            result += !isLabel ? between : colon == u":" ? u": "_s : colon;
            start = found.capturedEnd();
        }
    }
    if (known == 0)
        return std::nullopt;
    return LineTranslation{.text = result, .confidence = sureness * partsFactor};
}

std::optional<LineTranslation> PhraseLookup::menuBar(const QString &text) const
{
    const QStringList words = text.split(u' ', Qt::SkipEmptyParts);
    // "Show All Bookmarks" looks like a menu bar, but means something else than its words.
    const bool isBar =
        words.size() >= 3 && (englishKey(words.first()) == u"file" || englishKey(words.last()) == u"help");
    const bool areTitles = isBar && std::all_of(words.begin(), words.end(), [](const QString &word) {
                               return word.front().isUpper() && word.size() > 1 && word.back().isLower();
                           });
    if (!areTitles)
        return std::nullopt;
    QStringList titles;
    double sureness = 1;
    for (const QString &word : words) {
        const auto match = find(phraseKey(word));
        if (!match || match->votes < 2)
            return std::nullopt;
        titles.append(match->text);
        sureness = std::min(sureness, confidence(*match));
    }
    return LineTranslation{.text = titles.join(u"  "_s), .confidence = sureness * partsFactor};
}

bool PhraseLookup::mayKnow(const QString &line)
{
    return line.size() <= longestLine;
}

bool PhraseLookup::isPhrase(const QString &line) const
{
    return mayKnow(line) && hasLetter(line) && phrase(screenPhrase(line));
}

std::optional<LineTranslation> PhraseLookup::translate(const QString &line) const
{
    if (!mayKnow(line))
        return std::nullopt;
    const ScreenPhrase taken = screenPhrase(line);
    const QString &text = taken.forms.first().text;
    if (!hasLetter(text))
        return std::nullopt;
    auto found = phrase(taken);
    if (!found)
        found = parts(taken);
    if (!found)
        found = menuBar(text);
    if (!found)
        found = respelled(text);
    if (!found)
        found = repaired(text);
    if (found)
        found->text = taken.prefix + found->text + tailText(taken.tail, m_targetCode) + taken.suffix;
    return found;
}

} // namespace lucentra
