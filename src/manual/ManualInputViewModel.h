#pragma once

#include "Scheduler.h"
#include "Translations.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

namespace lucentra {

class MainQueue;

/// The typed text, its translation, and when one is asked for the other. Main thread only.
///
/// Texts count without the white space and line breaks around them: that is what is translated, and nothing is where
/// nothing is left. A translation is shown only if it is the latest request's and the text is still the one that was
/// sent; requests that were overtaken run on and are dropped.
class ManualInputViewModel : public QObject
{
    Q_OBJECT

public:
    /// How long the text must rest before it is translated by itself.
    static constexpr std::chrono::milliseconds typingPause{600};
    /// How long a copy is told of.
    static constexpr std::chrono::milliseconds copyFeedback{1500};

    using Completion = std::function<void(const TextTranslation &)>;

    /// The clock and the queue must outlive the model; `copy` puts a text on the pasteboard.
    ManualInputViewModel(Scheduler &scheduler, MainQueue &mainQueue, std::function<void(const QString &)> copy);
    ~ManualInputViewModel() override;

    /// May complete on any thread, also at once. Left out where it isn't set.
    std::function<void(const QString &, Completion)> onTranslate;

    const QString &inputText() const { return m_inputText; }           ///< as typed
    const QString &translatedText() const { return m_translatedText; } ///< or the sentence that says why there is none
    const QString &note() const { return m_note; } ///< what is to be said about that translation; empty in general
    bool isTranslating() const { return m_isTranslating; }
    bool isCopied() const { return m_isCopied; }

    /// Another text: it will be translated when it has rested for a while. The same one again does nothing.
    void setInputText(const QString &text);
    /// Translates at once.
    void translateNow();
    /// Copies the translation where there is one, and tells of it for a while.
    void copyResult();
    /// Cancels and forgets everything.
    void reset();

Q_SIGNALS:
    void changed(); ///< one of the values above has

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
    qint64 m_requestGeneration = 0; ///< raised with every request, and when what is under way is unwanted
    std::shared_ptr<ManualInputViewModel *> m_self; ///< held weakly by what waits; looked at on the main thread only
};

} // namespace lucentra
