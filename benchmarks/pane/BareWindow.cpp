// The least that a program with the toolkit's widgets does: a window of the pane's size, in the middle of the screen.

#include <QApplication>
#include <QPainter>
#include <QScreen>
#include <QWidget>

class BareWindow : public QWidget
{
protected:
    void paintEvent(QPaintEvent * /*event*/) override { QPainter(this).fillRect(rect(), Qt::red); }
};

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    BareWindow window;
    window.setWindowFlags(Qt::FramelessWindowHint);
    window.resize(480, 280);
    window.move(QGuiApplication::primaryScreen()->geometry().center() - window.rect().center());
    window.show();
    return QApplication::exec();
}
