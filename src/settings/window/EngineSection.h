#pragma once

#include "Callback.h"
#include "FormSection.h"
#include "Result.h"
#include "TranslationEngine.h"

#include <optional>

namespace lucentra {

class KeyField;

/// The settings of one engine: key, model, endpoint.
class EngineSection : public FormSection
{
public:
    EngineSection(SettingsForm &form, TranslationEngine engine);

    /// The account of the engine's key; empty if the engine has none.
    QString account() const { return engineEntry(m_engine).account; }
    /// The field's text; empty if the engine has no key.
    QString key() const;
    /// Fills in the stored key unless one was typed already, and shows a failure of the keychain. Before this is
    /// called, a missing key isn't reported.
    void setStoredKey(const QString &key, const std::optional<Failure> &failure = {});
    Callback<const QString &> onKeyTyped;
    /// Shows why the typed key couldn't be saved, or removes that message.
    void setSaved(const Result<void> &saved);

    /// Whether the fields that a test needs are filled in: the key if it is mandatory, model and endpoint.
    bool isComplete() const;

private:
    void addKeyRows();
    void showKeyStatus();
    void showFailure(const std::optional<Failure> &failure);

    const TranslationEngine m_engine;
    KeyField *m_key = nullptr;
    QLabel *m_status = nullptr;
    QLabel *m_failureText = nullptr;
    std::optional<Failure> m_failure; ///< the last one of the keychain
    bool m_isLoaded = false;
};

} // namespace lucentra
