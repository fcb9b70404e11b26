#include "Services.h"

#include "ScreenTextRecognizer.h"
#include "SecretServiceStorage.h"

#include <QLocale>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

Services::Services(DiagnosticLine diagnostics, TranslationManager::Sinks sinks, BuildPatience patience)
    : m_diagnostics(std::move(diagnostics))
    , m_sinks(std::move(sinks))
    , m_patience(patience)
    , m_settings(SettingsStore::userFilePath(), m_diagnostics)
    , m_texts(m_settings, stringTablesFolder(), QLocale::system().uiLanguages())
{
}

Services::~Services() = default;

TextRecognizer &Services::recognizer()
{
    if (!m_recognizer)
        m_recognizer = std::make_unique<ScreenTextRecognizer>();
    return *m_recognizer;
}

void Services::warmUpRecognizer(Scheduler &scheduler, std::chrono::milliseconds delay)
{
    recognizer();
    m_warmUp = scheduler.after(delay, [this] { m_recognizer->warmUp(); });
}

OnDeviceServices &Services::onDevice()
{
    if (!m_onDevice)
        m_onDevice = std::make_unique<OnDeviceServices>(m_mainQueue, m_patience);
    return *m_onDevice;
}

const KeychainStore &Services::keychain()
{
    translationManager(); // whose first use makes it
    return *m_keychain;
}

TranslationManager &Services::translationManager()
{
    if (!m_translationManager) {
        m_secrets = std::make_unique<SecretServiceStorage>();
        m_keychain = std::make_unique<KeychainStore>(*m_secrets, KeychainStore::apiKeyService(), m_diagnostics);
        m_http = std::make_unique<HttpSession>();
        TranslationClients clients = remoteClients(*m_http, m_texts);
        clients.onDevice = [&bridge = onDevice().bridge](const QStringList &texts, const QString &target,
                                                         const auto &completion, const auto &isWanted) {
            bridge.translate(texts, target, completion, isWanted);
        };
        m_translationManager = std::make_unique<TranslationManager>(m_settings, *m_keychain, m_texts, m_mainQueue,
                                                                    std::move(clients), m_sinks);
    }
    return *m_translationManager;
}

} // namespace lucentra
