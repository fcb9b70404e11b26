#pragma once

#include "Callback.h"
#include "HistoryItem.h"
#include "HistoryWriter.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QUuid>

#include <deque>
#include <optional>
#include <utility>

namespace lucentra {

class MainQueue;

/// The list of finished translations, newest first, and its file.
///
/// Other processes may change the same file: none of their entries is lost, and none that they deleted comes back.
/// Their changes are merged into the list with the next change here.
///
/// The file is written after every change on a separate thread; `finish` and the destructor wait for pending writes. A
/// failed write is logged and repeated with the next change.
class HistoryManager : public QObject
{
    Q_OBJECT

public:
    /// The maximum number of entries and of bytes in the file. Starred entries are never dropped, so more of them are
    /// possible.
    static constexpr int maxItems = 1000;
    static constexpr qint64 maxBytes = qint64(64) * 1024 * 1024;
    /// The maximum length of a text in UTF-16 units. Longer texts are cut.
    static constexpr qsizetype maxTextLength = qsizetype(64) * 1024;

    /// The user's file: "Lucentra/history.json" in $XDG_DATA_HOME.
    static QString userFilePath();

    /// Creates the file's folder if it is missing, removes temporary files of killed processes, and reads the file. Its
    /// list is assigned through the main queue. If the file can't be read, the history is empty and a line is logged;
    /// if it is too large, its first entries are read. In both cases the file is renamed before a new one is written.
    /// `diagnostics` may also be called on the writer's thread.
    HistoryManager(const QString &filePath, MainQueue &mainQueue, DiagnosticLine diagnostics);
    ~HistoryManager() override;

    const QList<HistoryItem> &history() const { return m_history; }

    // An operation before the main queue has assigned the file's list assigns it first. So an early translation is
    // compared with the newest entry of the file, and no change is overwritten by the assignment.

    /// Records a translation through the main queue, after the caller's work. Does nothing if the newest entry, not
    /// counting those that wait in the queue, has the same two texts. A text that is too long is cut and logged.
    void add(const QString &originalText, const QString &translatedText);
    void toggleStar(const QUuid &id);
    /// Removes an entry and returns it, or nullopt if none has the id.
    std::optional<HistoryItem> deleteItem(const QUuid &id);
    /// Removes the entries without a star and returns them, newest first.
    QList<HistoryItem> clearUnstarred();
    /// Puts deleted entries back in the order of their times. Entries that exist are left out.
    void restore(const QList<HistoryItem> &items);

    /// While paused, `add` records nothing. Not stored.
    void setPaused(bool isPaused) { m_isPaused = isPaused; }
    bool isPaused() const { return m_isPaused; }

    /// Whether the file could not be read; true only at the first call, for the caller that shows a notice.
    bool takeUnreadableNotice() { return std::exchange(m_wasUnreadable, false); }

    /// Records pending entries and blocks until the file is written. `isUrgent`: as in `HistoryWriter`.
    void finish(bool isUrgent = false);

Q_SIGNALS:
    /// The list has changed.
    void changed();

private:
    void load(const QString &filePath);
    void assignLoaded();
    void insertNext();
    void trimAndSave(HistoryChanges changes);
    void save(const HistoryChanges &changes);
    void adoptMerged();
    QString kept(const QString &text) const;

    MainQueue &m_mainQueue;
    const DiagnosticLine m_diagnostics;
    QList<HistoryItem> m_history;
    std::optional<QList<HistoryItem>> m_loaded; ///< read but not yet assigned
    std::deque<HistoryItem> m_waiting;          ///< added but not yet in the list
    bool m_isPaused = false;
    bool m_wasUnreadable = false;
    HistoryWriter m_writer;
};

} // namespace lucentra
