#include "KWinScreenshot.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Longest waits for the service and for the picture's data, in milliseconds.
constexpr int servicePatience = 3000;
constexpr int transferPatience = 3000;

/// Larger than any screen, in pixels per side.
constexpr int greatestSide = 1 << 15;

class FileDescriptor
{
public:
    explicit FileDescriptor(int number)
        : m_number(number)
    {
    }
    ~FileDescriptor() { close(m_number); }
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;
    int get() const { return m_number; }

private:
    int m_number;
};

/// Reads until the array is full. Returns false if the writer ends before, or takes too long.
bool readAll(int file, QByteArray &bytes)
{
    const QDeadlineTimer deadline(transferPatience);
    for (qsizetype have = 0; have < bytes.size();) {
        pollfd readable{.fd = file, .events = POLLIN, .revents = 0};
        if (poll(&readable, 1, int(deadline.remainingTime())) <= 0)
            return false;
        const ssize_t count = read(file, bytes.data() + have, std::size_t(bytes.size() - have));
        if (count == 0 || (count < 0 && errno != EINTR))
            return false;
        have += std::max<ssize_t>(count, 0);
    }
    return true;
}

QDBusMessage callScreenshot(const QRect &area, int file)
{
    auto call = QDBusMessage::createMethodCall(u"org.kde.KWin"_s, u"/org/kde/KWin/ScreenShot2"_s,
                                               u"org.kde.KWin.ScreenShot2"_s, u"CaptureArea"_s);
    call.setArguments({area.x(), area.y(), uint(area.width()), uint(area.height()),
                       QVariantMap{{u"include-cursor"_s, false}, {u"native-resolution"_s, true}},
                       QVariant::fromValue(QDBusUnixFileDescriptor(file))});
    return QDBusConnection::sessionBus().call(call, QDBus::Block, servicePatience);
}

} // namespace

bool isKWinScreenshotAllowed()
{
    const QString path =
        QStandardPaths::locate(QStandardPaths::ApplicationsLocation, u"com.tarnby.lucentra.capture.desktop"_s);
    QFile entry(path);
    const QByteArray start = "Exec=" + QFile::encodeName(QFileInfo(u"/proc/self/exe"_s).symLinkTarget());
    return !path.isEmpty() && entry.open(QIODevice::ReadOnly) && entry.readAll().split('\n').contains(start);
}

QImage takeKWinScreenshot(const QRect &area, const std::function<void()> &taken)
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return {};
    const FileDescriptor reading(ends[0]);
    const QDBusMessage reply = [&] {
        const FileDescriptor writing(ends[1]); // KWin's copy stays open until the picture is written
        return callScreenshot(area, writing.get());
    }();
    taken();
    const auto description = qdbus_cast<QVariantMap>(reply.arguments().value(0));
    const QSize size(description[u"width"_s].toInt(), description[u"height"_s].toInt());
    const int stride = description[u"stride"_s].toInt();
    const int format = description[u"format"_s].toInt();
    if (reply.type() != QDBusMessage::ReplyMessage || size.isEmpty() || size.width() > greatestSide ||
        size.height() > greatestSide || stride < 4 * size.width() || stride > 4 * greatestSide ||
        (format != QImage::Format_RGB32 && format != QImage::Format_ARGB32 &&
         format != QImage::Format_ARGB32_Premultiplied && format != QImage::Format_RGBA8888_Premultiplied))
        return {};
    QByteArray bytes(qsizetype(stride) * size.height(), Qt::Uninitialized);
    if (!readAll(reading.get(), bytes))
        return {};
    return QImage(reinterpret_cast<const uchar *>(bytes.constData()), size.width(), size.height(), stride,
                  QImage::Format(format))
        .convertToFormat(QImage::Format_RGB32)
        .copy();
}

} // namespace lucentra
