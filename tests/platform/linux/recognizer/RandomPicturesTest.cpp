// Pictures that nobody drew on purpose: the stages before and after the models keep their promises on all of them.
// LUCENTRA_RANDOM_PICTURES says how many (60 without it), LUCENTRA_RANDOM_SEED which.
#include "Pictures.h"
#include "TestProgram.h"
#include "read/LineReader.h"
#include "strip/LineNormalizer.h"

#include <leptonica/allheaders.h>

#include <QGuiApplication>
#include <QTest>

using namespace lucentra;
using namespace lucentra::pictures;
using namespace Qt::StringLiterals;

namespace {

/// A number of the environment.
int given(const char *name, int otherwise)
{
    bool isNumber = false;
    const int number = qEnvironmentVariableIntValue(name, &isNumber);
    return isNumber ? number : otherwise;
}

/// From a pixel to a wide strip, a tall one or a window.
QSize anySize(QRandomGenerator &random)
{
    switch (random.bounded(6)) {
    case 0:
        return {random.bounded(1, 5), random.bounded(1, 5)};
    case 1:
        return {random.bounded(1, 3000), random.bounded(1, 12)};
    case 2:
        return {random.bounded(1, 12), random.bounded(1, 2000)};
    default:
        return {random.bounded(20, 420), random.bounded(20, 320)};
    }
}

/// Writing, frames, rules, discs, noise and copies of parts on one another, some of it beyond the edges.
QImage anyPicture(QRandomGenerator &random)
{
    QImage image = blank(anySize(random), QColor::fromRgb(random.generate()));
    const int width = image.width();
    const int height = image.height();
    for (int i = random.bounded(40); i > 0; --i) {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing, random.bounded(2));
        const QColor colour = QColor::fromRgb(random.generate());
        painter.setPen(QPen(colour, random.bounded(6)));
        const QPoint at(random.bounded(-20, width + 20), random.bounded(-20, height + 20));
        const QRect box(at, QSize(random.bounded(1, 200), random.bounded(1, 60)));
        switch (random.bounded(7)) {
        case 0:
            painter.fillRect(box, colour);
            break;
        case 1:
            painter.drawRect(box);
            break;
        case 2:
            painter.drawEllipse(box);
            break;
        case 3:
            painter.drawLine(box.topLeft(), box.bottomRight());
            break;
        case 4:
            painter.drawImage(box.topLeft(), noise(box.size()));
            break;
        case 5:
            painter.drawImage(at, image.copy(random.bounded(width), random.bounded(height), 80, 40));
            break;
        default: {
            QString text;
            for (int j = random.bounded(1, 24); j > 0; --j)
                text += QChar(random.bounded(3) ? random.bounded(0x20, 0x7F) : random.bounded(0x3000, 0x9FFF));
            painter.setFont(font(u"Noto Sans CJK TC"_s, random.bounded(5, 50)));
            painter.drawText(at, text);
        }
        }
    }
    return image;
}

/// Whether a line and its pieces lie where they may, and whether each of them makes a strip.
bool isSound(const QImage &image, const TextMaps &maps, const FoundLine &line)
{
    bool isRight = image.rect().contains(line.ink) && !line.ink.isEmpty() && !line.pieces.isEmpty();
    for (const LinePiece &piece : line.pieces) {
        isRight &= line.ink.contains(piece.ink) && !piece.ink.isEmpty();
        const LineNormalizer normalizer(image, piece.ink, maps.ink);
        for (const Separation separation : normalizer.separations()) {
            const StripShape shape = LineReader::stripShape(ReadingLanguage::TraditionalChinese);
            const Strip strip = normalizer.strip(separation, shape);
            isRight &=
                strip && pixGetHeight(strip.get()) == shape.height && pixGetWidth(strip.get()) > 2 * shape.padding;
        }
    }
    if (!isRight)
        qWarning() << image.size() << line.ink << line.pieces.size() << line.pieces.first().ink;
    return isRight;
}

} // namespace

class RandomPicturesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stagesKeepTheirPromises()
    {
        int lines = 0;
        for (int i = 0; i < m_count; ++i) {
            QRandomGenerator random(quint32(m_seed + i));
            const QImage image = anyPicture(random);
            TextMaps maps = seen(image);
            // On half of the pictures the net sees whatever chance will.
            for (SureMap *map : {&maps.ink, &maps.core, &maps.scripts[0], &maps.scripts[1]}) {
                for (int k = i % 2 == 0 ? 0 : int(map->values.size()) / 20; k > 0; --k)
                    map->values[random.bounded(quint32(map->values.size()))] = std::uint8_t(random.generate());
            }
            for (const FoundLine &line : linesOf(maps, 5)) {
                QVERIFY2(isSound(image, maps, line), qPrintable(u"seed %1"_s.arg(m_seed + i)));
                ++lines;
            }
        }
        QVERIFY2(lines > m_count / 4, "so few lines would prove nothing");
    }

    void whatIsReadLiesInThePicture()
    {
        ScreenTextRecognizer recognizer;
        const TextRecognitionRequest request{{u"zh-Hant"_s, u"en-US"_s}, RecognitionLevel::Fast, 0.008};
        for (int i = 0; i < m_count / 6; ++i) {
            QRandomGenerator random(quint32(m_seed - 1 - i));
            const auto lines = recognizer.perform(request, anyPicture(random));
            QVERIFY2(lines, qPrintable(u"seed %1"_s.arg(m_seed - 1 - i)));
            for (const RecognizedTextObservation &line : *lines) {
                const QRectF inside(-1e-9, -1e-9, 1 + 2e-9, 1 + 2e-9);
                QVERIFY2(inside.contains(line.boundingBox.unitRect()) && !line.boundingBox.unitRect().isEmpty() &&
                             !line.candidates.value(0).trimmed().isEmpty(),
                         qPrintable(u"seed %1"_s.arg(m_seed - 1 - i)));
            }
        }
    }

    void aGreatManyShapesAreBounded() { QVERIFY(findLines(dots({1500, 1500}), 5).size() < 10); }

private:
    const int m_count = given("LUCENTRA_RANDOM_PICTURES", 60);
    const int m_seed = given("LUCENTRA_RANDOM_SEED", 1000);
};

static const TestClass<RandomPicturesTest, QGuiApplication> randomPicturesTest;
#include "RandomPicturesTest.moc"
