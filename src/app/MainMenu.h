#pragma once

#include "ShellActions.h"

#include <QList>
#include <QMenu>
#include <QMessageBox>
#include <QObject>
#include <QPointer>

class QMenuBar;

namespace lucentra {

class LocalizationManager;

/// The program's menus "Lucentra", "編輯", "翻譯" and "視窗": the menu bar of windows that have one, and the context
/// menu of the pane; and the menu of the status item. Items without a target act on the window or the text field that
/// has the focus.
class MainMenu : public QObject
{
public:
    MainMenu(const LocalizationManager &texts, const ShellActions &actions);

    /// Gives every item its title in the interface language.
    void build();

    /// Updates the item of live translation.
    void updateLive();
    /// The keys that the status menu's first item shows: modifier flags (VirtualKeys.h) and the key.
    void setToggleKeys(quint32 flags, const QString &key);
    QMenu &statusMenu() { return m_status; }

    /// Adds the menus to a window's menu bar.
    void fillMenuBar(QMenuBar &bar) const;
    /// Makes the shortcuts work in the widget and its window, and shows the menus on a right click or the Menu key.
    /// `itemsAt` returns the items that come first at a point of the widget. The menu doesn't own them.
    void attachContextMenu(QWidget &widget, std::function<QList<QAction *>(QPoint)> itemsAt);

private:
    struct Item
    {
        QAction *action;
        QString key; ///< of its title
    };

    void fillApplicationMenu();
    void fillEditMenu();
    void fillTranslateMenu();
    void fillWindowMenu();
    void fillContextMenu();
    void fillStatusMenu();
    QAction *add(QMenu &menu, const QString &key, const QKeySequence &shortcut, std::function<void()> act);
    void updateEditItems();
    void showAbout();

    const LocalizationManager &m_texts;
    const ShellActions &m_actions;
    QMenu m_application;
    QMenu m_edit;
    QMenu m_translate;
    QMenu m_window;
    QMenu m_context;
    QMenu m_status;
    QList<Item> m_items;
    QAction *m_toggle = nullptr;
    QAction *m_live = nullptr;
    QAction *m_settings = nullptr;
    QAction *m_quit = nullptr;
    QPointer<QMessageBox> m_about; ///< while it is open
};

} // namespace lucentra
