#include "TranslationError.h"

#include "LocalizationManager.h"
#include "TranslationEngine.h"

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// The sentences for the user in the order of the kinds of `TransportError`.
const std::array sentences{u"連線逾時，請稍後再試"_s,
                           u"找不到伺服器，請檢查網路連線與網址"_s,
                           u"無法連線到伺服器"_s,
                           u"與伺服器的連線已中斷"_s,
                           u"伺服器的安全憑證無效"_s,
                           u"無法與伺服器建立安全連線"_s,
                           u"無法透過代理伺服器連線"_s,
                           u"伺服器的回應不是有效的 HTTP 回應"_s,
                           u"伺服器的回應過大"_s,
                           u"API Key 或設定含有無法傳送的字元"_s,
                           u"要求已取消"_s,
                           u"網路連線發生錯誤"_s};
static_assert(sentences.size() == size_t(TransportError::Kind::other));

} // namespace

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

Failure TransportError::failure(const LocalizationManager &texts) const
{
    return {.domain = u"HttpSession"_s,
            .code = int(m_kind),
            .description = texts.localized(sentences[size_t(m_kind) - 1])};
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
