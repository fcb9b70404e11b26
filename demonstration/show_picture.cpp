// Another program's window: shows a picture at its own size until it is ended, and says "shown" once it does.
// show_picture PICTURE [--at X,Y] [--rounded] [--unmanaged] [--video] [--turn]
// show_picture --scene NAME [--at X,Y] [--turn]: plays a scene of 960 by 540 points, see played_scenes.h; with --turn it
// goes on by a line of the standard input at a time

#include "played_scenes.h"

#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QRasterWindow>
#include <QSocketNotifier>
#include <QTimer>

#include <cstdio>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

class PictureWindow : public QRasterWindow
{
public:
    PictureWindow(const QImage &picture, const QPoint &place)
        : m_picture(picture)
    {
        setFlag(Qt::FramelessWindowHint);
        setGeometry(QRect(place, picture.size()));
        m_clock.start();
        m_turns.setEnabled(false);
    }

    /// Rounded like a speech balloon: the corners show what lies beneath.
    void makeRounded()
    {
        QPainterPath outline;
        outline.addRoundedRect(QRectF(QPointF(), m_picture.size()), 60, 60);
        setMask(QRegion(outline.toFillPolygon().toPolygon()));
    }

    /// Shows another picture whenever the standard input names one, and says "shown" again.
    void turnPages()
    {
        m_input.open(stdin, QIODevice::ReadOnly);
        QObject::connect(&m_turns, &QSocketNotifier::activated, this, [this] {
            const QByteArray line = m_input.readLine();
            if (line.isEmpty()) {
                m_turns.setEnabled(false);
                return;
            }
            m_picture = QImage(QString::fromLocal8Bit(line).trimmed());
            m_isShown = false;
            update();
        });
        m_turns.setEnabled(true);
    }

    /// Moves a bright bar through the picture, 25 times a second.
    void play()
    {
        m_isVideo = true;
        m_frames.callOnTimeout([this] { update(); });
        m_frames.start(40);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.drawImage(0, 0, m_picture);
        if (m_isVideo) {
            const int x = int(m_clock.elapsed() / 4 % m_picture.width());
            painter.fillRect(x, 0, 40, m_picture.height(), QColor(200, 120, 60));
        }
        if (!std::exchange(m_isShown, true))
            QTimer::singleShot(100, [] {
                std::puts("shown");
                std::fflush(stdout);
            });
    }

private:
    QImage m_picture;
    QElapsedTimer m_clock;
    QTimer m_frames;
    QFile m_input;
    QSocketNotifier m_turns{0, QSocketNotifier::Read};
    bool m_isVideo = false;
    bool m_isShown = false;
};

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOptions({{u"at"_s, u"where on the screen the picture begins"_s, u"X,Y"_s, u"100,100"_s},
                       {u"rounded"_s, u"cut the window's corners off"_s},
                       {u"unmanaged"_s, u"like a menu: the window manager doesn't see it"_s},
                       {u"video"_s, u"let something move in the picture"_s},
                       {u"scene"_s, u"play a scene instead"_s, u"NAME"_s},
                       {u"turn"_s, u"show another picture whenever the standard input names one"_s}});
    parser.process(application);
    const QStringList place = parser.value(u"at"_s).split(u',');
    if (parser.isSet(u"scene"_s) && place.size() == 2) {
        PlayedScene scene(parser.value(u"scene"_s), QRect(place[0].toInt(), place[1].toInt(), 960, 540));
        scene.show();
        QTimer::singleShot(100, &scene, [&scene, isTurned = parser.isSet(u"turn"_s)] {
            std::puts("shown");
            std::fflush(stdout);
            isTurned ? scene.playByLines() : scene.play();
        });
        return QGuiApplication::exec();
    }
    const QImage picture(parser.positionalArguments().value(0));
    if (picture.isNull() || place.size() != 2)
        return 1;

    PictureWindow window(picture, QPoint(place[0].toInt(), place[1].toInt()));
    if (parser.isSet(u"rounded"_s))
        window.makeRounded();
    if (parser.isSet(u"unmanaged"_s))
        window.setFlag(Qt::BypassWindowManagerHint);
    if (parser.isSet(u"video"_s))
        window.play();
    if (parser.isSet(u"turn"_s))
        window.turnPages();
    window.show();
    return QGuiApplication::exec();
}
