// Captures the screen beneath a red window of its own, through the desktop's portal, and prints how that went as JSON:
// capture_often COUNT SHARES
// how many pictures had red in them, which captures failed, and how long each took.

#include "MainQueue.h"
#include "PortalDesktop.h"
#include "Scheduler.h"
#include "SessionBus.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <thread>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

bool hasRed(const QImage &picture)
{
    for (int y = 0; y < picture.height(); y += 8) {
        for (int x = 0; x < picture.width(); x += 8) {
            const QColor colour = picture.pixelColor(x, y);
            if (colour.red() > 200 && colour.green() < 60 && colour.blue() < 60)
                return true;
        }
    }
    return false;
}

} // namespace

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QString shares = arguments.value(2);
    EventLoopScheduler scheduler;
    SessionBus bus(scheduler);
    MainQueue queue;
    PortalDesktop desktop(
        scheduler, bus, queue,
        {.read = [&shares] { return shares; }, .write = [&shares](const QString &next) { shares = next; }},
        [](const QString &key) { return key; });

    QWidget window(nullptr, Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    window.setStyleSheet(u"background: #ff0000"_s);
    window.setGeometry(300, 200, 400, 300);
    window.show();

    std::thread worker;
    QTimer::singleShot(1500, &window, [&] {
        worker = std::thread([&, number = quint32(window.winId()), frame = ScreenRect(window.geometry())] {
            int contaminated = 0;
            QJsonArray failures;
            QJsonArray took;
            for (int i = 0; i < arguments.value(1).toInt(); ++i) {
                QElapsedTimer clock;
                clock.start();
                const auto surroundings = desktop.capture().surroundings(number);
                const auto picture = desktop.capture().capture(surroundings ? *surroundings->paneWindow : frame);
                took.append(clock.nsecsElapsed() / 1e6);
                if (!picture || picture->isNull())
                    failures.append(picture ? u"no picture"_s : picture.error().description);
                else if (hasRed(*picture))
                    ++contaminated;
            }
            const QJsonObject result{
                {u"contaminated"_s, contaminated}, {u"failures"_s, failures}, {u"milliseconds"_s, took}};
            std::puts(QJsonDocument(result).toJson(QJsonDocument::Compact).constData());
            std::fflush(stdout);
            queue.post([] { QCoreApplication::exit(); });
        });
    });
    const int code = QApplication::exec();
    worker.join();
    return code;
}
