#include "ManualInputViewModel.h"

#include "MainQueue.h"

#include <QPointer>

#include <utility>

namespace lucentra {

ManualInputViewModel::ManualInputViewModel(Scheduler &scheduler, MainQueue &mainQueue,
                                           std::function<void(const QString &)> copy)
    : m_scheduler(scheduler)
    , m_mainQueue(mainQueue)
    , m_copy(std::move(copy))
{
}

void ManualInputViewModel::setInputText(const QString &text)
{
    if (text == m_inputText)
        return;
    m_inputText = text;
    m_translationTask.reset();
    if (!text.trimmed().isEmpty()) {
        m_translationTask = m_scheduler.after(typingPause, [this] { translateNow(); });
    } else {
        ++m_requestGeneration;
        m_mainQueue.post(this, [this, generation = m_requestGeneration] {
            m_translatedText.clear();
            m_note.clear();
            if (generation == m_requestGeneration) // otherwise there is a newer request
                m_isTranslating = false;
            Q_EMIT changed();
        });
    }
    Q_EMIT changed();
}

void ManualInputViewModel::translateNow()
{
    const QString text = m_inputText.trimmed();
    if (text.isEmpty())
        return;
    m_translationTask.reset(); // this request replaces the one after the pause
    const qint64 generation = ++m_requestGeneration;
    m_isTranslating = true;
    Q_EMIT changed();
    if (!onTranslate)
        return;
    onTranslate(text, [this, &queue = m_mainQueue, self = QPointer<QObject>(this), generation,
                       text](const TextTranslation &translation) {
        queue.post(self, [this, generation, text, translation] { accept(generation, text, translation); });
    });
}

void ManualInputViewModel::accept(qint64 generation, const QString &sent, const TextTranslation &translation)
{
    if (generation != m_requestGeneration || m_inputText.trimmed() != sent)
        return;
    m_translatedText = translation.text;
    m_note = translation.note;
    m_isTranslating = false;
    Q_EMIT changed();
}

void ManualInputViewModel::copyResult()
{
    if (m_translatedText.isEmpty())
        return;
    m_copy(m_translatedText);
    m_isCopied = true;
    m_copiedResetTask = m_scheduler.after(copyFeedback, [this] {
        m_isCopied = false;
        Q_EMIT changed();
    });
    Q_EMIT changed();
}

void ManualInputViewModel::reset()
{
    m_translationTask.reset();
    m_copiedResetTask.reset();
    ++m_requestGeneration;
    m_inputText.clear();
    m_translatedText.clear();
    m_note.clear();
    m_isTranslating = false;
    m_isCopied = false;
    Q_EMIT changed();
}

} // namespace lucentra
