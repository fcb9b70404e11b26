#include "TestClient.h"
#include "TestProgram.h"
#include "VirtualScreen.h"
#include "X11ScreenCapture.h"

#include <QTest>

#include <optional>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

constexpr QRgb red = 0xffc02020;
constexpr QRgb green = 0xff20c020;
constexpr QRgb blue = 0xff2020c0;

/// Two programs, and what the first of them sees of the screen.
struct Scene
{
    Scene() { composer.setRedirecting(true); }
    TestClient us, other;
    X11Composer composer{us.range()};
};

} // namespace

class X11ComposerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_screen.emplace();
        QVERIFY2(m_screen->use(), "Xvfb didn't start");
    }

    void foreignWindowsAreComposedInTheirOrder()
    {
        Scene scene;
        auto &[us, other, composer] = scene;
        QVERIFY(composer.isUsable());
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

    void whoseAWindowIsThatHoldsOneOfOurs()
    {
        Scene scene;
        auto &[us, other, composer] = scene;
        other.addWindow({0, 0, 600, 400}, red);
        const xcb_window_t frame = other.addWindow({50, 50, 300, 200}, green);
        us.putInto(us.addWindow({0, 0, 280, 180}, blue), frame); // as window managers do
        const xcb_window_t bar = other.addWindow({0, 300, 600, 30}, green);
        us.putInto(us.addWindow({0, 0, 24, 24}, blue), bar); // our icon among others
        const QImage image = composer.compose({0, 0, 600, 400});
        QCOMPARE(image.pixel(200, 100), red);
        QCOMPARE(image.pixel(300, 315), green);
    }

    void ourWindowsAreNeverInTheImage()
    {
        TestClient us;
        TestClient other;
        other.paintRoot(green);
        other.forgetDesktopPicture();
        X11Composer composer(us.range());
        composer.setRedirecting(true);
        us.addWindow({50, 50, 480, 280}, blue);
        other.addWindow({400, 0, 400, 400}, red);
        const QImage image = composer.compose({40, 40, 500, 300});
        for (const QPoint point : {QPoint(2, 2), QPoint(20, 20), QPoint(350, 280)})
            QCOMPARE(image.pixel(point), green);
        QCOMPARE(image.pixel(450, 100), red);
    }

    void shapesAndTranslucencyAreKept()
    {
        Scene scene;
        auto &[us, other, composer] = scene;
        other.addWindow({0, 0, 400, 300}, red);
        const xcb_window_t shaped = other.addWindow({50, 50, 100, 100}, green);
        other.shape(shaped, {0, 0, 50, 100});
        other.addTranslucentWindow({200, 50, 100, 100}, 0x80000080); // half blue
        const QImage image = composer.compose({0, 0, 400, 300});
        QCOMPARE(image.pixel(60, 60), green);
        QCOMPARE(image.pixel(120, 60), red); // outside the shape
        const QRgb mixed = image.pixel(250, 100);
        QVERIFY2(qAbs(qRed(mixed) - 0x60) <= 2 && qAbs(qBlue(mixed) - 0x90) <= 2,
                 qPrintable(QString::number(mixed, 16)));
    }

    void windowsThatVanishCostOnlyTheirPixels()
    {
        TestClient us;
        X11Composer composer(us.range());
        composer.setRedirecting(true);
        composer.compose({0, 0, 100, 100}); // settled from here on
        TestClient other;
        other.addWindow({0, 0, 640, 480}, red);
        QAtomicInt stop = 0;
        QThreadPool churn;
        churn.start([&] {
            TestClient restless;
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

    void aScaledDisplayGivesNativePixels()
    {
        TestClient us;
        TestClient other;
        other.addWindow({700, 200, 200, 100}, red);
        const xcb_window_t pane = us.addWindow({680, 180, 240, 140}, blue);
        X11ScreenCapture capture(us.range());
        // The second display begins at 640 and has two pixels a point: the pane's corner is at 640 + 40 / 2.
        capture.setDisplays(
            {{.nativeFrame = {0, 0, 640, 800}, .scale = 1}, {.nativeFrame = {640, 0, 640, 800}, .scale = 2}});
        const auto surroundings = capture.surroundings(pane);
        QVERIFY(surroundings);
        QCOMPARE(surroundings->displays, (QList<ScreenRect>{{0, 0, 640, 800}, {640, 0, 320, 400}}));
        QCOMPARE(surroundings->paneWindow, ScreenRect(660, 90, 120, 70));

        const QImage image = capture.capture({670, 100, 100, 50}).value_or(QImage());
        QCOMPARE(image.size(), QSize(200, 100));
        QCOMPARE(image.pixel(0, 0), red);
        QCOMPARE(image.pixel(199, 99), red);
    }

    void withoutAServerTheCaptureFails()
    {
        qputenv("DISPLAY", ":4711");
        X11ScreenCapture capture({});
        QVERIFY(!capture.surroundings(1));
        QVERIFY(!capture.capture({0, 0, 10, 10}));
        m_screen->use();
    }

    void whatTheServerLacksIsNamed()
    {
        const VirtualScreen poor(u"640x480x24"_s, {u"-extension"_s, u"Composite"_s, u"-extension"_s, u"XFIXES"_s});
        poor.use();
        X11ScreenCapture capture({});
        capture.explainMissing([](const QString &names) { return u"lacks "_s + names; });
        const auto surroundings = capture.surroundings(1);
        m_screen->use();
        QVERIFY(!surroundings);
        QCOMPARE(surroundings.error().description, u"lacks Composite, XFIXES"_s);
    }

private:
    std::optional<VirtualScreen> m_screen;
};

static const TestClass<X11ComposerTest> x11ComposerTest;
#include "X11ComposerTest.moc"
