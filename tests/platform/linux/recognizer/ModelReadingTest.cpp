#include "Columns.h"
#include "Pictures.h"
#include "TestProgram.h"
#include "read/CharacterSearch.h"
#include "read/LineReader.h"
#include "read/ModelFile.h"
#include "read/ReadingNet.h"

#include <QGuiApplication>
#include <QTest>

#include <bit>
#include <cmath>
#include <random>

using namespace lucentra;
using namespace lucentra::pictures;
using namespace Qt::StringLiterals;

namespace {

constexpr int none = 0;

/// Little-endian, as in a model.
template <typename Number>
void append(QByteArray &data, Number number)
{
    const Number bytes = qToLittleEndian(number);
    data.append(reinterpret_cast<const char *>(&bytes), sizeof bytes);
}

/// A space and the characters a, b, 中 and 央. The ideographs share their first code.
CharacterCodes someCodes()
{
    QByteArray codes;
    append(codes, qint32(5));
    const std::vector<std::vector<qint32>> all{{1}, {2}, {3}, {4, 5}, {4, 2}};
    for (const std::vector<qint32> &code : all) {
        append(codes, qint8(1));
        append(codes, qint32(code.size()));
        for (const qint32 one : code)
            append(codes, one);
    }
    return {"5\nNULL 0\na 3\nb 3\n中 1\n央 1\n", codes, none};
}

/// One word, "ab": an edge each, of three bits for the character and three for what it is, then the next edge.
WordList oneWord()
{
    QByteArray words;
    append(words, qint16(42));
    append(words, qint32(5));
    append(words, qint32(2));
    append(words, quint64(1 | 1 << 3 | 1 << 6)); // a, the last edge of its place, goes on at edge 1
    append(words, quint64(2 | 1 << 3 | 1 << 5)); // b, likewise, where the word ends
    return WordList(words);
}

template <typename Number>
Number numberAt(const QByteArray &data, qsizetype place)
{
    return place + qsizetype(sizeof(Number)) <= data.size() ? qFromLittleEndian<Number>(data.constData() + place) : 0;
}

/// The same net with weights of floating point, as those models have that are made to be trained further.
QByteArray inFloatingPoint(const QByteArray &net, int &layers)
{
    QByteArray result;
    for (qsizetype i = 0; i < net.size();) {
        const auto rows = numberAt<qint32>(net, i + 1);
        const auto columns = numberAt<qint32>(net, i + 5);
        const bool isLayer = (net[i] & 1) != 0 && rows > 0 && rows < 5000 && columns > 1 && columns < 1000;
        const qsizetype weights = i + 10;
        const qsizetype scales = weights + qsizetype(rows) * columns + 4;
        if (!isLayer || numberAt<qint32>(net, scales - 4) != rows) {
            result.append(net[i++]);
            continue;
        }
        ++layers;
        append(result, quint8(128));
        append(result, rows);
        append(result, columns);
        append(result, quint64(0));
        for (qsizetype k = 0; k < qsizetype(rows) * columns; ++k)
            append(result, std::bit_cast<quint64>(numberAt<double>(net, scales + k / columns * 8) *
                                                  static_cast<signed char>(net[weights + k])));
        i = scales + qsizetype(rows) * 8;
    }
    return result;
}

Strip patterned()
{
    Strip strip(pixCreate(120, 36, 8));
    for (int x = 0; x < 120; ++x) {
        for (int y = 0; y < 36; ++y)
            pixSetPixel(strip.get(), x, y, l_uint32(x * x / 7 + y * 5) % 256);
    }
    return strip;
}

/// Of each code in each place.
std::vector<float> probabilities(const ReadingNet &net, const Strip &strip)
{
    std::vector<float> all;
    net.read(strip, [&](std::span<const float> logarithms) {
        for (const float logarithm : logarithms)
            all.push_back(std::exp(logarithm));
    });
    return all;
}

} // namespace

class ModelReadingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void charactersAreFound_data()
    {
        // For each place the codes that are likely, and how likely in per cent; what is left is evenly the others'.
        using Places = QList<QMap<int, int>>;
        columns<Places, QString>("places", "text");
        QTest::newRow("each code where it is likeliest") << Places{{{2, 90}}, {{none, 90}}, {{3, 90}}} << u"ab"_s;
        QTest::newRow("a code that stays is one character") << Places{{{2, 90}}, {{2, 90}}} << u"a"_s;
        QTest::newRow("none stands between two of the same") << Places{{{2, 90}}, {{none, 90}}, {{2, 90}}} << u"aa"_s;
        QTest::newRow("a space") << Places{{{2, 90}}, {{1, 90}}, {{3, 90}}} << u"a b"_s;
        QTest::newRow("an ideograph of two codes") << Places{{{4, 90}}, {{none, 90}}, {{5, 90}}} << u"中"_s;
        QTest::newRow("codes that make no character") << Places{{{4, 90}}, {{3, 60}, {5, 30}}} << u"中"_s;
        QTest::newRow("none may be at either of two places")
            << Places{{{3, 95}}, {{3, 55}, {none, 43}}, {{3, 55}, {none, 43}}, {{3, 55}, {none, 43}}, {{3, 95}}}
            << u"bb"_s;
        QTest::newRow("a known word") << Places{{{2, 40}, {3, 55}}, {{none, 90}}, {{3, 90}}} << u"ab"_s;
        QTest::newRow("no known word") << Places{{{2, 40}, {3, 55}}, {{none, 90}}, {{2, 90}}} << u"ba"_s;
    }

    void charactersAreFound()
    {
        using Places = QList<QMap<int, int>>;
        QFETCH(const Places, places);
        const CharacterCodes codes = someCodes();
        const WordList words = oneWord();
        CharacterSearch search(codes, words);
        for (const QMap<int, int> &place : places) {
            std::vector<float> logarithms;
            int left = 100;
            for (const int share : place)
                left -= share;
            for (int code = 0; code <= 5; ++code)
                logarithms.push_back(std::log(float(place.value(code, 0)) / 100 + float(left) / 600 + 1e-4F));
            search.add(logarithms);
        }
        QString text;
        for (const ReadCharacter &character : search.characters())
            text += character.text;
        QTEST(text, "text");
    }

    /// A model of a package may be cut off by a full disk, or its bytes be wrong.
    void brokenModelsAreRefused()
    {
        const ModelFile model = modelFile(ReadingLanguage::English);
        QVERIFY(!model.net.isEmpty() && !model.words.isEmpty());
        const auto load = [&](const QByteArray &net, const QByteArray &codes, const QByteArray &words) {
            try {
                const ReadingNet reading(net);
                const CharacterCodes known(model.characters, codes, reading.none());
                const WordList list(words);
                return true;
            } catch (const std::runtime_error &) {
                return false;
            }
        };
        QVERIFY(load(model.net, model.codes, model.words));
        for (const double share : {0.0, 0.0001, 0.3, 0.9, 0.9999}) {
            const auto cut = [share](const QByteArray &data) {
                return data.first(qsizetype(share * double(data.size())));
            };
            QVERIFY(!load(cut(model.net), model.codes, model.words));
            QVERIFY(!load(model.net, cut(model.codes), model.words));
            QVERIFY(share == 0 || !load(model.net, model.codes, cut(model.words)));
        }
        std::mt19937 random(1);
        int refused = 0;
        for (int i = 0; i < 300; ++i) { // in the first bytes, where what is said of the rest stands
            QByteArray net = model.net;
            for (int k = 0; k < 3; ++k)
                net[qsizetype(random() % 600)] = char(random());
            try {
                const ReadingNet reading(net);
            } catch (const std::runtime_error &) {
                ++refused;
            }
        }
        QVERIFY2(refused > 30, qPrintable(QString::number(refused)));
        QByteArray wild = model.words;
        for (qsizetype i = 10; i < wild.size(); i += 7)
            wild[i] = char(random());
        const WordList words(wild);
        for (int character = 0; character < 200; ++character) {
            for (int place = 0; place < 50; ++place)
                words.step(place, character);
        }
    }

    void allInstructionsReadTheSame()
    {
        using Instructions = ReadingNet::Instructions;
        const Strip strip = patterned();
        for (const ReadingLanguage language : {ReadingLanguage::English, ReadingLanguage::Korean}) {
            const QByteArray net = modelFile(language).net;
            const std::vector<float> expected = probabilities(ReadingNet(net, Instructions::Any), strip);
            for (const Instructions instructions : {Instructions::Avx2, Instructions::Avx512}) {
                if (instructions > ReadingNet::fastest())
                    continue;
                const std::vector<float> seen = probabilities(ReadingNet(net, instructions), strip);
                QCOMPARE(seen.size(), expected.size());
                for (std::size_t i = 0; i < seen.size(); ++i)
                    QVERIFY2(std::abs(seen[i] - expected[i]) < 0.01, qPrintable(QString::number(i)));
            }
        }
    }

    void weightsOfFloatingPointAreTaken()
    {
        const QByteArray integers = modelFile(ReadingLanguage::English).net;
        int layers = 0;
        const QByteArray numbers = inFloatingPoint(integers, layers);
        QVERIFY(layers > 4);
        const Strip strip = patterned();
        const std::vector<float> expected = probabilities(ReadingNet(integers), strip);
        const std::vector<float> seen = probabilities(ReadingNet(numbers), strip);
        QCOMPARE(seen.size(), expected.size());
        for (std::size_t i = 0; i < seen.size(); ++i)
            QVERIFY2(std::abs(seen[i] - expected[i]) < 0.05, qPrintable(QString::number(i)));
        QByteArray broken = numbers;
        broken.replace(broken.size() / 2, 800, QByteArray(800, char(0xff)));
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, ReadingNet{broken});
    }

    void nothingIsReadOfNothing()
    {
        LineReader reader;
        QCOMPARE(reader.read(nullptr, ReadingLanguage::English).text, QString());
        for (const int width : {1, 2, 3, 40}) {
            const Strip strip(pixCreate(width, 36, 8));
            pixSetAll(strip.get());
            for (const ReadingMode mode : {ReadingMode::Usual, ReadingMode::Other})
                QCOMPARE(reader.read(strip, ReadingLanguage::English, mode).text, QString());
        }
    }
};

static const TestClass<ModelReadingTest, QGuiApplication> modelReadingTest;
#include "ModelReadingTest.moc"
