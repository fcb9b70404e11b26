#include "HotkeyManager.h"
#include "TestProgram.h"

#include "Columns.h"
#include "MainQueue.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "VirtualKeys.h"

#include <QGuiApplication>
#include <QJsonObject>
#include <QKeyEvent>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

#include <optional>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

constexpr auto toggle = HotkeyAction::TogglePane;
constexpr auto translate = HotkeyAction::TranslateArea;

/// Remembers what is registered at the moment; refuses the given ones.
class PlayedHotkeys : public GlobalHotkeys
{
public:
    using Combination = std::tuple<HotkeyAction, quint32, quint32>; ///< with the key's number and the modifiers

    bool areKeysChosenHere() const override { return true; }
    int registerHotkey(HotkeyAction action, quint32 keyCode, quint32 modifiers) override
    {
        if (refused.contains(action))
            return hotkeyStatus::taken;
        held.append({action, keyCode, modifiers});
        return hotkeyStatus::registered;
    }
    void unregisterHotkeys() override { held.clear(); }
    void setPressedHandler(std::function<void(HotkeyAction)> handler) override { pressed = std::move(handler); }

    QList<HotkeyAction> refused;
    QList<Combination> held;
    std::function<void(HotkeyAction)> pressed;
};

} // namespace

class HotkeyManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m = std::make_unique<Fixture>(); }

    void theStoredCombinationIsRegisteredAndShown_data()
    {
        const auto row = columns<QJsonObject, quint32, quint32, quint32, QString>("stored", "keyCode", "modifiers",
                                                                                  "shownFlags", "shownKey");
        row("nothing", {}, 17U, 0x800U, 0x80000U, u"t"_s);
        row("Command and Shift, the other numbers missing", {{u"hotkeyModifiers"_s, 0x120000}}, 17U, 0x300U, 0x120000U,
            u"t"_s);
        row("bits that are no modifiers", {{u"hotkeyModifiers"_s, 0xA80000}}, 17U, 0x800U, 0xA80000U, u"t"_s);
        row("no modifier, the A key", {{u"hotkeyCode"_s, 0}, {u"hotkeyModifiers"_s, 0}, {u"hotkeyString"_s, u"A"_s}},
            0U, 0U, 0U, u"a"_s);
        row("a key with a name",
            {{u"hotkeyCode"_s, 0x60}, {u"hotkeyModifiers"_s, 0x40000}, {u"hotkeyString"_s, u"⌃F5"_s}}, 0x60U, 0x1000U,
            0x40000U, u"F5"_s);
    }

    void theStoredCombinationIsRegisteredAndShown()
    {
        const auto [stored, keyCode, modifiers] = fetched<QJsonObject, quint32, quint32>();
        for (auto value = stored.begin(); value != stored.end(); ++value)
            m->settings.setValue(value.key(), value.value());
        m->manager.registerHotkeys();
        QCOMPARE(m->hotkeys.held,
                 (QList<PlayedHotkeys::Combination>{{toggle, keyCode, modifiers}, {translate, 36, 0x800}}));
        QTEST(m->shownFlags, "shownFlags");
        QTEST(m->shownKey, "shownKey");
        QCOMPARE(m->log, QStringList{u"  ✅ Carbon 熱鍵已註冊 keyCode=%1 carbonMods=%2"_s.arg(keyCode).arg(modifiers)});
    }

    void aRefusalIsALineAndStopsNothing()
    {
        m->hotkeys.refused = {toggle, translate};
        m->manager.registerHotkeys();
        QCOMPARE(m->log, (QStringList{u"  ⚠ Carbon RegisterEventHotKey 失敗，OSStatus=-9878"_s,
                                      u"  ⚠ ⌥Return 全域翻譯快捷鍵註冊失敗，OSStatus=-9878"_s}));
        QCOMPARE(m->shownKey, u"t"_s);
        m->hotkeys.refused = {toggle};
        m->manager.registerHotkeys();
        QCOMPARE(m->hotkeys.held, (QList<PlayedHotkeys::Combination>{{translate, 36, 0x800}}));
    }

    void registeringAgainLeavesOneRegistration()
    {
        m->manager.registerHotkeys();
        m->settings.write(settings::hotkeyCode, 40);
        m->manager.registerHotkeys();
        QCOMPARE(m->hotkeys.held, (QList<PlayedHotkeys::Combination>{{toggle, 40, 0x800}, {translate, 36, 0x800}}));
        m->manager.unregisterHotkeys();
        QVERIFY(m->hotkeys.held.isEmpty() && !m->hotkeys.pressed);
    }

    void pressesArriveThroughTheMainQueue()
    {
        QStringList called;
        m->manager.onToggleWindow = [&] { called.append(u"toggle"_s); };
        m->manager.onTranslateCurrentArea = [&] { called.append(u"translate"_s); };
        m->manager.registerHotkeys();
        QVERIFY(!m->manager.isRefused(HotkeyAction::SwitchLive)); // there is none
        m->settings.write(settings::liveHotkeyCode, 37);
        m->settings.write(settings::liveHotkeyString, u"L"_s);
        m->manager.registerHotkeys();
        m->manager.onSwitchLive = [&] { called.append(u"live"_s); };
        QCOMPARE(m->hotkeys.held.last(), (PlayedHotkeys::Combination{HotkeyAction::SwitchLive, 37, 0}));
        for (const HotkeyAction action : {translate, toggle, HotkeyAction::SwitchLive})
            m->hotkeys.pressed(action);
        QCOMPARE(called, QStringList());
        m->mainQueue.drain();
        QCOMPARE(called, (QStringList{u"translate"_s, u"toggle"_s, u"live"_s}));
    }

    void escapeHidesThePaneAlone()
    {
        int hidden = 0;
        m->manager.onHideWindow = [&] { ++hidden; };
        m->manager.registerHotkeys();
        m->manager.registerHotkeys(); // one monitor, however often
        QWindow window;
        const auto press = [&](Qt::Key key) {
            QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
            QCoreApplication::sendEvent(&window, &event);
        };
        press(Qt::Key_Escape);
        QCOMPARE(hidden, 0);
        m->isPaneKey = true;
        press(Qt::Key_Space);
        QCOMPARE(hidden, 0);
        press(Qt::Key_Escape);
        QCOMPARE(hidden, 1);
    }

    void everyKeyHasOneNumberEitherWay()
    {
        QSet<quint32> numbers;
        for (quint32 xKeyCode = 8; xKeyCode <= 255; ++xKeyCode) {
            const auto number = virtualKeyOfXKeyCode(xKeyCode);
            QVERIFY(number && !numbers.contains(*number));
            numbers.insert(*number);
            QCOMPARE(xKeyCodeOfVirtualKey(*number), std::optional(quint8(xKeyCode)));
        }
        for (quint32 number = 0; number <= 0xFFFF; ++number)
            QCOMPARE(xKeyCodeOfVirtualKey(number).has_value(), numbers.contains(number));
        QCOMPARE(virtualKeyOfXKeyCode(28), std::optional(virtualKey::t));
        QCOMPARE(virtualKeyOfXKeyCode(36), std::optional(virtualKey::returnKey));
        QCOMPARE(virtualKeyOfXKeyCode(9), std::optional(virtualKey::escape));
    }

    void combinationsAreShown()
    {
        for (const auto &[flags, key, shown] : {std::tuple(0x1E0000U, u"k"_s, u"⌃⌥⇧⌘K"_s),
                                                {0U, u"ä"_s, u"Ä"_s},
                                                {modifierFlag::shift, u"Page Up"_s, u"⇧Page Up"_s},
                                                {modifierFlag::option, u"𐐨"_s, u"⌥𐐀"_s},
                                                {modifierFlag::option, u"İ"_s, u"⌥İ"_s}}) {
            QCOMPARE(hotkeyDisplayString(flags, key), shown);
            QCOMPARE(hotkeyDisplayString(flags, menuKeyOfDisplayString(shown)), shown); // and a menu shows the same
        }
        QCOMPARE(hotkeyDisplayString(modifierFlag::shift, QString()), QString());
    }

private:
    struct Fixture
    {
        QTemporaryDir folder;
        SettingsStore settings{folder.filePath(u"preferences.json"_s)};
        MainQueue mainQueue;
        PlayedHotkeys hotkeys;
        QStringList log;
        bool isPaneKey = false;
        HotkeyManager manager{settings, hotkeys, mainQueue, [this] { return isPaneKey; },
                              [this](const QString &line) { log.append(line); }};
        quint32 shownFlags = 0;
        QString shownKey;

        Fixture()
        {
            manager.onHotkeyDisplayChanged = [this](quint32 flags, const QString &key) {
                shownFlags = flags;
                shownKey = key;
            };
        }
    };
    std::unique_ptr<Fixture> m;
};

static const TestClass<HotkeyManagerTest, QGuiApplication> hotkeyManagerTest;
#include "HotkeyManagerTest.moc"
