#include "PreferencesFile.h"

#include "FileLock.h"
#include "Json.h"
#include "PrivateFile.h"
#include "RegularFile.h"

#include <QFileInfo>
#include <QJsonDocument>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

// A write takes milliseconds; a process that holds the lock for longer than this hangs.
constexpr auto lockTimeout = 2s;
// Far larger than any real settings file. Keeps a wrong file from being read whole.
constexpr qint64 maximumSize = qint64(16) * 1024 * 1024;

} // namespace

PreferencesFile::PreferencesFile(QString path, DiagnosticLine diagnostics)
    : m_path(std::move(path))
    , m_diagnostics(std::move(diagnostics))
{
    const FileStamp now = stampOf(m_path);
    const Content content = look();
    adopt(content, now);
    if (content.state == State::Unreadable)
        fail(u"it cannot be read"_s);
    if (content.state != State::Broken)
        return;
    const FileLock lock(m_path, lockTimeout);
    if (!lock.mayWrite())
        fail(u"it is no JSON object and cannot be kept aside"_s);
    else if (look().state == State::Broken) // another process may have renamed it meanwhile
        keepAside();
}

QJsonObject PreferencesFile::values()
{
    const std::lock_guard guard(m_mutex);
    const FileStamp now =
        stampOf(m_path); // taken before reading, so that the next call notices a replacement in between
    if (m_stamp != now)
        adopt(look(), now);
    return m_values;
}

bool PreferencesFile::apply(const QHash<QString, QJsonValue> &changes)
{
    createFolderOf(m_path);
    if (!QFileInfo(QFileInfo(m_path).absolutePath()).isDir())
        return fail(u"its folder cannot be made"_s);
    const FileLock lock(m_path, lockTimeout, &m_isUrgent);
    if (!lock.mayWrite())
        return fail(u"its lock cannot be taken"_s);

    const Content content = look();
    if (content.state == State::Unreadable)
        return fail(u"it cannot be read"_s);
    const QJsonObject oldValues = content.state == State::Broken ? values() : content.values;
    if (content.state == State::Broken && !keepAside())
        return false;

    QJsonObject newValues = oldValues;
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        if (change.value().isUndefined())
            newValues.remove(change.key());
        else
            newValues.insert(change.key(), change.value());
    }
    return (newValues == oldValues && content.state != State::Broken) || save(newValues);
}

PreferencesFile::Content PreferencesFile::look() const
{
    const QFileInfo info(m_path);
    if (!info.exists() && !info.isSymLink())
        return {State::Missing, {}};
    const auto bytes = readRegularFile(m_path, maximumSize);
    if (!bytes && bytes.error() == RegularFileError::Unreadable)
        return {State::Unreadable, {}};
    const auto document = bytes ? parseJson(*bytes) : std::nullopt;
    if (!document || !document->isObject())
        return {State::Broken, {}};
    return {State::Valid, document->object()};
}

void PreferencesFile::adopt(const Content &content, const FileStamp &stamp)
{
    if (content.state == State::Valid || content.state == State::Missing)
        m_values = content.values;
    m_stamp = stamp;
}

bool PreferencesFile::keepAside()
{
    const auto aside = lucentra::keepAside(m_path);
    if (!aside)
        return fail(u"it is no JSON object and cannot be kept aside"_s);
    m_diagnostics(u"Preferences were no JSON object; kept aside as %1"_s.arg(*aside));
    return true;
}

bool PreferencesFile::save(const QJsonObject &newValues)
{
    const auto saved = writePrivateFile(m_path, QJsonDocument(newValues).toJson());
    if (!saved)
        return fail(saved.error().description);
    values(); // remembers them in case the file is broken later
    m_hasReportedFailure = false;
    return true;
}

bool PreferencesFile::fail(const QString &reason)
{
    if (!std::exchange(m_hasReportedFailure, true))
        m_diagnostics(u"Preferences file %1 is not in use: %2"_s.arg(m_path, reason));
    return false;
}

} // namespace lucentra
