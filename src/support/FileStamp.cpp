#include "FileStamp.h"

#include <QFile>

#include <sys/stat.h>

namespace lucentra {

namespace {

qint64 nanoseconds(const timespec &time)
{
    return qint64(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

} // namespace

FileStamp stampOf(const QString &path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    return {status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim), nanoseconds(status.st_ctim)};
}

} // namespace lucentra
