#include "EngineClients.h"
#include "Prompts.h"
#include "TargetLanguage.h"
#include "TranslationEngine.h"

using namespace Qt::StringLiterals;

namespace lucentra {

QStringList translateBlocksWithModel(const TranslationServices &services, const EngineRequest &request,
                                     LanguageModelProvider provider)
{
    QStringList translations;
    for (const QStringList &batch : blockBatches(request.texts)) {
        const auto input = blockBatchInput(batch);
        if (!input)
            throw invalidConfiguration(u"無法建立翻譯輸入"_s);
        const ModelMessage message{.instruction = blockInstruction(promptLanguageName(request.target)),
                                   .userText = *input,
                                   .isStructured = true};
        translations += parseBlockTranslations(provider(services, request, message), batch);
    }
    return translations;
}

QString translateTextWithModel(const TranslationServices &services, const EngineRequest &request,
                               LanguageModelProvider provider)
{
    return provider(services, request,
                    {.instruction = dictionaryInstruction(promptLanguageName(request.target)),
                     .userText = request.texts.value(0)});
}

} // namespace lucentra
