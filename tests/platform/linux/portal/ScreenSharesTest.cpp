#include "DesktopShortcuts.h"
#include "Columns.h"
#include "ScreenShares.h"
#include "TestProgram.h"

#include <QTest>

#include <limits>

using namespace lucentra;
using namespace Qt::StringLiterals;

class ScreenSharesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachMonitorHasTheNewestToken()
    {
        QString stored = u"no JSON"_s;
        ScreenShares shares(
            {.read = [&] { return stored; }, .write = [&](const QString &text) { stored = text; }});
        const QRect left(0, 0, 1280, 800);
        const QRect right(1280, 0, 1024, 768);
        QVERIFY(shares.isEmpty());

        shares.replace({}, u"a"_s, {{.node = 1, .frame = left}});
        QCOMPARE(shares.tokenFor(left, {right}), u"a"_s);
        QCOMPARE(shares.tokenFor(right, {left}), QString());
        shares.replace({}, u"b"_s, {{.node = 1, .frame = right}});
        shares.replace(u"a"_s, u"c"_s, {{.node = 1, .frame = left}});
        QCOMPARE(shares.tokenFor(left, {right}), u"c"_s);
        QCOMPARE(shares.tokenFor(right, {left}), u"b"_s);

        QCOMPARE(shares.tokenFor(left, {}), u"c"_s);
        QCOMPARE(shares.tokenFor(QRect(QPoint(), right.size()), {}), u"b"_s); // its neighbour was removed
        const QRect beside(left.width(), 0, left.width(), left.height());
        QCOMPARE(shares.tokenFor(beside, {QRect(QPoint(), right.size())}), u"c"_s); // they have changed places
        QCOMPARE(shares.tokenFor(beside, {left}), QString());                       // its twin
        shares.replace(u"c"_s, {}, {}); // refused
        QCOMPARE(shares.tokenFor(left, {right}), QString());
        QCOMPARE(shares.tokenFor(left, {}), u"b"_s);
        shares.replace(u"b"_s, u"d"_s, {{.node = 1, .frame = left}}); // another monitor than before
        QCOMPARE(shares.tokenFor(right, {left}), QString());
        QCOMPARE(shares.tokenFor(left, {right}), u"d"_s);
        shares.replace(u"d"_s, QString(100000, u'x'), {{.node = 1, .frame = left}});
        QVERIFY(shares.isEmpty());
    }

    void framesThatNoMonitorHasAreIgnored()
    {
        constexpr int most = std::numeric_limits<int>::max();
        for (const int place : {most, -most})
            QCOMPARE(monitorFrame(place, 0, 1280, 800), QRect());
        for (const int width : {most, -1, 0})
            QCOMPARE(monitorFrame(0, 0, width, 800), QRect());
        QCOMPARE(monitorFrame(-1920, 0, 1920, 1080), QRect(-1920, 0, 1920, 1080));
    }

    void monitorsAreRecognizedAtEveryScale_data()
    {
        const auto row = columns<QRect, QRect, bool>("shared", "native", "isSame");
        row("the same numbers", QRect(1280, 0, 1024, 768), QRect(1280, 0, 1024, 768), true);
        row("twice as many pixels", QRect(1280, 0, 1024, 768), QRect(2560, 0, 2048, 1536), true);
        row("a fraction more", QRect(0, 0, 1536, 864), QRect(0, 0, 1920, 1080), true);
        row("its twin beside it", QRect(0, 0, 1280, 800), QRect(1280, 0, 1280, 800), false);
        row("another shape", QRect(0, 0, 1024, 768), QRect(0, 0, 1280, 800), false);
        row("a desktop that reports no places", {}, QRect(0, 0, 1280, 800), true);
    }
    void monitorsAreRecognizedAtEveryScale()
    {
        const auto [shared, native] = fetched<QRect, QRect>();
        QTEST(isSameMonitor({.frame = shared}, native), "isSame");
    }

    void shortcutsAreWrittenAsGnomeDoes()
    {
        QCOMPARE(gnomeAccelerator(u"Alt+T"_s), u"<Alt>t"_s);
        QCOMPARE(gnomeAccelerator(u"Ctrl+Shift+Meta+F5"_s), u"<Ctrl><Shift><Super>F5"_s);
    }
};

static const TestClass<ScreenSharesTest> screenSharesTest;
#include "ScreenSharesTest.moc"
