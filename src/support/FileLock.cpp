#include "FileLock.h"

#include "PrivateFile.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr auto urgentTimeout = 500ms;

} // namespace

FileLock::FileLock(const QString &path, std::chrono::milliseconds timeout, const std::atomic<bool> *isUrgent)
{
    const QFileInfo info(path);
    const QString name = info.absolutePath() + u"/."_s + info.fileName() + u".lock"_s;
    m_descriptor = ::open(QFile::encodeName(name).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (m_descriptor < 0)
        return;
    giveToOwnerOf(info.absolutePath(), m_descriptor);
    QDeadlineTimer deadline(timeout);
    bool wasUrgent = false;
    while (!(m_isHeld = ::flock(m_descriptor, LOCK_EX | LOCK_NB) == 0)) {
        const bool isSupported = errno == EWOULDBLOCK || errno == EINTR;
        if (isUrgent && *isUrgent && !std::exchange(wasUrgent, true))
            deadline = std::min(deadline, QDeadlineTimer(urgentTimeout));
        m_mayWrite = !isSupported || wasUrgent;
        if (!isSupported || deadline.hasExpired())
            return;
        std::this_thread::sleep_for(2ms);
    }
    m_mayWrite = true;
}

FileLock::~FileLock()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

} // namespace lucentra
