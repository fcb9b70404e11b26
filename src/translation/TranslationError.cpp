#include "TranslationError.h"

#include "LocalizationManager.h"
#include "TranslationEngine.h"

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

const QString providerDomain = u"TranslationProviderError"_s;

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

TranslationError::TranslationError(const QString &domain, int code, Sentence sentence)
    : m_domain(domain)
    , m_code(code)
    , m_sentence(std::move(sentence))
{
}

TranslationError::TranslationError(const QString &domain, int code, const QString &sentence)
    : TranslationError(domain, code, [sentence](const LocalizationManager &texts) { return texts.localized(sentence); })
{
}

Failure TranslationError::failure(const LocalizationManager &texts) const
{
    return {.domain = m_domain, .code = m_code, .description = m_sentence(texts)};
}

TranslationError invalidConfiguration(const QString &message)
{
    return {providerDomain, 0, message};
}

TranslationError invalidUrl(const QString &provider)
{
    return {providerDomain, 0, [provider](const LocalizationManager &texts) {
                return texts.formatted(u"%@ API URL 無效"_s, provider);
            }};
}

TranslationError requestFailed(const QString &provider, int status, const QString &message)
{
    return {providerDomain, status, [=](const LocalizationManager &texts) {
                return texts.formatted(u"%@ API 錯誤 %d：%@"_s, labelBeforeAPI(texts.localized(provider)), status,
                                       message);
            }};
}

TranslationError invalidResponse(const QString &provider)
{
    return {providerDomain, 0, [provider](const LocalizationManager &texts) {
                return texts.formatted(u"%@ 回應格式無法解析"_s, texts.localized(provider));
            }};
}

TypedTextError::TypedTextError(const QString &answer)
    : TranslationError(u"TypedText"_s, -1, [answer](const LocalizationManager &) { return answer; })
{
}

TransportError::TransportError(Kind kind)
    : TranslationError(u"HttpSession"_s, int(kind), sentences[size_t(kind) - 1])
    , m_kind(kind)
{
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
