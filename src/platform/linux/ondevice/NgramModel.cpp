#include "NgramModel.h"

#include <QChar>

#include <algorithm>
#include <cmath>

namespace lucentra {

namespace {

/// This many n-grams describe a language well enough.
constexpr quint64 mostCounted = 1'500'000;
/// A language with fewer n-grams is never the result.
constexpr quint64 fewestCounted = 20'000;
/// A byte of the model is this many times the negative natural logarithm.
constexpr double logarithmScale = 14.0;
/// The score of an n-gram that was never seen.
constexpr double unseen = 0.4;

/// The upper half is for ideographs only: their frequencies are relative to ideographs, so that a language isn't
/// considered unlikely because it uses other characters, too.
constexpr quint32 half = NgramModel::bucketCount / 2;

quint32 bucket(char32_t a, char32_t b, char32_t c, bool isIdeograph)
{
    quint64 hash =
        (quint64(a) * 0x9e3779b97f4a7c15U) ^ (quint64(b) * 0xc2b2ae3d27d4eb4fU) ^ (quint64(c) * 0x165667b19e3779f9U);
    hash ^= hash >> 31;
    hash *= 0xd6e8feb86659fd93U;
    return quint32(hash >> 40) % half + (isIdeograph ? half : 0);
}

/// Calls back with the bucket of each n-gram of a text's letters, in lower case, with one blank between words. An
/// ideograph counts alone and with its neighbour, a letter with the two before it.
template <typename Visit>
void eachNgram(QStringView text, Visit visit)
{
    char32_t before = U' ';
    char32_t last = U' ';
    const auto step = [&](char32_t c) {
        const bool isIdeograph = c >= 0x2e80 && c <= 0x9fff;
        if (isIdeograph) {
            visit(bucket(1, 1, c, true));
            if (last != U' ')
                visit(bucket(1, last, c, true));
        } else {
            visit(bucket(before, last, c, false));
            visit(bucket(2, last, c, false));
        }
        before = last;
        last = c;
    };
    for (const QChar c : text) {
        if (c.isLetter() || c.isMark() || (c == u'\'' && last != U' '))
            step(c.toCaseFolded().unicode());
        else if (last != U' ')
            step(U' ');
    }
    if (last != U' ')
        step(U' ');
}

} // namespace

NgramScores NgramModel::scores(QStringView text) const
{
    NgramScores scores{};
    eachNgram(text, [&](quint32 place) {
        const auto *const row = reinterpret_cast<const uchar *>(m_bytes.data()) + size_t(place) * rowSize;
        for (size_t language = 0; language < scores.size(); ++language)
            scores[language] -= row[language] / logarithmScale;
    });
    return scores;
}

int NgramModel::count(QStringView text)
{
    int count = 0;
    eachNgram(text, [&count](quint32) { ++count; });
    return count;
}

NgramCounter::NgramCounter()
{
    for (std::vector<quint32> &counts : m_counts)
        counts.resize(NgramModel::bucketCount);
}

void NgramCounter::learn(int language, QStringView phrase)
{
    const auto place = size_t(language);
    auto &totals = m_totals[place];
    if (totals.letters + totals.ideographs >= mostCounted)
        return;
    eachNgram(phrase, [&](quint32 at) {
        ++m_counts[place][at];
        ++(at < half ? totals.letters : totals.ideographs);
    });
}

QByteArray NgramCounter::model() const
{
    QByteArray bytes(NgramModel::byteCount, '\0');
    for (size_t language = 0; language < m_counts.size(); ++language) {
        const auto &[letters, ideographs] = m_totals[language];
        const bool isKnown = letters + ideographs >= fewestCounted;
        for (quint32 at = 0; at < NgramModel::bucketCount; ++at) {
            const double total = double(at < half ? letters : ideographs) + unseen * half;
            const double value = -std::log((m_counts[language][at] + unseen) / total) * logarithmScale;
            bytes[qsizetype(at) * NgramModel::rowSize + qsizetype(language)] =
                char(isKnown ? std::lround(std::clamp(value, 0.0, 255.0)) : 255);
        }
    }
    return bytes;
}

} // namespace lucentra
