// Reads every picture of a folder and writes what was found, with the time that each took, as JSON.
// usage: recognize-folder FOLDER OUT.json [REPEATS]
#include "ScreenTextRecognizer.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cstdio>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

/// The line in pixels, origin top-left.
QJsonObject lineObject(const RecognizedTextObservation &line, const QSize &size)
{
    const QRectF &box = line.boundingBox;
    return {{u"text"_s, line.candidates.value(0)},
            {u"x"_s, box.x() * size.width()},
            {u"y"_s, (1 - box.y() - box.height()) * size.height()},
            {u"width"_s, box.width() * size.width()},
            {u"height"_s, box.height() * size.height()}};
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() < 3) {
        std::fputs("usage: recognize-folder FOLDER OUT.json [REPEATS]\n", stderr);
        return 2;
    }
    const int repeats = std::max(1, arguments.value(3, u"1"_s).toInt());
    const TextRecognitionRequest request{
        {u"zh-Hant"_s, u"en-US"_s, u"ja-JP"_s}, RecognitionLevel::Accurate, true, 0.008};
    ScreenTextRecognizer recognizer;
    const QDir folder(arguments[1]);
    const QStringList names = folder.entryList({u"*.png"_s, u"*.jpg"_s}, QDir::Files, QDir::Name);
    QJsonObject results;
    for (int round = 0; round <= repeats; ++round) { // the first round loads the engines
        for (const QString &name : names) {
            if (round == 0 && name != names.first() && name != names.last())
                continue;
            const QImage image = QImage(folder.filePath(name)).convertToFormat(QImage::Format_RGB32);
            QElapsedTimer timer;
            timer.start();
            const auto lines = recognizer.perform(request, image);
            const double milliseconds = double(timer.nsecsElapsed()) / 1e6;
            if (round == 0)
                continue;
            QJsonArray found;
            for (const RecognizedTextObservation &line : lines.value_or(QList<RecognizedTextObservation>()))
                found.append(lineObject(line, image.size()));
            const double earlier = results[name].toObject()[u"ms"_s].toDouble(milliseconds);
            results[name] = QJsonObject{{u"lines"_s, found}, {u"ms"_s, std::min(earlier, milliseconds)}};
        }
    }
    QFile out(arguments[2]);
    if (!out.open(QIODevice::WriteOnly) || out.write(QJsonDocument(results).toJson(QJsonDocument::Compact)) < 0) {
        std::fputs("The results can't be written\n", stderr);
        return 1;
    }
    return 0;
}
