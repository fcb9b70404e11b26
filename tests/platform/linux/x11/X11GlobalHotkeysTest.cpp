#include "X11GlobalHotkeys.h"
#include "Columns.h"
#include "TestProgram.h"
#include "VirtualKeys.h"
#include "VirtualScreen.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTest>

#include <optional>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

constexpr auto first = HotkeyAction::TogglePane;
constexpr auto second = HotkeyAction::TranslateArea;

/// Another program, which has the server to itself from a change of the keyboard until a press of Alt and T: what
/// others ask for meanwhile has to wait.
const auto pressDuringAChange = uR"(
import time
from Xlib import X, display
server = display.Display()
server.grab_server()
server.set_modifier_mapping(server.get_modifier_mapping())
time.sleep(0.15)
for kind, key in ((X.KeyPress, 64), (X.KeyPress, 28), (X.KeyRelease, 28), (X.KeyRelease, 64)):
    server.xtest_fake_input(kind, key)
server.ungrab_server()
server.sync())"_s;

} // namespace

/// Keys are pressed as by a user's keyboard, and go to whatever holds them.
class X11GlobalHotkeysTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_screen.emplace();
        QVERIFY2(m_screen->use(), "Xvfb didn't start");
    }

    void init()
    {
        m_pressed.clear();
        m_hotkeys.emplace(m_scheduler);
        m_hotkeys->setPressedHandler([this](HotkeyAction action) { m_pressed.append(action); });
    }

    void cleanup() { m_hotkeys.reset(); }

    void aCombinationIsHeardWhateverTheLocks_data()
    {
        // layout: arguments of setxkbmap
        // before: keys that are pressed first, and again at the end
        const auto row = columns<QStringList, QStringList, quint32, QString, QString>("layout", "before", "modifiers",
                                                                                      "heard", "notHeard");
        constexpr quint32 option = hotkeyModifier::option;
        const QStringList us{u"us"_s, u"-option"_s, u""_s};
        row("no lock", us, {}, option, u"alt+28"_s, u"alt+shift+28"_s);
        row("Caps Lock", us, {u"Caps_Lock"_s}, option, u"alt+28"_s, u"28"_s);
        row("Num Lock", us, {u"Num_Lock"_s}, option, u"alt+28"_s, u"ctrl+alt+28"_s);
        row("three modifiers", us, {}, (hotkeyModifier::control | hotkeyModifier::shift | hotkeyModifier::command),
            u"ctrl+shift+super+28"_s, u"ctrl+shift+28"_s);
        row("no modifier", us, {}, 0, u"28"_s, u"shift+28"_s);
        row("a layout that has another letter there",
            {u"-layout"_s, u"us"_s, u"-variant"_s, u"dvorak"_s, u"-option"_s, u""_s}, {}, option, u"alt+28"_s,
            u"alt+45"_s);
        row("the second group of a layout",
            {u"-layout"_s, u"us,de"_s, u"-variant"_s, u","_s, u"-option"_s, u""_s, u"-option"_s, u"grp:sclk_toggle"_s},
            {u"78"_s}, option, u"alt+28"_s, u"alt+29"_s);
        row("Alt and Super exchanged", {u"us"_s, u"-option"_s, u""_s, u"-option"_s, u"altwin:swap_alt_win"_s}, {},
            option, u"Alt_L+28"_s, u"Super_L+28"_s);
    }
    void aCombinationIsHeardWhateverTheLocks()
    {
        if (QStandardPaths::findExecutable(u"setxkbmap"_s).isEmpty())
            QSKIP("needs setxkbmap");
        const auto [layout, before, modifiers, heard, notHeard] =
            fetched<QStringList, QStringList, quint32, QString, QString>();
        // Registered first: a change of the keyboard must be followed.
        QVERIFY(canHave(*m_hotkeys, virtualKey::t, modifiers));
        run(u"setxkbmap"_s, layout);
        presses();
        for (const QString &key : before)
            type({u"key"_s, key});
        type({u"key"_s, heard});
        const int heardCount = presses(1);
        type({u"key"_s, notHeard});
        const int notHeardCount = presses();
        for (const QString &key : before)
            type({u"key"_s, key});
        QCOMPARE(heardCount, 1);
        QCOMPARE(notHeardCount, 0);
    }

    void aHeldKeyIsOnePress()
    {
        QVERIFY(canHave(*m_hotkeys, virtualKey::t, hotkeyModifier::option));
        QVERIFY(canHave(*m_hotkeys, virtualKey::returnKey, hotkeyModifier::option, second));
        type({u"keydown"_s, u"alt"_s, u"keydown"_s, u"28"_s, u"sleep"_s, u"1"_s});
        QCOMPARE(presses(1), 1);
        type({u"key"_s, u"36"_s}); // while T is still down
        QTRY_COMPARE(m_pressed, QList{second});
        type({u"keyup"_s, u"28"_s, u"key"_s, u"28"_s, u"key"_s, u"28"_s, u"keyup"_s, u"alt"_s});
        QCOMPARE(presses(3), 3);
    }

    void aKeyThatIsDownAtFirstMustBeReleased()
    {
        type({u"keydown"_s, u"alt"_s, u"keydown"_s, u"28"_s});
        QVERIFY(canHave(*m_hotkeys, virtualKey::t, hotkeyModifier::option));
        QTest::qWait(900); // its repeats have begun
        type({u"keyup"_s, u"28"_s, u"keyup"_s, u"alt"_s});
        QCOMPARE(presses(), 0);
        type({u"key"_s, u"alt+28"_s});
        QCOMPARE(presses(1), 1);
    }

    void aPressWhileTheKeyboardIsAskedAboutIsHeard()
    {
        run(u"setxkbmap"_s, {u"us"_s, u"-option"_s, u""_s});
        QVERIFY(canHave(*m_hotkeys, virtualKey::t, hotkeyModifier::option));
        type({u"key"_s, u"alt+28"_s}); // from now on it is the keyboard that was used last
        QCOMPARE(presses(1), 1);
        QProcess user;
        user.start(u"/usr/bin/python3"_s, {u"-c"_s, pressDuringAChange});
        QCOMPARE(presses(1), 1);
        QTRY_COMPARE(user.state(), QProcess::NotRunning);
        QCOMPARE(user.exitCode(), 0);
    }

    void whatAnotherProgramHoldsIsRefused()
    {
        X11GlobalHotkeys other(m_scheduler);
        QVERIFY(canHave(other, virtualKey::t, hotkeyModifier::option));
        QCOMPARE(m_hotkeys->registerHotkey(first, virtualKey::t, hotkeyModifier::option), hotkeyStatus::taken);
        QVERIFY(canHave(*m_hotkeys, virtualKey::t, hotkeyModifier::control));

        // One that is held for a single state of the locks alone can't be had either, and none of it is kept.
        const X11Connection alone(xcb_connect(nullptr, nullptr));
        xcb_connection_t *c = alone.get();
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
        constexpr quint8 keyF = 41;
        const auto grab = [&](quint16 state) {
            const auto cookie =
                xcb_grab_key_checked(c, false, root, state, keyF, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
            return X11Reply<xcb_generic_error_t>(xcb_request_check(c, cookie)) == nullptr;
        };
        QVERIFY(grab(XCB_MOD_MASK_1 | XCB_MOD_MASK_LOCK));
        QVERIFY(!canHave(*m_hotkeys, 3, hotkeyModifier::option, second));
        QVERIFY(grab(XCB_MOD_MASK_1));
        QVERIFY(grab(XCB_MOD_MASK_1 | XCB_MOD_MASK_2));
    }

    void whatIsHeldIsRefusedUntilItIsLetGo()
    {
        QVERIFY(canHave(*m_hotkeys, virtualKey::t, hotkeyModifier::option));
        QVERIFY(!canHave(*m_hotkeys, virtualKey::t, hotkeyModifier::option, second));
        type({u"key"_s, u"alt+28"_s});
        QTRY_COMPARE(m_pressed, QList{first});
        m_hotkeys->unregisterHotkeys();
        X11GlobalHotkeys other(m_scheduler);
        QVERIFY(canHave(other, virtualKey::t, hotkeyModifier::option));
        m_pressed.clear();
        type({u"key"_s, u"alt+28"_s});
        QCOMPARE(presses(), 0);
    }

    void withoutAKeyOrAServerNothingIsRegistered()
    {
        qputenv("DISPLAY", ":9999");
        X11GlobalHotkeys nowhere(m_scheduler);
        m_screen->use();
        QVERIFY(!canHave(nowhere, virtualKey::t, hotkeyModifier::option));
        for (const quint32 keyCode : {0x7FU, 0xFFFFU, 0xFFFFFFFFU})
            QCOMPARE(m_hotkeys->registerHotkey(first, keyCode, 0), hotkeyStatus::invalid);
    }

private:
    static void run(const QString &program, const QStringList &arguments)
    {
        QProcess process;
        process.start(program, arguments);
        QVERIFY2(process.waitForFinished(10000) && process.exitCode() == 0, qPrintable(program));
    }

    static void type(const QStringList &arguments) { run(u"xdotool"_s, arguments); }

    /// How often a hotkey was reported since the last question, once as many as expected and a surplus had time to
    /// arrive.
    int presses(int expected = 0)
    {
        (void)QTest::qWaitFor([&] { return m_pressed.size() >= expected; });
        QTest::qWait(120);
        return int(std::exchange(m_pressed, {}).size());
    }

    /// Registers a hotkey. Returns false if it is refused.
    static bool canHave(GlobalHotkeys &hotkeys, quint32 keyCode, quint32 modifiers, HotkeyAction action = first)
    {
        return hotkeys.registerHotkey(action, keyCode, modifiers) == hotkeyStatus::registered;
    }

    std::optional<VirtualScreen> m_screen;
    EventLoopScheduler m_scheduler;
    std::optional<X11GlobalHotkeys> m_hotkeys;
    QList<HotkeyAction> m_pressed;
};

static const TestClass<X11GlobalHotkeysTest> x11GlobalHotkeysTest;
#include "X11GlobalHotkeysTest.moc"
