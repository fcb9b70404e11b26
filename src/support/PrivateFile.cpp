#include "PrivateFile.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

tl::unexpected<Failure> failure(const QString &description)
{
    return tl::unexpected(Failure{.domain = u"File"_s, .code = 0, .description = description});
}

/// The name of an unfinished copy, with `letters` in place of its six random letters. No other program uses such names.
QString unfinishedName(const QString &fileName, const QString &letters)
{
    return u'.' + fileName + u'.' + letters + u".unfinished"_s;
}

void makeFolder(const QString &folder, QFileDevice::Permissions permissions)
{
    if (QFileInfo::exists(folder))
        return;
    // Its parents get the usual mode of folders.
    makeFolder(QFileInfo(folder).absolutePath(), ownerOnly | QFileDevice::ExeOwner | QFileDevice::ReadGroup |
                                                     QFileDevice::ExeGroup | QFileDevice::ReadOther |
                                                     QFileDevice::ExeOther);
    if (!QDir().mkdir(folder, permissions))
        return;
    const int descriptor =
        ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0)
        return;
    giveToOwnerOf(QFileInfo(folder).absolutePath(), descriptor);
    ::close(descriptor);
}

} // namespace

void createFolderOf(const QString &path)
{
    makeFolder(QFileInfo(path).absolutePath(), ownerOnly | QFileDevice::ExeOwner);
}

void giveToOwnerOf(const QString &folder, int descriptor)
{
    struct stat status;
    if (::geteuid() != 0 || ::stat(QFile::encodeName(folder).constData(), &status) != 0)
        return;
    if (::fchown(descriptor, status.st_uid, status.st_gid) != 0)
        return; // a file system without owners
}

void giveToOwnerOfFolder(const QFileDevice &file)
{
    giveToOwnerOf(QFileInfo(file.fileName()).absolutePath(), file.handle());
}

Result<void> writePrivateFile(const QString &path, const QByteArray &content)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) // the new file would replace it
        return failure(qt_error_string(info.isDir() ? EISDIR : ENOTSUP));
    const QFileInfo target(info.exists() ? info.canonicalFilePath() : info.absoluteFilePath());      // keeps links
    QTemporaryFile file(target.path() + u'/' + unfinishedName(target.fileName(), QString(6, u'X'))); // 0600
    if (!file.open())
        return failure(file.errorString());
    // A full disk may be reported only when the last buffer is written.
    if (file.write(content) != content.size() || !file.flush())
        return failure(file.error() == QFileDevice::NoError ? u"only a part of it could be written"_s
                                                            : file.errorString());
    giveToOwnerOfFolder(file);
    const bool isInPlace =
        ::fsync(file.handle()) == 0 &&
        ::rename(QFile::encodeName(file.fileName()).constData(), QFile::encodeName(target.filePath()).constData()) == 0;
    if (!isInPlace)
        return failure(qt_error_string());
    file.setAutoRemove(false); // it has been renamed
    return {};
}

Result<QString> keepAside(const QString &path)
{
    const QFileInfo info(path);
    const QString aside = info.path() + u'/' + info.completeBaseName() + u".unreadable-"_s +
                          QDateTime::currentDateTimeUtc().toString(u"yyyyMMdd'T'HHmmsszzz'Z'."_s) + info.suffix();
    QFile file(path);
    if (!file.exists())
        return QString();
    if (!file.rename(aside))
        return failure(file.errorString());
    file.setPermissions(ownerOnly);
    return aside;
}

void removeUnfinishedCopies(const QString &path)
{
    const QFileInfo info(path);
    QDir folder(info.absolutePath());
    const QStringList names =
        folder.entryList({unfinishedName(info.fileName(), u"??????"_s)}, QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    for (const QString &name : names)
        folder.remove(name);
}

} // namespace lucentra
