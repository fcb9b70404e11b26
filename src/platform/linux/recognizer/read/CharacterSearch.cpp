#include "read/CharacterSearch.h"

#include "read/ModelFile.h"

#include <algorithm>
#include <cmath>

namespace lucentra {
namespace {

constexpr std::size_t ways = 16;      // that are followed at once
constexpr float leastLikely = 8;      // logarithm, below the likeliest code of a place; what is rarer isn't followed
constexpr std::size_t mostLikely = 5; // codes of a place that are followed; more cost time and read no better
constexpr float known = 0.5;          // the part of a character's improbability that a word of the list takes away

CharacterKind kindOf(const QString &text)
{
    switch (text.isEmpty() ? QChar::Script_Common : text.front().script()) {
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Hangul:
        return CharacterKind::Wide;
    default:
        return !text.isEmpty() && text.front().isLetter() ? CharacterKind::Letter : CharacterKind::Other;
    }
}

} // namespace

CharacterCodes::CharacterCodes(const QByteArray &characters, const QByteArray &codes, int none)
    : m_none(none)
{
    constexpr int longest = 16;
    constexpr int mostCharacters = 1 << 16;
    const QList<QByteArray> lines = characters.split('\n');
    DataReader data(codes);
    const int count = std::min({data.take<qint32>(), int(lines.size()) - 1, mostCharacters});
    for (int i = 0; i < count; ++i) {
        data.bytes(1);
        const int length = data.take<qint32>();
        if (length < 1 || length > longest)
            throw std::runtime_error("codes of another kind");
        std::size_t node = 0;
        bool isNone = false;
        for (int k = 0; k < length; ++k) {
            const int code = data.take<qint32>();
            isNone |= code == m_none;
            const auto [place, isNew] = m_nodes[node].next.emplace(code, int(m_nodes.size()));
            node = std::size_t(place->second);
            if (isNew)
                m_nodes.emplace_back();
        }
        const QByteArray &line = lines[i + 1];
        const QString text = QString::fromUtf8(line.first(std::max<qsizetype>(0, line.indexOf(' '))));
        m_characters.push_back(text == u"NULL" ? Character{QStringLiteral(" "), CharacterKind::Space}
                                               : Character{text, kindOf(text)});
        if (!isNone && m_nodes[node].character < 0 && !text.isEmpty())
            m_nodes[node].character = i;
    }
}

CharacterSearch::CharacterSearch(const CharacterCodes &codes, const WordList &words)
    : m_codes(codes)
    , m_words(words)
    , m_steps{{-1, 0, codes.none(), -1, begins, -1, 0, 0, 0, 0}}
    , m_likely{0}
{
}

/// Takes a step together with others that lead to the same.
void CharacterSearch::take(const Step &step)
{
    const auto same = std::ranges::find_if(m_next, [&](const Step &other) {
        return other.node == step.node && other.code == step.code && other.word == step.word &&
               other.writing == step.writing;
    });
    if (same == m_next.end()) {
        m_next.push_back(step);
        return;
    }
    const float both = std::max(same->score, step.score) + std::log1p(std::exp(-std::abs(same->score - step.score)));
    if (same->score < step.score)
        *same = step;
    same->score = both;
}

/// A step that ends no character.
void CharacterSearch::consider(int before, int node, int code, float probability)
{
    const Step &from = m_steps[std::size_t(before)];
    const float pending = node == from.node ? from.pending : from.pending + probability;
    take({before, node, code, -1, from.word, m_place, probability, pending, from.score + probability, from.writing});
}

/// The steps that end a character: as one of a word of the list, and as another one.
void CharacterSearch::write(int before, int character, int code, float probability)
{
    const Step &from = m_steps[std::size_t(before)];
    const CharacterKind kind = m_codes.characters()[std::size_t(character)].kind;
    const quint64 writing = (from.writing + quint64(character) + 1) * 0x9E3779B97F4A7C15U;
    const auto add = [&](int word, float gain) {
        take({before, 0, code, character, word, m_place, probability, 0, from.score + probability + gain, writing});
    };
    if (from.word >= 0) {
        if (const std::optional<WordList::Step> step = m_words.step(from.word, character)) {
            const float gain = -known * (from.pending + probability);
            if (step->ends)
                add(kind == CharacterKind::Letter ? complete : begins, gain);
            if (step->place > 0)
                add(step->place, gain);
        }
    }
    const bool mayBeOther =
        from.word == begins || from.word == unknown || (from.word == complete && kind != CharacterKind::Letter);
    if (mayBeOther)
        add(kind == CharacterKind::Letter ? unknown : begins, 0);
}

void CharacterSearch::add(std::span<const float> logarithms)
{
    const auto none = std::size_t(m_codes.none());
    const float least = std::ranges::max(logarithms) - leastLikely;
    std::vector<int> likely;
    for (std::size_t code = 0; code < logarithms.size(); ++code) {
        if (code != none && logarithms[code] > least)
            likely.push_back(int(code));
    }
    if (likely.size() > mostLikely) {
        const auto end = likely.begin() + std::ptrdiff_t(mostLikely);
        std::ranges::nth_element(likely, end, std::greater(), [&](int code) { return logarithms[std::size_t(code)]; });
        likely.erase(end, likely.end());
    }
    m_next.clear();
    for (const int index : m_likely) {
        const Step from = m_steps[std::size_t(index)];
        consider(index, from.node, m_codes.none(), logarithms[none]);
        if (from.code != m_codes.none())
            consider(index, from.node, from.code, logarithms[std::size_t(from.code)]);
        const std::map<int, int> &next = m_codes.nodes()[std::size_t(from.node)].next;
        for (const int code : likely) {
            const auto to = code == from.code ? next.end() : next.find(code);
            if (to == next.end())
                continue;
            const CharacterCodes::Node &node = m_codes.nodes()[std::size_t(to->second)];
            if (node.character >= 0)
                write(index, node.character, code, logarithms[std::size_t(code)]);
            if (!node.next.empty())
                consider(index, to->second, code, logarithms[std::size_t(code)]);
        }
    }
    std::ranges::sort(m_next, std::greater(), &Step::score);
    m_next.resize(std::min(m_next.size(), ways));
    m_likely.clear();
    for (const Step &step : m_next) {
        m_likely.push_back(int(m_steps.size()));
        m_steps.push_back(step);
    }
    ++m_place;
}

std::vector<ReadCharacter> CharacterSearch::characters() const
{
    std::vector<ReadCharacter> characters;
    const auto whole = std::ranges::find_if(m_likely, [this](int i) {
        const Step &step = m_steps[std::size_t(i)];
        return step.node == 0 && step.word <= begins; // no character and no word is unfinished
    });
    int last = -1;    // place of the code that is gone through, from its end
    float surest = 0; // of its places
    for (int i = whole == m_likely.end() ? m_likely.front() : *whole; i > 0;) {
        const Step &step = m_steps[std::size_t(i)];
        i = step.before;
        if (step.code == m_codes.none())
            continue;
        surest = last < 0 ? step.probability : std::max(surest, step.probability);
        last = std::max(last, step.place);
        if (m_steps[std::size_t(i)].code == step.code)
            continue;
        if (step.written >= 0) {
            const CharacterCodes::Character &character = m_codes.characters()[std::size_t(step.written)];
            characters.push_back({character.text, character.kind, step.place, last, 0});
        }
        if (!characters.empty()) {
            characters.back().first = step.place;
            characters.back().logProbability = std::min(characters.back().logProbability, double(surest));
        }
        last = -1;
    }
    std::ranges::reverse(characters);
    return characters;
}

} // namespace lucentra
