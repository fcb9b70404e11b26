#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QFile>
#include <QString>

#include <array>
#include <memory>
#include <optional>

namespace lucentra {

class NgramModel;

// The file of phrases, written by `PhraseCollector` and read by `PhraseFile`: a header, the hash tables, the model of
// n-grams, the strings. Numbers have the machine's byte order; a file with another one is rebuilt.

/// The hash of keys; the same on every machine and in every version.
quint64 phraseHash(QByteArrayView key);

struct PhraseTable
{
    quint64 offset = 0;   ///< of the first slot, in bytes from the file's start
    quint32 capacity = 0; ///< slots
    quint32 entries = 0;  ///< slots in use
};

/// A phrase and its translation; an unused slot has no votes.
struct PhraseSlot
{
    quint32 tag = 0;    ///< the lower half of the key's hash
    quint32 key = 0;    ///< where the key's string starts, in bytes from the first string
    quint32 value = 0;  ///< where the chosen translation starts
    quint16 votes = 0;  ///< families of programs with this translation
    quint16 voters = 0; ///< families with any translation of the phrase
};

inline constexpr int phraseTableCount = 24; ///< room for two tables per language

struct PhraseFileHeader
{
    std::array<char, 8> magic{'L', 'c', 'n', 't', 'P', 'h', 'r', '\n'};
    quint32 version = 3;
    quint32 byteOrder = 0x01020304;
    quint64 fileSize = 0;
    quint64 fingerprint = 0; ///< of the catalogues that it was made from
    qint64 builtAt = 0;      ///< seconds since 1970
    quint32 catalogues = 0;  ///< how many gave phrases
    quint32 phrases = 0;     ///< pairs in all tables
    quint64 strings = 0;     ///< offset of the first string: two bytes of length, then UTF-8
    quint64 stringsSize = 0;
    quint64 ngrams = 0;                               ///< offset of the model
    std::array<PhraseTable, phraseTableCount> tables; ///< by language: from English into it, then out of it
    PhraseTable words; ///< of English, without translations; votes are texts that contain the word
};

/// A phrase's translation.
struct PhraseMatch
{
    QString text;
    int votes = 0;  ///< families of programs with this translation
    int voters = 0; ///< families with any translation of the phrase
};

/// The mapped file of phrases. Checked when it is opened and at each look-up, so that a damaged file does no
/// harm. Any thread, concurrently.
class PhraseFile
{
public:
    /// Opens a file. Returns null if there is none of this version, or if other users may write it.
    static std::shared_ptr<const PhraseFile> open(const QString &path);
    /// The same from bytes, if no file can be written.
    static std::shared_ptr<const PhraseFile> fromBytes(QByteArray bytes);
    ~PhraseFile();

    /// The translation of an English phrase into a language of `phraseLanguages`. Keys are `phraseKey`s.
    std::optional<PhraseMatch> fromEnglish(int language, const QString &key) const;
    /// The English of a phrase of such a language.
    std::optional<PhraseMatch> intoEnglish(int language, const QString &key) const;
    /// At least how many programs have the phrase in English; 0 if none has.
    int englishVotes(const QString &key) const;
    /// Whether a single word, as a key, occurs within the programs' English.
    bool isEnglishWord(const QString &word) const;

    const PhraseFileHeader &header() const { return *m_header; }
    quint32 phrasesInto(int language) const;
    quint32 phrasesOutOf(int language) const;
    const NgramModel &ngrams() const { return *m_ngrams; }

private:
    PhraseFile() = default;
    bool check();
    std::optional<PhraseMatch> find(const PhraseTable &table, const QString &key) const;
    QByteArrayView string(quint32 offset) const;

    QFile m_file;
    QByteArray m_bytes;
    QByteArrayView m_view;
    const PhraseFileHeader *m_header = nullptr;
    std::unique_ptr<NgramModel> m_ngrams;
};

} // namespace lucentra
