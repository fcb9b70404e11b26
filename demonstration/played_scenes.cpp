#include "played_scenes.h"

#include <QFont>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <random>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int framesPerSecond = 30;
constexpr int framesOfFilm = 25;
constexpr QRect caret(60, 420, 2, 24);

/// What is said, in any scene; each differs from the others in every word that counts.
constexpr std::array sayings{
    u"The harbour opens at seven",      u"Nobody knows the old captain",   u"Bring three lanterns tonight",
    u"We leave before the storm",       u"Her letter never arrived here",  u"Count every barrel twice",
    u"This map shows another island",   u"Do not trust the lighthouse",    u"Morning fog covers the bridge",
    u"A stranger paid for dinner",      u"Keep your compass dry",          u"The garden door was open",
    u"Listen to the wooden floor",      u"They found silver coins below",  u"Winter comes early this year",
    u"Please answer the telephone",     u"My brother builds small boats",  u"Turn left behind the mill",
    u"Seven ducks crossed the road",    u"The museum closes on Monday",    u"Rain fell all summer long",
    u"He painted the ceiling blue",     u"Return the books by Friday",     u"Our train stopped at noon",
};

QString saying(qint64 number)
{
    return QStringView(sayings[size_t(number) % sayings.size()]).toString();
}

QFont fontOf(int pixels, bool isBold = false)
{
    QFont font(u"DejaVu Sans"_s);
    font.setPixelSize(pixels);
    font.setBold(isBold);
    return font;
}

/// A noise with shapes of many sizes, as clouds, leaves and walls have, from 0 to 255.
QImage noise(const QSize &size, std::mt19937 &random)
{
    QImage sum(size, QImage::Format_Grayscale8);
    sum.fill(128);
    QPainter painter(&sum);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (int grain = 128; grain > 1; grain /= 2) {
        QImage rough(size / grain + QSize(1, 1), QImage::Format_Grayscale8);
        for (int y = 0; y < rough.height(); ++y)
            std::generate_n(rough.scanLine(y), rough.width(), [&] { return uchar(random()); });
        painter.setOpacity(grain > 8 ? 0.4 : 0.2);
        painter.drawImage(QRect(QPoint(), size), rough);
    }
    return sum;
}

/// A photograph of a town beneath clouds, with a few thousand windows.
QImage town(const QSize &size, std::mt19937 &random)
{
    QImage view = noise(size, random).convertToFormat(QImage::Format_RGB32);
    QPainter painter(&view);
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    painter.fillRect(view.rect(), QColor(150, 180, 220));
    for (int left = 0; left < size.width(); left += 60 + int(random() % 90)) {
        const QRect house(left, size.height() / 4 + int(random() % 200), 50 + int(random() % 100), size.height());
        painter.fillRect(house, QColor::fromHsv(int(random() % 60), 90, 90 + int(random() % 120)));
        const int width = 6 + int(random() % 10);
        for (int y = house.top() + 12; y < size.height(); y += 2 * width) {
            for (int x = house.left() + 8; x + width < house.right(); x += 2 * width)
                painter.fillRect(x, y, width, width + 3, QColor(40, 50, int(random() % 100)));
        }
    }
    return view;
}

} // namespace

PlayedScene::PlayedScene(const QString &name, const QRect &place)
    : m_name(name)
{
    setFlag(Qt::FramelessWindowHint);
    setGeometry(place);
    m_frames.callOnTimeout(this, [this] { step(); });
    m_frames.setTimerType(Qt::PreciseTimer);
    if (m_name == u"film") {
        std::mt19937 random(1); // the same at each run
        m_view = town(place.size() * 2, random);
        m_grain = noise(place.size() + QSize(64, 64), random).convertToFormat(QImage::Format_RGB32);
    }
}

void PlayedScene::play()
{
    m_clock.start();
    step();
    m_frames.start(1000 / (m_name == u"film" ? framesOfFilm : framesPerSecond));
}

void PlayedScene::playByLines()
{
    std::setvbuf(stdin, nullptr, _IONBF, 0); // the notifier doesn't know of lines in a buffer
    m_lines = std::make_unique<QSocketNotifier>(0, QSocketNotifier::Read);
    connect(m_lines.get(), &QSocketNotifier::activated, this, [this] {
        std::array<char, 64> line{};
        if (std::fgets(line.data(), int(line.size()), stdin))
            ++m_line;
        else
            m_lines->setEnabled(false);
    });
    play();
}

void PlayedScene::say(const QString &text)
{
    using namespace std::chrono;
    const auto now = duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
    std::printf("%lld %s\n", static_cast<long long>(now), qPrintable(text));
    std::fflush(stdout);
}

void PlayedScene::step()
{
    const qint64 time = m_clock.elapsed();
    bool isChanged = m_name == u"video" || m_name == u"film" || m_name == u"ticker";
    const auto setState = [&](qint64 state) { isChanged = std::exchange(m_state, state) != state || isChanged; };
    if (m_lines)
        setState(m_line);
    else if (m_name == u"video" || m_name == u"film")
        setState(time / 2500);
    else if (m_name == u"chat")
        setState(time / 1500);
    else if (m_name == u"log")
        setState(time / 300);
    else if (m_name == u"caret")
        setState(time / 500);
    else if (m_name == u"typewriter")
        setState(time / 40);
    else if (m_name == u"scroll") // moves for a second, then rests for two
        setState(time / 3000 * 90 + std::min<qint64>(time % 3000, 990) / 11);
    else
        setState(0);
    if (isChanged && m_name == u"caret")
        update(caret);
    else if (isChanged)
        update();
}

void PlayedScene::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_name == u"video")
        paintVideo(painter);
    else if (m_name == u"film")
        paintFilm(painter);
    else if (m_name == u"typewriter")
        paintTypewriter(painter);
    else if (m_name == u"ticker")
        paintTicker(painter);
    else if (m_name == u"caret" || m_name == u"still")
        paintPage(painter, 0, 8);
    else if (m_name == u"scroll")
        paintPage(painter, m_state * 2, 60);
    else
        paintMessages(painter);
}

void PlayedScene::paintVideo(QPainter &painter)
{
    const double seconds = double(m_clock.elapsed()) / 1000;
    QLinearGradient sky(0, 0, width(), height());
    sky.setColorAt(0, QColor::fromHsvF(float(std::fmod(seconds / 20, 1)), 0.5F, 0.5F));
    sky.setColorAt(1, QColor::fromHsvF(float(std::fmod(seconds / 20 + 0.3, 1)), 0.7F, 0.25F));
    painter.fillRect(QRect(QPoint(), size()), sky);
    for (int i = 0; i < 12; ++i) {
        const double way = seconds * (0.3 + 0.07 * i) + i;
        painter.setBrush(QColor::fromHsv((i * 47) % 360, 140, 120));
        painter.setPen(Qt::NoPen);
        painter.drawEllipse(QPointF(width() * (0.5 + 0.5 * std::sin(way)), height() * (0.5 + 0.45 * std::cos(way * 1.3))),
                            30 + 6 * i, 20 + 5 * i);
    }
    if (!hasSubtitle())
        return;
    const QString text = saying(m_state);
    QPainterPath letters;
    letters.addText(0, 0, fontOf(30, true), text);
    letters.translate((width() - letters.boundingRect().width()) / 2, height() - 40);
    painter.setPen(QPen(Qt::black, 5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(letters);
    painter.fillPath(letters, Qt::white);
    said(m_state, text);
}

/// Two seconds of each line are followed by half a second of silence.
bool PlayedScene::hasSubtitle() const
{
    return m_lines || m_clock.elapsed() % 2500 <= 2000;
}

/// A camera pans over a grainy photograph. The subtitle is above, in a translucent box.
void PlayedScene::paintFilm(QPainter &painter)
{
    const double seconds = double(m_clock.elapsed()) / 1000;
    const QSize room = m_view.size() - size();
    painter.drawImage(QPointF(-room.width() * (0.5 + 0.5 * std::sin(seconds / 9)),
                              -room.height() * (0.5 + 0.5 * std::cos(seconds / 13))),
                      m_view);
    painter.setOpacity(0.12);
    painter.drawImage(QPointF(-double(m_clock.elapsed() * 7 % 64), -double(m_clock.elapsed() * 13 % 64)), m_grain);
    painter.setOpacity(1);
    if (!hasSubtitle())
        return;
    const QString text = saying(m_state + 7);
    QFont font(u"Noto Serif"_s);
    font.setPixelSize(34);
    font.setItalic(true);
    painter.setFont(font);
    const QRect place = painter.fontMetrics().boundingRect(text);
    const QRect box(QPoint((width() - place.width()) / 2 - 16, 56), place.size() + QSize(32, 12));
    painter.fillRect(box, QColor(0, 0, 0, 150));
    painter.setPen(QColor(255, 236, 120));
    painter.drawText(box, Qt::AlignCenter, text);
    said(m_state, text);
}

void PlayedScene::paintTypewriter(QPainter &painter)
{
    painter.fillRect(QRect(QPoint(), size()), QColor(24, 26, 48));
    painter.setPen(Qt::white);
    painter.setFont(fontOf(26));
    constexpr int lettersOfTurn = 90; // with the rest at the end
    const QString text = saying(m_state / lettersOfTurn);
    const int letters = std::min(int(m_state % lettersOfTurn), int(text.size()));
    painter.drawRect(40, height() - 150, width() - 80, 110);
    painter.drawText(70, height() - 90, text.left(letters));
    if (letters == text.size())
        said(m_state / lettersOfTurn, text);
}

void PlayedScene::paintTicker(QPainter &painter)
{
    paintPage(painter, 0, 6);
    painter.fillRect(0, height() - 50, width(), 50, QColor(20, 20, 20));
    painter.setPen(Qt::white);
    painter.setFont(fontOf(22));
    QString text;
    for (int i = 0; i < 12; ++i)
        text += saying(i) + u"   +++   "_s;
    painter.drawText(width() - int(m_clock.elapsed() / 8 % 4000), height() - 17, text);
}

void PlayedScene::paintPage(QPainter &painter, qint64 top, int lines)
{
    painter.fillRect(QRect(QPoint(), size()), Qt::white);
    painter.setPen(Qt::black);
    painter.setFont(fontOf(20));
    for (int i = 0; i < lines; ++i) {
        const int y = 80 + 44 * i - int(top);
        if (y > -20 && y < height() + 20)
            painter.drawText(60, y, saying(i));
    }
    if (m_name == u"caret" && m_state % 2 == 0)
        painter.fillRect(caret, Qt::black);
}

void PlayedScene::paintMessages(QPainter &painter)
{
    painter.fillRect(QRect(QPoint(), size()), m_name == u"log" ? QColor(16, 16, 16) : QColor(245, 246, 250));
    painter.setPen(m_name == u"log" ? QColor(210, 230, 210) : QColor(30, 30, 40));
    painter.setFont(fontOf(m_name == u"log" ? 17 : 20));
    const int distance = m_name == u"log" ? 28 : 46;
    const int room = (height() - 90) / distance;
    const qint64 first = std::max<qint64>(0, m_state + 1 - room);
    for (qint64 i = first; i <= m_state; ++i)
        painter.drawText(60, 80 + distance * int(i - first), saying(i));
    said(m_state, saying(m_state));
}

void PlayedScene::said(qint64 number, const QString &text)
{
    if (std::exchange(m_said, number) != number)
        say(text);
}
