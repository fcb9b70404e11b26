#pragma once

#include "AppleTranslationBridge.h"
#include "Engines.h"
#include "KeychainStore.h"
#include "LocalizationManager.h"
#include "MainQueue.h"
#include "SettingsStore.h"
#include "TranslationManager.h"

#include <functional>
#include <memory>
#include <optional>

namespace lucentra {

class ModelInstallation;
class TranslationModels;

/// The objects that both the pane and the command line need. Each is made once, costly ones at their first use.
class Services
{
public:
    /// `sinks` receive the typed texts that were translated. `patience` is for phrases that are being collected.
    Services(DiagnosticLine diagnostics, TranslationManager::Sinks sinks, BuildPatience patience = {});
    ~Services();

    SettingsStore &settings() { return m_settings; }
    LocalizationManager &texts() { return m_texts; }
    MainQueue &mainQueue() { return m_mainQueue; }
    const Engines &engines() { return loadEngines(m_texts); }
    // These two are made at the first call, on the main thread. Afterwards they may be asked for on any thread.
    TextRecognizer &recognizer();
    TranslationManager &translationManager();
    const KeychainStore &keychain();
    /// The state of what translates on this computer. Blocks while its data is being built.
    QList<OnDeviceServiceStatus> onDeviceStatus() { return onDeviceEngine().translation->status(); }
    /// Whether translations on this computer wait for its phrases. Doesn't wait. Any thread once `prepareOnDevice` was
    /// called.
    bool isCollectingPhrases();
    TranslationModels &models();
    /// Whether the engine in use could translate free text with models and there are none.
    bool lacksModels() const;
    ModelInstallation &modelInstallation();
    /// Like `testConnection`. The test of this computer's engine also says which models are installed.
    void testEngine(const std::function<void(Result<QString>)> &completion);
    /// Makes the on-device engine for this view. If it is expected to be used, it starts what takes long.
    void prepareOnDevice(const QObject &view, bool isExpected = true);

private:
    RemoteServices &remote();
    const OnDeviceEngine &onDeviceEngine();

    const DiagnosticLine m_diagnostics;
    const TranslationManager::Sinks m_sinks;
    const BuildPatience m_patience;
    MainQueue m_mainQueue;
    SettingsStore m_settings;
    LocalizationManager m_texts;
    std::unique_ptr<SecretStorage> m_secrets;
    std::unique_ptr<KeychainStore> m_keychain;
    std::unique_ptr<TextRecognizer> m_recognizer;
    std::optional<RemoteServices> m_remote;
    std::unique_ptr<TranslationModels> m_models;
    std::unique_ptr<ModelInstallation> m_modelInstallation;
    OnDeviceEngine m_onDevice;
    std::unique_ptr<AppleTranslationBridge> m_bridge;
    std::unique_ptr<TranslationManager> m_translationManager;
};

} // namespace lucentra
