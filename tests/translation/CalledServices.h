#pragma once

#include "HttpSession.h"
#include "QueuedServer.h"
#include "ServiceResponder.h"
#include "TestTexts.h"
#include "TranslationClients.h"
#include "TranslationError.h"

#include <array>

namespace lucentra {

enum class Service { GoogleFree, GoogleCloud, DeepL, Microsoft, OpenAI, Anthropic, Compatible, Gemini };

inline constexpr std::array models{Service::OpenAI, Service::Anthropic, Service::Compatible, Service::Gemini};
inline constexpr std::array engines{Service::GoogleFree, Service::GoogleCloud, Service::DeepL,      Service::Microsoft,
                                    Service::OpenAI,     Service::Anthropic,   Service::Compatible, Service::Gemini};

/// Before the description of a failure, where a call's outcome is a text.
inline const auto failurePrefix = QStringLiteral("failure: ");

inline QString labelOf(Service service)
{
    using namespace Qt::StringLiterals;
    return std::array{u"Google 免費翻譯"_s, u"Google Cloud"_s, u"DeepL"_s,    u"Microsoft Translator"_s,
                      u"OpenAI"_s,          u"Claude"_s,       u"相容 API"_s, u"Gemini"_s}[size_t(service)];
}

/// The clients of all engines but this computer's, whose servers one on this computer plays.
class CalledServices
{
protected:
    /// The server has no answers any more.
    void begin()
    {
        m_server.reset();
        m_server.respondWith({});
    }

    /// The translations, or what the call throws as the one text.
    QStringList translate(Service service, const QStringList &texts, const QString &target = QStringLiteral("zh-Hant"),
                          const QString &key = QStringLiteral("k3y-4711")) const
    {
        return send(request(service, texts, target, key));
    }

    /// The same of a language model and a single text, into Japanese.
    QString translateText(Service model, const QString &text, const QString &key = QStringLiteral("k3y-4711")) const
    {
        EngineRequest typed = request(model, {text}, QStringLiteral("ja"), key);
        typed.isTyped = true;
        const QString answer = send(typed).value(0);
        return answer.startsWith(failurePrefix + u'❌') ? answer.sliced(failurePrefix.size()) : answer;
    }

    /// The description of what the call throws.
    QString failureOf(Service service, const QStringList &texts, const QString &target = QStringLiteral("zh-Hant"),
                      const QString &key = QStringLiteral("k3y-4711")) const
    {
        const QString outcome = translate(service, texts, target, key).join(u'|');
        return outcome.startsWith(failurePrefix) ? outcome.sliced(failurePrefix.size())
                                                 : QStringLiteral("no failure: ") + outcome;
    }

    EngineRequest request(Service service, const QStringList &texts, const QString &target, const QString &key) const
    {
        using enum TranslationEngine;
        return {.engine =
                    std::array{free, free, deepl, microsoft, openAI, anthropic, compatible, customAPI}[size_t(service)],
                .texts = texts,
                .target = target,
                .key = service == Service::GoogleFree ? QString() : key,
                .model = QStringLiteral("m-1"),
                .baseUrl = QString::fromLatin1(m_server.origin()) + QStringLiteral("/api/v1/")};
    }

    QStringList send(const EngineRequest &request) const
    try {
        return m_clients.remote(request, m_beforeRequest);
    } catch (...) {
        return {failurePrefix + failureOfCurrentException(m_texts.manager).description};
    }

    BeforeRequest m_beforeRequest; ///< of the calls
    TestTexts m_texts;
    QueuedServer m_server;
    HttpSession m_session;
    TranslationClients m_clients = remoteClients(m_session, m_texts.manager, hostsAt(m_server.origin()));
};

} // namespace lucentra
