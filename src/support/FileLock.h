#pragma once

#include <QString>

#include <chrono>

namespace lucentra {

/// Lets one process at a time replace a file. The lock is on a hidden file beside it, ".<name>.lock", which is never
/// removed. The system releases the lock when the process ends, however it ends.
class FileLock
{
public:
    /// Waits for the lock at most as long as given. The folder must exist.
    FileLock(const QString &path, std::chrono::milliseconds timeout);
    ~FileLock();
    FileLock(const FileLock &) = delete;
    FileLock &operator=(const FileLock &) = delete;

    bool isHeld() const { return m_descriptor >= 0; }

private:
    int m_descriptor;
};

} // namespace lucentra
