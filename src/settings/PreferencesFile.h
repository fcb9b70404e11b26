#pragma once

#include "DiagnosticLine.h"
#include "FileStamp.h"

#include <QHash>
#include <QJsonObject>
#include <QString>

#include <mutex>
#include <optional>

namespace lucentra {

/// The file behind the settings: one JSON object, replaced as a whole, shared with other processes.
class PreferencesFile
{
public:
    /// Reads the file now. One that is no JSON object is kept aside.
    PreferencesFile(QString path, DiagnosticLine diagnostics);

    /// What the file holds at this moment. A file that has become unreadable since keeps its last content. Any thread;
    /// never waits for `apply`.
    QJsonObject values();

    /// Sets (or, by `Undefined`, removes) the keys in whatever the file holds at this moment, alone among all
    /// processes. False, after a diagnostic line, when that is impossible; the file is then as it was. Waits for the
    /// disk, and up to 2 seconds for another process. One thread at a time.
    bool apply(const QHash<QString, QJsonValue> &changes);

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
    std::mutex m_mutex; // guards the rest
    QJsonObject m_values;
    std::optional<FileStamp> m_stamp; ///< of what was read last
};

} // namespace lucentra
