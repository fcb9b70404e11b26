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

/// Translates texts on this computer: identifies their languages, translates the texts of each language together on a
/// worker of their own, and collects the results in the caller's order.
class AppleTranslationBridge
{
public:
    AppleTranslationBridge(LanguageIdentifier &identifier, OnDeviceTranslationService &service, MainQueue &mainQueue);
    /// Waits for running translations. Completions that aren't posted yet are not called.
    ~AppleTranslationBridge();
    AppleTranslationBridge(const AppleTranslationBridge &) = delete;
    AppleTranslationBridge &operator=(const AppleTranslationBridge &) = delete;

    /// The view that the translations are for. Without it, or once it is destroyed, texts are returned unchanged. On
    /// the desktop that this interface comes from, the system's service needed a view; here it only needs to exist.
    void setParentView(const QObject *view);

    /// Translates each text into a language ("zh-Hant", "en" ...). A text is returned unchanged if its language is
    /// unknown or the target (any Chinese for a Chinese target), or if it can't be translated. Any thread, never
    /// blocks. Completes once, through the main queue. Nothing more is translated once `isWanted`, which is called on
    /// workers, returns false.
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
    QThreadPool m_workers; ///< last member: its destructor waits for running tasks
};

} // namespace lucentra
