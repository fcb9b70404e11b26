#pragma once

#include <QString>

namespace lucentra {

/// Distinguishes two contents of a file without reading them. Each content must be written as a new file.
struct FileStamp
{
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = -1;    ///< -1: there is no file
    qint64 modified = 0; ///< nanoseconds
    qint64 changed = 0;

    bool operator==(const FileStamp &) const = default;
};

FileStamp stampOf(const QString &path);

} // namespace lucentra
