#include "PhraseFile.h"

#include "NgramModel.h"
#include "PhraseLanguage.h"
#include "RegularFile.h"

#include <algorithm>
#include <cstring>

#include <unistd.h>

namespace lucentra {

static_assert(phraseTableCount >= 2 * phraseLanguages.size());

quint64 phraseHash(QByteArrayView key)
{
    constexpr quint64 multiplier = 0x9e3779b97f4a7c15U; // of the golden ratio
    quint64 hash = quint64(key.size()) * multiplier;
    const auto mix = [&hash](quint64 word) {
        hash = (hash ^ word) * multiplier;
        hash ^= hash >> 29;
    };
    qsizetype at = 0;
    for (; at + 8 <= key.size(); at += 8) {
        quint64 word = 0;
        std::memcpy(&word, key.data() + at, 8);
        mix(word);
    }
    quint64 rest = 0;
    std::memcpy(&rest, key.data() + at, size_t(key.size() - at));
    mix(rest);
    hash *= multiplier;
    return hash ^ (hash >> 32);
}

std::shared_ptr<const PhraseFile> PhraseFile::open(const QString &path)
{
    std::shared_ptr<PhraseFile> file(new PhraseFile);
    const auto status = openRegularFile(file->m_file, path);
    // Other users could change the phrases of a file that they may write, or truncate it while it is mapped.
    if (!status || (status->st_uid != ::geteuid() && status->st_uid != 0) ||
        (status->st_mode & (S_IWGRP | S_IWOTH)) != 0)
        return nullptr;
    const qint64 size = file->m_file.size();
    const uchar *const mapped = size > 0 ? file->m_file.map(0, size) : nullptr;
    if (!mapped)
        return nullptr;
    file->m_view = QByteArrayView(mapped, size);
    return file->check() ? file : nullptr;
}

std::shared_ptr<const PhraseFile> PhraseFile::fromBytes(QByteArray bytes)
{
    std::shared_ptr<PhraseFile> file(new PhraseFile);
    file->m_bytes = std::move(bytes);
    file->m_view = file->m_bytes;
    return file->check() ? file : nullptr;
}

PhraseFile::~PhraseFile() = default;

bool PhraseFile::check()
{
    if (m_view.size() < qsizetype(sizeof(PhraseFileHeader)))
        return false;
    m_header = reinterpret_cast<const PhraseFileHeader *>(m_view.data());
    const PhraseFileHeader expected;
    const quint64 size = quint64(m_view.size());
    const auto fits = [size](quint64 offset, quint64 bytes) {
        return offset <= size && bytes <= size - offset && offset % alignof(PhraseSlot) == 0;
    };
    const bool isOurs = m_header->magic == expected.magic && m_header->version == expected.version &&
                        m_header->byteOrder == expected.byteOrder && m_header->fileSize == size;
    const auto tableFits = [&](const PhraseTable &table) {
        return fits(table.offset, quint64(table.capacity) * sizeof(PhraseSlot));
    };
    const bool tablesFit =
        tableFits(m_header->words) && std::all_of(m_header->tables.begin(), m_header->tables.end(), tableFits);
    if (!isOurs || !tablesFit || !fits(m_header->strings, m_header->stringsSize) ||
        !fits(m_header->ngrams, NgramModel::byteCount))
        return false;
    m_ngrams = std::make_unique<NgramModel>(m_view.sliced(qsizetype(m_header->ngrams), NgramModel::byteCount));
    return true;
}

QByteArrayView PhraseFile::string(quint32 offset) const
{
    const quint64 size = m_header->stringsSize;
    if (size < 2 || offset > size - 2)
        return {};
    const char *const start = m_view.data() + m_header->strings + offset;
    quint16 length = 0;
    std::memcpy(&length, start, sizeof length);
    return length <= size - 2 - offset ? QByteArrayView(start + 2, length) : QByteArrayView();
}

std::optional<PhraseMatch> PhraseFile::find(const PhraseTable &place, const QString &key) const
{
    if (place.capacity == 0 || key.isEmpty())
        return std::nullopt;
    const QByteArray bytes = key.toUtf8();
    const quint64 hash = phraseHash(bytes);
    const auto *const slots = reinterpret_cast<const PhraseSlot *>(m_view.data() + place.offset);
    auto at = quint32(((hash >> 32) * place.capacity) >> 32);
    for (quint32 probes = 0; probes < place.capacity && slots[at].votes > 0; ++probes) {
        const PhraseSlot &slot = slots[at];
        if (slot.tag == quint32(hash) && string(slot.key) == bytes)
            return PhraseMatch{
                .text = QString::fromUtf8(string(slot.value)), .votes = slot.votes, .voters = slot.voters};
        at = at + 1 == place.capacity ? 0 : at + 1;
    }
    return std::nullopt;
}

std::optional<PhraseMatch> PhraseFile::fromEnglish(int language, const QString &key) const
{
    return find(m_header->tables[2 * size_t(language)], key);
}

std::optional<PhraseMatch> PhraseFile::intoEnglish(int language, const QString &key) const
{
    return find(m_header->tables[2 * size_t(language) + 1], key);
}

int PhraseFile::englishVotes(const QString &key) const
{
    int votes = 0;
    for (int language = 0; language < int(phraseLanguages.size()); ++language) {
        if (phraseLanguages[size_t(language)].isTarget()) {
            const auto match = fromEnglish(language, key);
            votes = std::max(votes, match ? match->voters : 0);
        }
    }
    return votes;
}

bool PhraseFile::isEnglishWord(const QString &word) const
{
    return find(m_header->words, word).has_value();
}

quint32 PhraseFile::phrasesInto(int language) const
{
    return m_header->tables[2 * size_t(language)].entries;
}

quint32 PhraseFile::phrasesOutOf(int language) const
{
    return m_header->tables[2 * size_t(language) + 1].entries;
}

} // namespace lucentra
