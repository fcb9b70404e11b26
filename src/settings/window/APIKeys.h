#pragma once

#include "Callback.h"
#include "Result.h"
#include "StoredAPIKeys.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QThreadPool>

#include <functional>
#include <mutex>

namespace lucentra {

class KeychainStore;
class MainQueue;
class SettingsStore;

/// Loads and saves the API keys for the settings form without blocking it. The keychain is called on one worker, in the
/// order of the calls. If several values of one account wait, only the last is saved. Callbacks are called on the main
/// thread. The destructor waits until typed keys are saved, which takes the keychain a second at most.
class APIKeys : public QObject
{
public:
    APIKeys(SettingsStore &settings, const KeychainStore &keychain, MainQueue &mainQueue);

    /// Loads the keys of all accounts. A key that still waits to be saved replaces the stored one. If the keychain
    /// failed, `retryFailed` loads them again. `loaded` is not called after the context is destroyed.
    void load(QObject *context, std::function<void(const StoredAPIKeys &keys)> loaded);

    /// Saves the account's new key; an empty key is removed. After that has succeeded, a plaintext copy of a former
    /// version is deleted.
    void save(const QString &account, const QString &key);
    /// Called after an account's last value was saved or saving it has failed.
    Callback<const QString &, const Result<void> &> onSaved;

    /// Repeats what has failed: loading and saving.
    void retryFailed();

    /// Calls `then` after every save so far has been tried.
    void afterSaving(QObject *context, std::function<void()> then);

private:
    void saveNext(const QString &account);
    void finished(const QString &account, const QString &key, const Result<void> &saved);

    SettingsStore &m_settings;
    const KeychainStore &m_keychain;
    const QPointer<QObject> m_self{this};
    MainQueue &m_mainQueue;
    QHash<QString, QString> m_unsaved;    ///< by account: the key that was typed last, until it is in the keychain
    QSet<QString> m_failed;               ///< accounts whose key couldn't be saved
    std::function<void()> m_loadOnceMore; ///< set if the keychain failed
    std::mutex m_mutex;
    QHash<QString, QString> m_waiting; ///< guarded by m_mutex
    QThreadPool m_worker;              ///< last, since its destructor waits for tasks that use the rest
};

} // namespace lucentra
