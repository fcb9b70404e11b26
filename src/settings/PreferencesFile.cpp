#include "PreferencesFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLockFile>
#include <QSaveFile>

#include <sys/stat.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr auto ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
constexpr auto ownersFolder = ownerOnly | QFileDevice::ExeOwner;
// A write takes milliseconds; whoever holds the lock for longer than this hangs.
constexpr int lockTimeoutMilliseconds = 1000;
// Far beyond any real settings file; keeps a wrong file from being read into memory whole.
constexpr qint64 maximumSize = 16 * 1024 * 1024;

qint64 nanoseconds(const timespec &time)
{
    return qint64(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

} // namespace

PreferencesFile::PreferencesFile(QString path, DiagnosticLine diagnostics)
    : m_path(std::move(path))
    , m_diagnostics(std::move(diagnostics))
{
    const Content content = load();
    if (content == Content::Unreadable)
        fail(u"it cannot be read"_s);
    if (content != Content::Broken)
        return;
    QLockFile lock(m_path + u".lock"_s);
    if (!lock.tryLock(lockTimeoutMilliseconds))
        fail(u"it is no JSON object and cannot be kept aside"_s);
    else if (load() == Content::Broken) // another process may have dealt with it meanwhile
        keepAside();
}

const QJsonObject &PreferencesFile::values()
{
    if (m_stamp != stamp())
        load();
    return m_values;
}

bool PreferencesFile::apply(const QHash<QString, QJsonValue> &changes)
{
    if (!makeFolder())
        return fail(u"its folder cannot be made"_s);
    QLockFile lock(m_path + u".lock"_s);
    if (!lock.tryLock(lockTimeoutMilliseconds))
        return fail(u"its lock cannot be taken"_s);

    const Content content = load();
    if (content == Content::Unreadable)
        return fail(u"it cannot be read"_s);
    if (content == Content::Broken && !keepAside())
        return false;

    QJsonObject newValues = m_values;
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        if (change.value().isUndefined())
            newValues.remove(change.key());
        else
            newValues.insert(change.key(), change.value());
    }
    if (newValues == m_values && content != Content::Broken)
        return true;
    return save(newValues);
}

PreferencesFile::Stamp PreferencesFile::stamp() const
{
    struct stat status = {};
    if (::stat(QFile::encodeName(m_path).constData(), &status) != 0)
        return {};
    return {status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim), nanoseconds(status.st_ctim)};
}

PreferencesFile::Content PreferencesFile::load()
{
    m_stamp = stamp(); // before reading: a replacement in between is then noticed by the next look
    const QFileInfo info(m_path);
    if (!info.exists() && !info.isSymLink()) {
        m_values = {};
        return Content::Missing;
    }
    QFile file(m_path);
    // Anything but a plain file (a pipe) could hold the reader for ever.
    if (!info.isFile() || !file.open(QIODevice::ReadOnly))
        return Content::Unreadable;
    const QByteArray bytes = file.read(maximumSize + 1);
    if (file.error() != QFileDevice::NoError)
        return Content::Unreadable;
    const QJsonDocument document = bytes.size() > maximumSize ? QJsonDocument() : QJsonDocument::fromJson(bytes);
    if (!document.isObject())
        return Content::Broken;
    m_values = document.object();
    return Content::Valid;
}

bool PreferencesFile::makeFolder() const
{
    const QString folder = QFileInfo(m_path).absolutePath();
    if (QFileInfo(folder).isDir())
        return true;
    QDir().mkpath(QFileInfo(folder).absolutePath());
    return QDir().mkdir(folder, ownersFolder) || QFileInfo(folder).isDir();
}

bool PreferencesFile::keepAside()
{
    const QFileInfo info(m_path);
    const QString time = QDateTime::currentDateTime().toString(u"yyyyMMdd'T'HHmmsszzz"_s);
    const QString aside =
        info.absolutePath() + u'/' + info.completeBaseName() + u".unreadable-"_s + time + u'.' + info.suffix();
    if (!QFile::rename(m_path, aside))
        return fail(u"it is no JSON object and cannot be kept aside"_s);
    QFile::setPermissions(aside, ownerOnly);
    if (m_diagnostics)
        m_diagnostics(u"Preferences were no JSON object; kept aside as %1"_s.arg(aside));
    return true;
}

bool PreferencesFile::save(const QJsonObject &newValues)
{
    QSaveFile file(m_path);
    const bool isSaved = file.open(QIODevice::WriteOnly) && file.setPermissions(ownerOnly) &&
                         file.write(QJsonDocument(newValues).toJson()) >= 0 && file.commit();
    if (!isSaved)
        return fail(file.errorString());
    m_values = newValues;
    m_stamp = stamp();
    m_hasReportedFailure = false;
    return true;
}

bool PreferencesFile::fail(const QString &reason)
{
    if (m_diagnostics && !std::exchange(m_hasReportedFailure, true))
        m_diagnostics(u"Preferences file %1 is not in use: %2"_s.arg(m_path, reason));
    return false;
}

} // namespace lucentra
