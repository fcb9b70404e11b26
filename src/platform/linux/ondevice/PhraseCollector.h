#pragma once

#include "NgramModel.h"
#include "PhraseFile.h"
#include "PhraseForm.h"

#include <QByteArray>
#include <QHash>
#include <QIODevice>
#include <QString>

#include <atomic>
#include <span>
#include <vector>

namespace lucentra {

struct CatalogueSurvey;

/// Every distinct string once, as it stands in the memory's file. It takes its room in large pieces, so that it leaves
/// nothing behind.
class StringPool
{
public:
    struct Place
    {
        quint32 offset; ///< in the pool's bytes
        quint32 number; ///< 0 for the first string, 1 for the next ...
        bool isNew;
    };

    /// Room for so many strings is made at once.
    explicit StringPool(size_t expectedStrings);

    /// The place of a string in the pool, which it is put into where it is new.
    Place place(QByteArrayView bytes);
    Place place(const QString &string) { return place(QByteArrayView(string.toUtf8())); }
    const QByteArray &bytes() const { return m_bytes; }
    qsizetype length(quint32 offset) const;
    QByteArrayView string(quint32 offset) const;

private:
    void grow();

    QByteArray m_bytes;
    struct Slot
    {
        quint32 tag = 0;  ///< of the hash, so that most strings needn't be looked at
        quint32 next = 0; ///< 1 + offset; 0 where the slot is free
        quint32 number = 0;
    };
    std::vector<Slot> m_slots; ///< open addressing
    quint32 m_count = 0;
};

/// Gathers phrases with their translations and writes the memory's file. One thread.
class PhraseCollector
{
public:
    /// A message as a catalogue has it. Families that translate a phrase the same way vote for it.
    void add(const QString &family, int language, QByteArrayView source, const QString &translation);

    /// Writes the file; false where the device doesn't take it. Called once, after which nothing is left.
    bool write(QIODevice &device, quint64 fingerprint, quint32 catalogues);

private:
    struct Source
    {
        PhraseForm form;          ///< without its text, which is in the pool
        bool hasMnemonic = false; ///< or what could be one
        quint32 key = 0;
        quint32 text = 0;
        bool isUsable = false;
    };
    struct Record
    {
        quint32 key;
        quint32 value;
        quint16 table;
        quint16 family;
    };

    const Source &source(QByteArrayView text);
    void learnWords(QStringView phrase);
    std::span<const Record> records(quint16 table) const;
    /// What the families' votes come to, by phrase.
    std::vector<PhraseSlot> chosen(quint16 table);
    PhraseSlot choice(std::span<const Record> answers);
    /// What a translation stands for in English, by which program.
    std::span<const Record> wayBack(const Record &answer);
    /// Whether a translation of a single word may say more than the word does.
    bool isDoubtful(const Record &answer);
    int familiesOnWayBack(const Record &answer);
    std::vector<PhraseSlot> englishWords();

    StringPool m_strings{500'000};
    StringPool m_words{30'000};
    std::vector<quint16> m_wordCounts; ///< in how many English texts, by the numbers of the words
    NgramCounter m_ngrams;
    StringPool m_sourceTexts{100'000};
    std::vector<Source> m_sources; ///< by the number of their texts
    QHash<QString, quint16> m_families;
    std::vector<Record> m_records;
};

/// Reads all catalogues and writes the memory's file; false where it was cancelled or the device doesn't take it.
/// A catalogue that can't be read gives no phrases. Takes one core for a second or two and 100 MB meanwhile.
bool buildPhraseFile(const CatalogueSurvey &survey, QIODevice &device, const std::atomic<bool> &isCancelled);

} // namespace lucentra
