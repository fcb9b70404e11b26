#pragma once

#include "FakeSecretStorage.h"
#include "KeychainStore.h"
#include "MainQueue.h"
#include "TestTexts.h"
#include "TranslationManager.h"

#include <functional>
#include <memory>
#include <optional>

namespace lucentra {

/// A translation manager whose clients answer with what they were called with.
class ManagerOnFakes
{
protected:
    /// Everything anew, with "ja" as target.
    void begin();

    void useManagerWith(const TranslationClients &clients);
    // Settings are put in front of the file: writing it over and over is what would take the time.
    void select(qint64 engine, bool consent, const QString &key);
    /// What the blocks "a" and "b" become, or domain, code and description of the failure. `isSynchronous` is
    /// set if it came before the call returned.
    QString translateBlocks();
    QString translateText(const QString &text);

    TranslationClients fakeClients();

    std::unique_ptr<TestTexts> m_texts;
    std::unique_ptr<FakeSecretStorage> m_secrets;
    std::unique_ptr<KeychainStore> m_keychain;
    std::unique_ptr<MainQueue> m_queue;
    std::unique_ptr<TranslationManager> m_manager;
    std::function<QStringList()> m_outcome; ///< of every client, instead of what it was called with
    std::function<std::optional<QStringList>()> m_onDeviceOutcome;
    bool m_supportsOnDevice = true;
    int m_requestsOfACall = 1;
    std::function<void()> onRequest; ///< called on the worker with each request that a client makes
    bool m_isSynchronous = false;
    QStringList m_copied;
    QStringList m_recorded;
};

} // namespace lucentra
