#include "PhraseCollector.h"

#include "CatalogueFolders.h"
#include "MessageCatalogue.h"
#include "PhraseLanguage.h"
#include "RegularFile.h"
#include "Text.h"

#include <QDateTime>

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

namespace lucentra {

namespace {

/// For languages that are only translated from, texts of buttons, menus and labels suffice.
constexpr qsizetype longestForeign = 60;
/// Ten times as many as on a computer with many programs; limits the cost of hostile catalogues.
constexpr qsizetype mostBytes = 256 << 20;
constexpr size_t mostSources = 2'000'000;
constexpr size_t mostRecords = 10'000'000;

/// In fewer texts, a word may come from another language.
constexpr quint16 fewestTexts = 3;
/// Longer words are compounds or aren't words.
constexpr qsizetype longestWord = 24;
/// A translation of a single word as long as this, in half widths of a character, may say more than the word.
constexpr int longForAWord = 9;
/// How many source texts of one translation are compared; limits the cost of hostile catalogues.
constexpr size_t mostWaysBack = 100;
/// The weight of a family's vote. If it has several translations, each gets a part of it.
constexpr int wholeVoice = 60;

bool hasDenseScript(const QString &text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) { return isDenseScript(c.unicode()); });
}

/// Some translations contain the source, too: "Period (기간)", "감마 (Gamma)".
QString withoutSource(const QString &translation, QByteArrayView source)
{
    if (!translation.endsWith(u')') && !translation.endsWith(u'）'))
        return translation;
    qsizetype open = translation.lastIndexOf(u'(');
    if (open < 0)
        open = translation.lastIndexOf(u'（');
    if (open <= 0)
        return translation;
    const QString before = translation.first(open).trimmed();
    QString within = translation.sliced(open + 1).chopped(1).trimmed();
    const QString known = QString::fromUtf8(source);
    if (phraseKey(before) == known)
        return within;
    return phraseKey(within) == known ? before : translation;
}

} // namespace

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
        if (place.isNew) {
            m_ngrams.learn(ngramEnglish, phrase);
            learnWords(phrase);
        }
    }
    return source;
}

void PhraseCollector::learnWords(QStringView phrase)
{
    QByteArray word;
    const auto finish = [&] {
        if (word.size() >= 2 && word.size() <= longestWord) {
            const StringPool::Place place = m_words.place(QByteArrayView(word));
            if (place.isNew)
                m_wordCounts.push_back(0);
            quint16 &count = m_wordCounts[place.number];
            count += count < std::numeric_limits<quint16>::max() ? 1 : 0;
        }
        word.clear();
    };
    for (const QChar c : phrase) {
        const char16_t lower = c.unicode() | 0x20;
        if (lower >= u'a' && lower <= u'z')
            word.append(char(lower));
        else
            finish();
    }
    finish();
}

void PhraseCollector::add(const QString &family, int language, QByteArrayView sourceText, const QString &translation)
{
    if (m_strings.bytes().size() + m_sourceTexts.bytes().size() > mostBytes || m_sources.size() > mostSources ||
        m_records.size() > mostRecords)
        return;
    const Source &from = source(sourceText);
    if (!from.isUsable)
        return;
    const bool isTarget = phraseLanguages[size_t(language)].isTarget();
    if (!isTarget && translation.size() > longestForeign)
        return m_ngrams.learn(language, translation);
    auto form = translationForm(translation, from.form, from.hasMnemonic);
    if (!form || form->size() > longestPhrase || !hasLetter(*form))
        return;
    if (isTarget && !hasDenseScript(*form))
        return; // a name, a unit or a code in another script
    if (form->contains(u'<') && !sourceText.contains('<'))
        return; // a remark for translators, or markup that the source doesn't have
    if (isTarget)
        form = withoutSource(*form, m_strings.string(from.key));
    const StringPool::Place key = m_strings.place(phraseKey(*form));
    if (key.offset == from.key)
        return; // not translated
    if (key.isNew)
        m_ngrams.learn(language, *form);
    const quint16 voter = m_families.value(family, quint16(m_families.size()));
    m_families.insert(family, voter);
    if (isTarget)
        m_records.push_back(
            {.key = from.key, .value = m_strings.place(*form).offset, .table = quint16(2 * language), .family = voter});
    m_records.push_back({.key = key.offset, .value = from.text, .table = quint16(2 * language + 1), .family = voter});
}

std::span<const PhraseCollector::Record> PhraseCollector::records(quint16 table) const
{
    const auto [begin, end] = std::equal_range(m_records.begin(), m_records.end(), Record{.table = table},
                                               [](const Record &a, const Record &b) { return a.table < b.table; });
    return {begin, end};
}

std::span<const PhraseCollector::Record> PhraseCollector::wayBack(const Record &answer)
{
    const quint32 key = m_strings.place(phraseKey(QString::fromUtf8(m_strings.string(answer.value)))).offset;
    const auto all = records(answer.table + 1);
    const auto [begin, end] = std::equal_range(all.begin(), all.end(), Record{.key = key},
                                               [](const Record &a, const Record &b) { return a.key < b.key; });
    return std::span(begin, end).first(std::min<size_t>(size_t(end - begin), mostWaysBack));
}

int PhraseCollector::familiesOnWayBack(const Record &answer)
{
    std::vector<quint16> families;
    for (const Record &back : wayBack(answer))
        families.push_back(back.family);
    std::sort(families.begin(), families.end());
    return int(std::unique(families.begin(), families.end()) - families.begin());
}

bool PhraseCollector::isDoubtful(const Record &answer)
{
    const QByteArrayView word = m_strings.string(answer.key);
    if (word.contains(' ') || word.contains('('))
        return false;
    const QString translation = QString::fromUtf8(m_strings.string(answer.value));
    if (translation.contains(u'(') || translation.contains(u'（'))
        return true; // an explanation
    int width = 0;
    for (const QChar c : translation)
        width += c.isSpace() || c == u'ー' ? 0 : c.script() == QChar::Script_Han ? 2 : 1;
    if (width < longForAWord)
        return false;
    // Also the translation of a longer phrase: one program may translate "Rate" as "Sampling rate".
    const auto back = wayBack(answer);
    return std::any_of(back.begin(), back.end(), [&](const Record &longer) {
        const QStringList words = phraseKey(QString::fromUtf8(m_strings.string(longer.value))).split(u' ');
        return words.size() > 1 && words.contains(QString::fromUtf8(word));
    });
}

PhraseSlot PhraseCollector::choice(std::span<const Record> answers)
{
    const bool isFromEnglish = answers.front().table % 2 == 0;
    std::vector<quint16> voices; // each as often as it says something else
    for (size_t i = 0; i < answers.size(); ++i) {
        if (i == 0 || answers[i].family != answers[i - 1].family || answers[i].value != answers[i - 1].value)
            voices.push_back(answers[i].family);
    }
    std::sort(voices.begin(), voices.end());
    PhraseSlot phrase{.key = answers.front().key};
    const Record *best = nullptr;
    int bestWeight = -1;
    bool isBestDoubtful = false;
    for (auto rest = answers; !rest.empty();) {
        const Record &answer = rest.front();
        quint16 votes = 0;
        int weight = 0;
        size_t count = 0;
        for (; count < rest.size() && rest[count].value == answer.value; ++count) {
            if (count > 0 && rest[count].family == rest[count - 1].family)
                continue;
            const auto [first, last] = std::equal_range(voices.begin(), voices.end(), rest[count].family);
            weight += wholeVoice / int(last - first);
            ++votes;
        }
        rest = rest.subspan(count);
        const bool isDoubted = isFromEnglish && isDoubtful(answer);
        weight = isDoubted ? weight / 2 : weight;
        bool isBetter = weight > bestWeight;
        if (weight == bestWeight) {
            const auto longer = m_strings.length(answer.value) - m_strings.length(best->value);
            // Of two of equal length, the one that more programs use for any text is likelier.
            isBetter =
                longer < 0 || (longer == 0 && isFromEnglish && familiesOnWayBack(answer) > familiesOnWayBack(*best));
        }
        if (isBetter) {
            best = &answer;
            bestWeight = weight;
            isBestDoubtful = isDoubted;
            phrase.value = answer.value;
            phrase.votes = votes;
        }
    }
    phrase.voters = quint16(std::unique(voices.begin(), voices.end()) - voices.begin());
    return isBestDoubtful && phrase.votes == 1 ? PhraseSlot() : phrase;
}

std::vector<PhraseSlot> PhraseCollector::chosen(quint16 table)
{
    std::vector<PhraseSlot> phrases;
    for (auto rest = records(table); !rest.empty();) {
        size_t count = 1;
        while (count < rest.size() && rest[count].key == rest.front().key)
            ++count;
        const PhraseSlot phrase = choice(rest.first(count));
        if (phrase.votes > 0)
            phrases.push_back(phrase);
        rest = rest.subspan(count);
    }
    return phrases;
}

std::vector<PhraseSlot> PhraseCollector::englishWords()
{
    std::vector<PhraseSlot> words;
    const qsizetype end = m_words.bytes().size();
    quint32 number = 0;
    for (qsizetype at = 0; at < end; at += 2 + m_words.length(quint32(at)), ++number) {
        if (m_wordCounts[number] >= fewestTexts)
            words.push_back(
                {.key = m_strings.place(m_words.string(quint32(at))).offset, .votes = m_wordCounts[number]});
    }
    return words;
}

bool PhraseCollector::write(QIODevice &device, quint64 fingerprint, quint32 catalogues,
                            const std::atomic<bool> *isCancelled)
{
    const auto order = [](const Record &r) { return std::tuple(r.table, r.key, r.value, r.family); };
    std::sort(m_records.begin(), m_records.end(),
              [&](const Record &a, const Record &b) { return order(a) < order(b); });
    PhraseFileHeader header;
    header.fingerprint = fingerprint;
    header.builtAt = QDateTime::currentSecsSinceEpoch();
    header.catalogues = catalogues;
    std::vector<std::vector<PhraseSlot>> phrases;
    for (quint16 table = 0; table < phraseTableCount; ++table) {
        if (isCancelled && *isCancelled)
            return false;
        phrases.push_back(chosen(table));
        header.phrases += quint32(phrases.back().size());
    }
    std::vector<Record>().swap(m_records);
    phrases.push_back(englishWords());
    quint64 offset = sizeof header;
    for (size_t table = 0; table < phrases.size(); ++table) {
        const auto entries = quint32(phrases[table].size());
        PhraseTable &place = table < phraseTableCount ? header.tables[table] : header.words;
        place = {.offset = offset, .capacity = entries + entries / 2, .entries = entries};
        if (entries == 1)
            place.capacity = 2; // a search ends at an empty slot
        offset += place.capacity * sizeof(PhraseSlot);
    }
    header.ngrams = offset;
    header.strings = offset + NgramModel::byteCount;
    header.stringsSize = quint64(m_strings.bytes().size());
    header.fileSize = header.strings + header.stringsSize;

    const auto put = [&device](const void *bytes, quint64 count) {
        return device.write(static_cast<const char *>(bytes), qint64(count)) == qint64(count);
    };
    bool isWritten = put(&header, sizeof header);
    for (size_t table = 0; table < phrases.size(); ++table) {
        std::vector<PhraseSlot> places(table < phraseTableCount ? header.tables[table].capacity
                                                                : header.words.capacity);
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
    // A program's catalogues one after another: what is at hand from one language is needed for the next.
    QList<CatalogueFile> files = filesByPackage(survey);
    std::stable_sort(files.begin(), files.end(),
                     [](const CatalogueFile &a, const CatalogueFile &b) { return a.family < b.family; });
    for (const CatalogueFile &file : std::as_const(files)) {
        if (isCancelled)
            return false;
        // Not mapped, since truncating a mapped file would crash this program.
        const auto bytes = readRegularFile(file.path, largestCatalogue);
        if (!bytes)
            continue;
        const auto visit = [&](QByteArrayView source, const QString &translation) {
            collector.add(file.family, file.language, source, translation);
        };
        used += (file.isQt ? readQmCatalogue : readMoCatalogue)(*bytes, visit) ? 1 : 0;
    }
    return collector.write(device, survey.fingerprint, used, &isCancelled);
}

} // namespace lucentra
