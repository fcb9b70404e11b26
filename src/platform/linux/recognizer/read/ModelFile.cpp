#include "read/ModelFile.h"

#include "Language.h"

#include <QFile>
#include <QFileInfo>

namespace lucentra {

using namespace Qt::StringLiterals;

namespace {

QString modelName(ReadingLanguage language)
{
    const std::optional<ReadingLanguage> horizontal = horizontalOf(language);
    const Language &row = targetLanguages[size_t(horizontal.value_or(language))];
    return horizontal ? row.columnModel : row.lineModel;
}

/// Where the models are: in the folder that Tesseract's own variable names, or where packages put them.
QString pathOf(const QString &model)
{
    static const QString folder = [] {
        const QString named = qEnvironmentVariable("TESSDATA_PREFIX");
        for (const QString &candidate : {named, u"/usr/share/tesseract-ocr/5/tessdata"_s,
                                         u"/usr/share/tesseract/tessdata"_s, u"/usr/share/tessdata"_s}) {
            if (!candidate.isEmpty() && QFileInfo(candidate).isDir())
                return candidate;
        }
        return named;
    }();
    return folder + u'/' + model + u".traineddata"_s;
}

QByteArray contentsOf(const QString &path)
{
    constexpr qint64 most = 64 << 20; // bytes; Debian's largest model has 4 MB, the best of Tesseract's 15
    QFile file(path);
    return file.open(QFile::ReadOnly) && file.size() <= most ? file.readAll() : QByteArray();
}

/// A part of a model's file, by its number. The file: a count, so many places of parts (-1 for none), the parts.
QByteArray partOf(const QByteArray &model, qsizetype number)
{
    DataReader reader(model);
    qint64 start = -1;
    qint64 end = model.size();
    const auto count = reader.take<quint32>();
    if (count > 64)
        throw std::runtime_error("a file of another kind");
    std::vector<qint64> places(count);
    for (qint64 &place : places)
        place = reader.take<qint64>();
    if (number < qsizetype(places.size()))
        start = places[std::size_t(number)];
    for (const qint64 place : places) {
        if (place > start)
            end = std::min(end, place);
    }
    return start < 0 || start > end ? QByteArray() : model.mid(start, end - start);
}

/// This program's version of a net. Empty if there is no such version, or if it was made from another net than
/// `installed`, whose characters may have other numbers.
QByteArray ownNet(const QString &model, const QByteArray &installed)
{
    constexpr qsizetype endSize = 80; // how the net was made, after its weights; the same in both
    const QByteArray net = contentsOf(u":/lucentra/recognizer/%1.lstm"_s.arg(model));
    const bool isSame =
        net.size() == installed.size() && net.size() >= endSize && net.last(endSize) == installed.last(endSize);
    return isSame ? net : QByteArray();
}

} // namespace

QString modelPath(ReadingLanguage language)
{
    return pathOf(modelName(language));
}

ModelFile modelFile(ReadingLanguage language)
{
    constexpr qsizetype netPart = 17;
    constexpr qsizetype charactersPart = 21;
    constexpr qsizetype codesPart = 22;
    constexpr qsizetype wordsPart = 19;
    const QString name = modelName(language);
    const QByteArray file = contentsOf(pathOf(name));
    ModelFile model{partOf(file, netPart), partOf(file, charactersPart), partOf(file, codesPart),
                    partOf(file, wordsPart), false};
    if (const QByteArray own = ownNet(name, model.net); !own.isEmpty()) {
        model.net = own;
        model.isOwn = true;
    }
    return model;
}

bool LineReader::isInstalled(ReadingLanguage language)
{
    return isInstalled(modelName(language));
}

bool LineReader::isInstalled(const QString &model)
{
    return QFileInfo(pathOf(model)).isReadable();
}

} // namespace lucentra
