#include "RegularFile.h"

#include <QFile>

#include <fcntl.h>
#include <unistd.h>

namespace lucentra {

std::optional<struct stat> openRegularFile(QFile &file, const QString &path)
{
    // Otherwise opening a pipe would wait for its other end.
    const int descriptor = open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    struct stat status = {};
    if (descriptor >= 0 && fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
        file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return status;
    if (descriptor >= 0)
        close(descriptor);
    return std::nullopt;
}

tl::expected<QByteArray, RegularFileError> readRegularFile(const QString &path, qint64 largest)
{
    QFile file;
    const auto status = openRegularFile(file, path);
    if (!status)
        return tl::unexpected(RegularFileError::Unreadable);
    if (status->st_size > largest)
        return tl::unexpected(RegularFileError::TooLarge);
    QByteArray content = file.read(status->st_size + 1); // QFile allocates as much as is requested
    if (content.size() > status->st_size)                // it has grown meanwhile
        content += file.read(largest + 1 - content.size());
    if (file.error() != QFileDevice::NoError)
        return tl::unexpected(RegularFileError::Unreadable);
    if (content.size() > largest)
        return tl::unexpected(RegularFileError::TooLarge);
    return content;
}

} // namespace lucentra
