#include "ScreenLanguageIdentifier.h"

#include "CharacterSets.h"
#include "MemoryLanguage.h"
#include "NgramModel.h"
#include "PhraseFile.h"
#include "PhraseForm.h"

#include <QRegularExpression>

#include <cld2/public/compact_lang_det.h>
#include <cld2/public/encodings.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

// Weights in natural logarithms, as the scores of the n-grams; chosen on lines other than those of the tests.
constexpr double missingCharacter = 5.0; ///< for an ideograph that a language's character set doesn't have
constexpr double knownPhrase = 6.0;      ///< for a text that is a phrase of the language
constexpr double detected = 2.5;         ///< for what the general detector says
constexpr double mostlyEnglish = 1.0;    ///< for English, which most programs speak
/// What an n-gram counts in the language that the detector names, if the memory doesn't have it: a little less than
/// n-grams usually do in a text's own language, and far more than they do in any other.
constexpr double foreignNgram = -7.25;
constexpr double foreign = -2.0;
/// A line is left to its neighbours where the second language is this close to the first.
constexpr double tooClose = 2.5;
constexpr double slightly = 0.01; ///< so little that neighbours decide
/// So much of a text says what language it is in; all of a long one would cost with the square of its length.
constexpr qsizetype longestSample = 1000;

/// What a line's letters are.
struct Letters
{
    int kana = 0;
    int hangul = 0;
    int han = 0;
    int latin = 0;
    int cyrillic = 0;
    int other = 0;

    int all() const { return kana + hangul + han + latin + cyrillic + other; }
};

Letters countLetters(QStringView text)
{
    Letters letters;
    for (const QChar c : text) {
        const char16_t code = c.unicode();
        if ((code >= 0x3041 && code <= 0x3096) || (code >= 0x30a1 && code <= 0x30fa) ||
            (code >= 0xff66 && code <= 0xff9d))
            ++letters.kana;
        else if ((code >= 0xac00 && code <= 0xd7a3) || (code >= 0x1100 && code <= 0x11ff) ||
                 (code >= 0x3131 && code <= 0x318e))
            ++letters.hangul;
        else if ((code >= 0x3400 && code <= 0x9fff) || (code >= 0xf900 && code <= 0xfaff) || code == 0x3005)
            ++letters.han;
        else if (c.script() == QChar::Script_Latin)
            ++letters.latin;
        else if (c.script() == QChar::Script_Cyrillic)
            ++letters.cyrillic;
        else if (c.isLetter())
            ++letters.other;
    }
    return letters;
}

/// Addresses, paths, file names, numbers and shortcuts are written the same in every language.
QString withoutCodes(const QString &text)
{
    static const QRegularExpression codes(
        u"\\S*(?:://|@|\\\\|\\w/|/\\w|~/)\\S*|\\S*\\w\\.\\w\\S*|\\S*\\w\\+\\w\\S*|[A-Za-z]*[\\d%#$€][\\w.,:%-]*"_s);
    return QString(text).replace(codes, u" "_s).simplified();
}

/// What the general detector says, as a code of ours; empty where it says nothing.
QString detectedLanguage(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    std::array<CLD2::Language, 3> languages{};
    std::array<int, 3> percents{};
    std::array<double, 3> scores{};
    int textBytes = 0;
    bool isReliable = false;
    const CLD2::CLDHints hints{nullptr, nullptr, CLD2::UNKNOWN_ENCODING, CLD2::UNKNOWN_LANGUAGE};
    const CLD2::Language language = CLD2::ExtDetectLanguageSummary(
        bytes.constData(), int(bytes.size()), true, &hints, CLD2::kCLDFlagBestEffort, languages.data(), percents.data(),
        scores.data(), nullptr, &textBytes, &isReliable);
    const QString code = QString::fromLatin1(CLD2::LanguageCode(language));
    if (code == u"zh")
        return u"zh-Hans"_s;
    if (code == u"no")
        return u"nb"_s;
    return code == u"un" || code == u"xxx" ? QString() : code;
}

/// Whether a Cyrillic text has letters that only the language has, of those that are often taken for Russian.
bool hasOwnLetters(const QString &text, const QString &code)
{
    static const QHash<QString, QString> ownLetters{
        {u"uk"_s, u"іїєґІЇЄҐ"_s}, {u"be"_s, u"іўІЎ"_s}, {u"sr"_s, u"јљњћђџЈЉЊЋЂЏ"_s}, {u"mk"_s, u"јљњќѓѕЈЉЊЌЃЅ"_s}};
    if (code == u"bg")
        return !text.contains(u'ы') && !text.contains(u'э') && !text.contains(u'ё');
    const QString letters = ownLetters.value(code);
    return !code.isEmpty() &&
           (letters.isEmpty() || std::any_of(text.begin(), text.end(), [&](QChar c) { return letters.contains(c); }));
}

/// A line in the making: its candidates with their scores.
struct Line
{
    QString code; ///< the answer; empty as long as there is none
    bool isSure = true;
    std::vector<std::pair<QString, double>> candidates; ///< the best first

    void decide()
    {
        std::sort(candidates.begin(), candidates.end(),
                  [](const auto &a, const auto &b) { return a.second > b.second; });
        code = candidates.front().first;
        isSure = candidates.size() < 2 || candidates[0].second - candidates[1].second > tooClose;
    }
};

class LineJudge
{
public:
    explicit LineJudge(std::shared_ptr<const PhraseFile> memory)
        : m_memory(std::move(memory))
    {
    }

    Line judge(const QString &text) const
    {
        const QString words = withoutCodes(text);
        const Letters letters = countLetters(words);
        if (letters.all() == 0)
            return {};
        if (letters.kana > 0)
            return {.code = u"ja"_s};
        if (letters.hangul > 0)
            return {.code = u"ko"_s};
        if (letters.han > 0 && letters.han * 6 >= letters.latin)
            return judgeHan(words);
        if (letters.latin >= letters.cyrillic + letters.other)
            return judgeLatin(words, text);
        const QString code = detectedLanguage(words);
        return {.code = letters.cyrillic > 0 && !hasOwnLetters(words, code) ? u"ru"_s : code};
    }

private:
    Line judgeHan(const QString &text) const
    {
        struct Candidate
        {
            QStringView code;
            CharacterSets::Set set;
        };
        Line line;
        const QString key = phraseKey(text);
        const NgramScores scores = m_memory ? m_memory->ngrams().scores(text) : NgramScores{};
        for (const auto &[code, set] :
             {Candidate{u"zh-Hant", CharacterSets::Traditional}, Candidate{u"zh-Hans", CharacterSets::Simplified},
              Candidate{u"ja", CharacterSets::Japanese}}) {
            const int language = *memoryLanguage(code);
            double score = scores[size_t(language)];
            for (const QChar c : text) {
                const unsigned char sets = CharacterSets::sets(c.unicode());
                score -= sets != 0 && (sets & set) == 0 ? missingCharacter : 0;
            }
            if (m_memory && m_memory->intoEnglish(language, key))
                score += knownPhrase;
            line.candidates.emplace_back(code.toString(), score);
        }
        line.decide();
        return line;
    }

    Line judgeLatin(const QString &words, const QString &text) const
    {
        Line line;
        const QString other = detectedLanguage(words);
        if (!m_memory)
            return {.code = other.isEmpty() ? u"en"_s : other};
        const ScreenPhrase phrase = screenPhrase(text);
        const QString key = phraseKey(phrase.forms.last().text);
        const NgramScores scores = m_memory->ngrams().scores(words);
        const bool isEnglishPhrase = m_memory->englishVotes(key) > 0;
        double english = scores[ngramEnglish] + mostlyEnglish + (isEnglishPhrase ? knownPhrase : 0) +
                         (other == u"en" ? detected : 0);
        bool isKnownAnywhere = isEnglishPhrase || m_memory->isEnglishWord(key);
        for (size_t i = 0; i < memoryLanguages.size(); ++i) {
            const QString code = memoryLanguages[i].code;
            if (memoryLanguages[i].isTarget() || code == u"ru")
                continue;
            // A word that just one program has is often spelled as an English one that none has: "Son", "Sensible".
            const auto known = m_memory->intoEnglish(int(i), key);
            const bool isKnown = known && (known->votes > 1 || key.contains(u' '));
            isKnownAnywhere = isKnownAnywhere || known;
            const double score = scores[i] + (isKnown ? knownPhrase : 0) + (other == code ? detected : 0);
            // What programs say in English is English, unless its neighbours speak otherwise.
            line.candidates.emplace_back(code, isEnglishPhrase ? std::min(score, english - slightly) : score);
        }
        // So is a word that occurs in their English, though none says it alone.
        if (m_memory->isEnglishWord(key)) {
            for (const auto &[code, score] : line.candidates)
                english = std::max(english, score + slightly);
        }
        line.candidates.emplace_back(u"en"_s, english);
        if (!isKnownAnywhere && !other.isEmpty() && !isEnglish(other) && !memoryLanguage(other))
            line.candidates.emplace_back(other, foreignNgram * NgramModel::count(words) + foreign);
        line.decide();
        return line;
    }

    std::shared_ptr<const PhraseFile> m_memory;
};

/// The language among a line's near candidates that most of the sure lines have; without any, English is the likeliest.
void followNeighbours(Line &line, const QHash<QString, int> &sureLines)
{
    int most = 0;
    for (const auto &[code, score] : line.candidates) {
        const bool isNear = line.candidates.front().second - score <= tooClose;
        const int count = isNear ? sureLines.value(code) : 0;
        if (count > most || (isNear && most == 0 && code == u"en")) {
            most = count;
            line.code = code;
        }
    }
}

} // namespace

ScreenLanguageIdentifier::ScreenLanguageIdentifier(std::function<std::shared_ptr<const PhraseFile>()> memory)
    : m_memory(std::move(memory))
{
}

QStringList ScreenLanguageIdentifier::identify(const QStringList &texts)
{
    // The first part of a longer text is enough to identify its language without the phrases.
    const bool hasShort = std::any_of(texts.begin(), texts.end(),
                                      [](const QString &text) { return text.size() <= longestSample; });
    const LineJudge judge(hasShort ? m_memory() : nullptr);
    std::vector<Line> lines;
    QHash<QString, int> sureLines;
    for (const QString &text : texts) {
        lines.push_back(judge.judge(text.first(std::min(text.size(), longestSample))));
        if (lines.back().isSure)
            ++sureLines[lines.back().code];
    }
    QStringList codes;
    for (Line &line : lines) {
        if (!line.isSure)
            followNeighbours(line, sureLines);
        codes.append(line.code);
    }
    return codes;
}

} // namespace lucentra
