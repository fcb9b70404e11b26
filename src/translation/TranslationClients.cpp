#include "TranslationClients.h"

#include "EngineClients.h"
#include "Prompts.h"
#include "TargetLanguage.h"

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

using EngineClient = QStringList (*)(const TranslationServices &, const EngineRequest &);

/// The client of a language model: blocks in as few messages as possible, or a typed text, dictionary-style.
template <QString (*send)(const TranslationServices &, const EngineRequest &, const ModelMessage &)>
QStringList translateWithModel(const TranslationServices &services, const EngineRequest &request)
{
    const QString language = promptLanguageName(request.target);
    if (request.isTyped)
        return {send(services, request,
                     {.instruction = dictionaryInstruction(language), .userText = request.texts.value(0)})};
    QStringList translations;
    for (const QStringList &batch : blockBatches(request.texts)) {
        const auto input = blockBatchInput(batch);
        if (!input)
            throw invalidConfiguration(u"無法建立翻譯輸入"_s);
        const ModelMessage message{.instruction = blockInstruction(language), .userText = *input, .isStructured = true};
        translations += parseBlockTranslations(send(services, request, message), batch);
    }
    return translations;
}

/// The clients in the order of the engines' numbers.
constexpr EngineClient clients[] = {nullptr, // the engine of this computer
                                    translateWithGoogle,
                                    translateWithMicrosoft,
                                    translateWithGemini,
                                    translateWithDeepL,
                                    translateWithModel<sendOpenAI>,
                                    translateWithModel<sendAnthropic>,
                                    translateWithModel<sendCompatible>};
static_assert(std::size(clients) == size_t(TranslationEngine::compatible) + 1);

} // namespace

TranslationClients remoteClients(HttpSession &http, const LocalizationManager &texts, const ServiceHosts &hosts)
{
    return {.remote =
                [&http, &texts, hosts](const EngineRequest &request, const BeforeRequest &beforeRequest) {
                    return clients[size_t(request.engine)](
                        {.http = http, .hosts = hosts, .texts = texts, .beforeRequest = beforeRequest}, request);
                },
            .cancelAll = [&http] { http.cancelAll(); }};
}

} // namespace lucentra
