#pragma once

#include "NgramModel.h"
#include "PhraseFile.h"
#include "PhraseForm.h"
#include "StringPool.h"

#include <QHash>
#include <QIODevice>
#include <QString>

#include <atomic>
#include <span>
#include <vector>

namespace lucentra {

struct CatalogueSurvey;

/// Collects phrases with their translations and writes the file of phrases. One thread.
class PhraseCollector
{
public:
    /// Adds a catalogue's message. Families that translate a phrase the same way vote for that translation.
    void add(const QString &family, int language, QByteArrayView source, const QString &translation);

    /// Writes the file and clears the collector. Returns false if writing fails.
    bool write(QIODevice &device, quint64 fingerprint, quint32 catalogues,
               const std::atomic<bool> *isCancelled = nullptr);

private:
    struct Source
    {
        PhraseForm form;          ///< without its text, which is in the pool
        bool hasMnemonic = false; ///< or a mark that could be one
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
    /// The result of the families' votes, by phrase.
    std::vector<PhraseSlot> chosen(quint16 table);
    PhraseSlot choice(std::span<const Record> answers);
    /// The English sources of a translation, by program.
    std::span<const Record> wayBack(const Record &answer);
    /// Whether a translation of a single word may contain more than the word's meaning.
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

/// Reads all catalogues and writes the file of phrases. Returns false if it was cancelled or writing fails.
/// Catalogues that can't be read are skipped. Takes one core for a second or two, and 100 MB.
bool buildPhraseFile(const CatalogueSurvey &survey, QIODevice &device, const std::atomic<bool> &isCancelled);

} // namespace lucentra
