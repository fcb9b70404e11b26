#include "FileLock.h"

#include "PrivateFile.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

FileLock::FileLock(const QString &path, std::chrono::milliseconds timeout)
{
    const QFileInfo info(path);
    const QString name = info.absolutePath() + u"/."_s + info.fileName() + u".lock"_s;
    const QDeadlineTimer deadline(timeout);
    m_descriptor = ::open(QFile::encodeName(name).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (m_descriptor < 0)
        return;
    giveToOwnerOf(info.absolutePath(), m_descriptor);
    while (::flock(m_descriptor, LOCK_EX | LOCK_NB) != 0) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || deadline.hasExpired()) {
            ::close(m_descriptor);
            m_descriptor = -1;
            return;
        }
        std::this_thread::sleep_for(2ms);
    }
}

FileLock::~FileLock()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

} // namespace lucentra
