#include "HistoryManager.h"

#include "HistoryFile.h"
#include "MainQueue.h"
#include "PrivateFile.h"

#include <QPointer>
#include <QSet>
#include <QStandardPaths>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

qsizetype lengthOf(const HistoryItem &item)
{
    return item.originalText.size() + item.translatedText.size();
}

auto itemWithId(const QUuid &id)
{
    return [&id](const HistoryItem &item) { return item.id == id; };
}

} // namespace

QString HistoryManager::userFilePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/Lucentra/history.json"_s;
}

HistoryManager::HistoryManager(const QString &filePath, MainQueue &mainQueue,
                               std::function<void(const QString &)> diagnostics, QObject *parent)
    : QObject(parent)
    , m_mainQueue(mainQueue)
    , m_diagnostics(std::move(diagnostics))
    , m_writer(filePath, m_diagnostics)
{
    createFolderOf(filePath);
    removeUnfinishedCopies(filePath);
    load(filePath);
}

HistoryManager::~HistoryManager()
{
    blockSignals(true); // listeners may be half gone
    finish();
}

void HistoryManager::load(const QString &filePath)
{
    auto items = readHistoryFile(filePath);
    if (!items) {
        m_writer.preserveUnreadableFile();
        m_wasUnreadable = true;
        if (m_diagnostics)
            m_diagnostics(u"Failed to load history: "_s + items.error().description);
        return;
    }
    if (items->isEmpty())
        return;
    m_loaded = std::move(*items);
    m_mainQueue.post([self = QPointer(this)] {
        if (self)
            self->assignLoaded();
    });
}

void HistoryManager::assignLoaded()
{
    if (!m_loaded)
        return;
    m_history = *std::exchange(m_loaded, std::nullopt);
    Q_EMIT changed();
}

void HistoryManager::add(const QString &originalText, const QString &translatedText)
{
    if (m_isPaused)
        return;
    assignLoaded();
    if (!m_history.isEmpty() && m_history.first().originalText == originalText &&
        m_history.first().translatedText == translatedText)
        return;
    m_waiting.push_back(newHistoryItem(originalText, translatedText));
    m_mainQueue.post([self = QPointer(this)] {
        if (self)
            self->insertNext();
    });
}

void HistoryManager::insertNext()
{
    if (m_waiting.empty())
        return; // finish() was quicker
    m_history.prepend(std::move(m_waiting.front()));
    m_waiting.pop_front();
    trim();
    save();
}

void HistoryManager::toggleStar(const QUuid &id)
{
    assignLoaded();
    const auto item = std::find_if(m_history.begin(), m_history.end(), itemWithId(id));
    if (item == m_history.end())
        return;
    item->isStarred = !item->isStarred;
    save();
}

std::optional<HistoryItem> HistoryManager::deleteItem(const QUuid &id)
{
    assignLoaded();
    const auto item = std::find_if(m_history.cbegin(), m_history.cend(), itemWithId(id));
    if (item == m_history.cend())
        return std::nullopt;
    const HistoryItem removed = m_history.takeAt(item - m_history.cbegin());
    save();
    return removed;
}

QList<HistoryItem> HistoryManager::clearUnstarred()
{
    assignLoaded();
    QList<HistoryItem> starred;
    QList<HistoryItem> removed;
    for (const HistoryItem &item : std::as_const(m_history))
        (item.isStarred ? starred : removed).append(item);
    if (removed.isEmpty())
        return removed;
    m_history = starred;
    save();
    return removed;
}

void HistoryManager::restore(const QList<HistoryItem> &items)
{
    if (items.isEmpty())
        return;
    assignLoaded();
    QSet<QUuid> present;
    for (const HistoryItem &item : std::as_const(m_history))
        present.insert(item.id);
    for (const HistoryItem &item : items) {
        if (!present.contains(item.id))
            m_history.append(item);
    }
    std::stable_sort(m_history.begin(), m_history.end(),
                     [](const HistoryItem &a, const HistoryItem &b) { return a.timestamp > b.timestamp; });
    trim();
    save();
}

/// Drops the oldest unstarred entries above the limits.
void HistoryManager::trim()
{
    qsizetype excess = m_history.size() - maxItems;
    qsizetype excessLength = -maxLength;
    for (const HistoryItem &item : m_history)
        excessLength += lengthOf(item);
    for (qsizetype i = m_history.size() - 1; i >= 0 && (excess > 0 || excessLength > 0); --i) {
        if (m_history[i].isStarred)
            continue;
        excessLength -= lengthOf(m_history[i]);
        m_history.removeAt(i);
        --excess;
    }
}

void HistoryManager::save()
{
    m_writer.write(m_history);
    Q_EMIT changed();
}

void HistoryManager::finish()
{
    assignLoaded();
    while (!m_waiting.empty())
        insertNext();
    m_writer.finish();
}

} // namespace lucentra
