#include "VirtualScreen.h"
#include "X11ScreenCapture.h"

#include <QSemaphore>
#include <QTest>

#include <xcb/shape.h>

#include <optional>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

constexpr QRgb red = 0xffc02020;
constexpr QRgb green = 0xff20c020;
constexpr QRgb blue = 0xff2020c0;

/// Windows of one program on the server.
class Client
{
public:
    Client()
        : m_connection(xcb_connect(nullptr, nullptr))
    {
        m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data;
    }

    xcb_window_t addWindow(const QRect &frame, QRgb colour, bool mapped = true)
    {
        const xcb_window_t window = xcb_generate_id(m_connection.get());
        const quint32 values[]{colour, 1};
        xcb_create_window(m_connection.get(), XCB_COPY_FROM_PARENT, window, m_screen->root, qint16(frame.x()),
                          qint16(frame.y()), quint16(frame.width()), quint16(frame.height()), 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, m_screen->root_visual,
                          XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
        if (mapped)
            xcb_map_window(m_connection.get(), window);
        sync();
        return window;
    }

    /// A window of 32 bits a pixel: `colour` is premultiplied.
    xcb_window_t addTranslucentWindow(const QRect &frame, QRgb colour)
    {
        xcb_visualid_t visual = 0;
        for (auto depth = xcb_screen_allowed_depths_iterator(m_screen); depth.rem; xcb_depth_next(&depth)) {
            if (depth.data->depth == 32)
                visual = xcb_depth_visuals_iterator(depth.data).data->visual_id;
        }
        const xcb_colormap_t colours = xcb_generate_id(m_connection.get());
        xcb_create_colormap(m_connection.get(), XCB_COLORMAP_ALLOC_NONE, colours, m_screen->root, visual);
        const xcb_window_t window = xcb_generate_id(m_connection.get());
        const quint32 values[]{colour, 0, 1, colours};
        xcb_create_window(m_connection.get(), 32, window, m_screen->root, qint16(frame.x()), qint16(frame.y()),
                          quint16(frame.width()), quint16(frame.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                          XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP, values);
        xcb_map_window(m_connection.get(), window);
        sync();
        return window;
    }

    void shape(xcb_window_t window, const xcb_rectangle_t &kept)
    {
        xcb_shape_rectangles(m_connection.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, 0, window, 0, 0, 1, &kept);
        sync();
    }

    void destroy(xcb_window_t window)
    {
        xcb_destroy_window(m_connection.get(), window);
        sync();
    }

    X11ResourceRange range() const
    {
        const xcb_setup_t *setup = xcb_get_setup(m_connection.get());
        return {setup->resource_id_base, setup->resource_id_mask};
    }

    void sync()
    {
        std::free(xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
    }

private:
    X11Connection m_connection;
    xcb_screen_t *m_screen;
};

} // namespace

class X11ComposerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void foreignWindowsAreComposedInTheirOrder();
    void ourWindowsAreNeverInTheImage();
    void shapesAndTranslucencyAreKept();
    void windowsThatVanishCostOnlyTheirPixels();
    void aScaledDisplayGivesNativePixels();
    void withoutAServerTheCaptureFails();

private:
    std::optional<VirtualScreen> m_screen;
};

void X11ComposerTest::initTestCase()
{
    m_screen.emplace();
    QVERIFY2(m_screen->isRunning(), "Xvfb didn't start");
    qputenv("DISPLAY", m_screen->display());
}

void X11ComposerTest::foreignWindowsAreComposedInTheirOrder()
{
    Client us;
    Client other;
    X11Composer composer(us.range());
    QVERIFY(composer.isUsable());
    composer.setRedirecting(true);
    other.addWindow({100, 100, 300, 200}, red);
    other.addWindow({200, 150, 300, 200}, green);
    other.addWindow({120, 120, 20, 20}, blue, false); // never mapped
    const QImage image = composer.compose({90, 90, 400, 300});
    QCOMPARE(image.size(), QSize(400, 300));
    QCOMPARE(image.pixel(20, 20), red);
    QCOMPARE(image.pixel(35, 35), red);
    QCOMPARE(image.pixel(120, 70), green);
    QCOMPARE(image.pixel(350, 200), green);
    QVERIFY(image.pixel(5, 5) != red);
}

void X11ComposerTest::ourWindowsAreNeverInTheImage()
{
    Client us;
    Client other;
    X11Composer composer(us.range());
    composer.setRedirecting(true);
    other.addWindow({0, 0, 600, 400}, red);
    const xcb_window_t pane = us.addWindow({50, 50, 480, 280}, blue);
    us.addWindow({100, 100, 80, 80}, blue); // a menu of ours over the pane
    const QImage image = composer.compose({52, 52, 476, 276});
    for (const QPoint point : {QPoint(0, 0), QPoint(60, 60), QPoint(475, 275)})
        QCOMPARE(image.pixel(point), red);

    bool found = false;
    for (const X11WindowPlace &place : composer.viewableWindows())
        found = found || (place.window == pane && place.frame == QRect(50, 50, 480, 280));
    QVERIFY(found);
}

void X11ComposerTest::shapesAndTranslucencyAreKept()
{
    Client us;
    Client other;
    X11Composer composer(us.range());
    composer.setRedirecting(true);
    other.addWindow({0, 0, 400, 300}, red);
    const xcb_window_t shaped = other.addWindow({50, 50, 100, 100}, green);
    other.shape(shaped, {0, 0, 50, 100});
    other.addTranslucentWindow({200, 50, 100, 100}, 0x80000080); // half blue
    const QImage image = composer.compose({0, 0, 400, 300});
    QCOMPARE(image.pixel(60, 60), green);
    QCOMPARE(image.pixel(120, 60), red); // outside the shape
    const QRgb mixed = image.pixel(250, 100);
    QVERIFY2(qAbs(qRed(mixed) - 0x60) <= 2 && qAbs(qBlue(mixed) - 0x90) <= 2, qPrintable(QString::number(mixed, 16)));
}

void X11ComposerTest::windowsThatVanishCostOnlyTheirPixels()
{
    Client us;
    X11Composer composer(us.range());
    composer.setRedirecting(true);
    composer.compose({0, 0, 100, 100}); // settled from here on
    Client other;
    other.addWindow({0, 0, 640, 480}, red);
    QAtomicInt stop = 0;
    QThreadPool churn;
    churn.start([&] {
        Client restless;
        while (!stop) {
            const xcb_window_t window = restless.addWindow({100, 100, 200, 200}, green);
            restless.destroy(window);
        }
    });
    for (int i = 0; i < 200; ++i) {
        const QImage image = composer.compose({0, 0, 640, 480});
        QCOMPARE(image.size(), QSize(640, 480));
        QCOMPARE(image.pixel(10, 10), red);
    }
    stop = 1;
    churn.waitForDone();
}

void X11ComposerTest::aScaledDisplayGivesNativePixels()
{
    Client us;
    Client other;
    other.addWindow({700, 200, 200, 100}, red);
    const xcb_window_t pane = us.addWindow({680, 180, 240, 140}, blue);
    X11ScreenCapture capture(us.range());
    // The second display begins at 640 and has two pixels a point: the pane's corner is at 640 + 40 / 2.
    capture.setDisplays(
        {{.nativeFrame = {0, 0, 640, 800}, .scale = 1}, {.nativeFrame = {640, 0, 640, 800}, .scale = 2}});
    QSemaphore done;
    ShareableContent content;
    capture.shareableContent(false, true, [&](const Result<ShareableContent> &answer) {
        if (answer)
            content = *answer;
        done.release();
    });
    QVERIFY(done.tryAcquire(1, 5000));
    QCOMPARE(content.displays.size(), 2);
    QCOMPARE(content.displays[1].frame, QRectF(640, 0, 320, 400));
    QVERIFY(content.windows.contains(ShareableWindow{pane, QRectF(660, 90, 120, 70)}));

    QImage image;
    const ContentFilter filter{.display = content.displays[1]};
    QCOMPARE(capture.pointPixelScale(filter), 2.0);
    capture.screenshot(filter, {.sourceRect = {30, 100, 100, 50}, .width = 200, .height = 100},
                       [&](const Result<QImage> &answer) {
                           if (answer)
                               image = *answer;
                           done.release();
                       });
    QVERIFY(done.tryAcquire(1, 5000));
    QCOMPARE(image.size(), QSize(200, 100));
    QCOMPARE(image.pixel(0, 0), red);
    QCOMPARE(image.pixel(199, 99), red);
}

void X11ComposerTest::withoutAServerTheCaptureFails()
{
    qputenv("DISPLAY", ":4711");
    X11ScreenCapture capture({});
    QSemaphore done;
    bool failed = false;
    capture.shareableContent(false, true, [&](const Result<ShareableContent> &answer) {
        failed = !answer;
        done.release();
    });
    QVERIFY(done.tryAcquire(1, 5000));
    QVERIFY(failed);
    qputenv("DISPLAY", m_screen->display());
}

QTEST_GUILESS_MAIN(X11ComposerTest)
#include "X11ComposerTest.moc"
