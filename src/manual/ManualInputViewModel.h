#pragma once

#include "Scheduler.h"
#include "Translations.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

namespace lucentra {

class MainQueue;

/// The typed text, its translation, and the decision when to translate.
///
/// White space and line breaks around a text are ignored. An empty text isn't translated. A translation is shown only
/// if it belongs to the latest request and the text hasn't changed since; the results of earlier requests are dropped.
class ManualInputViewModel : public QObject
{
    Q_OBJECT

public:
    /// How long the text must be unchanged before it is translated automatically.
    static constexpr std::chrono::milliseconds typingPause{600};
    /// How long the copy feedback is shown.
    static constexpr std::chrono::milliseconds copyFeedback{1500};

    using Completion = std::function<void(const TextTranslation &)>;

    /// `copy` puts a text on the pasteboard.
    ManualInputViewModel(Scheduler &scheduler, MainQueue &mainQueue, std::function<void(const QString &)> copy);

    /// Translates a text. May complete on any thread, even before it returns.
    std::function<void(const QString &, Completion)> onTranslate;

    const QString &inputText() const { return m_inputText; }           ///< as typed
    const QString &translatedText() const { return m_translatedText; } ///< or the reason why there is none
    const QString &note() const { return m_note; }                     ///< a remark on the translation; usually empty
    bool isTranslating() const { return m_isTranslating; }
    bool isCopied() const { return m_isCopied; }

    /// Sets the text, which is translated after it was unchanged for a while. Does nothing if it is the same.
    void setInputText(const QString &text);
    /// Translates at once.
    void translateNow();
    /// Copies the translation, if there is one, and shows the feedback for a while.
    void copyResult();
    /// Cancels and forgets everything.
    void reset();

Q_SIGNALS:
    void changed(); ///< one of the values above has changed

private:
    void accept(qint64 generation, const QString &sent, const TextTranslation &translation);

    Scheduler &m_scheduler;
    MainQueue &m_mainQueue;
    const std::function<void(const QString &)> m_copy;
    QString m_inputText;
    QString m_translatedText;
    QString m_note;
    bool m_isTranslating = false;
    bool m_isCopied = false;
    std::unique_ptr<ScheduledTask> m_translationTask;
    std::unique_ptr<ScheduledTask> m_copiedResetTask;
    qint64 m_requestGeneration = 0; ///< incremented per request, and when the current one is cancelled
};

} // namespace lucentra
