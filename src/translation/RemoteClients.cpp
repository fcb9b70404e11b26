#include "TranslationClients.h"

#include "DeepLClient.h"
#include "GeminiClient.h"
#include "GoogleCloudClient.h"
#include "GoogleFreeClient.h"
#include "LanguageModelTranslation.h"
#include "MicrosoftClient.h"

namespace lucentra {

TranslationClients remoteClients(HttpSession &http, const LocalizationManager &texts, const ServiceHosts &hosts)
{
    const auto bound = [&http, &texts, hosts](auto client) {
        return [&http, &texts, hosts, client](const BeforeRequest &beforeRequest, const auto &...values) {
            const TranslationServices services{
                .http = http, .hosts = hosts, .texts = texts, .beforeRequest = beforeRequest};
            return client(services, values...);
        };
    };
    TranslationClients clients;
    clients.googleFree = bound(translateWithGoogleFree);
    clients.googleCloud = bound(translateWithGoogleCloud);
    clients.microsoft = bound(translateWithMicrosoft);
    clients.deepL = bound(translateWithDeepL);
    clients.geminiBlocks = bound(translateBlocksWithGemini);
    clients.geminiText = bound(translateTextWithGemini);
    clients.modelBlocks = bound(translateBlocksWithModel);
    clients.modelText = bound(translateTextWithModel);
    clients.cancelAll = [&http] { http.cancelAll(); };
    return clients;
}

} // namespace lucentra
