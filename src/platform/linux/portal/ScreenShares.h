#pragma once

#include <QHash>
#include <QList>
#include <QRect>
#include <QString>

#include <functional>

namespace lucentra {

/// A monitor as the compositor describes it in a screen share.
struct SharedMonitor
{
    quint32 node = 0; ///< number of its stream
    QRect frame;      ///< in the compositor's coordinates; empty if the compositor doesn't report it

    bool operator==(const SharedMonitor &) const = default;
};

/// A monitor's frame from numbers of another program; empty if no monitor has such a frame.
QRect monitorFrame(int x, int y, int width, int height);

/// Where the restore tokens are stored. Both functions may be called on any thread.
struct ScreenShareStore
{
    std::function<QString()> read;
    std::function<void(const QString &)> write;
};

/// Whether a shared monitor is the one that the window system describes by a frame in native pixels. The sizes may
/// differ by a common factor.
bool isSameMonitor(const SharedMonitor &shared, const QRect &native);

/// The restore tokens that the desktop has given, by monitor. With its token a share starts again without a question.
/// Each token works once; every start returns the next one. Any thread, one at a time.
class ScreenShares
{
public:
    explicit ScreenShares(ScreenShareStore store);

    bool isEmpty() const { return read().isEmpty(); }
    /// The token for the monitor at a frame in native pixels; empty if there is none. `others` are the frames of the
    /// other monitors: one that has moved since it was shared is recognized by its size, and the only one in any case.
    QString tokenFor(const QRect &native, const QList<QRect> &others) const;
    /// Forgets the used token, and stores the next one for all monitors of the share. Nothing is stored if it is empty
    /// or longer than any desktop's.
    void replace(const QString &used, const QString &next, const QList<SharedMonitor> &monitors);

private:
    QHash<QString, QString> read() const; ///< by monitor

    const ScreenShareStore m_store;
};

} // namespace lucentra
