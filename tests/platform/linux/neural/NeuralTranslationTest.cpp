#include "NeuralTranslation.h"
#include "Columns.h"
#include "MappedFile.h"
#include "Sentences.h"
#include "StudentNetwork.h"
#include "TestProgram.h"
#include "TinyModel.h"
#include "Vocabulary.h"

#include <sentencepiece_processor.h>

#include <QTemporaryDir>
#include <QTest>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

QString joined(const WordTranslation &translation)
{
    QStringList words;
    for (const int word : translation.words)
        words.append(QString::number(word));
    return words.join(u' ');
}

} // namespace

class NeuralTranslationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sentencesAreTranslated_data()
    {
        // words: of each sentence, as found by a network in double precision that was written from the models'
        // description
        const auto row = columns<int, bool, bool, QStringList>("seed", "isShared", "hasActivations", "words");
        row("one vocabulary", 115, true, true,
            {u"7 3"_s, u"3 3 3 3"_s, u"22 28 28 28 28 28"_s, u"3 3 3 3 3 3 3 3"_s, u"27 28 3 3 3 3 3 3 22 22"_s,
             u"22 3 22 3 22 3 3 22 3 22 3 22"_s, u"22 22 20 22 22 22 22 22 22 20 22 22 22 22"_s,
             u"27 35 27 27 35 35 27 35 27 35 35 27 35 27 35 27"_s, u"3 3 3 3 3 3 3 3 3 3 3 3 3 3 3 3 3 3"_s});
        row("two vocabularies", 92, false, true,
            {u"4 6"_s, u"6 6 6 6"_s, u"4 4 4 4 4 4"_s, u"6 7 6 7 6 7 6 14"_s, u"4 4 4 4 4 4 4 4 4 4"_s,
             u"14 24 6 6 14 6 30 4 4 4 4 4"_s, u"14 2 6 33 6 33 6 33 6 2 6 33 6 33"_s,
             u"7 6 7 31 7 6 31 6 7 6 7 6 31 6 31 6"_s, u"6 38 6 31 6 31 6 31 6 31 6 31 6 31 6 31 6 31"_s});
        row("activations from the input", 39, true, false,
            {u"3 3"_s, u"35 35 35 35"_s, u"15 15 15 15 15 15"_s, u""_s, u"15 15 15 15 15 15 15 14 34 34"_s,
             u"4 4 4 4 4 4 4 4 4 4 4 4"_s, u"30 35 30 35 30 30 30 30 30 35 30 35 30 30"_s,
             u"30 30 30 30 30 30 30 32 30 30 35 30 30 30 30 30"_s,
             u"30 24 35 30 24 2 24 2 14 2 14 2 14 3 14 14 3 24"_s});
    }

    void sentencesAreTranslated()
    {
        const auto [seed, isShared, hasActivations, words] = fetched<int, bool, bool, QStringList>();
        const QByteArray bytes = TinyModel(unsigned(seed), isShared, hasActivations, -0.5F).bytes();
        const auto file = NetworkFile::parse(bytes);
        QVERIFY(file);
        const auto network = StudentNetwork::make(*file);
        QVERIFY2(network, network ? "" : qPrintable(network.error().detail));
        const QByteArray listBytes = TinyModel::shortlist();
        const auto list = Shortlist::parse(listBytes, network->sourceWords(), network->targetWords());
        QVERIFY(list);
        std::vector<std::vector<int>> sentences;
        std::minstd_rand random(5);
        for (std::size_t length = 1; length <= 9; ++length) {
            auto &sentence = sentences.emplace_back();
            for (std::size_t i = 0; i + 1 < length; ++i)
                sentence.push_back(int(2 + random() % (TinyModel::words - 2)));
            sentence.push_back(0);
            QCOMPARE(list->candidates(sentence, isShared).size() % 8, std::size_t(0));
        }
        QStringList together, alone;
        for (const WordTranslation &translation : network->translate(sentences, {.shortlist = &*list}))
            together.append(joined(translation));
        for (const auto &sentence : sentences)
            alone.append(joined(network->translate({sentence}, {.shortlist = &*list}, int8Kernels().back())[0]));
        QCOMPARE(together, words);
        QCOMPARE(alone, words);
        QVERIFY(network->translate(sentences, {.isWanted = [] { return false; }}).empty());
    }

    void brokenFilesAreRefused()
    {
        const TinyModel good;
        const QByteArray bytes = good.bytes();
        const auto kindOf = [](const QByteArray &file) {
            const auto parsed = NetworkFile::parse(file);
            const auto network = parsed ? StudentNetwork::make(*parsed) : tl::unexpected(parsed.error());
            return network ? QString() : QString::number(int(network.error().kind)) + network.error().detail;
        };
        QCOMPARE(kindOf(bytes), QString());
        for (qsizetype size = 0; size < bytes.size(); size += 397)
            QVERIFY(kindOf(bytes.first(size)).startsWith(u'1'));
        TinyModel other = good;
        other.settings.replace("ssru", "gru");
        QCOMPARE(kindOf(other.bytes()), u"2dec-cell: gru"_s);
        other = good;
        other.parameters.remove("decoder_l2_rnn_Wf");
        QCOMPARE(kindOf(other.bytes()), u"1decoder_l2_rnn_Wf"_s);
        other = good;
        other.parameters["encoder_l1_ffn_b2"] = other.parameters["encoder_l1_ffn_b1"];
        QCOMPARE(kindOf(other.bytes()), u"1encoder_l1_ffn_b2"_s);
        const QByteArray list = TinyModel::shortlist();
        QVERIFY(!Shortlist::parse(list, TinyModel::words, TinyModel::words - 1)); // a word beyond the vocabulary
        QVERIFY(!Shortlist::parse(list, TinyModel::words - 1, TinyModel::words));
        QVERIFY(!Shortlist::parse(list.chopped(4), TinyModel::words, TinyModel::words));
        QByteArray changed = list;
        ++changed.back(); // a bit too much
        QVERIFY(!Shortlist::parse(changed, TinyModel::words, TinyModel::words));
    }

    void tablesOfVocabulariesStayInside()
    {
        const QByteArray map = TinyModel::characterMap();
        const auto vocabulary = loadVocabulary(TinyModel::vocabulary());
        QVERIFY(vocabulary);
        QCOMPARE(vocabulary->EncodeAsIds("bAd"), vocabulary->EncodeAsIds("bad"));
        const auto isLoaded = [&map](qsizetype place, const QByteArray &bytes) {
            QByteArray changed = map;
            changed.replace(place, bytes.size(), bytes);
            return loadVocabulary(TinyModel::vocabulary(changed)) != nullptr;
        };
        const qsizetype value = 4 + 4 * (1 ^ 'A' ^ 2);
        QVERIFY(isLoaded(4, "\x01"));
        QVERIFY(!isLoaded(6, "\x7F"));                // the first step leads out
        QVERIFY(!isLoaded(value, "\x02"));            // a text that isn't there
        QVERIFY(!isLoaded(map.size() - 1, "b"));      // a text without an end
        QVERIFY(!isLoaded(0, QByteArray("\0\0", 2))); // no trie
        QVERIFY(!loadVocabulary(TinyModel::vocabulary().chopped(1)));
    }

    void filesMayChangeWhileTheyAreMapped()
    {
        const QTemporaryDir home;
        const QString path = home.filePath(u"file"_s);
        writeFile(path, QByteArray(100'000, 'x'));
        const auto mapped = MappedFile::open(path);
        writeFile(home.filePath(u"other"_s), QByteArray(100'000, 'x'));
        QCOMPARE(::rename(qPrintable(home.filePath(u"other"_s)), qPrintable(path)), 0);
        QVERIFY(mapped->isIntact());
        const auto second = MappedFile::open(path);
        QVERIFY(QFile::resize(path, 5000));
        QVERIFY(!second->isIntact());
        QCOMPARE(std::count(second->bytes().begin(), second->bytes().end(), 'x'), 5000);
        QCOMPARE(std::count(mapped->bytes().begin(), mapped->bytes().end(), 'x'), 100'000);
    }

    void textsAreDivided_data()
    {
        const auto row = columns<QString, QStringList, QString>("text", "sentences", "joined");
        row("two", u"One here.  Two there!"_s, {u"One here."_s, u"Two there!"_s}, u"一。一。"_s);
        row("an abbreviation", u"Mr. Smith left."_s, {u"Mr. Smith left."_s}, u"一。"_s);
        row("lines", u" a\n\nb\n"_s, {u"a"_s, u"b"_s}, u" 一。\n\n一。\n"_s);
        row("nothing to translate", u"https://a.example/b?c=1 12:30 %s"_s, {}, u"https://a.example/b?c=1 12:30 %s"_s);
        row("empty", {}, {}, {});
    }

    void textsAreDivided()
    {
        QFETCH(QString, text);
        auto parts = partsOfText(text, u"en"_s);
        QStringList sentences;
        QString again;
        for (TextPart &part : parts) {
            again += part.sentence + part.separator;
            if (!part.isLanguage)
                continue;
            sentences.append(part.sentence);
            part.sentence = u"一。"_s;
        }
        QCOMPARE(again, text);
        QTEST(sentences, "sentences");
        QTEST(joinedText(parts, u"zh-Hant"_s), "joined");
    }

    void edgesOfSentencesSurvive_data()
    {
        columns<QString, QString, QString, QString>("source", "translation", "target", "restored");
        const auto row = [](const QString &source, const QString &translation, const QString &target,
                            const QString &restored) {
            QTest::newRow(qPrintable(source + u' ' + target)) << source << translation << target << restored;
        };
        row(u"Open."_s, u"öffnen"_s, u"de"_s, u"Öffnen."_s);
        row(u"open"_s, u"öffnen."_s, u"de"_s, u"öffnen"_s);
        row(u"SAVE THE FILE"_s, u"Datei sichern"_s, u"de"_s, u"DATEI SICHERN"_s);
        row(u"NASA"_s, u"NASA"_s, u"de"_s, u"NASA"_s);
        row(u"Really?"_s, u"本当ですか"_s, u"ja"_s, u"本当ですか？"_s);
        row(u"Save as…"_s, u"另存新檔…"_s, u"zh-Hant"_s, u"另存新檔…"_s);
    }

    void edgesOfSentencesSurvive()
    {
        const auto [source, translation, target] = fetched<QString, QString, QString>();
        QTEST(restoredSentence(translation, source, target), "restored");
    }

    void protectedWordsAreFound()
    {
        QCOMPARE(protectedWords(u"Copy %1 of %s {0} to <b>/usr/share/x</b> by a_b(), --all: me@a.example 100% sure"_s),
                 (QStringList{u"%1"_s, u"%s"_s, u"{0}"_s, u"<b>"_s, u"/usr/share/x"_s, u"</b>"_s, u"a_b"_s, u"--all"_s,
                              u"me@a.example"_s}));
    }

    void layerGoesByEnglishAndKeepsWhatIsNoLanguage()
    {
        using Kind = OnDeviceOutcome::Kind;
        const QTemporaryDir home;
        NeuralTranslation layer(InstalledModels({home.path()}));
        const auto kinds = [&](const LanguagePair &pair, const QStringList &texts) {
            QList<Kind> found;
            for (const auto &outcome : layer.translate(pair, texts, {}))
                found.append(outcome.kind);
            return found;
        };
        const LanguagePair pair{u"ja"_s, u"zh-Hant"_s};
        QCOMPARE(kinds(pair, {u"ab"_s}), QList{Kind::PairUnavailable});
        const TinyModel ending(40, true, true, 3); // ends most sentences
        ending.writeTo(home.filePath(u"ja-en"_s));
        ending.writeTo(home.filePath(u"en-zh"_s));
        QVERIFY(layer.status().value(0).pairs.contains(pair));
        QVERIFY(!layer.status().value(0).pairs.contains({u"zh-Hant"_s, u"ja"_s}));
        const auto outcomes = layer.translate(pair, {u"ab cd %s ef"_s, u"12:30"_s}, {});
        QCOMPARE(outcomes[0].kind, Kind::Translated);
        QVERIFY2(outcomes[0].text.contains(u"%s"), qPrintable(outcomes[0].text));
        QCOMPARE(outcomes[1].kind, Kind::SameLanguage);
        QCOMPARE(layer.loadedCount(), 2);
        NeuralTranslation resting(InstalledModels({home.path()}), std::chrono::milliseconds(1));
        resting.translate(pair, {u"ab"_s}, {});
        QTRY_COMPARE(resting.loadedCount(), 0);
        // A model that never ends a sentence, and then a broken one.
        TinyModel(3, true, true, -100).writeTo(home.filePath(u"ja-en"_s));
        QFile::remove(home.filePath(u"ja-en/lex.50.50.xxyy.s2t.bin"_s));
        QCOMPARE(kinds(pair, {u"ab cd"_s}), QList{Kind::UnknownPhrase});
        QFile::resize(home.filePath(u"ja-en/vocab.xxyy.spm"_s), 100);
        QCOMPARE(kinds(pair, {u"ab cd"_s}), QList{Kind::UnknownPhrase});
        QVERIFY(QDir(home.filePath(u"ja-en"_s)).removeRecursively());
        QCOMPARE(kinds(pair, {u"ab"_s}), QList{Kind::PairUnavailable});
    }
};

static const TestClass<NeuralTranslationTest> neuralTranslationTest;
#include "NeuralTranslationTest.moc"
