#include "MainMenu.h"

#include "EditCommands.h"
#include "LiveItem.h"
#include "LocalizationManager.h"
#include "Mnemonics.h"
#include "Version.h"

#include <QApplication>
#include <QMenuBar>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

void hideApplication()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowType() == Qt::Window)
            window->hide();
    }
}

void minimizeActiveWindow()
{
    if (QWidget *window = QApplication::activeWindow())
        window->showMinimized();
}

void closeActiveWindow()
{
    if (QWidget *window = QApplication::activeWindow())
        window->close();
}

} // namespace

MainMenu::MainMenu(const LocalizationManager &texts, const ShellActions &actions)
    : m_texts(texts)
    , m_actions(actions)
{
    fillApplicationMenu();
    fillEditMenu();
    fillTranslateMenu();
    fillWindowMenu();
    fillContextMenu();
}

MainMenu::~MainMenu() = default;

QAction *MainMenu::add(QMenu &menu, const QString &key, const QKeySequence &shortcut, std::function<void()> act)
{
    auto *action = new QAction(this);
    action->setShortcut(shortcut);
    connect(action, &QAction::triggered, this, std::move(act));
    menu.addAction(action);
    m_items.append({action, key});
    return action;
}

void MainMenu::fillApplicationMenu()
{
    add(m_application, u"關於 Lucentra｜澄鏡通"_s, {}, [this] { showAbout(); });
    m_application.addSeparator();
    add(m_application, u"設定…"_s, Qt::CTRL | Qt::Key_Comma, [this] { m_actions.openSettings(); });
    m_application.addSeparator();
    add(m_application, u"隱藏 Lucentra"_s, Qt::CTRL | Qt::Key_H, hideApplication);
    m_application.addSeparator();
    add(m_application, u"結束 Lucentra｜澄鏡通"_s, Qt::CTRL | Qt::Key_Q, [] { QCoreApplication::exit(); });
}

void MainMenu::fillEditMenu()
{
    for (const EditCommand &command : editCommands()) {
        if (command.startsGroup)
            m_edit.addSeparator();
        QAction *action = add(m_edit, command.titleKey.toString(), command.shortcut,
                              [&command] { performEditCommand(command, QApplication::focusWidget()); });
        // Text fields handle these keys themselves, and other widgets must not lose them.
        action->setShortcutContext(Qt::WidgetShortcut);
    }
    connect(&m_edit, &QMenu::aboutToShow, this, &MainMenu::updateEditItems);
    updateEditItems();
}

void MainMenu::fillTranslateMenu()
{
    add(m_translate, u"翻譯目前區域"_s, Qt::ALT | Qt::Key_Return, [this] { m_actions.translateCurrentArea(); });
    m_live = add(m_translate, liveItemKey.toString(), {}, [this] { m_actions.setLive(m_live->isChecked()); });
    m_live->setCheckable(true);
}

void MainMenu::updateLive()
{
    showLiveState(*m_live, m_actions, m_texts);
}

void MainMenu::fillWindowMenu()
{
    add(m_window, u"縮小"_s, Qt::CTRL | Qt::Key_M, minimizeActiveWindow);
    add(m_window, u"關閉"_s, Qt::CTRL | Qt::Key_W, closeActiveWindow);
}

void MainMenu::fillContextMenu()
{
    // What acts on the pane comes first, then the menus of the menu bar.
    m_context.addActions(m_translate.actions());
    m_context.addSeparator();
    m_context.addMenu(&m_edit);
    m_context.addMenu(&m_window);
    m_context.addSeparator();
    m_context.addActions(m_application.actions());
}

void MainMenu::build()
{
    QSet<QChar> letters;
    m_application.setTitle(withMnemonic(u"Lucentra"_s, letters));
    m_edit.setTitle(withMnemonic(m_texts.localized(u"編輯"_s), letters, u'E'));
    m_translate.setTitle(withMnemonic(m_texts.localized(u"翻譯"_s), letters, u'R')); // Alt+T is the hotkey's
    m_window.setTitle(withMnemonic(m_texts.localized(u"視窗"_s), letters, u'W'));
    for (const Item &item : std::as_const(m_items))
        item.action->setText(m_texts.localized(item.key));
    updateLive();
}

void MainMenu::fillMenuBar(QMenuBar &bar) const
{
    for (const QMenu *menu : {&m_application, &m_edit, &m_translate, &m_window})
        bar.addAction(menu->menuAction());
}

void MainMenu::attachContextMenu(QWidget &widget, std::function<QList<QAction *>(QPoint)> itemsAt)
{
    for (const Item &item : std::as_const(m_items)) {
        if (!item.action->shortcut().isEmpty())
            widget.addAction(item.action);
    }
    widget.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&widget, &QWidget::customContextMenuRequested, this,
            [this, &widget, itemsAt = std::move(itemsAt)](QPoint place) {
                const QList<QAction *> items = itemsAt(place); // deletes those of the last time
                m_context.insertActions(m_context.actions().constFirst(), items);
                m_context.popup(widget.mapToGlobal(place));
            });
}

void MainMenu::updateEditItems()
{
    const QList<QAction *> actions = m_edit.actions();
    for (QAction *action : actions)
        action->setEnabled(isTextField(QApplication::focusWidget()));
}

void MainMenu::showAbout()
{
    if (!m_about) {
        m_about = new QMessageBox(QMessageBox::NoIcon, m_texts.localized(u"關於 Lucentra｜澄鏡通"_s),
                                  m_texts.localized(u"Lucentra｜澄鏡通"_s), QMessageBox::Close);
        m_about->setInformativeText(versionAndBuild());
        m_about->setIconPixmap(QApplication::windowIcon().pixmap(64));
        m_about->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_about->show();
    m_about->raise();
    m_about->activateWindow();
}

} // namespace lucentra
