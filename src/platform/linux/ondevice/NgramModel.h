#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QStringView>

#include <array>
#include <vector>

namespace lucentra {

/// The languages that n-grams distinguish: `phraseLanguages` in their order, then English.
inline constexpr int ngramLanguageCount = 13;
inline constexpr int ngramEnglish = 12;

/// How similar a text is to each language, as a logarithm. Only differences are meaningful.
using NgramScores = std::array<double, ngramLanguageCount>;

/// How often runs of one to three characters occur in each language, learnt from the phrases.
class NgramModel
{
public:
    static constexpr int bucketCount =
        1 << 16;                       ///< n-grams in one bucket are counted together; half of them are for ideographs
    static constexpr int rowSize = 16; ///< one byte per language; a row is read at once
    static constexpr qsizetype byteCount = qsizetype(bucketCount) * rowSize;

    /// Reads a model made by `NgramCounter`; the bytes must outlive it.
    explicit NgramModel(QByteArrayView bytes)
        : m_bytes(bytes)
    {
    }

    /// The sum over the text's n-grams; all zero for a text without letters.
    NgramScores scores(QStringView text) const;
    /// How many n-grams a text has.
    static int count(QStringView text);

private:
    QByteArrayView m_bytes;
};

/// Counts the n-grams of phrases and makes the model of them.
class NgramCounter
{
public:
    NgramCounter();

    /// Learns from a phrase of a language, up to a limit, so that no language costs more than another.
    void learn(int language, QStringView phrase);
    QByteArray model() const;

private:
    struct Totals
    {
        quint64 letters = 0;
        quint64 ideographs = 0;
    };

    std::array<std::vector<quint32>, ngramLanguageCount> m_counts; ///< by bucket
    std::array<Totals, ngramLanguageCount> m_totals;
};

} // namespace lucentra
