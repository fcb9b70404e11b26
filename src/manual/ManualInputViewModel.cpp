#include "ManualInputViewModel.h"

#include "MainQueue.h"

#include <utility>

namespace lucentra {

ManualInputViewModel::ManualInputViewModel(Scheduler &scheduler, MainQueue &mainQueue,
                                           std::function<void(const QString &)> copy)
    : m_scheduler(scheduler)
    , m_mainQueue(mainQueue)
    , m_copy(std::move(copy))
    , m_self(std::make_shared<ManualInputViewModel *>(this))
{
}

ManualInputViewModel::~ManualInputViewModel() = default;

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
        m_mainQueue.post([weak = std::weak_ptr(m_self), generation = m_requestGeneration] {
            const auto self = weak.lock();
            if (!self)
                return;
            ManualInputViewModel &model = **self;
            model.m_translatedText.clear();
            model.m_note.clear();
            if (generation == model.m_requestGeneration) // otherwise there is a newer request
                model.m_isTranslating = false;
            Q_EMIT model.changed();
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
    onTranslate(text, [&queue = m_mainQueue, weak = std::weak_ptr(m_self), generation,
                       text](const TextTranslation &translation) {
        queue.post([weak, generation, text, translation] {
            if (const auto self = weak.lock())
                (*self)->accept(generation, text, translation);
        });
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
