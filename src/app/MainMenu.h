#pragma once

#include "ShellActions.h"

#include <QList>
#include <QMenu>
#include <QMessageBox>
#include <QObject>
#include <QPointer>

#include <memory>

class QMenuBar;

namespace lucentra {

class LocalizationManager;

/// The program's menus "Lucentra", "編輯", "翻譯" and "視窗". They are the menu bar of windows that have one, and
/// the context menu of the pane, which has none. Items without a target act on the window, or the text field, that has
/// the focus.
class MainMenu : public QObject
{
public:
    MainMenu(const LocalizationManager &texts, const ShellActions &actions);
    ~MainMenu() override;

    /// Gives every item its title in the interface language.
    void build();

    /// Shows whether translations follow the screen.
    void updateLive();

    /// Gives a window the menus as its bar.
    void fillMenuBar(QMenuBar &bar) const;
    /// Makes the widget, with its window, answer the shortcuts, and shows the menus at a right click or the Menu key.
    void attachContextMenu(QWidget &widget);

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
    QList<Item> m_items;
    QAction *m_live = nullptr;
    QPointer<QMessageBox> m_about; ///< while it is open
};

} // namespace lucentra
