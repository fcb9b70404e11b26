#pragma once

#include "Callback.h"
#include "FileStamp.h"

#include <QHash>
#include <QJsonObject>
#include <QString>

#include <atomic>
#include <mutex>
#include <optional>

namespace lucentra {

/// The file of the settings: one JSON object, replaced atomically, shared with other processes.
class PreferencesFile
{
public:
    /// Reads the file. If it isn't a JSON object, it is kept under another name.
    PreferencesFile(QString path, DiagnosticLine diagnostics);

    const QString &path() const { return m_path; }

    /// The current content of the file, or its last content if it has become unreadable. Any thread; never waits for
    /// `apply`.
    QJsonObject values();

    /// Sets the keys in the current content of the file, or removes those whose value is `Undefined`, while no other
    /// process writes it. On failure logs a line, returns false and leaves the file unchanged. Waits for the disk, and
    /// up to 2 seconds for another process. One thread at a time.
    bool apply(const QHash<QString, QJsonValue> &changes);

    /// From now on, and in an `apply` under way, another process is waited for half a second at most, and the file is
    /// written all the same. Any thread.
    void hurry() { m_isUrgent = true; }

private:
    enum class State { Missing, Valid, Broken, Unreadable };
    struct Content
    {
        State state = State::Missing;
        QJsonObject values;
    };

    Content look() const;
    void adopt(const Content &content, const FileStamp &stamp);
    bool keepAside();
    bool save(const QJsonObject &newValues);
    bool fail(const QString &reason);

    const QString m_path;
    const DiagnosticLine m_diagnostics;
    bool m_hasReportedFailure = false;
    std::atomic<bool> m_isUrgent = false;
    std::mutex m_mutex; ///< guards what follows
    QJsonObject m_values;
    std::optional<FileStamp> m_stamp; ///< of the content that was read last
};

} // namespace lucentra
