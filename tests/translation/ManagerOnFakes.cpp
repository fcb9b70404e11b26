#include "ManagerOnFakes.h"

#include "Settings.h"

#include <QTest>

namespace lucentra {

using namespace Qt::StringLiterals;

TranslationClients ManagerOnFakes::fakeClients()
{
    TranslationClients clients;
    clients.remote = [this](const EngineRequest &request, const BeforeRequest &mayBeSent) {
        for (int i = 0; i < m_requestsOfACall; ++i) {
            mayBeSent();
            if (onRequest)
                onRequest();
        }
        QStringList call{QString::number(int(request.engine)), request.texts.join(u'+'), request.target, request.key,
                         request.model, request.baseUrl, request.region, request.isTyped ? u"typed"_s : QString()};
        call.removeAll(QString());
        return m_outcome ? m_outcome() : QStringList{call.join(u' ')};
    };
    clients.onDevice = [this](const EngineRequest &request, const auto &) {
        const auto outcome = m_onDeviceOutcome ? m_onDeviceOutcome()
                                               : std::optional(QStringList{u"0 "_s + request.texts.join(u'+') + u' ' +
                                                                           request.target});
        return outcome ? std::optional(OnDeviceTranslations{.texts = *outcome}) : std::nullopt;
    };
    clients.supportsOnDevice = [this] { return m_supportsOnDevice; };
    return clients;
}

void ManagerOnFakes::begin()
{
    m_manager.reset();
    m_texts = std::make_unique<TestTexts>();
    m_secrets = std::make_unique<FakeSecretStorage>();
    m_keychain = std::make_unique<KeychainStore>(*m_secrets, u"keys"_s, DiagnosticLine());
    m_queue = std::make_unique<MainQueue>();
    m_outcome = nullptr;
    m_onDeviceOutcome = nullptr;
    m_supportsOnDevice = true;
    m_requestsOfACall = 1;
    onRequest = nullptr;
    m_copied.clear();
    m_recorded.clear();
    useManagerWith(fakeClients());
    m_texts->settings.overrideForThisProcess(settings::targetLanguageCode, u"ja"_s);
}

void ManagerOnFakes::useManagerWith(const TranslationClients &clients)
{
    m_manager = std::make_unique<TranslationManager>(
        m_texts->settings, *m_keychain, m_texts->manager, *m_queue, clients,
        TranslationManager::Sinks{
            .copy = [this](const QString &text) { m_copied.append(text); },
            .record = [this](const QString &original,
                             const QString &translation) { m_recorded.append(original + u" → "_s + translation); }});
}

void ManagerOnFakes::select(qint64 engine, bool consent, const QString &key)
{
    m_texts->settings.overrideForThisProcess(settings::translationEngine, engine);
    m_texts->settings.overrideForThisProcess(settings::consentKey(engine), consent);
    if (!key.isEmpty() && engine > 0 && engine < 8)
        m_secrets->secrets[engineEntry(TranslationEngine(engine)).account] = key.toUtf8();
}

QString ManagerOnFakes::translateBlocks()
{
    QStringList outcomes;
    m_manager->translateBlocks({{.text = u"a"_s}, {.text = u"b"_s}}, [&](const Result<QStringList> &result) {
        const auto described = [](const Failure &failure) {
            return u"%1 %2 %3"_s.arg(failure.domain).arg(failure.code).arg(failure.description);
        };
        outcomes.append(result ? result->join(u'|') : described(result.error()));
    });
    m_isSynchronous = !outcomes.isEmpty();
    if (!QTest::qWaitFor([&] { return !outcomes.isEmpty(); }))
        return u"nothing came"_s;
    QCoreApplication::processEvents();
    return outcomes.join(u" and again: "_s);
}

QString ManagerOnFakes::translateText(const QString &text)
{
    QStringList outcomes;
    m_manager->translateText(text, [&](const QString &result) { outcomes.append(result); });
    m_isSynchronous = !outcomes.isEmpty();
    if (!QTest::qWaitFor([&] { return !outcomes.isEmpty(); }))
        return u"nothing came"_s;
    QCoreApplication::processEvents();
    return outcomes.join(u" and again: "_s);
}

} // namespace lucentra
