#include "ModelInstallation.h"

#include "Language.h"
#include "LocalizationManager.h"
#include "MainQueue.h"

#include <QElapsedTimer>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// How often progress is posted to the main thread.
constexpr qint64 progressMilliseconds = 100;

/// The sentences for the user in the order of the kinds of `ModelProblem`.
constexpr std::array<QStringView, 14> problemTexts{u"已取消下載。",
                                                   u"另一個下載正在進行。",
                                                   u"模型伺服器的網址必須使用 HTTPS。",
                                                   u"伺服器的模型清單無法使用。",
                                                   u"伺服器沒有這個語言的翻譯模型。",
                                                   {}, // the problem's own text
                                                   u"模型伺服器回應錯誤：HTTP %d。",
                                                   u"下載中斷。已下載的部分會保留，可以稍後繼續。",
                                                   u"下載的檔案大小不符，已捨棄。",
                                                   u"下載的檔案內容不符，已捨棄。",
                                                   u"磁碟空間不足：還需要 %@。",
                                                   u"無法寫入模型資料夾：%@",
                                                   u"沒有安裝這個翻譯模型。",
                                                   u"這個翻譯模型由系統安裝，無法在這裡移除。"};
static_assert(problemTexts.size() == size_t(ModelProblem::Kind::NotOwn) + 1);

const OfferedModel *findOffer(const QList<OfferedModel> &offers, const LanguagePair &pair)
{
    const auto found =
        std::find_if(offers.begin(), offers.end(), [&pair](const OfferedModel &offer) { return offer.pair == pair; });
    return found == offers.end() ? nullptr : &*found;
}

/// The models of the route that are still to be downloaded; nullopt if there is no route. Of a translation by way of
/// English, stored models are good enough whatever their edition.
std::optional<QList<OfferedModel>> missingModels(const LanguagePair &wanted, const QList<OfferedModel> &offers,
                                                 const QList<StoredModel> &stored)
{
    QList<LanguagePair> available;
    for (const OfferedModel &offer : offers)
        available.append(offer.pair);
    for (const StoredModel &model : stored) {
        if (model.isComplete)
            available.append(model.pair);
    }
    const QList<LanguagePair> route = modelRoute(wanted, available);
    if (route.isEmpty())
        return std::nullopt;
    QList<OfferedModel> missing;
    for (const LanguagePair &pair : route) {
        const OfferedModel *offer = findOffer(offers, pair);
        const bool isThere = std::any_of(stored.begin(), stored.end(), [&](const StoredModel &model) {
            return model.pair == pair && model.isComplete &&
                   (route.size() > 1 || !offer || model.edition == offer->edition());
        });
        if (offer && !isThere)
            missing.append(*offer);
    }
    return missing;
}

} // namespace

ModelResult<QList<LanguagePair>> installModels(TranslationModels &models, const LanguagePair &wanted,
                                               const std::function<void(const ModelProgress &)> &progress,
                                               const std::function<bool()> &isWanted)
{
    const auto offers = models.offered(isWanted);
    if (!offers)
        return tl::unexpected(offers.error());
    const auto missing = missingModels(wanted, *offers, models.stored());
    if (!missing)
        return tl::unexpected(ModelProblem{.kind = ModelProblem::Kind::NotOffered});
    ModelProgress state;
    for (const OfferedModel &model : *missing) {
        state.models.append(model.pair);
        state.total += model.packedSize();
    }
    qint64 before = 0;
    for (const OfferedModel &model : *missing) {
        const auto report = [&](qint64 bytes) {
            state.bytes = before + bytes;
            progress(state);
        };
        report(0);
        if (const auto installed = models.install(model, report, isWanted); !installed)
            return tl::unexpected(installed.error());
        before += model.packedSize();
    }
    return state.models;
}

QString modelProblemText(const ModelProblem &problem, const LocalizationManager &texts)
{
    using Kind = ModelProblem::Kind;
    if (problem.kind == Kind::Network)
        return problem.text;
    const QString detail = problem.kind == Kind::Refused    ? QString::number(problem.number)
                           : problem.kind == Kind::DiskFull ? megabyteText(problem.number)
                                                            : problem.text;
    return texts.formatted(problemTexts[size_t(problem.kind)].toString(), detail);
}

QString modelTitle(const LanguagePair &pair)
{
    return ownLanguageName(pair.source) + u" → "_s + ownLanguageName(pair.target);
}

QString installedModelsText(TranslationModels &models, const LocalizationManager &texts)
{
    QStringList titles;
    for (const StoredModel &model : models.stored()) {
        if (model.isComplete)
            titles.append(modelTitle(model.pair));
    }
    return texts.formatted(u"已安裝的翻譯模型：%@"_s,
                           titles.isEmpty() ? texts.localized(u"沒有"_s) : titles.join(u", "_s));
}

QString megabyteText(qint64 bytes)
{
    constexpr qint64 megabyte = 1'000'000;
    return QString::number(std::max<qint64>((bytes + megabyte / 2) / megabyte, 1)) + u" MB"_s;
}

ModelInstallation::ModelInstallation(TranslationModels &models, MainQueue &mainQueue)
    : m_models(models)
    , m_mainQueue(mainQueue)
{
    m_worker.setMaxThreadCount(1);
}

ModelInstallation::~ModelInstallation()
{
    m_isWanted = false;
}

void ModelInstallation::start(const LanguagePair &wanted)
{
    if (m_isRunning)
        return;
    m_isRunning = true;
    m_isWanted = true;
    m_progress = {};
    m_problem.reset();
    m_worker.start([this, wanted, alive = QPointer<QObject>(&m_alive)] {
        QElapsedTimer sinceReport;
        const auto report = [&](const ModelProgress &progress) {
            if (sinceReport.isValid() && sinceReport.elapsed() < progressMilliseconds)
                return;
            sinceReport.start();
            m_mainQueue.post(alive, [this, progress] {
                m_progress = progress;
                onChanged();
            });
        };
        const auto installed = installModels(m_models, wanted, report, [this] { return bool(m_isWanted); });
        m_mainQueue.post(alive, [this, installed] { finish(installed); });
    });
    onChanged();
}

void ModelInstallation::cancel()
{
    m_isWanted = false;
}

void ModelInstallation::finish(const ModelResult<QList<LanguagePair>> &installed)
{
    m_isRunning = false;
    if (!installed && installed.error().kind != ModelProblem::Kind::Cancelled)
        m_problem = installed.error();
    onChanged();
}

} // namespace lucentra
