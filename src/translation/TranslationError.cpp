#include "TranslationError.h"

#include "LocalizationManager.h"
#include "TranslationEngine.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

TranslationProviderError::TranslationProviderError(Kind kind, QString provider, int status, QString message)
    : m_kind(kind)
    , m_provider(std::move(provider))
    , m_status(status)
    , m_message(std::move(message))
{
}

TranslationProviderError TranslationProviderError::invalidConfiguration(const QString &message)
{
    return {Kind::invalidConfiguration, QString(), 0, message};
}

TranslationProviderError TranslationProviderError::requestFailed(const QString &provider, int status,
                                                                 const QString &message)
{
    return {Kind::requestFailed, provider, status, message};
}

TranslationProviderError TranslationProviderError::invalidResponse(const QString &provider)
{
    return {Kind::invalidResponse, provider, 0, QString()};
}

Failure TranslationProviderError::failure(const LocalizationManager &texts) const
{
    QString description;
    switch (m_kind) {
    case Kind::invalidConfiguration:
        description = texts.localized(m_message);
        break;
    case Kind::requestFailed:
        description =
            texts.formatted(u"%@ API 錯誤 %d：%@"_s, labelBeforeAPI(texts.localized(m_provider)), m_status, m_message);
        break;
    case Kind::invalidResponse:
        description = texts.formatted(u"%@ 回應格式無法解析"_s, texts.localized(m_provider));
        break;
    }
    return {.domain = u"TranslationProviderError"_s, .code = m_status, .description = description};
}

ProviderFailure::ProviderFailure(QString domain, int code, QString descriptionKey)
    : m_domain(std::move(domain))
    , m_code(code)
    , m_descriptionKey(std::move(descriptionKey))
{
}

Failure ProviderFailure::failure(const LocalizationManager &texts) const
{
    return {.domain = m_domain, .code = m_code, .description = texts.localized(m_descriptionKey)};
}

TypedTextError::TypedTextError(QString answer)
    : m_answer(std::move(answer))
{
}

Failure TypedTextError::failure(const LocalizationManager &) const
{
    return {.domain = u"TypedText"_s, .code = -1, .description = m_answer};
}

Failure failureOfCurrentException(const LocalizationManager &texts)
{
    try {
        throw;
    } catch (const TranslationError &error) {
        return error.failure(texts);
    } catch (...) {
        return {.domain = u"Translation"_s, .code = -1, .description = texts.localized(u"未知錯誤"_s)};
    }
}

} // namespace lucentra
