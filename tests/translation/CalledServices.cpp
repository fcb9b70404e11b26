#include "CalledServices.h"

#include "TranslationError.h"

namespace lucentra {

using namespace Qt::StringLiterals;

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

EngineRequest CalledServices::request(Service service, const QStringList &texts, const QString &target,
                                      const QString &key) const
{
    using enum TranslationEngine;
    return {.engine = std::array{free, free, deepl, microsoft, openAI, anthropic, compatible,
                                 customAPI}[size_t(service)],
            .texts = texts,
            .target = target,
            .key = service == Service::GoogleFree ? QString() : key,
            .model = u"m-1"_s,
            .baseUrl = QString::fromLatin1(m_server.origin()) + u"/api/v1/"_s};
}

QStringList CalledServices::translate(Service service, const QStringList &texts, const QString &target,
                                      const QString &key) const
{
    return send(request(service, texts, target, key));
}

QString CalledServices::translateText(Service model, const QString &text, const QString &key) const
{
    EngineRequest typed = request(model, {text}, u"ja"_s, key);
    typed.isTyped = true;
    const QString answer = send(typed).value(0);
    return answer.startsWith(failurePrefix + u"❌"_s) ? answer.sliced(failurePrefix.size()) : answer;
}

QStringList CalledServices::send(const EngineRequest &request) const
try {
    return m_clients.remote(request, m_beforeRequest);
} catch (...) {
    return {failurePrefix + failureOfCurrentException(m_texts.manager).description};
}

QString CalledServices::failureOf(Service service, const QStringList &texts, const QString &target,
                                  const QString &key) const
{
    const QString outcome = translate(service, texts, target, key).join(u'|');
    return outcome.startsWith(failurePrefix) ? outcome.sliced(failurePrefix.size()) : u"no failure: "_s + outcome;
}

} // namespace lucentra
