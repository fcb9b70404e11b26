#pragma once

#include <tl/expected.hpp>

#include <QByteArray>
#include <QString>

namespace lucentra {

enum class RegularFileError {
    Unreadable, ///< missing, forbidden, or no regular file: a folder, a pipe, a device, links in a circle
    TooLarge,
};

/// The content of a foreign file. Nothing that can be put in its place makes the call wait or fills the memory.
tl::expected<QByteArray, RegularFileError> readRegularFile(const QString &path, qint64 largest);

} // namespace lucentra
