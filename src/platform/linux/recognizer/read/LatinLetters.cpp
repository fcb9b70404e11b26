#include "read/LatinLetters.h"

#include "read/Writing.h"
#include "strip/StripParts.h"

#include <leptonica/allheaders.h>

#include <algorithm>

namespace lucentra {
namespace {

/// Whether a word has characters that English doesn't know: syllables, ideographs, kana and their punctuation. Of these
/// the Korean model makes all but syllables of Latin letters, too.
bool isWide(QStringView word, bool isKorean)
{
    return std::ranges::any_of(
        word, [isKorean](QChar c) { return isKorean ? c >= QChar(0xAC00) && c <= QChar(0xD7A3) : c >= QChar(0x2E80); });
}

/// Whether two readings have most of their letters in common.
bool isLike(QString a, QString b)
{
    a.remove(u' ');
    b.remove(u' ');
    if (std::abs(a.size() - b.size()) > 1)
        return false;
    std::vector<qsizetype> row(std::size_t(b.size()) + 1);
    for (const QChar c : std::as_const(a)) {
        qsizetype diagonal = 0;
        for (qsizetype j = 0; j < b.size(); ++j) {
            const qsizetype above = row[std::size_t(j) + 1];
            row[std::size_t(j) + 1] = c == b[j] ? diagonal + 1 : std::max(above, row[std::size_t(j)]);
            diagonal = above;
        }
    }
    return 2 * row.back() >= std::max(a.size(), b.size());
}

/// Where columns of a strip for another language are on the English one of the same line.
class EnglishColumns
{
public:
    EnglishColumns(const Strip &english, ReadingLanguage other)
        : m_darkest(darkestOfColumns(english))
        , m_other(LineReader::stripShape(other))
        , m_english(LineReader::stripShape(ReadingLanguage::English))
    {
    }

    /// The widest gap near a column of the other strip.
    int cutNear(int otherColumn) const
    {
        const double scale = m_english.height * m_english.inkShare / (m_other.height * m_other.inkShare);
        const int last = int(m_darkest.size()) - 1;
        const int x = int((otherColumn - m_other.padding) * scale) + m_english.padding;
        const int near = m_english.height / 4;
        return bestCut(m_darkest, std::clamp(x - near, 0, last), std::clamp(x + near, 0, last)).x;
    }

private:
    const std::vector<std::uint8_t> m_darkest;
    const StripShape m_other;
    const StripShape m_english;
};

} // namespace

Reading withLatinLetters(const Reading &reading, const Strip &english, const PassReader &reader)
{
    const bool isKorean = reading.language == ReadingLanguage::Korean;
    const EnglishColumns columns(english, reading.language);
    const QList<ReadWord> &words = reading.words;
    const QStringView text(reading.text);
    Reading result = reading;
    result.text.clear();
    result.words.clear();
    double sum = 0;
    qsizetype length = 0;
    qsizetype copied = 0; // of the text
    for (qsizetype first = 0, end = 0; first < words.size(); first = end) {
        // Latin words next to each other are read together.
        qsizetype letters = 0;
        double confidence = 0;
        for (end = first; end < words.size(); ++end) {
            const QStringView word = text.mid(words[end].start, words[end].length);
            if (isWide(word, isKorean))
                break;
            letters += std::ranges::count_if(word, [](QChar c) { return c.isLetterOrNumber(); });
            confidence += words[end].confidence * double(words[end].length);
        }
        const bool isWord = end == first;
        if (isWord) {
            confidence = words[end].confidence * double(words[end].length);
            ++end;
        }
        const ReadWord &last = words[end - 1];
        const qsizetype start = words[first].start;
        QString run = text.mid(start, last.start + last.length - start).toString();
        confidence /= double(run.size());
        if (!isWord && letters >= 2) {
            const int left = first == 0 ? 0 : columns.cutNear((words[first - 1].right + words[first].left) / 2);
            const int right =
                end == words.size() ? pixGetWidth(english.get()) : columns.cutNear((last.right + words[end].left) / 2);
            const Reading latin =
                right > left ? reader.read(pieceOf(english.get(), left, right), ReadingLanguage::English) : Reading();
            if (scriptsOf(latin.text).wide() == 0 && latin.confidence > confidence &&
                (isKorean || isLike(run, latin.text))) {
                run = latin.text;
                confidence = latin.confidence;
            }
        }
        result.text += text.mid(copied, start - copied);
        result.text += run;
        copied = last.start + last.length;
        sum += confidence * double(run.size());
        length += run.size();
    }
    if (length > 0 && isKorean) // others are compared with each other by what they make of their own letters
        result.confidence = sum / double(length);
    return result;
}

} // namespace lucentra
