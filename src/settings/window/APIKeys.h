#pragma once

#include "Result.h"
#include "StoredAPIKeys.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QThreadPool>

#include <functional>
#include <mutex>

namespace lucentra {

class KeychainStore;
class MainQueue;
class SettingsStore;

/// Loads and saves the API keys for the settings form without holding it: the keychain is asked on one worker, in the
/// order of the calls. Of several values for one account that wait, just the last is saved. Main thread only, and so
/// are its callbacks. The destructor waits until what was typed is saved, which the keychain does within a second.
class APIKeys : public QObject
{
public:
    /// What is referred to must outlive it.
    APIKeys(SettingsStore &settings, const KeychainStore &keychain, MainQueue &mainQueue);
    ~APIKeys() override;

    /// The keys of all accounts; one that still waits to be saved comes before the stored one. Called once more after a
    /// `retryFailed` where the keychain failed. Nothing is called once the context is gone.
    void load(QObject *context, std::function<void(const StoredAPIKeys &keys)> loaded);

    /// Saves what the account's key is now; an empty one is removed. A plaintext copy of a former version goes away
    /// once that has succeeded.
    void save(const QString &account, const QString &key);
    /// Called when an account's last value was saved, or couldn't be.
    std::function<void(const QString &account, const Result<void> &saved)> onSaved;

    /// Tries once more to load and to save what couldn't be.
    void retryFailed();

    /// Calls when everything that was to be saved by now has been tried.
    void afterSaving(QObject *context, std::function<void()> then);

private:
    void saveNext(const QString &account);
    void finished(const QString &account, const QString &key, const Result<void> &saved);

    SettingsStore &m_settings;
    const KeychainStore &m_keychain;
    MainQueue &m_mainQueue;
    QHash<QString, QString> m_unsaved;    ///< by account: what was typed last, until the keychain has it
    QSet<QString> m_failed;               ///< accounts of those that couldn't be saved
    std::function<void()> m_loadOnceMore; ///< where the keychain failed
    std::mutex m_mutex;
    QHash<QString, QString> m_waiting; ///< guarded by m_mutex
    QThreadPool m_worker;              ///< last: its destruction waits for what still runs
};

} // namespace lucentra
