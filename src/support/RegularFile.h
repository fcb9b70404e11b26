#pragma once

#include <tl/expected.hpp>

#include <QByteArray>
#include <QString>

namespace lucentra {

enum class RegularFileError {
    Unreadable, ///< missing, forbidden, or no regular file: a folder, a pipe, a device, links in a circle
    TooLarge,
};

/// The content of a file that others may have made. Never blocks and never reads more than `largest` bytes, whatever is
/// at the path.
tl::expected<QByteArray, RegularFileError> readRegularFile(const QString &path, qint64 largest);

} // namespace lucentra
