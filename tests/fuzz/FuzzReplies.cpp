// What a translation service answers: the readers of every service, of a model's output, and of an error's text.

#include "Fuzz.h"

#include "EngineClients.h"
#include "TestTexts.h"
#include "TranslationError.h"

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

const QString key = u"sk-0123456789abcdef"_s;

/// A reader returns one text per source, or throws one of the failures that the user sees.
template <typename Reader>
void mustAnswerEach(qsizetype count, Reader reader)
{
    try {
        mustHold(reader().size() == count, "one translation a source");
    } catch (const TranslationError &error) {
        static const TestTexts texts;
        mustHold(!error.failure(texts.manager).description.isEmpty(), "a failure has words");
    }
}

void readModelOutput(const QString &output, const QStringList &sources)
{
    mustAnswerEach(sources.size(), [&] { return parseBlockTranslations(output, sources); });
    mustAnswerEach(sources.size(), [&] { return parseGeminiBlocks(output, sources); });
}

template <typename Reader>
void readModelAnswer(Reader reader, const QStringList &sources)
{
    try {
        readModelOutput(reader(), sources);
    } catch (const TranslationError &) {
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const TestTexts texts;
    static const QStringList sources{u"Open file"_s, u"取消"_s, u"저장"_s};
    const QByteArray body = bytesOf(data, size);

    mustAnswerEach(sources.size(), [&] { return googleFreeAnswer(body, sources.size()); });
    mustAnswerEach(sources.size(), [&] { return googleCloudAnswer(body, sources.size()); });
    mustAnswerEach(sources.size(), [&] { return microsoftAnswer(body, sources.size()); });
    mustAnswerEach(sources.size(), [&] { return deepLAnswer(body, sources); });
    readModelAnswer([&] { return openAIAnswer(body); }, sources);
    readModelAnswer([&] { return anthropicAnswer(body); }, sources);
    readModelAnswer([&] { return compatibleAnswer(body); }, sources);
    readModelAnswer([&] { return geminiAnswer(body).value_or(QString()); }, sources);
    readModelAnswer([&] { return QString::fromUtf8(body); }, sources);

    // The same with the key somewhere in what the service says.
    for (const QByteArray &said : {body, QByteArray(body).insert(body.size() / 2, key.toLatin1())}) {
        const QString message = providerErrorMessage(said, {key}, texts.manager);
        mustHold(!message.contains(key), "no error text holds the key");
        mustHold(message.size() <= 4000, "an error text fits a window");
    }
    return 0;
}
