#include "MainMenu.h"

#include "EditCommands.h"
#include "LocalizationManager.h"
#include "Mnemonics.h"
#include "UncoveredPlace.h"
#include "Version.h"
#include "VirtualKeys.h"

#include <QApplication>
#include <QGridLayout>
#include <QHash>
#include <QMenuBar>
#include <QScreen>
#include <QSpacerItem>

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

/// An earlier version stored keys without a letter as private-use characters.
QString keyName(const QString &key)
{
    constexpr char16_t firstFunctionKey = 0xF704;
    constexpr char16_t lastFunctionKey = 0xF717; // F20
    static const QHash<QString, QString> names{
        {u"\uF700"_s, u"Up"_s},    {u"\uF701"_s, u"Down"_s}, {u"\uF702"_s, u"Left"_s},
        {u"\uF703"_s, u"Right"_s}, {u"\uF728"_s, u"Del"_s},  {u"\uF729"_s, u"Home"_s},
        {u"\uF72B"_s, u"End"_s},   {u"\uF72C"_s, u"PgUp"_s}, {u"\uF72D"_s, u"PgDown"_s}};
    if (key.size() == 1 && key[0].unicode() >= firstFunctionKey && key[0].unicode() <= lastFunctionKey)
        return u'F' + QString::number(key[0].unicode() - firstFunctionKey + 1);
    return names.value(key, toolkitKeyName(key));
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
    fillStatusMenu();
}

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
    m_settings = add(m_application, u"設定…"_s, Qt::CTRL | Qt::Key_Comma, [this] { m_actions.openSettings(); });
    m_application.addSeparator();
    add(m_application, u"隱藏 Lucentra"_s, Qt::CTRL | Qt::Key_H, hideApplication);
    m_application.addSeparator();
    m_quit = add(m_application, u"結束 Lucentra｜澄鏡通"_s, Qt::CTRL | Qt::Key_Q, [] { QCoreApplication::exit(); });
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
    m_live = add(m_translate, u"即時翻譯"_s, {}, [this] { m_actions.setLive(m_live->isChecked()); });
    m_live->setCheckable(true);
}

void MainMenu::updateLive()
{
    const bool isAllowed = m_actions.canBeLive && m_actions.canBeLive();
    m_live->setEnabled(isAllowed);
    m_live->setChecked(isAllowed && m_actions.isLive());
    m_live->setText(
        m_texts.localized(isAllowed ? u"即時翻譯"_s : u"即時翻譯（這個桌面擷取畫面時翻譯板會閃爍，無法使用）"_s));
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

void MainMenu::fillStatusMenu()
{
    m_toggle = add(m_status, u"顯示/隱藏 翻譯板"_s, {}, [this] { m_actions.toggleWindow(); });
    m_status.addActions(m_translate.actions());
    m_status.addSeparator();
    add(m_status, u"翻譯歷史紀錄"_s, {}, [this] { m_actions.openHistory(); });
    m_status.addAction(m_settings);
    m_status.addSeparator();
    m_status.addAction(m_quit);
}

void MainMenu::setToggleKeys(quint32 flags, const QString &key)
{
    m_toggle->setShortcut(
        QKeySequence(modifierNames(hotkeyModifiersOfFlags(flags)) + keyName(key), QKeySequence::PortableText));
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
        if (!item.action->shortcut().isEmpty() && item.action != m_toggle) // which is a global hotkey
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
        // The box has no width of its own that would leave room for the title between the window's buttons.
        constexpr int buttons = 160;
        const int width = m_about->fontMetrics().horizontalAdvance(m_about->windowTitle()) + buttons;
        if (auto *grid = qobject_cast<QGridLayout *>(m_about->layout()))
            grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, -1);
        m_about->move(
            uncoveredPlace(m_about->sizeHint(), m_about->screen()->availableGeometry(), m_actions.paneFrame()));
    }
    m_about->show();
    m_about->raise();
    m_about->activateWindow();
}

} // namespace lucentra
