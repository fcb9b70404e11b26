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

void APIKeys::load(QObject *context, std::function<void(const StoredAPIKeys &)> loaded)
{
    m_loadOnceMore = nullptr;
    m_worker.start([this, self = QPointer(this), context = QPointer(context), loaded = std::move(loaded)] {
        m_mainQueue.post(
            [self, context, loaded, keys = loadStoredAPIKeys(m_settings, m_keychain, apiKeyAccounts())]() mutable {
                if (self) // a typed key takes precedence over the stored one
                    keys.keys.insert(self->m_unsaved);
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
    m_unsaved.insert(account, key);
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
        return; // an earlier task has saved it
    const auto saved = m_keychain.save(*key, account);
    if (saved)
        m_settings.remove(account);
    m_mainQueue.post(m_self, [this, account, key = *key, saved] { finished(account, key, saved); });
}

void APIKeys::finished(const QString &account, const QString &key, const Result<void> &saved)
{
    if (m_unsaved.value(account, key) != key)
        return; // typed meanwhile
    if (saved) {
        m_unsaved.remove(account);
        m_failed.remove(account);
    } else {
        m_unsaved.insert(account, key);
        m_failed.insert(account);
    }
    onSaved(account, saved);
}

void APIKeys::retryFailed()
{
    if (const auto load = std::exchange(m_loadOnceMore, nullptr))
        load();
    for (const QString &account : std::exchange(m_failed, {}))
        save(account, m_unsaved.value(account));
}

void APIKeys::afterSaving(QObject *context, std::function<void()> then)
{
    m_worker.start([&mainQueue = m_mainQueue, context = QPointer(context), then = std::move(then)] {
        mainQueue.post(context, then);
    });
}

} // namespace lucentra
