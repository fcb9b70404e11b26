#pragma once

#include "read/WordList.h"

#include <QByteArray>
#include <QString>

#include <map>
#include <span>
#include <vector>

namespace lucentra {

enum class CharacterKind {
    Space,
    Letter,
    Wide, ///< ideographs, kana and syllables, which need no space between words
    Other
};

/// A character that was read.
struct ReadCharacter
{
    QString text; ///< a space as well
    CharacterKind kind = CharacterKind::Other;
    int first = 0;             ///< place of the net
    int last = 0;              ///< likewise
    double logProbability = 0; ///< of its least sure code, where that is surest
};

/// How a model's characters are written in codes: Latin letters in one, ideographs and syllables in several, which they
/// share.
class CharacterCodes
{
public:
    /// A code, and where one may go on from it.
    struct Node
    {
        std::map<int, int> next; ///< nodes, by code
        int character = -1;      ///< the one that ends here, by its number
    };

    struct Character
    {
        QString text;
        CharacterKind kind = CharacterKind::Other;
    };

    /// Takes the parts of a model (see `ModelFile`). Throws std::runtime_error where they are broken.
    CharacterCodes(const QByteArray &characters, const QByteArray &codes, int none);

    /// The first one is where each character begins.
    const std::vector<Node> &nodes() const { return m_nodes; }
    const std::vector<Character> &characters() const { return m_characters; }
    int none() const { return m_none; }

private:
    std::vector<Node> m_nodes{1};
    std::vector<Character> m_characters;
    int m_none;
};

/// Finds the likeliest characters from the probabilities of codes at each place: a beam search over what the net was
/// trained with CTC to say. At each place is a code, the same one as before, or none (the blank). Characters that make
/// words of a list are likelier.
class CharacterSearch
{
public:
    CharacterSearch(const CharacterCodes &codes, const WordList &words);

    /// The next place: the logarithm of each code's probability.
    void add(std::span<const float> logarithms);
    std::vector<ReadCharacter> characters() const;

private:
    /// What has been written so far, by its likeliest way.
    struct Step
    {
        int before; ///< step
        int node;   ///< where the character that is being written has come to
        int code;
        int written; ///< the character that ends here, or -1
        int word;    ///< place in the list of words, or one of those below
        int place;
        float probability; ///< of the code, its logarithm
        float pending;     ///< of the codes of the character that is being written
        float score;       ///< of all ways to write this much so far
        quint64 writing;   ///< tells apart what has been written
    };
    static constexpr int begins = 0;    // a word may begin
    static constexpr int unknown = -1;  // in a word that isn't in the list
    static constexpr int complete = -2; // a word has ended, so no letter may follow

    void consider(int before, int node, int code, float probability);
    void write(int before, int character, int code, float probability);
    void take(const Step &step);

    const CharacterCodes &m_codes;
    const WordList &m_words;
    std::vector<Step> m_steps;
    std::vector<int> m_likely; ///< steps at the present place
    std::vector<Step> m_next;
    int m_place = 0;
};

} // namespace lucentra
