#pragma once

#include "OnDeviceTranslations.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QThreadPool>

#include <atomic>
#include <functional>
#include <memory>

namespace lucentra {

class LanguageIdentifier;
class MainQueue;

/// Hands texts to the translation on this machine: tells their languages, translates those of one language together,
/// each language on a worker of its own, and gathers what comes back in the caller's order.
class AppleTranslationBridge
{
public:
    /// What is given must outlive it.
    AppleTranslationBridge(LanguageIdentifier &identifier, OnDeviceTranslationService &service, MainQueue &mainQueue);
    /// Waits for what is being translated; nothing more is completed then than is posted already.
    ~AppleTranslationBridge();
    AppleTranslationBridge(const AppleTranslationBridge &) = delete;
    AppleTranslationBridge &operator=(const AppleTranslationBridge &) = delete;

    /// Translations are for somebody who looks at them: without a parent, or once it is gone, texts come back as they
    /// are. Main thread.
    void setParentView(const QObject *view);

    /// Translates each text into a language ("zh-Hant", "en" ...). A text comes back as it is where its language can't
    /// be told or is the target's (any Chinese for a Chinese target), or where it can't be translated. Any thread,
    /// never blocks. Completes once, through the main queue.
    /// Once `isWanted`, if given, returns false, nothing more is translated; it is called on workers.
    void translate(const QStringList &texts, const QString &targetLanguage,
                   std::function<void(OnDeviceTranslations)> completion, std::function<bool()> isWanted = {});

private:
    struct Call;
    struct Group;

    void identifyAndGroup(const std::shared_ptr<Call> &call);
    void translateGroup(Call &call, const Group &group);
    void complete(const std::shared_ptr<Call> &call);

    LanguageIdentifier &m_identifier;
    OnDeviceTranslationService &m_service;
    MainQueue &m_mainQueue;
    QMetaObject::Connection m_parentGone;
    std::atomic<bool> m_hasParent = false;
    QThreadPool m_workers; ///< last: its destruction waits for what still runs
};

} // namespace lucentra
