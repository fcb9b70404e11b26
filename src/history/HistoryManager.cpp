#include "HistoryManager.h"

#include "FileLock.h"
#include "HistoryFile.h"
#include "HistoryMerge.h"
#include "MainQueue.h"
#include "PrivateFile.h"

#include <QPointer>
#include <QSet>
#include <QStandardPaths>

#include <algorithm>
#include <chrono>
#include <utility>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

auto itemWithId(const QUuid &id)
{
    return [&id](const HistoryItem &item) { return item.id == id; };
}

} // namespace

QString HistoryManager::userFilePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/Lucentra/history.json"_s;
}

HistoryManager::HistoryManager(const QString &filePath, MainQueue &mainQueue, DiagnosticLine diagnostics)
    : m_mainQueue(mainQueue)
    , m_diagnostics(std::move(diagnostics))
    , m_writer(filePath, m_diagnostics,
               [this, self = QPointer<QObject>(this)] { m_mainQueue.post(self, [this] { adoptMerged(); }); })
{
    createFolderOf(filePath);
    if (const FileLock lock(filePath, 0ms); lock.isHeld())
        removeUnfinishedCopies(filePath);
    load(filePath);
}

HistoryManager::~HistoryManager()
{
    blockSignals(true); // listeners may be partly destroyed
    finish();
}

void HistoryManager::load(const QString &filePath)
{
    auto content = readHistoryFile(filePath);
    if (!content)
        m_diagnostics(u"Failed to load history: "_s + content.error().description);
    if (content && !content->isWhole)
        m_diagnostics(u"The history file is too large: its first %1 entries are read"_s.arg(content->items.size()));
    m_wasUnreadable = !content;
    if (!content || content->items.isEmpty())
        return;
    m_loaded = std::move(content->items);
    m_mainQueue.post(this, [this] { assignLoaded(); });
}

void HistoryManager::assignLoaded()
{
    if (!m_loaded)
        return;
    m_history = *std::exchange(m_loaded, std::nullopt);
    Q_EMIT changed();
}

/// Cuts a text to the maximum length.
QString HistoryManager::kept(const QString &text) const
{
    if (text.size() <= maxTextLength)
        return text;
    m_diagnostics(u"A text of %1 characters is too long for the history and was cut"_s.arg(text.size()));
    const qsizetype length = maxTextLength - 1;
    return text.first(text[length - 1].isHighSurrogate() ? length - 1 : length) + u'…';
}

void HistoryManager::add(const QString &originalText, const QString &translatedText)
{
    if (m_isPaused)
        return;
    assignLoaded();
    HistoryItem item = newHistoryItem(kept(originalText), kept(translatedText));
    if (!m_history.isEmpty() && m_history.first().originalText == item.originalText &&
        m_history.first().translatedText == item.translatedText)
        return;
    m_waiting.push_back(std::move(item));
    m_mainQueue.post(this, [this] { insertNext(); });
}

void HistoryManager::insertNext()
{
    if (m_waiting.empty())
        return; // finish() has inserted it
    m_history.prepend(std::move(m_waiting.front()));
    m_waiting.pop_front();
    trimAndSave({{m_history.first().id, HistoryChange::Added}});
}

void HistoryManager::toggleStar(const QUuid &id)
{
    assignLoaded();
    const auto item = std::find_if(m_history.begin(), m_history.end(), itemWithId(id));
    if (item == m_history.end())
        return;
    item->isStarred = !item->isStarred;
    save({{id, HistoryChange::Altered}});
}

std::optional<HistoryItem> HistoryManager::deleteItem(const QUuid &id)
{
    assignLoaded();
    const auto item = std::find_if(m_history.cbegin(), m_history.cend(), itemWithId(id));
    if (item == m_history.cend())
        return std::nullopt;
    const HistoryItem removed = m_history.takeAt(item - m_history.cbegin());
    save({{removed.id, HistoryChange::Altered}});
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
    HistoryChanges changes;
    for (const HistoryItem &item : std::as_const(removed))
        changes.insert(item.id, HistoryChange::Altered);
    save(changes);
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
    HistoryChanges changes;
    for (const HistoryItem &item : items) {
        if (present.contains(item.id))
            continue;
        m_history.append(item);
        changes.insert(item.id, HistoryChange::Added);
    }
    std::stable_sort(m_history.begin(), m_history.end(),
                     [](const HistoryItem &a, const HistoryItem &b) { return a.timestamp > b.timestamp; });
    trimAndSave(changes);
}

void HistoryManager::trimAndSave(HistoryChanges changes)
{
    const QList<QUuid> dropped = trimHistory(m_history);
    if (!dropped.isEmpty() && m_history.size() < maxItems)
        m_diagnostics(u"The history would be too large: its %1 longest entries were dropped"_s.arg(dropped.size()));
    for (const QUuid &id : dropped)
        changes.insert(id, HistoryChange::Altered);
    save(changes);
}

void HistoryManager::save(const HistoryChanges &changes)
{
    m_writer.write(m_history, changes);
    Q_EMIT changed();
}

void HistoryManager::adoptMerged()
{
    const auto merged = m_writer.takeMerged();
    if (!merged)
        return;
    m_history = mergedHistory(m_history, merged->changes, merged->items);
    Q_EMIT changed();
}

void HistoryManager::finish(bool isUrgent)
{
    assignLoaded();
    if (m_waiting.empty() && m_writer.hasUnwritten()) // there may be room on the disk now, and the lock may be free
        m_writer.write(m_history, {});
    while (!m_waiting.empty())
        insertNext();
    m_writer.finish(isUrgent);
}

} // namespace lucentra
