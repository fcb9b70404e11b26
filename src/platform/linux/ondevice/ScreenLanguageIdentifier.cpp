#include "ScreenLanguageIdentifier.h"

#include "NgramModel.h"
#include "Owned.h"
#include "PhraseFile.h"
#include "PhraseForm.h"
#include "PhraseLanguage.h"

#include <QRegularExpression>

#include <cld2/public/compact_lang_det.h>
#include <cld2/public/encodings.h>
#include <unicode/ucnv.h>
#include <unicode/uset.h>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

// Weights in natural logarithms, as the scores of the n-grams; chosen on lines other than those that the tests count.
constexpr double missingCharacter = 5.0; ///< for an ideograph that a language's character set doesn't have
constexpr double knownPhrase = 6.0;      ///< for a text that is a phrase of the language
constexpr double detectedWord = 2.5;     ///< for the general detector's result on a single word
constexpr double detectedText = 8.0;     ///< on several words; it knows free text better than the n-grams of phrases do
constexpr double mostlyEnglish = 1.0;    ///< for English, the language of most programs
/// The score of an n-gram in the detector's language, if there are no phrases of it: a little less than
/// n-grams usually have in a text's own language, and far more than in any other.
constexpr double foreignNgram = -7.25;
constexpr double foreign = -2.0;
/// If the second language is this close to the first, the neighbouring lines decide.
constexpr double tooClose = 2.5;
constexpr double slightly = 0.01; ///< so little that neighbouring lines decide
/// This much of a text is enough to identify its language; the cost grows with the square of the length.
constexpr qsizetype longestSample = 1000;

/// The number of a line's letters by script.
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

/// The result of the general detector as a code of this program; empty if there is none.
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

/// Whether a Cyrillic text has letters of this language that Russian doesn't have.
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

/// The characters of an encoding; never freed.
const USet *charactersOf(const char *encoding)
{
    UErrorCode error = U_ZERO_ERROR;
    USet *const characters = uset_openEmpty();
    const Owned<UConverter, ucnv_close> converter(ucnv_open(encoding, &error));
    ucnv_getUnicodeSet(converter.get(), characters, UCNV_ROUNDTRIP_SET, &error);
    return characters;
}

/// A line with the candidates for its language and their scores.
struct Line
{
    QString code; ///< the language; empty until it is decided
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
    explicit LineJudge(std::shared_ptr<const PhraseFile> phrases)
        : m_phrases(std::move(phrases))
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
            const USet *characters; ///< of the usual national encoding
        };
        static const std::array candidates{Candidate{u"zh-Hant", charactersOf("Big5")},
                                           Candidate{u"zh-Hans", charactersOf("GB2312")},
                                           Candidate{u"ja", charactersOf("ISO-2022-JP")}};
        const auto isKnown = [](char16_t c) {
            return c >= 0x4e00 && c <= 0x9fff &&
                   std::any_of(candidates.begin(), candidates.end(),
                               [c](const Candidate &each) { return uset_contains(each.characters, c); });
        };
        Line line;
        const QString key = phraseKey(text);
        const NgramScores scores = m_phrases ? m_phrases->ngrams().scores(text) : NgramScores{};
        for (const auto &[code, characters] : candidates) {
            const int language = *phraseLanguage(code);
            double score = scores[size_t(language)];
            for (const QChar c : text)
                score -= isKnown(c.unicode()) && !uset_contains(characters, c.unicode()) ? missingCharacter : 0;
            if (m_phrases && m_phrases->intoEnglish(language, key))
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
        const double detected = words.contains(u' ') ? detectedText : detectedWord;
        if (!m_phrases)
            return {.code = other.isEmpty() ? u"en"_s : other};
        const ScreenPhrase phrase = screenPhrase(text);
        const QString key = phraseKey(phrase.forms.last().text);
        const NgramScores scores = m_phrases->ngrams().scores(words);
        const bool isEnglishPhrase = m_phrases->englishVotes(key) > 0;
        double english = scores[ngramEnglish] + mostlyEnglish + (isEnglishPhrase ? knownPhrase : 0) +
                         (other == u"en" ? detected : 0);
        bool isKnownAnywhere = isEnglishPhrase || m_phrases->isEnglishWord(key);
        for (size_t i = 0; i < phraseLanguages.size(); ++i) {
            const QString code = phraseLanguages[i].code;
            if (phraseLanguages[i].isTarget() || code == u"ru")
                continue;
            // A word of only one program is often spelled like an English word that no program has: "Son", "Sensible".
            const auto known = m_phrases->intoEnglish(int(i), key);
            const bool isKnown = known && (known->votes > 1 || key.contains(u' '));
            isKnownAnywhere = isKnownAnywhere || known;
            const double score = scores[i] + (isKnown ? knownPhrase : 0) + (other == code ? detected : 0);
            // An English phrase of programs is English, unless its neighbours suggest another language.
            line.candidates.emplace_back(code, isEnglishPhrase ? std::min(score, english - slightly) : score);
        }
        // So is a word within their English phrases, even if no phrase consists of it.
        if (m_phrases->isEnglishWord(key)) {
            for (const auto &[code, score] : line.candidates)
                english = std::max(english, score + slightly);
        }
        line.candidates.emplace_back(u"en"_s, english);
        if (!isKnownAnywhere && !other.isEmpty() && !isEnglish(other) && !phraseLanguage(other))
            line.candidates.emplace_back(other, foreignNgram * NgramModel::count(words) + foreign);
        line.decide();
        return line;
    }

    std::shared_ptr<const PhraseFile> m_phrases;
};

/// The language among a line's near candidates that most of the decided lines have; English if there are none.
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

ScreenLanguageIdentifier::ScreenLanguageIdentifier(std::function<std::shared_ptr<const PhraseFile>()> phrases)
    : m_phrases(std::move(phrases))
{
}

QStringList ScreenLanguageIdentifier::identify(const QStringList &texts)
{
    // The first part of a longer text is enough to identify its language without the phrases.
    const bool hasShort =
        std::any_of(texts.begin(), texts.end(), [](const QString &text) { return text.size() <= longestSample; });
    const LineJudge judge(hasShort ? m_phrases() : nullptr);
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
