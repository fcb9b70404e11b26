#include "APIKeys.h"

#include "KeychainStore.h"
#include "MainQueue.h"
#include "SettingsStore.h"
#include "StoredAPIKeys.h"
#include "TranslationEngine.h"

#include <QPointer>

#include <optional>
#include <utility>

namespace lucentra {

APIKeys::APIKeys(SettingsStore &settings, const KeychainStore &keychain, MainQueue &mainQueue)
    : m_settings(settings)
    , m_keychain(keychain)
    , m_mainQueue(mainQueue)
{
    m_worker.setMaxThreadCount(1);
}

APIKeys::~APIKeys() = default;

void APIKeys::load(QObject *context, std::function<void(const QHash<QString, QString> &)> loaded)
{
    m_worker.start([this, context = QPointer(context), loaded = std::move(loaded)] {
        const auto keys = loadStoredAPIKeys(m_settings, m_keychain, apiKeyAccounts());
        m_mainQueue.post([context, loaded, keys] {
            if (context)
                loaded(keys);
        });
    });
}

void APIKeys::save(const QString &account, const QString &key)
{
    m_failed.remove(account);
    {
        const std::scoped_lock lock(m_mutex);
        m_waiting.insert(account, key);
    }
    m_worker.start([this, account] { saveNext(account); });
}

void APIKeys::saveNext(const QString &account)
{
    std::optional<QString> key;
    {
        const std::scoped_lock lock(m_mutex);
        if (m_waiting.contains(account))
            key = m_waiting.take(account);
    }
    if (!key)
        return; // an earlier turn has saved it
    const bool isSaved = m_keychain.saveString(*key, account);
    if (isSaved)
        m_settings.remove(account);
    m_mainQueue.post([self = QPointer(this), account, key = *key, isSaved] {
        if (self)
            self->finished(account, key, isSaved);
    });
}

void APIKeys::finished(const QString &account, const QString &key, bool isSaved)
{
    {
        const std::scoped_lock lock(m_mutex);
        if (m_waiting.contains(account))
            return; // typed meanwhile
    }
    if (!isSaved)
        m_failed.insert(account, key);
    if (onSaved)
        onSaved(account, isSaved);
}

void APIKeys::retryFailed()
{
    const auto failed = std::exchange(m_failed, {});
    for (auto it = failed.cbegin(); it != failed.cend(); ++it)
        save(it.key(), it.value());
}

void APIKeys::afterSaving(QObject *context, std::function<void()> then)
{
    m_worker.start([&mainQueue = m_mainQueue, context = QPointer(context), then = std::move(then)] {
        mainQueue.post([context, then] {
            if (context)
                then();
        });
    });
}

} // namespace lucentra
