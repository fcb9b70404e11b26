#include "TranslationEngine.h"

#include "LocalizationManager.h"
#include "Settings.h"

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr QStringView ownEndpoint = u"您設定的相容 API 端點";

constexpr QStringView keychainFooter = u"API Key 會安全存放於 macOS Keychain。";

} // namespace

const std::array<EngineEntry, 8> &engineCatalogue()
{
    static const std::array<EngineEntry, 8> catalogue{{
        {.engine = TranslationEngine::apple, .name = u"Apple 翻譯", .requiresKey = false},
        {.engine = TranslationEngine::free,
         .name = u"Google 翻譯",
         .serviceName = u"Google",
         .account = "googleApiKey"_L1,
         .requiresKey = false,
         .formTitle = u"Google 翻譯設定",
         .formFooters = {u"API Key 為選填，若留空則使用免費版（有流量與請求頻率限制）。", keychainFooter}},
        {.engine = TranslationEngine::microsoft,
         .name = u"Microsoft Azure 翻譯",
         .serviceName = u"Microsoft Azure",
         .account = "microsoftApiKey"_L1,
         .label = u"Microsoft",
         .missingKeyText = u"請至設定填入 Microsoft Azure API Key",
         .formTitle = u"Microsoft Azure 設定",
         .formFooters = {u"Azure 翻譯必須填寫 API Key 與對應的地區。", keychainFooter},
         .fields = {{u"地區", settings::microsoftApiRegion, &EngineRequest::region}}},
        {.engine = TranslationEngine::customAPI,
         .name = u"Gemini",
         .serviceName = u"Google Gemini",
         .account = "geminiApiKey"_L1,
         .label = u"Gemini",
         .formTitle = u"Gemini AI 設定",
         .formFooters = {u"Gemini 翻譯必須填寫 API Key。", keychainFooter}},
        {.engine = TranslationEngine::deepl,
         .name = u"DeepL",
         .serviceName = u"DeepL",
         .account = "deeplApiKey"_L1,
         .label = u"DeepL",
         .formTitle = u"DeepL 設定",
         .formFooters = {u"DeepL Free 與 Pro 金鑰皆可使用，App 會自動選擇對應端點。"}},
        {.engine = TranslationEngine::openAI,
         .name = u"OpenAI",
         .serviceName = u"OpenAI",
         .account = "openAIApiKey"_L1,
         .label = u"OpenAI",
         .formTitle = u"OpenAI 設定",
         .formFooters = {u"模型名稱可依你的 OpenAI 帳號權限調整。"},
         .fields = {{u"模型名稱", settings::openAIModel, &EngineRequest::model}},
         .areFieldsRequired = true},
        {.engine = TranslationEngine::anthropic,
         .name = u"Claude",
         .serviceName = u"Anthropic Claude",
         .account = "anthropicApiKey"_L1,
         .label = u"Claude",
         .formTitle = u"Claude 設定",
         .formFooters = {u"模型名稱可依你的 Anthropic 帳號權限調整。"},
         .fields = {{u"模型名稱", settings::anthropicModel, &EngineRequest::model}},
         .areFieldsRequired = true},
        {.engine = TranslationEngine::compatible,
         .name = u"OpenAI 相容 API",
         .serviceName = ownEndpoint,
         .account = "compatibleApiKey"_L1,
         .label = u"相容 API",
         .missingKeyReply = u"⚠️ 請至設定填入相容 API Key",
         .formTitle = u"OpenAI 相容 API 設定",
         .formFooters = {u"可連接 OpenRouter、Ollama 或其他支援 Chat Completions 的服務；非本機網址必須使用 HTTPS。"},
         .fields = {{u"API Base URL", settings::compatibleBaseURL, &EngineRequest::baseUrl},
                    {u"模型名稱", settings::compatibleModel, &EngineRequest::model}},
         .areFieldsRequired = true},
    }};
    return catalogue;
}

const EngineEntry &engineEntry(TranslationEngine engine)
{
    return engineCatalogue()[size_t(engine)];
}

std::optional<TranslationEngine> translationEngine(qint64 rawValue)
{
    if (rawValue < 0 || rawValue >= qint64(engineCatalogue().size()))
        return std::nullopt;
    return TranslationEngine(rawValue);
}

std::optional<QString> remoteProviderName(TranslationEngine engine, const LocalizationManager &texts)
{
    const QStringView name = engineEntry(engine).serviceName;
    if (name.isEmpty())
        return std::nullopt;
    // All other names are proper names, which are not translated.
    return name == ownEndpoint ? texts.localized(name.toString()) : name.toString();
}

QString labelBeforeAPI(const QString &label)
{
    constexpr QStringView api = u"API";
    return label.endsWith(api) ? label.chopped(api.size()).trimmed() : label;
}

QStringList apiKeyAccounts()
{
    using enum TranslationEngine;
    QStringList accounts;
    for (const TranslationEngine engine : {free, customAPI, microsoft, deepl, openAI, anthropic, compatible})
        accounts.append(engineEntry(engine).account);
    return accounts;
}

} // namespace lucentra
