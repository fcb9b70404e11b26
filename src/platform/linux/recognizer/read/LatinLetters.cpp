#include "read/LatinLetters.h"

#include "read/Writing.h"
#include "strip/StripParts.h"

#include <leptonica/allheaders.h>

#include <algorithm>

namespace lucentra {
namespace {

/// Whether a word has syllables. The model makes all else of Latin letters, too.
bool hasHangul(QStringView word)
{
    return std::ranges::any_of(word, [](QChar c) { return c >= QChar(0xAC00) && c <= QChar(0xD7A3); });
}

/// Where columns of the Korean strip are on the English one of the same line.
class EnglishColumns
{
public:
    explicit EnglishColumns(const Strip &english)
        : m_darkest(darkestOfColumns(english))
        , m_korean(LineReader::stripShape(ReadingLanguage::Korean))
        , m_english(LineReader::stripShape(ReadingLanguage::English))
    {
    }

    /// The widest gap near a column of the Korean strip.
    int cutNear(int column) const
    {
        const double scale = m_english.height * m_english.inkShare / (m_korean.height * m_korean.inkShare);
        const int last = int(m_darkest.size()) - 1;
        const int x = int((column - m_korean.padding) * scale) + m_english.padding;
        const int near = m_english.height / 4;
        return bestCut(m_darkest, std::clamp(x - near, 0, last), std::clamp(x + near, 0, last)).x;
    }

private:
    const std::vector<std::uint8_t> m_darkest;
    const StripShape m_korean;
    const StripShape m_english;
};

} // namespace

Reading withLatinLetters(const Reading &reading, const Strip &english, const PassReader &reader)
{
    const EnglishColumns columns(english);
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
            if (hasHangul(word))
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
            if (scriptsOf(latin.text).wide() == 0 && latin.confidence > confidence) {
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
    if (length > 0)
        result.confidence = sum / double(length);
    return result;
}

} // namespace lucentra
