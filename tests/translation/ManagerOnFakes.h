#pragma once

#include "FakeSecretStorage.h"
#include "KeychainStore.h"
#include "MainQueue.h"
#include "Settings.h"
#include "TestTexts.h"
#include "TranslationManager.h"

#include <QTest>

#include <functional>
#include <memory>
#include <optional>

namespace lucentra {

/// A translation manager whose clients answer with what they were called with.
class ManagerOnFakes
{
protected:
    /// Everything anew, with "ja" as target.
    void begin()
    {
        m_manager.reset();
        m_texts = std::make_unique<TestTexts>();
        m_secrets = std::make_unique<FakeSecretStorage>();
        m_keychain = std::make_unique<KeychainStore>(*m_secrets, QStringLiteral("keys"), DiagnosticLine());
        m_queue = std::make_unique<MainQueue>();
        m_outcome = nullptr;
        m_onDeviceOutcome = nullptr;
        m_supportsOnDevice = true;
        m_requestsOfACall = 1;
        onRequest = nullptr;
        m_copied.clear();
        m_recorded.clear();
        useManagerWith(fakeClients());
        m_texts->settings.overrideForThisProcess(settings::targetLanguageCode, QStringLiteral("ja"));
    }

    void useManagerWith(const TranslationClients &clients)
    {
        m_manager = std::make_unique<TranslationManager>(
            m_texts->settings, *m_keychain, m_texts->manager, *m_queue, clients,
            TranslationManager::Sinks{.copy = [this](const QString &text) { m_copied.append(text); },
                                      .record =
                                          [this](const QString &original, const QString &translation) {
                                              m_recorded.append(original + QStringLiteral(" → ") + translation);
                                          }});
    }

    // Settings are put in front of the file: writing it over and over is what would take the time.
    void select(qint64 engine, bool consent, const QString &key)
    {
        m_texts->settings.overrideForThisProcess(settings::translationEngine, engine);
        m_texts->settings.overrideForThisProcess(settings::consentKey(engine), consent);
        if (!key.isEmpty() && engine > 0 && engine < 8)
            m_secrets->secrets[engineEntry(TranslationEngine(engine)).account] = key.toUtf8();
    }

    /// What the blocks "a" and "b" become, or domain, code and description of the failure. `isSynchronous` is
    /// set if it came before the call returned.
    QString translateBlocks()
    {
        return outcomeOf([this](QStringList &outcomes) {
            m_manager->translateBlocks({{.text = QStringLiteral("a")}, {.text = QStringLiteral("b")}},
                                       [&](const Result<QStringList> &result) {
                                           const auto described = [](const Failure &failure) {
                                               return QStringLiteral("%1 %2 %3")
                                                   .arg(failure.domain)
                                                   .arg(failure.code)
                                                   .arg(failure.description);
                                           };
                                           outcomes.append(result ? result->join(u'|') : described(result.error()));
                                       });
        });
    }
    QString translateText(const QString &text)
    {
        return outcomeOf([&](QStringList &outcomes) {
            m_manager->translateText(text, [&](const QString &result) { outcomes.append(result); });
        });
    }

    TranslationClients fakeClients()
    {
        TranslationClients clients;
        clients.remote = [this](const EngineRequest &request, const BeforeRequest &mayBeSent) {
            for (int i = 0; i < m_requestsOfACall; ++i) {
                mayBeSent();
                if (onRequest)
                    onRequest();
            }
            QStringList call{QString::number(int(request.engine)),
                             request.texts.join(u'+'),
                             request.target,
                             request.key,
                             request.model,
                             request.baseUrl,
                             request.region,
                             request.isTyped ? QStringLiteral("typed") : QString()};
            call.removeAll(QString());
            return m_outcome ? m_outcome() : QStringList{call.join(u' ')};
        };
        clients.onDevice = [this](const EngineRequest &request, const auto &) {
            const QString call = QStringLiteral("0 ") + request.texts.join(u'+') + u' ' + request.target;
            const auto outcome = m_onDeviceOutcome ? m_onDeviceOutcome() : std::optional(QStringList{call});
            return outcome ? std::optional(OnDeviceTranslations{.texts = *outcome}) : std::nullopt;
        };
        clients.supportsOnDevice = [this] { return m_supportsOnDevice; };
        return clients;
    }

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

private:
    QString outcomeOf(const std::function<void(QStringList &)> &call)
    {
        QStringList outcomes;
        call(outcomes);
        m_isSynchronous = !outcomes.isEmpty();
        if (!QTest::qWaitFor([&] { return !outcomes.isEmpty(); }))
            return QStringLiteral("nothing came");
        QCoreApplication::processEvents();
        return outcomes.join(QStringLiteral(" and again: "));
    }
};

} // namespace lucentra
