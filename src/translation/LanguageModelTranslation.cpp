#include "LanguageModelTranslation.h"

#include "AnthropicClient.h"
#include "BlockBatch.h"
#include "CompatibleClient.h"
#include "OpenAIClient.h"
#include "Prompts.h"
#include "TargetLanguage.h"

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

QString sendToModel(const TranslationServices &services, const LanguageModelProvider &provider,
                    const ModelMessage &message)
{
    if (const auto *const openAI = std::get_if<OpenAIProvider>(&provider))
        return sendOpenAI(services, *openAI, message);
    if (const auto *const anthropic = std::get_if<AnthropicProvider>(&provider))
        return sendAnthropic(services, *anthropic, message);
    return sendCompatible(services, std::get<CompatibleProvider>(provider), message);
}

} // namespace

QStringList translateBlocksWithModel(const TranslationServices &services, const QList<TextBlock> &blocks,
                                     const QString &target, const LanguageModelProvider &provider)
{
    QStringList translations;
    for (const QList<TextBlock> &batch : blockBatches(blocks)) {
        const auto input = blockBatchInput(batch);
        if (!input)
            throw TranslationProviderError::invalidConfiguration(u"無法建立翻譯輸入"_s);
        const ModelMessage message{
            .instruction = blockInstruction(promptLanguageName(target)), .userText = *input, .isStructured = true};
        translations.append(parseBlockTranslations(sendToModel(services, provider, message), batch));
    }
    return translations;
}

QString translateTextWithModel(const TranslationServices &services, const QString &text, const QString &target,
                               const LanguageModelProvider &provider)
{
    return sendToModel(services, provider,
                       {.instruction = dictionaryInstruction(promptLanguageName(target)), .userText = text});
}

} // namespace lucentra
