#include "HotkeyButton.h"
#include "TestProgram.h"

#include "Columns.h"
#include "ManualScheduler.h"
#include "TestTexts.h"
#include "VirtualKeys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTest>
#include <QVBoxLayout>

#include <optional>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

struct Key
{
    quint32 xKeyCode;
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    QString text;
};

} // namespace
Q_DECLARE_METATYPE(Key)

class HotkeyButtonTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m.emplace();
        m->window.show();
        QVERIFY(QTest::qWaitForWindowActive(&m->window));
    }

    void combinationsAreRecorded_data()
    {
        const auto row = columns<Key, quint32, quint32, QString>("key", "flags", "code", "shown");
        row("Control, whose text is no letter", {45, Qt::Key_K, Qt::ControlModifier | Qt::ShiftModifier, u"\x0b"_s},
            0x60000U, 40U, u"⌃⇧K"_s);
        row("a key that moves the focus", {23, Qt::Key_Backtab, Qt::ShiftModifier | Qt::MetaModifier, QString()},
            0x120000U, 48U, u"⇧⌘⇥"_s);
        row("another layout's letter at the T position", {28, Qt::Key(0x0415), Qt::AltModifier, u"е"_s}, 0x80000U, 17U,
            u"⌥Е"_s);
        row("a dead key", {21, Qt::Key_Dead_Acute, Qt::AltModifier, QString()}, 0x80000U, 24U, u"⌥="_s);
        row("the keypad's Enter", {104, Qt::Key_Enter, Qt::AltModifier | Qt::KeypadModifier, u"\r"_s}, 0x80000U, 0x4CU,
            u"⌥⌅"_s);
        row("a key that the numbering lacks", {107, Qt::Key_Print, Qt::ControlModifier, QString()}, 0x40000U, 0x16BU,
            u"⌃Print"_s);
    }

    void combinationsAreRecorded()
    {
        QFETCH(Key, key);
        m->click();
        QCOMPARE(m->button.text(), u"請按下組合鍵... (按 ESC 取消)"_s);
        m->press(key);
        QVERIFY(!m->button.isRecording());
        QTEST(m->flags, "flags");
        QTEST(m->code, "code");
        QTEST(m->button.defaultTitle(), "shown");
        QCOMPARE(m->button.text(), desktopNameOfHotkey(m->button.defaultTitle()));
    }

    void keysThatChangeNothing()
    {
        for (const auto &[key, ends] : {std::pair(Key{9, Qt::Key_Escape, Qt::NoModifier, u"\x1b"_s}, true),
                                        {Key{36, Qt::Key_Return, Qt::AltModifier, u"\r"_s}, true},
                                        {Key{64, Qt::Key_Alt, Qt::NoModifier, QString()}, false},
                                        {Key{0, Qt::Key_unknown, Qt::NoModifier, QString()}, false}}) {
            init();
            m->click();
            m->press(key);
            QCOMPARE(m->button.isRecording(), !ends);
            QCOMPARE(m->button.defaultTitle(), u"⌥T"_s);
            QCOMPARE(m->button.text() == u"Alt+T"_s, ends);
            QVERIFY(!m->events.contains(u"changed"_s));
            m->press({28, Qt::Key_Y, Qt::AltModifier, u"y"_s});
            QCOMPARE(m->events.contains(u"changed"_s), !ends);
        }
    }

    void otherFocusEndsARecording()
    {
        m->click();
        m->other.setFocus();
        QVERIFY(!m->button.isRecording());
        QCOMPARE(m->button.text(), u"Alt+T"_s);
        m->click();
        m->window.hide();
        QVERIFY(!m->button.isRecording());
    }

    void aMomentWithoutTheFocusDoesNot()
    {
        m->click();
        QFocusEvent out(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QFocusEvent in(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
        QApplication::sendEvent(&m->button, &out);
        m->scheduler.advance(HotkeyButton::focusPatience / 2);
        QApplication::sendEvent(&m->button, &in);
        m->scheduler.advance(HotkeyButton::focusPatience);
        QVERIFY(m->button.isRecording());
        QApplication::sendEvent(&m->button, &out);
        m->scheduler.advance(HotkeyButton::focusPatience);
        QVERIFY(!m->button.isRecording());
    }

    void theProgramLearnsOfTheRecordingAndOfTheChangeInOrder()
    {
        m->click();
        m->press({28, Qt::Key_T, Qt::AltModifier, u"t"_s});
        QCOMPARE(m->events, (QStringList{u"began"_s, u"changed"_s, u"ended"_s}));
        QTest::keyClick(&m->button, Qt::Key_Space); // the keyboard begins a recording too
        QCOMPARE(m->events.size(), 4);
        m->press({9, Qt::Key_Escape, Qt::NoModifier, QString()});
        QCOMPARE(m->events.last(), u"ended"_s);
    }

private:
    struct Fixture
    {
        TestTexts texts;
        ManualScheduler scheduler;
        QWidget window;
        HotkeyButton button{texts.manager, scheduler};
        QPushButton other{&window};
        quint32 flags = 0;
        quint32 code = 0;
        QStringList events;

        Fixture()
        {
            button.setDefaultTitle(u"⌥T"_s);
            auto *layout = new QVBoxLayout(&window);
            layout->addWidget(&button);
            layout->addWidget(&other);
            button.onRecordingChanged = [this](bool isRecording) {
                events.append(isRecording ? u"began"_s : u"ended"_s);
            };
            button.onHotkeyChanged = [this](quint32 newFlags, quint32 newCode, const QString &) {
                flags = newFlags;
                code = newCode;
                events.append(u"changed"_s);
            };
        }
        void click() { QTest::mouseClick(&button, Qt::LeftButton); }
        void press(const Key &key)
        {
            // As the toolkit delivers a key: is it a shortcut, then the key itself.
            QKeyEvent override(QEvent::ShortcutOverride, key.key, key.modifiers, key.xKeyCode, 0, 0, key.text);
            QApplication::sendEvent(&button, &override);
            QKeyEvent event(QEvent::KeyPress, key.key, key.modifiers, key.xKeyCode, 0, 0, key.text);
            QApplication::sendEvent(&button, &event);
        }
    };
    std::optional<Fixture> m;
};

static const TestClass<HotkeyButtonTest, QApplication> hotkeyButtonTest;
#include "HotkeyButtonTest.moc"
