#pragma once

#include <tl/expected.hpp>

#include <QByteArray>
#include <QString>

#include <optional>

#include <sys/stat.h>

class QFile;

namespace lucentra {

enum class RegularFileError {
    Unreadable, ///< missing, forbidden, or no regular file: a folder, a pipe, a device, links in a circle
    TooLarge,
};

/// Opens a regular file for reading and returns its status. Returns nullopt for anything else that is at the path, such
/// as a pipe, without waiting for it.
std::optional<struct stat> openRegularFile(QFile &file, const QString &path);

/// The content of a file that others may have made. Never blocks and never reads more than `largest` bytes, whatever is
/// at the path.
tl::expected<QByteArray, RegularFileError> readRegularFile(const QString &path, qint64 largest);

} // namespace lucentra
