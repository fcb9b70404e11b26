#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QRasterWindow>
#include <QSocketNotifier>
#include <QTimer>

#include <memory>

/// Another program's window in which something happens by itself, the same at each run: "video" and "film"
/// with subtitles, "chat", "log", "typewriter", "scroll", "ticker", "caret" or "still". When a new text stands there whole, it prints the
/// milliseconds of the system's steady clock and the text.
class PlayedScene : public QRasterWindow
{
public:
    PlayedScene(const QString &name, const QRect &place);
    void play();
    /// Goes on by a line of the standard input at a time, instead of the clock.
    void playByLines();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void step();
    void say(const QString &text);
    void said(qint64 number, const QString &text);
    void paintVideo(QPainter &painter);
    void paintFilm(QPainter &painter);
    bool hasSubtitle() const;
    void paintTypewriter(QPainter &painter);
    void paintTicker(QPainter &painter);
    void paintPage(QPainter &painter, qint64 top, int lines);
    void paintMessages(QPainter &painter);

    const QString m_name;
    QImage m_view;  ///< of the film: a photograph of a town, wider than the window
    QImage m_grain; ///< and what is on each frame of it
    QElapsedTimer m_clock;
    QTimer m_frames;
    std::unique_ptr<QSocketNotifier> m_lines; ///< only if it goes on by lines
    qint64 m_line = 0;
    qint64 m_state = -1;
    qint64 m_said = -1;
};
