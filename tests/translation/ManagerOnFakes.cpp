#include "ManagerOnFakes.h"

#include "Settings.h"

#include <QTest>

namespace lucentra {

using namespace Qt::StringLiterals;

namespace {

QString joined(const TranslationClients::Blocks &blocks)
{
    QStringList texts;
    for (const TextBlock &block : blocks)
        texts.append(block.text);
    return texts.join(u'+');
}

QString described(const LanguageModelProvider &provider)
{
    if (const auto *const openAI = std::get_if<OpenAIProvider>(&provider))
        return u"openAI(%1,%2)"_s.arg(openAI->apiKey, openAI->model);
    if (const auto *const anthropic = std::get_if<AnthropicProvider>(&provider))
        return u"anthropic(%1,%2)"_s.arg(anthropic->apiKey, anthropic->model);
    const auto &compatible = std::get<CompatibleProvider>(provider);
    return u"compatible(%1,%2,%3)"_s.arg(compatible.apiKey, compatible.model, compatible.baseUrl);
}

} // namespace

TranslationClients ManagerOnFakes::fakeClients()
{
    const auto answer = [this](const BeforeRequest &mayBeSent, const QStringList &call) {
        for (int i = 0; i < m_requestsOfACall; ++i) {
            mayBeSent();
            if (onRequest)
                onRequest();
        }
        return m_outcome ? m_outcome() : QStringList{call.join(u' ')};
    };
    TranslationClients clients;
    clients.googleFree = [=](auto &mayBeSent, auto &blocks, auto &target) {
        return answer(mayBeSent, {u"googleFree"_s, joined(blocks), target});
    };
    clients.googleCloud = [=](auto &mayBeSent, auto &blocks, auto &target, auto &key) {
        return answer(mayBeSent, {u"googleCloud"_s, joined(blocks), target, key});
    };
    clients.microsoft = [=](auto &mayBeSent, auto &blocks, auto &key, auto &region, auto &target) {
        return answer(mayBeSent, {u"microsoft"_s, joined(blocks), target, key, region});
    };
    clients.deepL = [=](auto &mayBeSent, auto &blocks, auto &key, auto &target) {
        return answer(mayBeSent, {u"deepL"_s, joined(blocks), target, key});
    };
    clients.geminiBlocks = [=](auto &mayBeSent, auto &key, auto &blocks, auto &target) {
        return answer(mayBeSent, {u"geminiBlocks"_s, joined(blocks), target, key});
    };
    clients.geminiText = [=](auto &mayBeSent, auto &key, auto &text, auto &target) {
        return TextTranslation{.text = answer(mayBeSent, {u"geminiText"_s, text, target, key}).value(0)};
    };
    clients.modelBlocks = [=](auto &mayBeSent, auto &blocks, auto &target, auto &provider) {
        return answer(mayBeSent, {u"modelBlocks"_s, joined(blocks), target, described(provider)});
    };
    clients.modelText = [=](auto &mayBeSent, auto &text, auto &target, auto &provider) {
        return answer(mayBeSent, {u"modelText"_s, text, target, described(provider)}).value(0);
    };
    clients.onDevice = [this](const QStringList &texts, const QString &target, const auto &completion, const auto &) {
        const auto outcome = m_onDeviceOutcome
                                 ? m_onDeviceOutcome()
                                 : std::optional(QStringList{u"onDevice "_s + texts.join(u'+') + u' ' + target});
        completion(outcome ? std::optional(OnDeviceTranslations{.texts = *outcome}) : std::nullopt);
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
