#pragma once

#include <QString>

#include <atomic>
#include <chrono>

namespace lucentra {

/// Lets one process at a time replace a file. The lock is on a hidden file beside it, ".<name>.lock", which is never
/// removed. The system releases the lock when the process ends, however it ends.
class FileLock
{
public:
    /// Waits for the lock at most as long as given, and at most half a second from when `isUrgent` is set. The folder
    /// must exist.
    FileLock(const QString &path, std::chrono::milliseconds timeout, const std::atomic<bool> *isUrgent = nullptr);
    ~FileLock();
    FileLock(const FileLock &) = delete;
    FileLock &operator=(const FileLock &) = delete;

    bool isHeld() const { return m_isHeld; }
    /// Whether to write the file: also without the lock if the file system has none, as some network ones, and if
    /// another process keeps it although writing is urgent. Changes that are written at the same time may be lost then,
    /// but the others surely would be.
    bool mayWrite() const { return m_mayWrite; }

private:
    int m_descriptor;
    bool m_isHeld = false;
    bool m_mayWrite = false;
};

} // namespace lucentra
