#include "CalledServices.h"

#include "TranslationError.h"

namespace lucentra {

using namespace Qt::StringLiterals;

namespace {

const QString failurePrefix = u"failure: "_s;

} // namespace

QString labelOf(Service service)
{
    return std::array{u"Google 免費翻譯"_s, u"Google Cloud"_s, u"DeepL"_s,    u"Microsoft Translator"_s,
                      u"OpenAI"_s,          u"Claude"_s,       u"相容 API"_s, u"Gemini"_s}[size_t(service)];
}

void CalledServices::begin()
{
    m_server.reset();
    m_server.respondWith({});
}

QStringList CalledServices::translate(Service service, const QStringList &texts, const QString &target,
                                      const QString &key) const
try {
    switch (service) {
    case Service::GoogleFree:
        return m_clients.googleFree(m_beforeRequest, blocksOf(texts), target);
    case Service::GoogleCloud:
        return m_clients.googleCloud(m_beforeRequest, blocksOf(texts), target, key);
    case Service::DeepL:
        return m_clients.deepL(m_beforeRequest, blocksOf(texts), key, target);
    case Service::Microsoft:
        return m_clients.microsoft(m_beforeRequest, blocksOf(texts), key, u""_s, target);
    case Service::Gemini:
        return m_clients.geminiBlocks(m_beforeRequest, key, blocksOf(texts), target);
    default:
        return m_clients.modelBlocks(m_beforeRequest, blocksOf(texts), target, provider(service, key));
    }
} catch (...) {
    return {failurePrefix + failureOfCurrentException(m_texts.manager).description};
}

LanguageModelProvider CalledServices::provider(Service model, const QString &key) const
{
    if (model == Service::OpenAI)
        return OpenAIProvider{key, u"m-1"_s};
    if (model == Service::Anthropic)
        return AnthropicProvider{key, u"m-1"_s};
    return CompatibleProvider{key, u"m-1"_s, QString::fromLatin1(m_server.origin()) + u"/api/v1/"_s};
}

QString CalledServices::translateText(Service model, const QString &text, const QString &key) const
try {
    if (model == Service::Gemini)
        return m_clients.geminiText(m_beforeRequest, key, text, u"ja"_s);
    return m_clients.modelText(m_beforeRequest, text, u"ja"_s, provider(model, key));
} catch (...) {
    return failurePrefix + failureOfCurrentException(m_texts.manager).description;
}

QString CalledServices::failureOf(Service service, const QStringList &texts, const QString &target,
                                  const QString &key) const
{
    const QString outcome = translate(service, texts, target, key).join(u'|');
    return outcome.startsWith(failurePrefix) ? outcome.sliced(failurePrefix.size()) : u"no failure: "_s + outcome;
}

} // namespace lucentra
