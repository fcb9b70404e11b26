#include "LineReader.h"

#include <leptonica/allheaders.h>
#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

#include <algorithm>

namespace lucentra {
namespace {

const char *modelName(ReadingLanguage language)
{
    switch (language) {
    case ReadingLanguage::TraditionalChinese:
        return "chi_tra";
    case ReadingLanguage::English:
        return "eng";
    case ReadingLanguage::Japanese:
        return "jpn";
    case ReadingLanguage::SimplifiedChinese:
        return "chi_sim";
    case ReadingLanguage::Korean:
        return "kor";
    }
    return "";
}

std::unique_ptr<tesseract::TessBaseAPI> makeEngine(ReadingLanguage language, bool usesLanguageCorrection)
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
    if (engine->Init(nullptr, modelName(language), tesseract::OEM_LSTM_ONLY, nullptr, 0, &names, &values, false) != 0)
        return nullptr;
    return engine;
}

} // namespace

LineReader::LineReader(bool usesLanguageCorrection)
    : m_usesLanguageCorrection(usesLanguageCorrection)
{
}

LineReader::~LineReader() = default;

tesseract::TessBaseAPI *LineReader::engine(ReadingLanguage language)
{
    const auto known = m_engines.find(language);
    if (known != m_engines.end())
        return known->second.get();
    return (m_engines[language] = makeEngine(language, m_usesLanguageCorrection)).get();
}

bool LineReader::prepare(ReadingLanguage language)
{
    return engine(language) != nullptr;
}

void LineReader::release()
{
    m_engines.clear();
}

int LineReader::stripHeight(ReadingLanguage language)
{
    const bool isSmall = language == ReadingLanguage::English || language == ReadingLanguage::Japanese;
    return isSmall ? 36 : 48;
}

Reading LineReader::read(const Strip &strip, ReadingLanguage language, ReadingMode mode)
{
    tesseract::TessBaseAPI *api = engine(language);
    if (!api || !strip)
        return {};
    api->SetPageSegMode(mode == ReadingMode::Line ? tesseract::PSM_SINGLE_LINE : tesseract::PSM_RAW_LINE);
    api->SetImage(strip.get());
    api->SetSourceResolution(300);
    Reading reading{{}, 0, language};
    if (api->Recognize(nullptr) != 0)
        return reading;
    const std::unique_ptr<tesseract::ResultIterator> words(api->GetIterator());
    double sum = 0;
    qsizetype length = 0;
    while (words && !words->Empty(tesseract::RIL_WORD)) {
        const std::unique_ptr<char[]> text(words->GetUTF8Text(tesseract::RIL_WORD));
        const QString word = QString::fromUtf8(text.get()).simplified();
        if (!word.isEmpty()) {
            const double confidence = double(words->Confidence(tesseract::RIL_WORD));
            if (!reading.text.isEmpty())
                reading.text += QLatin1Char(' ');
            reading.text += word;
            sum += confidence * double(word.size());
            length += word.size();
        }
        if (!words->Next(tesseract::RIL_WORD))
            break;
    }
    if (length > 0)
        reading.confidence = sum / double(length);
    return reading;
}

bool LineReader::isInstalled(ReadingLanguage)
{
    return true;
}

} // namespace lucentra
