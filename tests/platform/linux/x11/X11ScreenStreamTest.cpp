#include "X11ScreenStream.h"
#include "Pixels.h"
#include "TestProgram.h"

#include "MainQueue.h"
#include "ManualScheduler.h"

#include <QTest>

#include <atomic>

using namespace lucentra;
using namespace std::chrono_literals;

class X11ScreenStreamTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_captures = 0;
        m_frames.clear();
        m_display = {0, 0, 1920, 1080};
        m_tone = 1;
        m_stream = std::make_unique<X11ScreenStream>(
            X11ScreenStream::Source{.watch =
                                        [this](const QRectF &area, std::function<void(const QRect &)> changed) {
                                            m_watched = area;
                                            m_changed = std::move(changed);
                                        },
                                    .rearm = [this] { ++m_rearmed; },
                                    .displayAt = [this](const QPointF &) { return m_display; },
                                    .capture =
                                        [this](const QRectF &area) {
                                            ++m_captures;
                                            m_asked = area;
                                            if (m_tone == 0)
                                                return QImage();
                                            QImage image(area.size().toSize(), QImage::Format_RGB32);
                                            image.fill(qRgb(m_tone, 0, 0));
                                            return image;
                                        }},
            m_queue, m_clock);
    }
    void cleanup() { m_stream.reset(); }

    void aBusyScreenCostsTenPicturesASecond()
    {
        for (int i = 0; i < 100; ++i) { // a second of changes and moves
            follow();
            m_changed({10, 10, 1, 1});
            QTRY_VERIFY(!m_clock.isIdle()); // the picture came, and the stream rests
            m_clock.advance(10ms);
        }
        QVERIFY2(m_captures >= 9 && m_captures <= 11, qPrintable(QString::number(m_captures)));
    }

    void withoutChangesThereIsNoWork()
    {
        follow();
        QTRY_COMPARE(m_frames.size(), 1);
        QCOMPARE(m_frames.last().picture.size(), QSize(480, 280));
        QCOMPARE(m_frames.last().damage, QRect(0, 0, 480, 280)); // all of a first picture is new
        m_clock.advance(10s);
        QVERIFY(m_clock.isIdle());
        m_tone = 2;
        m_changed({10, 20, 3, 4});
        m_changed({400, 20, 100, 4}); // of which a part is within the picture
        QTRY_COMPARE(m_frames.size(), 2);
        QCOMPARE(m_frames.last().damage, QRect(10, 20, 3, 4));
        m_tone = 3;
        m_clock.advance(100ms);
        QTRY_COMPARE(m_frames.size(), 3);
        QCOMPARE(m_frames.last().damage, QRect(400, 20, 80, 4));
        m_clock.advance(10s);
        QCOMPARE(m_captures, 3);
        m_changed({10, 20, 3, 4}); // painted again as it was
        QTRY_VERIFY(!m_clock.isIdle());
        QCOMPARE(m_captures, 4);
        QCOMPARE(m_frames.size(), 3);
    }

    void allIsNewAfterAFailure()
    {
        follow();
        QTRY_COMPARE(m_frames.size(), 1);
        for (const int tone : {0, 1}) {
            m_clock.advance(100ms);
            m_tone = tone;
            m_changed({10, 20, 3, 4});
            QTRY_COMPARE(m_frames.size(), 2 + tone);
        }
        QCOMPARE(m_frames.last().damage, QRect(0, 0, 480, 280));
    }

    void aHiddenPaneTakesNone()
    {
        follow();
        m_stream->follow({}, {});
        QVERIFY(m_watched.isEmpty());
        QTRY_COMPARE(m_captures, 1);
        QTRY_VERIFY(!m_clock.isIdle()); // the picture under way came
        m_clock.advance(10s);
        QVERIFY(m_frames.isEmpty());
        follow();
        QTRY_COMPARE(m_frames.size(), 1);
    }

    void anAreaOverADisplaysEdgeIsTransparentBeyondIt()
    {
        m_display = {200, 180, 300, 900}; // the area reaches over its left, its right and its upper edge
        follow();
        QTRY_COMPARE(m_frames.size(), 1);
        QCOMPARE(m_asked, QRectF(200, 180, 300, 200));
        const QImage picture = m_frames.last().picture;
        QCOMPARE(picture.size(), QSize(480, 280));
        QCOMPARE(boundsOf(picture, [](QRgb pixel) { return qAlpha(pixel) > 0; }), QRect(100, 80, 300, 200));
    }

private:
    void follow()
    {
        m_stream->follow({100, 100, 480, 280}, [this](const ScreenFrame &frame) { m_frames.append(frame); });
    }

    MainQueue m_queue;
    ManualScheduler m_clock;
    QRectF m_display;
    QRectF m_watched;
    QRectF m_asked;
    std::function<void(const QRect &)> m_changed;
    std::atomic<int> m_captures = 0;
    std::atomic<int> m_tone = 1;
    int m_rearmed = 0;
    QList<ScreenFrame> m_frames;
    std::unique_ptr<X11ScreenStream> m_stream;
};

static const TestClass<X11ScreenStreamTest> x11ScreenStreamTest;
#include "X11ScreenStreamTest.moc"
