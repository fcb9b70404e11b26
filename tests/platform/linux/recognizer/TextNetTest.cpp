#include "find/TextNet.h"
#include "Columns.h"
#include "Pictures.h"
#include "find/MapLines.h"
#include "TestProgram.h"

#include <QTemporaryFile>
#include <QTest>

#include <stdexcept>

using namespace lucentra;
using namespace lucentra::pictures;
using namespace Qt::StringLiterals;

namespace {

float anyNumber(QRandomGenerator &random)
{
    return float(random.bounded(2.0) - 1.0);
}

void fill(SureMap &map, const QRect &area, int value = 255)
{
    for (int y = area.top(); y <= area.bottom(); ++y)
        std::fill(map.row(y) + area.left(), map.row(y) + area.right() + 1, std::uint8_t(value));
}

TextMaps emptyMaps(const QSize &size)
{
    const auto scaled = [&](int factor) { return SureMap(size.width() / factor, size.height() / factor); };
    return {scaled(1), scaled(2), {scaled(8), scaled(8), scaled(8), scaled(8)}};
}

/// Letters of 6 pixels with 2 between them, and the middle of their line.
void writeLetters(TextMaps &maps, const QRect &line, int core = 255)
{
    for (int x = line.left(); x + 5 <= line.right(); x += 8)
        fill(maps.ink, {x, line.top(), 6, line.height()});
    fill(maps.core, {line.left() / 2 + 1, line.top() / 2 + line.height() / 8, line.width() / 2 - 2, line.height() / 4},
         core);
}

} // namespace

class TextNetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void convolutions_data()
    {
        columns<int, int, int, int, int>("kernel", "stride", "dilation", "inputs", "outputs");
        QTest::newRow("the first one") << 3 << 2 << 1 << 3 << 16;
        QTest::newRow("three vectors") << 3 << 1 << 1 << 24 << 24;
        QTest::newRow("three and two") << 3 << 2 << 1 << 8 << 40;
        QTest::newRow("far apart") << 3 << 1 << 2 << 8 << 32;
        QTest::newRow("single pixels") << 1 << 1 << 1 << 16 << 8;
        QTest::newRow("less than a vector") << 3 << 1 << 1 << 8 << 6;
    }

    void convolutions()
    {
        QFETCH(const int, kernel);
        QFETCH(const int, stride);
        QFETCH(const int, dilation);
        QFETCH(const int, inputs);
        QFETCH(const int, outputs);
        QRandomGenerator random(5);
        Convolution convolution{kernel, stride, dilation, inputs, outputs, true, {}, {}};
        std::vector<float> weights(std::size_t(outputs * inputs * kernel * kernel));
        for (float &weight : weights)
            weight = anyNumber(random);
        for (int i = 0; i < outputs; ++i)
            convolution.biases.push_back(anyNumber(random));
        convolution.arrange(weights);
        NumberPlane in;
        in.resize(22, 10, (inputs + 3) / 4 * 4);
        for (int y = 0; y < in.height(); ++y) {
            for (int x = 0; x < in.width(); ++x) {
                for (int i = 0; i < inputs; ++i)
                    in.at(x, y)[i] = anyNumber(random);
            }
        }
        NumberPlane out;
        out.resize(in.width() / stride, in.height() / stride, convolution.storedOutputs());
        convolution.run(in, out, 0, 2);
        convolution.run(in, out, 2, out.height());
        for (int y = 0; y < out.height(); ++y) {
            for (int x = 0; x < out.width(); ++x) {
                for (int o = 0; o < outputs; ++o) {
                    double sum = double(convolution.biases[std::size_t(o)]);
                    for (int k = 0; k < kernel * kernel; ++k) {
                        const QPoint at(x * stride + (k % kernel - kernel / 2) * dilation,
                                        y * stride + (k / kernel - kernel / 2) * dilation);
                        for (int i = 0; i < inputs && QRect(0, 0, in.width(), in.height()).contains(at); ++i)
                            sum += double(weights[std::size_t((o * inputs + i) * kernel * kernel + k)]) *
                                   double(in.at(at.x(), at.y())[i]);
                    }
                    QVERIFY(std::abs(double(out.at(x, y)[o]) - std::max(0.0, sum)) < 1e-3);
                }
            }
        }
    }

    void brokenWeights_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("another file") << QByteArray("RIFF and so on");
        QTest::newRow("no layers") << QByteArray("LINENET1\0\0\0\0", 12);
        QTest::newRow("cut off") << QByteArray("LINENET1\24\0\0\0stem", 16);
        QTest::newRow("layers without end") << QByteArray("LINENET1\377\377\377\377stem", 16);
        QTest::newRow("a layer of any size") << QByteArray("LINENET1\1\0\0\0stem\0\0\0\0", 20) + QByteArray(12, '\377');
    }

    void brokenWeights()
    {
        QFETCH(const QByteArray, bytes);
        QTemporaryFile file;
        QVERIFY(file.open());
        file.write(bytes);
        file.close();
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, TextNet(file.fileName()));
    }

    void linesOfMaps()
    {
        const QSize size(320, 160);
        TextMaps maps = emptyMaps(size);
        const QRect first(20, 20, 94, 16);
        const QRect second(20, 40, 94, 16); // so near that the net sees their cores hang together
        const QRect unsure(180, 60, 94, 16);
        const QRect small(20, 100, 94, 6);
        for (const QRect &line : {first, second, small})
            writeLetters(maps, line);
        writeLetters(maps, unsure, 140);
        fill(maps.core, {20, 16, 30, 6}, 190);
        fill(maps.ink, {24, 15, 3, 3});     // an accent
        fill(maps.ink, {280, 100, 20, 20}); // far from every core
        QList<QRect> inks;
        for (const FoundLine &line : linesOf(maps, 8))
            inks.append(line.ink);
        std::ranges::sort(inks, {}, &QRect::top);
        QCOMPARE(inks, QList<QRect>({first.adjusted(0, -4, 0, 0), second}));
    }
};

static const TestClass<TextNetTest> textNetTest;
#include "TextNetTest.moc"
