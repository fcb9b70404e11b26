#include "TranslationEngine.h"

#include "LocalizationManager.h"

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr QStringView missingKeyPattern = u"請至設定填入 %@ API Key";
constexpr QStringView ownEndpoint = u"您設定的相容 API 端點";

constexpr std::array<EngineEntry, 8> catalogue{{
    {TranslationEngine::apple, {}, {}, false, {}, {}, {}},
    {TranslationEngine::free, u"Google", "googleApiKey"_L1, false, {}, {}, {}},
    {TranslationEngine::microsoft, u"Microsoft Azure", "microsoftApiKey"_L1, true, u"Microsoft",
     u"請至設定填入 Microsoft Azure API Key", u"⚠️ 請至設定填入 Microsoft Azure API Key"},
    {TranslationEngine::customAPI, u"Google Gemini", "geminiApiKey"_L1, true, u"Gemini", u"請至設定填入 Gemini API Key",
     u"⚠️ 請至設定填入 Gemini API Key"},
    {TranslationEngine::deepl, u"DeepL", "deeplApiKey"_L1, true, u"DeepL", missingKeyPattern,
     u"⚠️ 請至設定填入 DeepL API Key"},
    {TranslationEngine::openAI, u"OpenAI", "openAIApiKey"_L1, true, u"OpenAI", missingKeyPattern,
     u"⚠️ 請至設定填入 OpenAI API Key"},
    {TranslationEngine::anthropic, u"Anthropic Claude", "anthropicApiKey"_L1, true, u"Claude", missingKeyPattern,
     u"⚠️ 請至設定填入 Claude API Key"},
    {TranslationEngine::compatible, ownEndpoint, "compatibleApiKey"_L1, true, u"相容 API", missingKeyPattern,
     u"⚠️ 請至設定填入相容 API Key"},
}};

} // namespace

const std::array<EngineEntry, 8> &engineCatalogue()
{
    return catalogue;
}

const EngineEntry &engineEntry(TranslationEngine engine)
{
    return catalogue[size_t(engine)];
}

std::optional<TranslationEngine> translationEngine(qint64 rawValue)
{
    if (rawValue < 0 || rawValue >= qint64(catalogue.size()))
        return std::nullopt;
    return TranslationEngine(rawValue);
}

std::optional<QString> remoteProviderName(TranslationEngine engine, const LocalizationManager &texts)
{
    const QStringView name = engineEntry(engine).serviceName;
    if (name.isEmpty())
        return std::nullopt;
    // The only one that is no name but a description.
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
