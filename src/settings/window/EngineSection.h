#pragma once

#include "FormSection.h"
#include "Result.h"
#include "TranslationEngine.h"

#include <functional>
#include <optional>

namespace lucentra {

class KeyField;

/// What one engine needs to know: key, model, endpoint. Main thread only.
class EngineSection : public FormSection
{
public:
    EngineSection(SettingsForm &form, TranslationEngine engine, QWidget *parent = nullptr);

    /// Of the engine's key; empty where it has none.
    QString account() const { return engineEntry(m_engine).account; }
    /// The field's text; empty where the engine has no key.
    QString key() const;
    /// Fills in the stored key, unless something was typed already, and says where the keychain couldn't be asked.
    /// Until then nothing is said of a missing one.
    void setStoredKey(const QString &key, const std::optional<Failure> &failure = {});
    std::function<void(const QString &key)> onKeyTyped;
    /// Says why the typed key couldn't be saved and what helps, or no longer.
    void setSaved(const Result<void> &saved);

    /// Whether all that a test needs is filled in: the key where there must be one, model and endpoint.
    bool isComplete() const;

private:
    void addKeyRows();
    void showKeyStatus();
    void showFailure(const std::optional<Failure> &failure);

    const TranslationEngine m_engine;
    KeyField *m_key = nullptr;
    QLabel *m_status = nullptr;
    QLabel *m_failureText = nullptr;
    std::optional<Failure> m_failure; ///< of the keychain, the last time it was asked
    bool m_isLoaded = false;
};

} // namespace lucentra
