// Reads pictures as the program does. Each line of standard input is a path; each line of standard output is what was
// found in that picture, as JSON: {"lines": [{"text", "x", "y", "width", "height"}...], "ms": 12.5}, boxes in pixels
// with the origin top-left, "ms" without the time that decoding the file takes.
#include "ScreenTextRecognizer.h"

#include <QElapsedTimer>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <iostream>
#include <string>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

QJsonObject lineObject(const RecognizedTextObservation &line, const QSize &size)
{
    const QRectF rect = line.boundingBox.in(size);
    return {{u"text"_s, line.candidates.value(0)},
            {u"x"_s, rect.x()},
            {u"y"_s, rect.y()},
            {u"width"_s, rect.width()},
            {u"height"_s, rect.height()}};
}

QJsonObject readPicture(ScreenTextRecognizer &recognizer, const QString &path)
{
    const TextRecognitionRequest request{{u"zh-Hant"_s, u"en-US"_s, u"ja-JP"_s}, RecognitionLevel::Accurate, 0.008};
    const QImage image = QImage(path).convertToFormat(QImage::Format_RGB32);
    QElapsedTimer timer;
    timer.start();
    const auto lines = recognizer.perform(request, image);
    const double milliseconds = double(timer.nsecsElapsed()) / 1e6;
    QJsonArray found;
    for (const RecognizedTextObservation &line : lines.value_or(QList<RecognizedTextObservation>()))
        found.append(lineObject(line, image.size()));
    return {{u"lines"_s, found}, {u"ms"_s, milliseconds}};
}

} // namespace

int main()
{
    ScreenTextRecognizer recognizer;
    for (std::string path; std::getline(std::cin, path);) {
        const QJsonObject result = readPicture(recognizer, QString::fromStdString(path));
        std::cout << QJsonDocument(result).toJson(QJsonDocument::Compact).constData() << std::endl;
    }
}
