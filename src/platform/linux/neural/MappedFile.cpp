#include "MappedFile.h"

#include "RegularFile.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <optional>

#include <csignal>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lucentra {

namespace {

/// A mapped range, from the first byte to the end of its last page.
struct GuardedRange
{
    std::atomic<bool> isTaken = false;
    std::atomic<std::uintptr_t> start = 0;
    std::atomic<std::uintptr_t> end = 0; ///< 0 while there is none
};

/// Each model has two files; far more than fit into memory.
std::array<GuardedRange, 128> guardedRanges;
struct sigaction formerAction = {};

/// Reading what another program has cut off raises SIGBUS. In a guarded range, zeros take the place of what is missing;
/// everywhere else, the signal has its former effect.
void replaceMissing(int /*signal*/, siginfo_t *info, void * /*context*/)
{
    const auto address = reinterpret_cast<std::uintptr_t>(info->si_addr);
    for (const GuardedRange &range : guardedRanges) {
        const std::uintptr_t end = range.end.load();
        if (address < range.start.load() || address >= end)
            continue;
        const std::uintptr_t page = address & ~std::uintptr_t(::sysconf(_SC_PAGESIZE) - 1);
        if (::mmap(reinterpret_cast<void *>(page), end - page, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1,
                   0) != MAP_FAILED)
            return;
    }
    ::sigaction(SIGBUS, &formerAction, nullptr); // the access is repeated and raises the signal again
}

void installHandler()
{
    static std::once_flag isInstalled;
    std::call_once(isInstalled, [] {
        struct sigaction action = {};
        action.sa_sigaction = replaceMissing;
        action.sa_flags = SA_SIGINFO | SA_RESTART;
        ::sigemptyset(&action.sa_mask);
        ::sigaction(SIGBUS, &action, &formerAction);
    });
}

std::optional<std::size_t> guardRange(const uchar *start, qint64 size)
{
    installHandler();
    for (std::size_t i = 0; i < guardedRanges.size(); ++i) {
        GuardedRange &range = guardedRanges[i];
        if (range.isTaken.exchange(true))
            continue;
        const auto address = reinterpret_cast<std::uintptr_t>(start);
        const auto page = std::uintptr_t(::sysconf(_SC_PAGESIZE));
        range.start = address;
        range.end = (address + std::uintptr_t(size) + page - 1) & ~(page - 1);
        return i;
    }
    return std::nullopt;
}

qint64 modificationTime(const struct stat &status)
{
    return qint64(status.st_mtim.tv_sec) * 1'000'000'000 + status.st_mtim.tv_nsec;
}

} // namespace

std::unique_ptr<MappedFile> MappedFile::open(const QString &path)
{
    auto file = std::make_unique<MappedFile>();
    const auto status = openRegularFile(file->m_file, path);
    const uchar *const mapped = status && status->st_size > 0 ? file->m_file.map(0, status->st_size) : nullptr;
    const auto guard = mapped ? guardRange(mapped, status->st_size) : std::nullopt;
    if (!guard)
        return nullptr;
    file->m_guard = *guard;
    file->m_modified = modificationTime(*status);
    file->m_bytes = QByteArrayView(mapped, status->st_size);
    return file;
}

MappedFile::~MappedFile()
{
    if (m_bytes.isEmpty())
        return;
    GuardedRange &range = guardedRanges[m_guard];
    range.end = 0;
    range.isTaken = false;
}

bool MappedFile::isIntact() const
{
    struct stat status = {};
    return ::fstat(m_file.handle(), &status) == 0 && status.st_size == m_bytes.size() &&
           modificationTime(status) == m_modified;
}

} // namespace lucentra
