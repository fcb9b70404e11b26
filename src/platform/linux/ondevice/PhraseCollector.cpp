#include "PhraseCollector.h"

#include "CatalogueFolders.h"
#include "MemoryLanguage.h"
#include "MessageCatalogue.h"
#include "Text.h"

#include <QDateTime>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <iterator>
#include <tuple>
#include <utility>

namespace lucentra {

namespace {

/// Longer texts don't stand on one line of a screen.
constexpr qsizetype longestPhrase = 160;
/// Of the languages that are only translated from, buttons, menus and labels will do.
constexpr qsizetype longestForeign = 60;
constexpr qint64 largestFile = 32 << 20;
/// Ten times what a computer full of programs has; bounds what hostile catalogues cost.
constexpr qsizetype mostBytes = 256 << 20;

bool hasLetter(const QString &text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
}

/// The bytes of a regular file, read rather than mapped: a mapped one that is cut short meanwhile would be fatal.
bool readFile(const QString &path, QByteArray &bytes)
{
    const int file = ::open(path.toLocal8Bit().constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return false;
    struct stat info;
    bytes.resize(0);
    if (::fstat(file, &info) == 0 && S_ISREG(info.st_mode) && info.st_size <= largestFile) {
        bytes.resize(info.st_size);
        qsizetype count = 0;
        while (count < bytes.size()) {
            const ssize_t got = ::read(file, bytes.data() + count, size_t(bytes.size() - count));
            if (got <= 0)
                break;
            count += got;
        }
        bytes.resize(count);
    }
    ::close(file);
    return !bytes.isEmpty();
}

} // namespace

StringPool::StringPool(size_t expectedStrings)
    : m_slots(std::bit_ceil(2 * expectedStrings))
{
    constexpr size_t usualSize = 64;
    m_bytes.reserve(qsizetype(expectedStrings * usualSize)); // pages that stay unused cost nothing
}

qsizetype StringPool::length(quint32 offset) const
{
    quint16 length = 0;
    std::memcpy(&length, m_bytes.constData() + offset, sizeof length);
    return length;
}

QByteArrayView StringPool::string(quint32 offset) const
{
    return {m_bytes.constData() + offset + 2, length(offset)};
}

StringPool::Place StringPool::place(QByteArrayView bytes)
{
    if (size_t(m_count) * 2 >= m_slots.size())
        grow();
    const quint64 hash = phraseHash(bytes);
    const auto tag = quint32(hash >> 32);
    const size_t mask = m_slots.size() - 1;
    size_t at = hash & mask;
    for (; m_slots[at].next != 0; at = (at + 1) & mask) {
        const quint32 offset = m_slots[at].next - 1;
        if (m_slots[at].tag == tag && string(offset) == bytes)
            return {.offset = offset, .number = m_slots[at].number, .isNew = false};
    }
    const auto offset = quint32(m_bytes.size());
    const auto length = quint16(bytes.size());
    m_bytes.append(reinterpret_cast<const char *>(&length), sizeof length);
    m_bytes.append(bytes);
    m_slots[at] = {.tag = tag, .next = offset + 1, .number = m_count};
    return {.offset = offset, .number = m_count++, .isNew = true};
}

void StringPool::grow()
{
    std::vector<Slot> old(m_slots.size() * 2);
    old.swap(m_slots);
    const size_t mask = m_slots.size() - 1;
    for (const Slot &slot : old) {
        if (slot.next == 0)
            continue;
        size_t at = phraseHash(string(slot.next - 1)) & mask;
        while (m_slots[at].next != 0)
            at = (at + 1) & mask;
        m_slots[at] = slot;
    }
}

const PhraseCollector::Source &PhraseCollector::source(QByteArrayView text)
{
    const StringPool::Place known = m_sourceTexts.place(text);
    if (!known.isNew)
        return m_sources[known.number];
    Source &source = m_sources.emplace_back();
    const auto decoded = decodeUtf8(text);
    if (!decoded)
        return source;
    source.form = catalogueForm(*decoded);
    const QString phrase = std::exchange(source.form.text, QString());
    source.isUsable = phrase.size() <= longestPhrase && hasLetter(phrase);
    if (source.isUsable) {
        source.hasMnemonic = mayHaveMnemonic(*decoded);
        const StringPool::Place place = m_strings.place(phrase);
        source.text = place.offset;
        source.key = m_strings.place(phraseKey(phrase)).offset;
        if (place.isNew)
            m_ngrams.learn(ngramEnglish, phrase);
    }
    return source;
}

void PhraseCollector::add(const QString &family, int language, QByteArrayView sourceText, const QString &translation)
{
    if (m_strings.bytes().size() + m_sourceTexts.bytes().size() > mostBytes)
        return;
    const Source &from = source(sourceText);
    if (!from.isUsable)
        return;
    const bool isTarget = memoryLanguages[size_t(language)].isTarget;
    if (!isTarget && translation.size() > longestForeign)
        return m_ngrams.learn(language, translation);
    const auto form = translationForm(translation, from.form, from.hasMnemonic);
    if (!form || form->size() > longestPhrase || !hasLetter(*form))
        return;
    const StringPool::Place key = m_strings.place(phraseKey(*form));
    if (key.offset == from.key)
        return; // left as it is
    if (key.isNew)
        m_ngrams.learn(language, *form);
    const quint16 voter = m_families.value(family, quint16(m_families.size()));
    m_families.insert(family, voter);
    if (isTarget)
        m_records.push_back(
            {.key = from.key, .value = m_strings.place(*form).offset, .table = quint16(2 * language), .family = voter});
    m_records.push_back({.key = key.offset, .value = from.text, .table = quint16(2 * language + 1), .family = voter});
}

std::vector<PhraseSlot> PhraseCollector::chosen(const Record *begin, const Record *end) const
{
    std::vector<PhraseSlot> phrases;
    while (begin != end) {
        const Record *const past = std::find_if(begin, end, [&](const Record &r) { return r.key != begin->key; });
        PhraseSlot phrase{.key = begin->key};
        std::vector<quint16> voters;
        for (const Record *value = begin; value != past;) {
            const Record *const pastValue =
                std::find_if(value, past, [&](const Record &r) { return r.value != value->value; });
            quint16 votes = 0;
            for (const Record *one = value; one != pastValue; ++one) {
                votes += one == value || one->family != (one - 1)->family ? 1 : 0;
                voters.push_back(one->family);
            }
            const bool isShorter = m_strings.length(value->value) < m_strings.length(phrase.value);
            if (votes > phrase.votes || (votes == phrase.votes && isShorter)) {
                phrase.value = value->value;
                phrase.votes = votes;
            }
            value = pastValue;
        }
        std::sort(voters.begin(), voters.end());
        phrase.voters = quint16(std::unique(voters.begin(), voters.end()) - voters.begin());
        phrases.push_back(phrase);
        begin = past;
    }
    return phrases;
}

bool PhraseCollector::write(QIODevice &device, quint64 fingerprint, quint32 catalogues)
{
    const auto order = [](const Record &r) { return std::tuple(r.table, r.key, r.value, r.family); };
    std::sort(m_records.begin(), m_records.end(),
              [&](const Record &a, const Record &b) { return order(a) < order(b); });
    PhraseFileHeader header;
    header.fingerprint = fingerprint;
    header.builtAt = QDateTime::currentSecsSinceEpoch();
    header.catalogues = catalogues;
    quint64 offset = sizeof header;
    std::vector<std::vector<PhraseSlot>> phrases(phraseTableCount);
    for (size_t table = 0; table < phrases.size(); ++table) {
        const auto [begin, end] = std::equal_range(m_records.begin(), m_records.end(), Record{.table = quint16(table)},
                                                   [](const Record &a, const Record &b) { return a.table < b.table; });
        phrases[table] = chosen(std::to_address(begin), std::to_address(end));
        const auto entries = quint32(phrases[table].size());
        header.tables[table] = {.offset = offset, .capacity = entries + entries / 2, .entries = entries};
        if (entries == 1)
            header.tables[table].capacity = 2; // a table without an empty slot would do, but is never left early
        header.phrases += entries;
        offset += header.tables[table].capacity * sizeof(PhraseSlot);
    }
    std::vector<Record>().swap(m_records);
    header.ngrams = offset;
    header.strings = offset + NgramModel::byteCount;
    header.stringsSize = quint64(m_strings.bytes().size());
    header.fileSize = header.strings + header.stringsSize;

    const auto put = [&device](const void *bytes, quint64 count) {
        return device.write(static_cast<const char *>(bytes), qint64(count)) == qint64(count);
    };
    bool isWritten = put(&header, sizeof header);
    for (size_t table = 0; table < phrases.size(); ++table) {
        std::vector<PhraseSlot> places(header.tables[table].capacity);
        for (PhraseSlot phrase : phrases[table]) {
            const quint64 hash = phraseHash(m_strings.string(phrase.key));
            phrase.tag = quint32(hash);
            size_t at = ((hash >> 32) * places.size()) >> 32;
            while (places[at].votes > 0)
                at = at + 1 == places.size() ? 0 : at + 1;
            places[at] = phrase;
        }
        isWritten = isWritten && put(places.data(), places.size() * sizeof(PhraseSlot));
    }
    const QByteArray model = m_ngrams.model();
    return isWritten && put(model.constData(), quint64(model.size())) &&
           put(m_strings.bytes().constData(), header.stringsSize);
}

bool buildPhraseFile(const CatalogueSurvey &survey, QIODevice &device, const std::atomic<bool> &isCancelled)
{
    PhraseCollector collector;
    quint32 used = 0;
    QByteArray bytes;
    // A program's catalogues one after another: what is at hand from one language is needed for the next.
    QList<CatalogueFile> files = survey.files;
    std::stable_sort(files.begin(), files.end(),
                     [](const CatalogueFile &a, const CatalogueFile &b) { return a.family < b.family; });
    for (const CatalogueFile &file : std::as_const(files)) {
        if (isCancelled)
            return false;
        if (!readFile(file.path, bytes))
            continue;
        const auto visit = [&](QByteArrayView source, const QString &translation) {
            collector.add(file.family, file.language, source, translation);
        };
        used += (file.isQt ? readQmCatalogue(bytes, visit) : readMoCatalogue(bytes, visit)) ? 1 : 0;
    }
    return collector.write(device, survey.fingerprint, used);
}

} // namespace lucentra
