#pragma once

#include "HttpSession.h"
#include "QueuedServer.h"
#include "ServiceResponder.h"
#include "TestTexts.h"
#include "TranslationClients.h"

#include <array>

namespace lucentra {

enum class Service { GoogleFree, GoogleCloud, DeepL, Microsoft, OpenAI, Anthropic, Compatible, Gemini };

inline constexpr std::array services{Service::GoogleFree, Service::GoogleCloud, Service::DeepL, Service::Microsoft};
inline constexpr std::array models{Service::OpenAI, Service::Anthropic, Service::Compatible, Service::Gemini};
inline constexpr std::array engines{Service::GoogleFree, Service::GoogleCloud, Service::DeepL,      Service::Microsoft,
                                    Service::OpenAI,     Service::Anthropic,   Service::Compatible, Service::Gemini};

/// Before the description of a failure, where a call's outcome is a text.
inline const auto failurePrefix = QStringLiteral("failure: ");

QString labelOf(Service service);

/// The clients of all engines but this computer's, whose servers one on this computer plays.
class CalledServices
{
protected:
    /// The server has no answers any more.
    void begin();

    /// The translations, or what the call throws as the one text.
    QStringList translate(Service service, const QStringList &texts, const QString &target = QStringLiteral("zh-Hant"),
                          const QString &key = QStringLiteral("k3y-4711")) const;
    /// The same of a language model and a single text, into Japanese.
    QString translateText(Service model, const QString &text, const QString &key = QStringLiteral("k3y-4711")) const;
    /// The description of what the call throws.
    QString failureOf(Service service, const QStringList &texts, const QString &target = QStringLiteral("zh-Hant"),
                      const QString &key = QStringLiteral("k3y-4711")) const;

    EngineRequest request(Service service, const QStringList &texts, const QString &target, const QString &key) const;
    QStringList send(const EngineRequest &request) const;

    BeforeRequest m_beforeRequest; ///< of the calls
    TestTexts m_texts;
    QueuedServer m_server;
    HttpSession m_session;
    TranslationClients m_clients = remoteClients(m_session, m_texts.manager, hostsAt(m_server.origin()));
};

} // namespace lucentra
