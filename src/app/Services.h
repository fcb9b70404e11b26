#pragma once

#include "HttpSession.h"
#include "KeychainStore.h"
#include "LocalizationManager.h"
#include "MainQueue.h"
#include "OnDeviceServices.h"
#include "Scheduler.h"
#include "SettingsStore.h"
#include "TranslationManager.h"

#include <chrono>
#include <memory>

namespace lucentra {

class SecretStorage;
class ScreenTextRecognizer;
class TextRecognizer;

/// The objects that both the pane and the command line stand on, each made once, at its first use where it is costly.
class Services
{
public:
    /// `sinks` get the typed texts that were translated. `patience` is for the memory of phrases while it is built.
    Services(DiagnosticLine diagnostics, TranslationManager::Sinks sinks, BuildPatience patience = {});
    ~Services();
    Services(const Services &) = delete;
    Services &operator=(const Services &) = delete;

    SettingsStore &settings() { return m_settings; }
    LocalizationManager &texts() { return m_texts; }
    MainQueue &mainQueue() { return m_mainQueue; }
    /// Any thread once `warmUpRecognizer` was called.
    TextRecognizer &recognizer();
    /// Makes the recognizer now, and has it load its models after a while.
    void warmUpRecognizer(Scheduler &scheduler, std::chrono::milliseconds delay);
    TranslationManager &translationManager();
    const KeychainStore &keychain();
    /// What translates on this machine; made with the manager at the latest.
    OnDeviceServices &onDevice();

private:
    const DiagnosticLine m_diagnostics;
    const TranslationManager::Sinks m_sinks;
    const BuildPatience m_patience;
    MainQueue m_mainQueue;
    SettingsStore m_settings;
    LocalizationManager m_texts;
    std::unique_ptr<SecretStorage> m_secrets;
    std::unique_ptr<KeychainStore> m_keychain;
    std::unique_ptr<ScreenTextRecognizer> m_recognizer;
    std::unique_ptr<ScheduledTask> m_warmUp;
    std::unique_ptr<HttpSession> m_http;
    std::unique_ptr<OnDeviceServices> m_onDevice;
    std::unique_ptr<TranslationManager> m_translationManager;
};

} // namespace lucentra
