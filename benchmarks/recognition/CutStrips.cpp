// Cuts the lines of pictures out as a reader gets them, for its training: cut-strips MODEL, one of Tesseract's, such as
// eng. Each line of standard input is a path; each line of standard output is what was found in that picture, as JSON:
// {"lines": [{"x", "y", "width", "height", "strips": [base64...]}...]}, boxes in pixels with the origin top-left,
// strips of as many rows of grey bytes as the model takes.
#include "Language.h"
#include "ScreenTextRecognizer.h"
#include "find/MapLines.h"
#include "find/TextNet.h"
#include "read/LineReader.h"
#include "read/ScreenPass.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <leptonica/allheaders.h>

#include <iostream>
#include <string>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

QByteArray bytesOf(const Strip &strip)
{
    const int width = pixGetWidth(strip.get());
    QByteArray bytes;
    for (int y = 0; y < pixGetHeight(strip.get()); ++y) {
        const l_uint32 *row = pixGetData(strip.get()) + std::ptrdiff_t(y) * pixGetWpl(strip.get());
        for (int x = 0; x < width; ++x)
            bytes.append(char(GET_DATA_BYTE(row, x)));
    }
    return bytes;
}

/// A part of a line, cut out in the two likeliest ways.
QJsonObject cut(const QImage &image, const SureMap &seen, const QRect &ink, const QRect &room, ReadingLanguage language)
{
    const LineNormalizer normalizer(image, ink, seen, room);
    QJsonArray strips;
    for (const Separation separation : normalizer.separations().first(2)) {
        const Strip strip = normalizer.strip(separation, LineReader::stripShape(language));
        if (strip)
            strips.append(QString::fromLatin1(bytesOf(strip).toBase64()));
    }
    return {{u"x"_s, ink.x()},
            {u"y"_s, ink.y()},
            {u"width"_s, ink.width()},
            {u"height"_s, ink.height()},
            {u"strips"_s, strips}};
}

} // namespace

int main(int count, char **arguments)
{
    const QString model = count == 2 ? QString::fromLocal8Bit(arguments[1]) : QString();
    std::optional<ReadingLanguage> language;
    for (std::size_t i = 0; i < targetLanguages.size(); ++i) {
        if (targetLanguages[i].lineModel == model)
            language = ReadingLanguage(i);
    }
    if (!language) {
        std::cerr << "usage: cut-strips eng|jpn|kor|chi_tra|chi_sim" << std::endl;
        return 2;
    }
    TextNet net(ScreenTextRecognizer::Options().weights);
    for (std::string path; std::getline(std::cin, path);) {
        const QImage image = QImage(QString::fromStdString(path)).convertToFormat(QImage::Format_RGB32);
        const TextMaps maps = net.seen(image, 1);
        QList<QRect> lines;
        const QList<FoundLine> foundLines = linesOf(maps, 5);
        for (const FoundLine &line : foundLines)
            lines.append(line.ink);
        QJsonArray cuts;
        for (const FoundLine &line : foundLines) {
            for (const LinePiece &piece : line.pieces)
                cuts.append(cut(image, maps.ink, piece.ink, roomOf(piece.ink, lines, image.size()), *language));
            for (const LinePiece &piece : line.stretches)
                cuts.append(cut(image, maps.ink, piece.ink, roomOf(piece.ink, lines, image.size()), *language));
        }
        std::cout << QJsonDocument(QJsonObject{{u"lines"_s, cuts}}).toJson(QJsonDocument::Compact).constData()
                  << std::endl;
    }
}
