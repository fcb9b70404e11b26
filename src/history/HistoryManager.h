#pragma once

#include "HistoryItem.h"
#include "HistoryWriter.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QUuid>

#include <deque>
#include <functional>
#include <optional>
#include <utility>

namespace lucentra {

class MainQueue;

/// The list of finished translations, newest first, and its file. Main thread only.
///
/// Other processes may change the same file: no entry of theirs is lost, and none that they deleted comes back. Their
/// changes reach the list with its next own change.
///
/// The file is written after every change, on a thread of its own; there is nothing to save at the end but what is
/// still waiting, which `finish` and the destructor complete. A failed write is one diagnostic line and is made good
/// by the next change.
class HistoryManager : public QObject
{
    Q_OBJECT

public:
    /// Most entries and most bytes of the file, unless that many are starred: starred entries are never dropped. The
    /// file stays small enough to be read again.
    static constexpr int maxItems = 1000;
    static constexpr qint64 maxBytes = qint64(64) * 1024 * 1024;
    /// Most UTF-16 units of a text. The rest of a longer one is not recorded.
    static constexpr qsizetype maxTextLength = qsizetype(64) * 1024;

    /// The user's file: "Lucentra/history.json" where the desktop keeps the data of programs.
    static QString userFilePath();

    /// Creates the file's folder where it is missing, removes what a killed process left unfinished, and reads the
    /// file. Its list is assigned through the main queue, as it stands. A file that can't be read leaves the history
    /// empty, with one diagnostic line; of one that is too large the first entries are read. Either is kept beside the
    /// new one when that is first written. `diagnostics` may be called on the writer's thread, too.
    HistoryManager(const QString &filePath, MainQueue &mainQueue, std::function<void(const QString &)> diagnostics,
                   QObject *parent = nullptr);
    ~HistoryManager() override;

    const QList<HistoryItem> &history() const { return m_history; }

    // An operation before the main queue has assigned the file's list assigns it first: a translation that finishes
    // early is compared with the newest entry of the file and goes on top of it, and no change is ever overwritten by
    // the list's late arrival.

    /// Records a translation, through the main queue, so that the caller's work comes first. Does nothing where the
    /// newest entry has the same two texts; entries that still wait for the queue don't count. A text that is too long
    /// is cut, with a diagnostic line.
    void add(const QString &originalText, const QString &translatedText);
    void toggleStar(const QUuid &id);
    /// The removed entry, or nothing where none has the id.
    std::optional<HistoryItem> deleteItem(const QUuid &id);
    /// Removes the entries without a star and returns them, newest first.
    QList<HistoryItem> clearUnstarred();
    /// Puts deleted entries back at the places that their times tell; those that are there already are left out.
    void restore(const QList<HistoryItem> &items);

    /// While paused, `add` records nothing. It ends with the program.
    void setPaused(bool isPaused) { m_isPaused = isPaused; }
    bool isPaused() const { return m_isPaused; }

    /// True once, for whoever tells the user, where the file could not be read.
    bool takeUnreadableNotice() { return std::exchange(m_wasUnreadable, false); }

    /// Records what was added, and blocks until the file is written.
    void finish();

Q_SIGNALS:
    /// The list is another one now.
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
    const std::function<void(const QString &)> m_diagnostics;
    QList<HistoryItem> m_history;
    std::optional<QList<HistoryItem>> m_loaded; ///< read, but not yet assigned
    std::deque<HistoryItem> m_waiting;          ///< added, but not yet in the list
    bool m_isPaused = false;
    bool m_wasUnreadable = false;
    HistoryWriter m_writer;
};

} // namespace lucentra
