#pragma once

#include "Result.h"

#include <QByteArray>
#include <QFileDevice>
#include <QString>

namespace lucentra {

/// 0600: what a file that holds the user's texts or settings lets others do.
constexpr auto ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

/// Makes a file's folder where it is missing, 0700. A failure shows when the file is written.
void createFolderOf(const QString &path);

/// What root makes in a user's folder becomes the user's, who could not read it otherwise. For others it does nothing.
/// The file is open: its name could lead elsewhere by now.
void giveToOwnerOfFolder(const QFileDevice &file);
void giveToOwnerOf(const QString &folder, int descriptor);

/// Replaces a file whole or not at all: at any moment there is the old content or the new one, which is on the disk
/// before it takes the old one's place. Mode 0600 from its first byte. A device, pipe or folder is never replaced.
/// The failure's description is the system's reason, without the path; the old content stays.
Result<void> writePrivateFile(const QString &path, const QByteArray &content);

/// Removes the unfinished copies that a process which was killed in `writePrivateFile` has left beside the file. Only
/// where no other process writes it.
void removeUnfinishedCopies(const QString &path);

} // namespace lucentra
