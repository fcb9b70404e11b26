#include "APIKeys.h"

#include "KeychainStore.h"
#include "MainQueue.h"
#include "SettingsStore.h"
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

void APIKeys::load(QObject *context, std::function<void(const StoredAPIKeys &)> loaded)
{
    m_loadOnceMore = nullptr;
    m_worker.start([this, self = QPointer(this), context = QPointer(context), loaded = std::move(loaded)] {
        m_mainQueue.post([self, context, loaded, keys = loadStoredAPIKeys(m_settings, m_keychain, apiKeyAccounts())] {
            if (self && context && keys.failure)
                self->m_loadOnceMore = [self, context, loaded] {
                    if (context)
                        self->load(context, loaded);
                };
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
    const auto saved = m_keychain.save(*key, account);
    if (saved)
        m_settings.remove(account);
    m_mainQueue.post([self = QPointer(this), account, key = *key, saved] {
        if (self)
            self->finished(account, key, saved);
    });
}

void APIKeys::finished(const QString &account, const QString &key, const Result<void> &saved)
{
    {
        const std::scoped_lock lock(m_mutex);
        if (m_waiting.contains(account))
            return; // typed meanwhile
    }
    if (!saved)
        m_failed.insert(account, key);
    if (onSaved)
        onSaved(account, saved);
}

void APIKeys::retryFailed()
{
    if (const auto load = std::exchange(m_loadOnceMore, nullptr))
        load();
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
