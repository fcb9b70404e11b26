#include "TranslationClients.h"

#include "EngineClients.h"

namespace lucentra {

namespace {

using EngineClient = QStringList (*)(const TranslationServices &, const EngineRequest &);

/// The client of a language model.
template <LanguageModelProvider provider>
QStringList translateWithModel(const TranslationServices &services, const EngineRequest &request)
{
    return request.isTyped ? QStringList{translateTextWithModel(services, request, provider)}
                           : translateBlocksWithModel(services, request, provider);
}

/// The clients in the order of the engines' numbers.
constexpr EngineClient clients[] = {nullptr, // the engine of this computer
                                    translateWithGoogle,
                                    translateWithMicrosoft,
                                    translateWithGemini,
                                    translateWithDeepL,
                                    translateWithModel<sendOpenAI>,
                                    translateWithModel<sendAnthropic>,
                                    translateWithModel<sendCompatible>};
static_assert(std::size(clients) == size_t(TranslationEngine::compatible) + 1);

} // namespace

TranslationClients remoteClients(HttpSession &http, const LocalizationManager &texts, const ServiceHosts &hosts)
{
    return {.remote =
                [&http, &texts, hosts](const EngineRequest &request, const BeforeRequest &beforeRequest) {
                    return clients[size_t(request.engine)](
                        {.http = http, .hosts = hosts, .texts = texts, .beforeRequest = beforeRequest}, request);
                },
            .cancelAll = [&http] { http.cancelAll(); }};
}

} // namespace lucentra
