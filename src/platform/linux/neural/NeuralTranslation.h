#pragma once

#include "FileStamp.h"
#include "InstalledModels.h"
#include "NeuralModel.h"
#include "OnDeviceTranslationService.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace lucentra {

/// Translates free text by the installed translation models: directly, or by way of English. Models are loaded with the
/// first text of their pair and released after a rest.
class NeuralTranslation : public OnDeviceTranslationService
{
public:
    explicit NeuralTranslation(InstalledModels models, std::chrono::milliseconds rest = std::chrono::minutes(5));
    ~NeuralTranslation() override;

    void cancel() override;
    QList<OnDeviceOutcome> translate(const LanguagePair &pair, const QStringList &texts,
                                     const std::function<bool()> &isWanted) override;
    QList<OnDeviceAddition> additions(const LanguagePair &pair) override;
    QList<OnDeviceServiceStatus> status() override;
    /// How many models are in memory.
    qsizetype loadedCount() const;

private:
    struct Step
    {
        std::shared_ptr<const NeuralModel> model;
        bool fromSimplified = false; ///< the text is Traditional Chinese, the model's source Simplified
        bool toTraditional = false;  ///< the model's target is Simplified Chinese, Traditional is wanted
    };
    /// A model in memory, or one that can't be used.
    struct Loaded
    {
        QString folder;
        QList<FileStamp> stamps;
        std::shared_ptr<const NeuralModel> model;
        std::chrono::steady_clock::time_point lastUse;
    };
    std::optional<std::vector<Step>> route(const LanguagePair &pair);
    std::shared_ptr<const NeuralModel> load(const QString &folder);
    void dropRemoved(const QList<InstalledModel> &installed);
    void releaseAfterRest(const std::stop_token &stop);
    /// One translation per sentence; nullopt if there is none.
    QList<std::optional<QString>> translateSentences(const std::vector<Step> &steps, QStringList sentences,
                                                     const std::function<bool()> &isWanted) const;

    const InstalledModels m_models;
    const std::chrono::milliseconds m_rest;
    std::atomic<bool> m_isCancelled = false;
    mutable std::mutex m_mutex; ///< guards what follows; held while a model is loaded
    std::vector<Loaded> m_loaded;
    std::condition_variable_any m_restChanged;
    std::jthread m_release; ///< last, so that it ends first
};

} // namespace lucentra
