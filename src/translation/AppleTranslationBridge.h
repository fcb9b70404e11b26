#pragma once

#include "OnDeviceTranslations.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>

namespace lucentra {

class LanguageIdentifier;

/// Translates texts on this computer: identifies their languages, translates the texts of each language together, and
/// collects the results in the caller's order.
class AppleTranslationBridge
{
public:
    AppleTranslationBridge(LanguageIdentifier &identifier, OnDeviceTranslationService &service);
    ~AppleTranslationBridge();

    /// The view that the translations are for. Without it, or once it is destroyed, texts are returned unchanged. On
    /// the desktop that this interface comes from, the system's service needed a view; here it only needs to exist.
    void setParentView(const QObject *view);

    /// Translates each text into a language ("zh-Hant", "en" ...). A text is returned unchanged if its language is
    /// unknown or the target (any Chinese for a Chinese target), or if it can't be translated. Blocks; any thread, but
    /// not the main one. Ends early once `isWanted`, which is called on several threads and may be unset, returns
    /// false.
    OnDeviceTranslations translate(const QStringList &texts, const QString &targetLanguage,
                                   const std::function<bool()> &isWanted = {}) const;

    /// Whether a text is a phrase of programs whose translation is known. Any thread; doesn't wait.
    bool isPhrase(const QString &text, const QString &targetLanguage) const;

private:
    LanguageIdentifier &m_identifier;
    OnDeviceTranslationService &m_service;
    QMetaObject::Connection m_parentGone;
    std::atomic<bool> m_hasParent = false;
};

} // namespace lucentra
