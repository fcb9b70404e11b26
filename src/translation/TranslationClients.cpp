#include "TranslationClients.h"

#include "ServiceRequest.h"

namespace lucentra {

TranslationClients remoteClients(HttpSession &http, const LocalizationManager &texts, const ServiceHosts &hosts)
{
    TranslationClients clients;
    clients.remote = [&http, &texts, hosts](const EngineRequest &request, const BeforeRequest &beforeRequest) {
        return engineEntry(request.engine)
            .client({.http = http, .hosts = hosts, .texts = texts, .beforeRequest = beforeRequest}, request);
    };
    clients.cancelAll = [&http] { http.cancelAll(); };
    return clients;
}

} // namespace lucentra
