#include "Columns.h"
#include "MappedFile.h"
#include "NeuralTranslation.h"
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

using Row = std::vector<double>;

/// The network in double precision, one word after the other, as its description has it.
class PlainNetwork
{
public:
    PlainNetwork(const TinyModel &model, bool isShared)
        : m(model)
        , source(isShared ? "Wemb" : "encoder_Wemb")
        , target(isShared ? "Wemb" : "decoder_Wemb")
    {
    }

    std::vector<int> translate(const std::vector<int> &sentence, const std::vector<std::uint32_t> &candidates,
                               std::size_t longest) const
    {
        std::vector<Row> rows;
        for (std::size_t i = 0; i < sentence.size(); ++i)
            rows.push_back(embedded(source, sentence[i], int(i)));
        for (int layer = 1; layer <= TinyModel::depth; ++layer) {
            const QByteArray name = "encoder_l" + QByteArray::number(layer);
            rows = attended(name + "_self", rows, rows);
            rows = fed(name + "_ffn", rows);
        }
        std::vector<Row> cells(TinyModel::depth, Row(TinyModel::width));
        std::vector<int> words;
        while (words.size() < longest) {
            Row row = words.empty() ? withPosition(Row(TinyModel::width), int(words.size()))
                                    : embedded(target, words.back(), int(words.size()));
            for (int layer = 1; layer <= TinyModel::depth; ++layer) {
                const QByteArray name = "decoder_l" + QByteArray::number(layer);
                const Row update = product({row}, name + "_rnn_W", {})[0];
                const Row gate = product({row}, name + "_rnn_Wf", name + "_rnn_bf")[0];
                Row &cell = cells[std::size_t(layer - 1)];
                Row added;
                for (std::size_t i = 0; i < cell.size(); ++i) {
                    const double kept = 1 / (1 + std::exp(-gate[i]));
                    cell[i] = kept * cell[i] + (1 - kept) * update[i];
                    added.push_back(std::max(0.0, cell[i]));
                }
                row = normalized(row, added, name + "_rnn_ffn");
                row = attended(name + "_context", {row}, rows)[0];
                row = fed(name + "_ffn", {row})[0];
            }
            const TinyModel::Parameter &output = m.parameters[target];
            int best = 0;
            double bestScore = -1e300;
            const auto quantized = quantizedRows({row}, target);
            for (const std::uint32_t word : candidates) {
                double score = m.parameters["decoder_ff_logit_out_b"].numbers[word];
                for (int i = 0; i < TinyModel::width; ++i)
                    score += quantized.first[0][std::size_t(i)] / quantized.second *
                             output.numbers[word * TinyModel::width + std::size_t(i)];
                if (word != 1 && score > bestScore) {
                    bestScore = score;
                    best = int(word);
                }
            }
            if (best == 0)
                break;
            words.push_back(best);
        }
        return words;
    }

private:
    std::pair<std::vector<Row>, double> quantizedRows(std::vector<Row> rows, const QByteArray &weights) const
    {
        double largest = 0;
        for (const Row &row : rows) {
            for (const double number : row)
                largest = std::max(largest, std::abs(number));
        }
        const QByteArray activation = weights + "_QuantMultA";
        const double multiplier =
            m.parameters.contains(activation) ? m.parameters[activation].numbers[0] : 127 / largest;
        for (Row &row : rows) {
            for (double &number : row)
                number = std::clamp(std::nearbyint(number * multiplier), -127.0, 127.0);
        }
        return {rows, multiplier};
    }

    std::vector<Row> product(const std::vector<Row> &rows, const QByteArray &weights, const QByteArray &bias) const
    {
        const auto [quantized, multiplier] = quantizedRows(rows, weights);
        const TinyModel::Parameter &w = m.parameters[weights];
        std::vector<Row> results;
        for (const Row &row : quantized) {
            Row result;
            for (std::size_t out = 0; out < std::size_t(w.outputs); ++out) {
                double sum = bias.isEmpty() ? 0 : double(m.parameters[bias].numbers[out]);
                for (std::size_t in = 0; in < row.size(); ++in)
                    sum += row[in] / multiplier * w.numbers[in * std::size_t(w.outputs) + out];
                result.push_back(sum);
            }
            results.push_back(result);
        }
        return results;
    }

    Row normalized(Row row, const Row &added, const QByteArray &name) const
    {
        double mean = 0;
        double variance = 0;
        for (std::size_t i = 0; i < row.size(); ++i)
            mean += (row[i] += added[i]) / double(row.size());
        for (const double number : row)
            variance += (number - mean) * (number - mean) / double(row.size());
        for (std::size_t i = 0; i < row.size(); ++i)
            row[i] = m.parameters[name + "_ln_scale"].numbers[i] * (row[i] - mean) / std::sqrt(variance + 1e-6) +
                     m.parameters[name + "_ln_bias"].numbers[i];
        return row;
    }

    std::vector<Row> attended(const QByteArray &name, const std::vector<Row> &rows, const std::vector<Row> &context) const
    {
        const auto queries = product(rows, name + "_Wq", name + "_bq");
        const auto keys = product(context, name + "_Wk", name + "_bk");
        const auto values = product(context, name + "_Wv", name + "_bv");
        constexpr std::size_t headWidth = TinyModel::width / TinyModel::heads;
        std::vector<Row> joined;
        for (const Row &query : queries) {
            Row out(TinyModel::width);
            for (std::size_t head = 0; head < TinyModel::heads; ++head) {
                Row weights;
                double total = 0;
                for (const Row &key : keys) {
                    double score = 0;
                    for (std::size_t i = head * headWidth; i < (head + 1) * headWidth; ++i)
                        score += query[i] * key[i];
                    weights.push_back(std::exp(score / std::sqrt(double(headWidth))));
                    total += weights.back();
                }
                for (std::size_t k = 0; k < values.size(); ++k) {
                    for (std::size_t i = head * headWidth; i < (head + 1) * headWidth; ++i)
                        out[i] += weights[k] / total * values[k][i];
                }
            }
            joined.push_back(out);
        }
        const auto added = product(joined, name + "_Wo", name + "_bo");
        std::vector<Row> results;
        for (std::size_t i = 0; i < rows.size(); ++i)
            results.push_back(normalized(rows[i], added[i], name + "_Wo"));
        return results;
    }

    std::vector<Row> fed(const QByteArray &name, const std::vector<Row> &rows) const
    {
        auto hidden = product(rows, name + "_W1", name + "_b1");
        for (Row &row : hidden) {
            for (double &number : row)
                number = std::max(0.0, number);
        }
        const auto added = product(hidden, name + "_W2", name + "_b2");
        std::vector<Row> results;
        for (std::size_t i = 0; i < rows.size(); ++i)
            results.push_back(normalized(rows[i], added[i], name + "_ffn"));
        return results;
    }

    Row withPosition(Row row, int position) const
    {
        const std::size_t half = row.size() / 2;
        for (std::size_t i = 0; i < half; ++i) {
            const double angle = position * std::pow(10000.0, -double(i) / double(half - 1));
            row[i] += std::sin(angle);
            row[half + i] += std::cos(angle);
        }
        return row;
    }

    Row embedded(const QByteArray &name, int word, int position) const
    {
        Row row;
        for (std::size_t i = 0; i < TinyModel::width; ++i)
            row.push_back(std::sqrt(double(TinyModel::width)) *
                          m.parameters[name].numbers[std::size_t(word) * TinyModel::width + i]);
        return withPosition(row, position);
    }

    const TinyModel &m;
    const QByteArray source;
    const QByteArray target;
};

} // namespace

class NeuralTranslationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void networkAgreesWithPlainOne_data()
    {
        const auto row = columns<bool, bool>("isShared", "hasActivations");
        row("one vocabulary", true, true);
        row("two vocabularies", false, true);
        row("activations from the input", true, false);
    }

    void networkAgreesWithPlainOne()
    {
        const auto [isShared, hasActivations] = fetched<bool, bool>();
        const TinyModel model(3, isShared, hasActivations);
        const QByteArray bytes = model.bytes();
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
        }
        const auto together = network->translate(sentences, {.shortlist = &*list});
        std::size_t words = 0;
        for (std::size_t i = 0; i < sentences.size(); ++i) {
            const auto candidates = list->candidates(sentences[i], isShared);
            QCOMPARE(candidates.size() % 8, std::size_t(0));
            const auto expected =
                PlainNetwork(model, isShared).translate(sentences[i], candidates, 2 * sentences[i].size());
            QCOMPARE(together[i].words, expected);
            QCOMPARE(network->translate({sentences[i]}, {.shortlist = &*list}, int8Kernels().back())[0].words, expected);
            words += expected.size();
        }
        QVERIFY(words > 20);
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
        QVERIFY(!isLoaded(6, "\x7F"));                 // the first step leads out
        QVERIFY(!isLoaded(value, "\x02"));             // a text that isn't there
        QVERIFY(!isLoaded(map.size() - 1, "b"));       // a text without an end
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
        const auto row = [](const QString &source, const QString &translation, const QString &target, const QString &restored) {
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
