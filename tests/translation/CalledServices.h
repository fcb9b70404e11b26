#pragma once

#include "HttpSession.h"
#include "QueuedServer.h"
#include "ServiceResponder.h"
#include "TestTexts.h"
#include "TranslationClients.h"

#include <array>

namespace lucentra {

enum class Service { GoogleFree, GoogleCloud, DeepL, Microsoft };

inline constexpr std::array services{Service::GoogleFree, Service::GoogleCloud, Service::DeepL, Service::Microsoft};

QString labelOf(Service service);

/// The clients of the services, which a server on this computer plays.
class CalledServices
{
protected:
    /// The server has no answers any more.
    void begin();

    /// The translations, or what the call throws as the one text.
    QStringList translate(Service service, const QStringList &texts, const QString &target = QStringLiteral("zh-Hant"),
                          const QString &key = QStringLiteral("k3y-4711")) const;
    /// The description of what the call throws.
    QString failureOf(Service service, const QStringList &texts, const QString &target = QStringLiteral("zh-Hant"),
                      const QString &key = QStringLiteral("k3y-4711")) const;

    TestTexts m_texts;
    QueuedServer m_server;
    HttpSession m_session;
    TranslationClients m_clients = remoteClients(m_session, m_texts.manager, hostsAt(m_server.origin()));
};

} // namespace lucentra
