#pragma once

#include "Result.h"

#include <QByteArray>
#include <QFileDevice>
#include <QString>

namespace lucentra {

/// The mode of files that contain the user's texts or settings: 0600.
constexpr auto ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

/// Creates a file's folder with mode 0700 if it is missing. A failure is noticed when the file is written.
void createFolderOf(const QString &path);

/// Gives a file that root creates in another user's folder to that user, who could not read it otherwise. Does nothing
/// for other users. Works on the open file, since its name could lead elsewhere by now.
void giveToOwnerOfFolder(const QFileDevice &file);
void giveToOwnerOf(const QString &folder, int descriptor);

/// Replaces a file atomically; the new content is on the disk before it replaces the old one. The file has mode 0600
/// from its first byte. Devices, pipes and folders are never replaced. On failure the old content stays, and the
/// description is the system's reason without the path.
Result<void> writePrivateFile(const QString &path, const QByteArray &content);

/// Renames a file that can't be used to "<name>.unreadable-<time>.<suffix>", which only its owner may read. Returns the
/// new path, or an empty one if the file doesn't exist any more.
Result<QString> keepAside(const QString &path);

/// Removes the temporary files that a process left beside the file when it was killed in `writePrivateFile`. No other
/// process may be writing the file.
void removeUnfinishedCopies(const QString &path);

} // namespace lucentra
