#include "AutoHide.h"
#include "EditCommands.h"
#include "MainMenu.h"
#include "ManualScheduler.h"
#include "TestProgram.h"
#include "TestTexts.h"
#include "ToolkitLanguage.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTest>

using namespace lucentra;
using namespace Qt::StringLiterals;

/// The menus, the status item and the hiding of the pane, without a desktop.
class ShellTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theStatusMenuFollowsTheHotkey()
    {
        MainMenu menu(m_texts.manager, m_actions);
        menu.build();
        for (const auto &[flags, key, shortcut] : {std::tuple(0x80000U, u"t"_s, u"Alt+T"_s),
                                                   {0x60000U, u"k"_s, u"Ctrl+Shift+K"_s},
                                                   {0x100000U, u"k"_s, u"Meta+K"_s},
                                                   {0x40000U, u"F5"_s, u"Ctrl+F5"_s},
                                                   {0x80000U, u"↩"_s, u"Alt+Return"_s},
                                                   {0U, u"a"_s, u"A"_s}}) {
            menu.setToggleKeys(flags, key);
            QCOMPARE(shown(menu.statusMenu()).first(), u"顯示/隱藏 翻譯板 | "_s + shortcut);
        }
    }

    void menusInTheirOrder()
    {
        MainMenu menu(m_texts.manager, m_actions);
        QMenuBar bar;
        menu.fillMenuBar(bar);
        const QList<QAction *> menus = bar.actions();
        menu.build();
        const QMenu &application = *menus[0]->menu<QMenu *>();
        QCOMPARE(shown(menu.statusMenu()).mid(1),
                 (QStringList{u"翻譯目前區域 | Alt+Return"_s, u"即時翻譯 | "_s, u"-"_s, u"翻譯歷史紀錄 | "_s,
                              u"設定… | Ctrl+,"_s, u"-"_s, u"結束 Lucentra｜澄鏡通 | Ctrl+Q"_s}));
        for (const int number : {1, 2, 4, 5})
            menu.statusMenu().actions()[number]->trigger();
        QCOMPARE(m_done, (QStringList{u"translate"_s, u"live"_s, u"history"_s, u"settings"_s}));
        menu.updateLive();
        QVERIFY(menu.statusMenu().actions()[2]->isChecked());
        m_canBeLive = false; // then the item says why
        menu.updateLive();
        const QAction &live = *menu.statusMenu().actions()[2];
        QVERIFY(!live.isEnabled() && live.text().contains(u"無法使用"_s));
        m_canBeLive = true;
        menu.updateLive();
        QStringList lines;
        for (const QAction *each : menus) {
            lines.append(each->text());
            lines.append(shown(*each->menu<QMenu *>()));
        }
        const QString expected =
            u"&Lucentra|關於 Lucentra｜澄鏡通 | |-|設定… | Ctrl+,|-|隱藏 Lucentra | Ctrl+H|-|結束 Lucentra｜澄鏡通 | "
            u"Ctrl+Q|"
            u"編輯(&E)|還原 | Ctrl+Z|重做 | Ctrl+Shift+Z|-|剪下 | Ctrl+X|複製 | Ctrl+C|貼上 | Ctrl+V|刪除 | Backspace|"
            u"全選 | Ctrl+A|翻譯(&R)|翻譯目前區域 | Alt+Return|即時翻譯 | |視窗(&W)|縮小 | Ctrl+M|關閉 | Ctrl+W"_s;
        QCOMPARE(lines.join(u'|'), expected);
        for (int time = 0; time < 2; ++time)
            application.actions()[0]->trigger();
        const auto windows = QApplication::topLevelWidgets();
        QList<QMessageBox *> abouts;
        for (QWidget *window : windows) {
            if (auto *about = qobject_cast<QMessageBox *>(window))
                abouts.append(about);
        }
        QCOMPARE(abouts.size(), 1);
        QVERIFY2(abouts[0]->informativeText().contains(u" (Build "_s), qPrintable(abouts[0]->informativeText()));
        delete abouts[0];
    }

    void editCommandsActOnTheTextField()
    {
        QLineEdit line(u"some text"_s);
        QPlainTextEdit text(u"some text"_s);
        const auto perform = [](QStringView title, QWidget &widget) {
            for (const EditCommand &command : editCommands()) {
                if (command.titleKey == title)
                    performEditCommand(command, &widget);
            }
        };
        for (QWidget *field : {static_cast<QWidget *>(&line), static_cast<QWidget *>(&text)}) {
            line.setCursorPosition(0);
            perform(u"刪除", *field); // of a selection, and there is none
            QCOMPARE(line.text() + text.toPlainText(), field == &line ? u"some textsome text"_s : u"some text"_s);
            perform(u"全選", *field);
            perform(u"刪除", *field);
        }
        QCOMPARE(line.text() + text.toPlainText(), QString());
        perform(u"還原", line);
        perform(u"還原", text);
        QCOMPARE(line.text() + text.toPlainText(), u"some textsome text"_s);
        QWidget none;
        perform(u"全選", none); // no text field: nothing to select in
        QVERIFY(!isTextField(&none) && !isTextField(nullptr));
    }

    void theToolkitSpeaksTheInterfaceLanguage()
    {
        ToolkitLanguage toolkit;
        QStringList words;
        for (const QString &code : {u"zh-Hant"_s, u"zh-Hans"_s, u"ja"_s, u"ko"_s, u"en"_s}) {
            toolkit.use(code);
            words.append(QCoreApplication::translate("QPlatformTheme", "Cancel"));
        }
        QCOMPARE(words, (QStringList{u"取消"_s, u"取消"_s, u"キャンセル"_s, u"취소"_s, u"Cancel"_s}));
    }

    void thePaneHidesOnlyWhenTheKeysAreReallyGone()
    {
        const auto losses = [&](bool hasInputFocus, bool isPointerInUse, bool comesBack) {
            bool isPaneActive = true;
            int lost = 0;
            AutoHide autoHide(m_scheduler,
                              {.isPaneActive = [&] { return isPaneActive; },
                               .hasInputFocus = [&] { return hasInputFocus; },
                               .isPointerInUse = [&] { return isPointerInUse; }},
                              [&] { ++lost; });
            autoHide.focusChanged();
            isPaneActive = false;
            autoHide.focusChanged();
            m_scheduler.advance(AutoHide::pollInterval * 10);
            const int atOnce = lost;
            isPaneActive = comesBack;
            hasInputFocus = isPointerInUse = false;
            m_scheduler.advance(AutoHide::pollInterval * 10);
            return std::pair(atOnce, lost);
        };
        QCOMPARE(losses(false, false, false), std::pair(1, 1)); // another window has them
        QCOMPARE(losses(true, false, true), std::pair(0, 0));   // a hotkey is held
        QCOMPARE(losses(true, false, false), std::pair(0, 1));  // and then another window has them
        QCOMPARE(losses(false, true, true), std::pair(0, 0));   // the pane is dragged
        QCOMPARE(losses(false, true, false), std::pair(0, 1));  // another window is clicked
        QVERIFY(m_scheduler.isIdle());
    }

private:
    static QStringList shown(const QMenu &menu)
    {
        QStringList lines;
        const QList<QAction *> actions = menu.actions();
        for (const QAction *action : actions)
            lines.append(action->isSeparator() ? u"-"_s : action->text() + u" | "_s + action->shortcut().toString());
        return lines;
    }

    TestTexts m_texts;
    ManualScheduler m_scheduler;
    QStringList m_done;
    bool m_isLive = false;
    bool m_canBeLive = true;
    ShellActions m_actions{.toggleWindow = [] {},
                           .translateCurrentArea = [this] { m_done.append(u"translate"_s); },
                           .openSettings = [this] { m_done.append(u"settings"_s); },
                           .openHistory = [this] { m_done.append(u"history"_s); },
                           .setLive =
                               [this](bool isLive) {
                                   m_isLive = isLive;
                                   m_done.append(u"live"_s);
                               },
                           .isLive = [this] { return m_isLive; },
                           .canBeLive = [this] { return m_canBeLive; },
                           .paneFrame = [] { return QRect(0, 0, 480, 280); }};
};

static const TestClass<ShellTest, QApplication> shellTest;
#include "ShellTest.moc"
