#pragma once

#include "HistoryListModel.h"
#include "HistoryUndo.h"

#include <QWidget>

class QAction;
class QLabel;
class QLineEdit;
class QMenu;
class QStackedWidget;
class QToolButton;

namespace lucentra {

class HistoryListView;
class UndoBanner;
enum class ExportFormat;
enum class RowAction;

/// The history with its search field, its entries and the undo banner.
///
/// Keys: the arrows, Page Up and Down, Home and End move through the entries; Return shows the whole of a long one,
/// Ctrl+C copies its translation and Ctrl+Shift+C its original, Ctrl+D gives or takes its star, Delete deletes it, the
/// Menu key lists all of that. Ctrl+F goes to the search field, Ctrl+Z takes deletions back, Escape ends the search.
class HistoryView : public QWidget
{
    Q_OBJECT

public:
    HistoryView(HistoryManager &manager, const LocalizationManager &texts, Scheduler &scheduler);

    /// Updates all texts after a change of the interface language.
    void retranslate();
    /// Ends the search and goes to an entry, if it exists.
    void showEntry(const QUuid &id);
    /// Makes pending deletions final and hides the banner.
    void windowClosed();

Q_SIGNALS:
    /// Escape was pressed and there is no search to end.
    void closeRequested();

protected:
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *makeToolbar();
    QWidget *makeEmptyState();
    QToolButton *makeToolButton();
    QAction *addRowAction(const QKeySequence &shortcut, RowAction action);
    void addKeys();
    void applyPalette();
    void updateState();
    void updateNotice();
    void perform(const QModelIndex &index, RowAction action);
    void copy(const HistoryItem &item, RowAction action);
    void showRowMenu(QPoint place);
    void endSearch();
    void chooseExportFile(ExportFormat format);

    HistoryManager &m_manager;
    const LocalizationManager &m_texts;
    HistoryListModel m_model;
    HistoryUndo m_undo;
    QLineEdit *m_search = nullptr;
    QAction *m_searchSymbol = nullptr;
    QAction *m_clearSearch = nullptr;
    QToolButton *m_clearUnstarred = nullptr;
    QToolButton *m_pause = nullptr;
    QToolButton *m_export = nullptr;
    QMenu *m_exportMenu = nullptr;
    QLabel *m_notice = nullptr;
    QString m_problem; ///< shown until the window is closed
    QStackedWidget *m_content = nullptr;
    HistoryListView *m_list = nullptr;
    QLabel *m_emptySymbol = nullptr;
    QLabel *m_emptyText = nullptr;
    UndoBanner *m_banner = nullptr;
    QAction *m_star = nullptr;
    QAction *m_copyOriginal = nullptr;
    QAction *m_copyTranslation = nullptr;
    QAction *m_delete = nullptr;
};

} // namespace lucentra
