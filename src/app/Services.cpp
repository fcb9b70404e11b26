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

const OnDeviceEngine &Services::onDeviceEngine()
{
    if (!m_bridge) {
        m_onDevice = makeOnDeviceEngine(m_patience);
        m_bridge = std::make_unique<AppleTranslationBridge>(*m_onDevice.identifier, *m_onDevice.translation);
    }
    return m_onDevice;
}

void Services::prepareOnDevice(const QObject &view)
{
    onDeviceEngine().translation->prepare();
    m_bridge->setParentView(&view);
}

const KeychainStore &Services::keychain()
{
    translationManager(); // makes it
    return *m_keychain;
}

TranslationManager &Services::translationManager()
{
    if (!m_translationManager) {
        m_secrets = std::make_unique<SecretServiceStorage>();
        m_keychain = std::make_unique<KeychainStore>(*m_secrets, KeychainStore::apiKeyService(), m_diagnostics);
        m_http = std::make_unique<HttpSession>();
        TranslationClients clients = remoteClients(*m_http, m_texts);
        onDeviceEngine();
        clients.onDevice = [this](const EngineRequest &request, const auto &isWanted) {
            return m_bridge->translate(request.texts, request.target, isWanted);
        };
        clients.cancelAll = [this] {
            m_http->cancelAll();
            m_onDevice.translation->cancel();
        };
        m_translationManager = std::make_unique<TranslationManager>(m_settings, *m_keychain, m_texts, m_mainQueue,
                                                                    std::move(clients), m_sinks);
    }
    return *m_translationManager;
}

} // namespace lucentra
