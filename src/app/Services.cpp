#include "Services.h"

#include "ConnectionTest.h"
#include "ModelInstallation.h"
#include "ModelStore.h"
#include "Settings.h"
#include "TranslationEngine.h"

#include <QLocale>

#include <algorithm>
#include <utility>

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
        m_recognizer = engines().makeRecognizer();
    return *m_recognizer;
}

const OnDeviceEngine &Services::onDeviceEngine()
{
    if (!m_bridge) {
        m_onDevice = engines().makeOnDeviceEngine(m_patience);
        m_bridge = std::make_unique<AppleTranslationBridge>(*m_onDevice.identifier, *m_onDevice.translation);
    }
    return m_onDevice;
}

void Services::prepareOnDevice(const QObject &view, bool isExpected)
{
    const OnDeviceEngine &engine = onDeviceEngine();
    if (isExpected)
        engine.translation->prepare();
    m_bridge->setParentView(&view);
}

bool Services::isCollectingPhrases()
{
    const QList<OnDeviceServiceStatus> services = onDeviceEngine().translation->currentStatus();
    return std::any_of(services.begin(), services.end(),
                       [](const OnDeviceServiceStatus &service) { return service.isGettingReady; });
}

RemoteServices &Services::remote()
{
    if (!m_remote)
        m_remote = engines().makeRemoteServices(m_texts);
    return *m_remote;
}

TranslationModels &Services::models()
{
    if (!m_models)
        m_models = std::make_unique<ModelStore>(
            InstalledModels::searchFoldersOfThisSystem(),
            [this] {
                return ModelStore::Addresses{.registry = m_settings.read(settings::modelRegistryURL).trimmed().toUtf8(),
                                             .files = m_settings.read(settings::modelFilesURL).trimmed().toUtf8()};
            },
            remote().fetchModel);
    return *m_models;
}

bool Services::lacksModels() const
{
    return m_settings.read(settings::translationEngine) == qint64(TranslationEngine::apple) &&
           InstalledModels(InstalledModels::searchFoldersOfThisSystem()).list().isEmpty();
}

ModelInstallation &Services::modelInstallation()
{
    if (!m_modelInstallation)
        m_modelInstallation = std::make_unique<ModelInstallation>(models(), m_mainQueue);
    return *m_modelInstallation;
}

void Services::testEngine(const std::function<void(Result<QString>)> &completion)
{
    testConnection(translationManager(), m_settings, m_texts, [this, completion](Result<QString> outcome) {
        if (m_settings.read(settings::translationEngine) == qint64(TranslationEngine::apple)) {
            const QString installed = u'\n' + installedModelsText(models(), m_texts);
            outcome ? *outcome += installed : outcome.error().description += installed;
        }
        completion(outcome);
    });
}

const KeychainStore &Services::keychain()
{
    translationManager(); // makes it
    return *m_keychain;
}

TranslationManager &Services::translationManager()
{
    if (!m_translationManager) {
        m_secrets = engines().makeSecretStorage();
        m_keychain = std::make_unique<KeychainStore>(*m_secrets, KeychainStore::apiKeyService(), m_diagnostics);
        TranslationClients clients = remote().clients;
        onDeviceEngine();
        clients.onDevice = [this](const EngineRequest &request, const auto &isWanted) {
            return m_bridge->translate(request.texts, request.target, isWanted);
        };
        clients.isPhrase = [this](const QString &text, const QString &target) {
            return m_bridge->isPhrase(text, target);
        };
        clients.cancelAll = [this] {
            m_remote->clients.cancelAll();
            m_onDevice.translation->cancel();
        };
        m_translationManager = std::make_unique<TranslationManager>(m_settings, *m_keychain, m_texts, m_mainQueue,
                                                                    std::move(clients), m_sinks);
    }
    return *m_translationManager;
}

} // namespace lucentra
