#include "read/EngineModels.h"

#include "Language.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <tesseract/baseapi.h>

// Tesseract fills two tables for its older engine, which isn't used here: letters that look alike, and what its
// classifier learns of each letter. They took three quarters of the time and the memory of a model. The library calls
// these two functions by name and finds these empty ones first, since the program exports them. If a version of it
// doesn't, models only load more slowly.
namespace tesseract {

class UNICHARSET;
struct ADAPT_TEMPLATES_STRUCT;

class UnicharAmbigs
{
    void LoadUniversal(const UNICHARSET &, UNICHARSET *);
};

struct ADAPT_CLASS_STRUCT
{
    ~ADAPT_CLASS_STRUCT();
};

void AddAdaptedClass(ADAPT_TEMPLATES_STRUCT *, ADAPT_CLASS_STRUCT *adapted, int);

void UnicharAmbigs::LoadUniversal(const UNICHARSET &, UNICHARSET *) {}

/// Takes over what it is given. Its size isn't known here.
void AddAdaptedClass(ADAPT_TEMPLATES_STRUCT *, ADAPT_CLASS_STRUCT *adapted, int)
{
    adapted->~ADAPT_CLASS_STRUCT();
    ::operator delete(static_cast<void *>(adapted));
}

} // namespace tesseract

namespace lucentra {

using namespace Qt::StringLiterals;

namespace {

QString modelName(ReadingLanguage language)
{
    const std::optional<ReadingLanguage> horizontal = horizontalOf(language);
    const Language &row = targetLanguages[size_t(horizontal.value_or(language))];
    return horizontal ? row.columnModel : row.lineModel;
}

/// Where the engine looks for its models, with a slash at the end. It says so once it is asked to load none.
QString askedModelFolder()
{
    const std::vector<std::string> names{"debug_file"};
    const std::vector<std::string> values{"/dev/null"};
    tesseract::TessBaseAPI engine;
    engine.Init(nullptr, "~none", tesseract::OEM_LSTM_ONLY, nullptr, 0, &names, &values, false);
    const char *path = engine.GetDatapath();
    return path ? QString::fromLocal8Bit(path) : QString();
}

QString modelPath(const QString &model)
{
    static const QString folder = askedModelFolder();
    return folder + model + u".traineddata"_s;
}

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

/// A model with this program's net in the place of its own, of which it is a version trained on letters of screens (see
/// training/). Empty where there is no such net, or where the installed model is another one, whose characters may have
/// other numbers.
QByteArray modelWithOwnNet(ReadingLanguage language)
{
    // The file: a count, so many places of parts (-1 for none), the parts. Numbers are little-endian.
    constexpr qsizetype netPart = 17;
    constexpr qsizetype countSize = 4;
    constexpr qsizetype placeSize = 8;
    constexpr qsizetype endSize = 80; // how the net was made, after its weights; the same in both
    const QString name = modelName(language);
    const QByteArray net = contentsOf(u":/lucentra/recognizer/%1.lstm"_s.arg(name));
    if (net.size() < endSize)
        return {};
    QByteArray model = contentsOf(modelPath(name));
    if (model.size() < countSize + (netPart + 1) * placeSize)
        return {};
    const auto start = qFromLittleEndian<qint64>(model.constData() + countSize + netPart * placeSize);
    if (start < 0 || start > model.size() - net.size())
        return {};
    const QByteArrayView installed = QByteArrayView(model).sliced(start, net.size());
    if (installed.last(endSize) != QByteArrayView(net).last(endSize))
        return {};
    return model.replace(start, net.size(), net);
}

} // namespace

LoadedEngine makeEngine(ReadingLanguage language, bool usesLanguageCorrection)
{
    std::vector<std::string> names{"debug_file", "tessedit_do_invert"};
    std::vector<std::string> values{"/dev/null", "0"};
    if (!usesLanguageCorrection) {
        for (const char *name : {"load_system_dawg", "load_freq_dawg", "load_punc_dawg", "load_number_dawg"}) {
            names.emplace_back(name);
            values.emplace_back("0");
        }
    }
    auto engine = std::make_unique<tesseract::TessBaseAPI>();
    const QByteArray name = modelName(language).toLatin1();
    const QByteArray model = modelWithOwnNet(language);
    constexpr tesseract::OcrEngineMode mode = tesseract::OEM_LSTM_ONLY;
    int result = 0;
    if (model.isEmpty())
        result = engine->Init(nullptr, name.constData(), mode, nullptr, 0, &names, &values, false);
    else
        result = engine->Init(model.constData(), int(model.size()), name.constData(), mode, nullptr, 0, &names, &values,
                              false, nullptr);
    if (result != 0)
        return {};
    return {std::move(engine), !model.isEmpty()};
}

bool LineReader::isInstalled(ReadingLanguage language)
{
    return isInstalled(modelName(language));
}

bool LineReader::isInstalled(const QString &model)
{
    return QFileInfo(modelPath(model)).isReadable();
}

} // namespace lucentra
