#include "AppleTranslationBridge.h"

#include "LanguageIdentifier.h"
#include "MainQueue.h"

#include <map>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// A call takes a worker for each of its languages; a superseded pass may still hold some.
constexpr int mostWorkers = 16;

struct TranslationJob
{
    qsizetype index; ///< in the caller's list
    QString text;
};

/// Whether a text of one language needs no translation into the other: neither between kinds of Chinese nor between
/// regions of one language.
bool isSameLanguage(const QString &code, const QString &target)
{
    return code.section(u'-', 0, 0) == target.section(u'-', 0, 0);
}

} // namespace

/// The jobs of one source language, in the order of the texts.
struct AppleTranslationBridge::Group
{
    LanguagePair pair;
    std::vector<TranslationJob> jobs;
};

struct AppleTranslationBridge::Call
{
    QStringList texts;
    QString target;
    std::function<void(OnDeviceTranslations)> completion;
    std::function<bool()> isWanted;
    std::mutex mutex;
    OnDeviceTranslations result; // this and what follows is guarded by the mutex
    size_t unfinished = 0;       ///< groups
};

AppleTranslationBridge::AppleTranslationBridge(LanguageIdentifier &identifier, OnDeviceTranslationService &service,
                                               MainQueue &mainQueue)
    : m_identifier(identifier)
    , m_service(service)
    , m_mainQueue(mainQueue)
{
    m_workers.setMaxThreadCount(mostWorkers);
}

AppleTranslationBridge::~AppleTranslationBridge()
{
    QObject::disconnect(m_parentGone);
}

void AppleTranslationBridge::setParentView(const QObject *view)
{
    QObject::disconnect(m_parentGone);
    m_hasParent = view != nullptr;
    if (view)
        m_parentGone = QObject::connect(view, &QObject::destroyed, [this] { m_hasParent = false; });
}

void AppleTranslationBridge::translate(const QStringList &texts, const QString &targetLanguage,
                                       std::function<void(OnDeviceTranslations)> completion,
                                       std::function<bool()> isWanted)
{
    const auto call = std::make_shared<Call>();
    call->texts = texts;
    call->target = targetLanguage;
    call->completion = std::move(completion);
    call->isWanted = std::move(isWanted);
    call->result.texts = texts;
    if (!m_hasParent || texts.isEmpty())
        complete(call);
    else
        m_workers.start([this, call] { identifyAndGroup(call); });
}

void AppleTranslationBridge::identifyAndGroup(const std::shared_ptr<Call> &call)
{
    using Kind = OnDeviceOutcome::Kind;
    if (call->isWanted && !call->isWanted()) {
        call->result.isCancelled = true;
        return complete(call);
    }
    const QStringList languages = m_identifier.identify(call->texts);
    std::map<QString, Group> groups;
    for (qsizetype i = 0; i < call->texts.size(); ++i) {
        const QString language = languages.value(i);
        const bool isUndetermined = language.isEmpty() || language == u"und" || language == u"unknown";
        const bool isSame = isSameLanguage(language, call->target);
        call->result.outcomes.append({.kind = isSame ? Kind::SameLanguage : Kind::Undetermined});
        if (isUndetermined || isSame)
            continue;
        Group &group = groups[language];
        group.pair = {.source = language, .target = call->target};
        group.jobs.push_back({.index = i, .text = call->texts[i]});
    }
    if (groups.empty())
        return complete(call);
    call->unfinished = groups.size();
    for (const auto &[language, group] : groups) {
        m_workers.start([this, call, group = group] {
            translateGroup(*call, group);
            bool isLast = false;
            {
                const std::lock_guard lock(call->mutex);
                isLast = --call->unfinished == 0;
            }
            if (isLast)
                complete(call);
        });
    }
}

void AppleTranslationBridge::translateGroup(Call &call, const Group &group)
{
    QStringList texts;
    for (const TranslationJob &job : group.jobs)
        texts.append(job.text);
    const QList<OnDeviceOutcome> outcomes = m_service.translate(group.pair, texts, call.isWanted);
    const bool isWanted = !call.isWanted || call.isWanted();
    const std::lock_guard lock(call.mutex);
    for (size_t i = 0; i < group.jobs.size(); ++i) {
        const OnDeviceOutcome outcome = outcomes.value(qsizetype(i));
        call.result.outcomes[group.jobs[i].index] = outcome;
        if (outcome.kind == OnDeviceOutcome::Kind::Translated)
            call.result.texts[group.jobs[i].index] = outcome.text;
        else if (!isWanted)
            call.result.isCancelled = true;
    }
}

void AppleTranslationBridge::complete(const std::shared_ptr<Call> &call)
{
    if (!call->result.outcomes.isEmpty() && call->result.texts == call->texts) {
        for (const OnDeviceServiceStatus &status : m_service.status()) {
            call->result.addableBy += status.addableBy;
            call->result.isStripped = call->result.isStripped || status.isStripped;
        }
    }
    m_mainQueue.post([call] { call->completion(call->result); });
}

} // namespace lucentra
