#pragma once

#include "FormPage.h"
#include "TranslationEngine.h"

#include <array>
#include <optional>

namespace lucentra {

class APIKeys;
class ConnectionSection;
class EngineSection;
class FormSection;
class ModelsSection;
class OnDeviceSection;

/// Engine and languages, how a translation is started, and the settings of the selected engine.
class TranslationTab : public FormPage
{
public:
    TranslationTab(SettingsForm &form, APIKeys &keys);

    /// Scrolls to the translation models.
    void showModels();

private:
    void addEngineAndLanguageSection();
    void addOperationSection();
    void addEngineSections();
    void loadKeys();
    void showSelectedEngine();
    bool canTest() const;

    SettingsForm &m_form;
    APIKeys &m_keys;
    std::array<EngineSection *, 8> m_engines{}; ///< by engine number
    std::array<FormSection *, 8> m_consents{};  ///< by engine number; null for the on-device engine
    OnDeviceSection *m_onDevice = nullptr;
    ModelsSection *m_models = nullptr;
    ConnectionSection *m_connection = nullptr;
    std::optional<TranslationEngine> m_shown; ///< nullopt at first
};

} // namespace lucentra
