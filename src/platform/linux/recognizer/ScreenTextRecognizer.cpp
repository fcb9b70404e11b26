#include "ScreenTextRecognizer.h"

#include "LineFinder.h"
#include "LineRouter.h"
#include "ReaderPool.h"
#include "ReadingFilter.h"
#include "ReadingOrder.h"

#include <algorithm>
#include <cmath>
#include <latch>

namespace lucentra {
namespace {

constexpr int leastHeight = 5; // pixels; what is lower can't be told apart

QList<ReadingLanguage> languagesOf(const TextRecognitionRequest &request)
{
    QList<ReadingLanguage> languages;
    for (const QString &tag : request.languages) {
        if (tag.startsWith(QLatin1String("zh-Hans")))
            languages.append(ReadingLanguage::SimplifiedChinese);
        else if (tag.startsWith(QLatin1String("zh")))
            languages.append(ReadingLanguage::TraditionalChinese);
        else if (tag.startsWith(QLatin1String("ja")))
            languages.append(ReadingLanguage::Japanese);
        else if (tag.startsWith(QLatin1String("ko")))
            languages.append(ReadingLanguage::Korean);
        else
            languages.append(ReadingLanguage::English);
    }
    return languages;
}

/// The installed languages that weren't asked for.
QList<ReadingLanguage> extrasTo(const QList<ReadingLanguage> &languages)
{
    QList<ReadingLanguage> extras;
    for (const ReadingLanguage language : {ReadingLanguage::SimplifiedChinese, ReadingLanguage::Korean}) {
        if (!languages.contains(language) && LineReader::isInstalled(language))
            extras.append(language);
    }
    return extras;
}

QRectF normalized(const QRect &box, const QSize &size)
{
    return {box.x() / double(size.width()), 1 - (box.y() + box.height()) / double(size.height()),
            box.width() / double(size.width()), box.height() / double(size.height())};
}

struct ReadLine
{
    FoundLine found;
    Reading reading;
    bool isText = false;
};

} // namespace

ScreenTextRecognizer::ScreenTextRecognizer()
    : ScreenTextRecognizer(Options())
{
}

ScreenTextRecognizer::ScreenTextRecognizer(const Options &options)
    : m_pool(std::make_unique<ReaderPool>(
          options.workers > 0 ? options.workers : std::clamp(int(std::thread::hardware_concurrency()), 1, 4),
          options.keepEngines))
{
}

ScreenTextRecognizer::~ScreenTextRecognizer() = default;

void ScreenTextRecognizer::warmUp()
{
    m_pool->post([](LineReader &reader) {
        for (const ReadingLanguage language :
             {ReadingLanguage::TraditionalChinese, ReadingLanguage::English, ReadingLanguage::Japanese})
            reader.prepare(language);
    });
}

Result<QList<RecognizedTextObservation>> ScreenTextRecognizer::perform(const TextRecognitionRequest &request,
                                                                       const QImage &picture)
{
    const QImage image = picture.convertToFormat(QImage::Format_RGB32);
    const int minimumHeight = std::max(leastHeight, int(std::ceil(request.minimumTextHeight * image.height())));
    QList<ReadLine> lines;
    for (const FoundLine &found : findLines(image, minimumHeight))
        lines.append({found, {}, false});
    std::sort(lines.begin(), lines.end(),
              [](const ReadLine &a, const ReadLine &b) { return a.found.ink.width() > b.found.ink.width(); });

    const QList<ReadingLanguage> languages = languagesOf(request);
    const LineRouter router(languages, extrasTo(languages), request.level == RecognitionLevel::Accurate);
    ScreenLanguages screen;
    std::latch done(lines.size());
    for (ReadLine &line : lines) {
        m_pool->post([&](LineReader &reader) {
            const LineNormalizer normalizer(image, line.found.ink);
            // A letter alone isn't written on a picture; its details that look like one are many.
            if (!line.found.isShort() || !normalizer.isVaried()) {
                line.reading = router.read(normalizer, line.found.isShort(), reader, screen);
                line.reading.text = tidied(line.reading.text);
                line.isText = isPlausible(line.reading, line.found, normalizer.isVaried());
            }
            done.count_down();
        });
    }
    done.wait();

    erase_if(lines, [](const ReadLine &line) { return !line.isText; });
    QList<QRect> boxes;
    for (const ReadLine &line : lines)
        boxes.append(line.found.ink);
    QList<RecognizedTextObservation> observations;
    for (const int index : readingOrder(boxes))
        observations.append({{lines[index].reading.text}, normalized(boxes[index], image.size())});
    return observations;
}

} // namespace lucentra
