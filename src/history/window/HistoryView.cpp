#include "HistoryView.h"

#include "HistoryExport.h"
#include "HistoryListView.h"
#include "HistoryManager.h"
#include "LocalizationManager.h"
#include "Symbol.h"
#include "UndoBanner.h"

#include <QAction>
#include <QClipboard>
#include <QEvent>
#include <QFileDialog>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QShortcut>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr int toolbarPadding = 14;
constexpr int emptySymbolSize = 40;

QFrame *makeDivider()
{
    auto *divider = new QFrame;
    divider->setFrameShape(QFrame::HLine);
    divider->setFrameShadow(QFrame::Plain);
    QPalette palette = divider->palette();
    palette.setColor(QPalette::WindowText, QColor(128, 128, 128, 70));
    divider->setPalette(palette);
    return divider;
}

} // namespace

HistoryView::HistoryView(HistoryManager &manager, const LocalizationManager &texts, Scheduler &scheduler)
    : m_manager(manager)
    , m_texts(texts)
    , m_model(manager, texts, scheduler)
    , m_undo(manager, texts, scheduler)
    , m_content(new QStackedWidget)
    , m_list(new HistoryListView(m_model, texts, scheduler))
    , m_banner(new UndoBanner)
{
    setMinimumSize(400, 500);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(makeToolbar());
    column->addWidget(makeDivider());
    m_notice = new QLabel;
    m_notice->setWordWrap(true);
    m_notice->setTextFormat(Qt::PlainText);
    m_notice->setMargin(8);
    m_notice->setIndent(toolbarPadding - 8);
    column->addWidget(m_notice);
    m_content->addWidget(m_list);
    m_content->addWidget(makeEmptyState());
    column->addWidget(m_content, 1);
    column->addWidget(m_banner);

    addKeys();
    m_banner->onPressed = [this] { m_undo.undo(); };
    connect(&m_undo, &HistoryUndo::changed, this, [this] { m_banner->setMessage(m_undo.undoMessage()); });
    connect(m_list, &HistoryListView::actionTriggered, this, &HistoryView::perform);
    connect(m_list, &QWidget::customContextMenuRequested, this, &HistoryView::showRowMenu);
    connect(&m_manager, &HistoryManager::changed, this, &HistoryView::updateState);
    connect(&m_model, &QAbstractItemModel::rowsInserted, this, &HistoryView::updateState);
    connect(&m_model, &HistoryListModel::searchCompleted, this, &HistoryView::updateState);
    applyPalette();
    retranslate();
    setFocusProxy(m_list);
}

QToolButton *HistoryView::makeToolButton()
{
    auto *button = new QToolButton;
    button->setAutoRaise(true);
    button->setIconSize({16, 16});
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

QWidget *HistoryView::makeToolbar()
{
    auto *toolbar = new QWidget;
    auto *row = new QHBoxLayout(toolbar);
    row->setContentsMargins(toolbarPadding, toolbarPadding, toolbarPadding, toolbarPadding);
    row->setSpacing(6);
    m_search = new QLineEdit;
    m_search->installEventFilter(this);
    m_searchSymbol = m_search->addAction(QIcon(), QLineEdit::LeadingPosition);
    m_clearSearch = m_search->addAction(QIcon(), QLineEdit::TrailingPosition);
    connect(m_clearSearch, &QAction::triggered, m_search, &QLineEdit::clear);
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_model.setSearchText(text);
        m_list->relayout();
        updateState();
    });
    row->addWidget(m_search, 1);

    m_clearUnstarred = makeToolButton();
    m_clearUnstarred->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    connect(m_clearUnstarred, &QToolButton::clicked, this, [this] { m_undo.clearUnstarred(); });
    row->addWidget(m_clearUnstarred);
    m_export = makeToolButton();
    m_export->setPopupMode(QToolButton::InstantPopup);
    m_exportMenu = new QMenu(m_export);
    m_export->setMenu(m_exportMenu);
    for (const ExportFormat format : {ExportFormat::Csv, ExportFormat::Json, ExportFormat::Tsv})
        connect(m_exportMenu->addAction(QString()), &QAction::triggered, this,
                [this, format] { chooseExportFile(format); });
    row->addWidget(m_export);
    m_pause = makeToolButton();
    m_pause->setCheckable(true);
    connect(m_pause, &QToolButton::toggled, this, [this](bool paused) {
        m_manager.setPaused(paused);
        updateNotice();
    });
    row->addWidget(m_pause);
    return toolbar;
}

QWidget *HistoryView::makeEmptyState()
{
    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    m_emptySymbol = new QLabel;
    m_emptySymbol->setAlignment(Qt::AlignCenter);
    m_emptyText = new QLabel;
    m_emptyText->setAlignment(Qt::AlignCenter);
    m_emptyText->setWordWrap(true);
    column->addStretch();
    column->addWidget(m_emptySymbol);
    column->addSpacing(8);
    column->addWidget(m_emptyText);
    column->addStretch();
    return page;
}

QAction *HistoryView::addRowAction(const QKeySequence &shortcut, RowAction action)
{
    auto *item = new QAction(this);
    item->setShortcut(shortcut);
    item->setShortcutContext(Qt::WidgetShortcut);
    connect(item, &QAction::triggered, this, [this, action] { perform(m_list->currentIndex(), action); });
    m_list->addAction(item);
    return item;
}

void HistoryView::addKeys()
{
    m_star = addRowAction(Qt::CTRL | Qt::Key_D, RowAction::Star);
    m_copyOriginal = addRowAction(Qt::CTRL | Qt::SHIFT | Qt::Key_C, RowAction::CopyOriginal);
    m_copyTranslation = addRowAction(QKeySequence::Copy, RowAction::CopyTranslation);
    m_delete = addRowAction(QKeySequence::Delete, RowAction::Delete);
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    m_list->installEventFilter(this);
    const auto key = [this](const QKeySequence &keys, auto act) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, act);
    };
    key(QKeySequence::Find, [this] {
        m_search->setFocus(Qt::ShortcutFocusReason);
        m_search->selectAll();
    });
    key(QKeySequence::Undo, [this] {
        if (m_undo.isPending())
            m_undo.undo();
    });
    key(Qt::Key_Escape, [this] { endSearch(); });
}

bool HistoryView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride && watched == m_search &&
        static_cast<QKeyEvent *>(event)->matches(QKeySequence::Undo) && m_undo.isPending()) {
        event->ignore(); // the shortcut belongs to the banner
        return true;
    }
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent *>(event)->key();
    const bool isReturn = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (watched == m_search && (key == Qt::Key_Down || isReturn) && m_model.rowCount() > 0) {
        m_list->setFocus(Qt::TabFocusReason);
        return true;
    }
    if (watched == m_list && isReturn) {
        m_list->toggleExpanded(m_list->currentIndex());
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void HistoryView::endSearch()
{
    if (m_search->text().isEmpty()) {
        Q_EMIT closeRequested();
        return;
    }
    m_search->clear();
    m_list->setFocus(Qt::OtherFocusReason);
}

void HistoryView::retranslate()
{
    m_search->setPlaceholderText(m_texts.localized(u"搜尋紀錄..."_s));
    m_search->setAccessibleName(m_search->placeholderText());
    m_clearSearch->setText(m_texts.localized(u"清除搜尋"_s));
    m_clearUnstarred->setText(m_texts.localized(u"清除未收藏"_s));
    const auto name = [](QToolButton *button, const QString &text) {
        button->setText(text);
        button->setToolTip(text);
    };
    name(m_export, m_texts.localized(u"匯出顯示的紀錄"_s));
    name(m_pause, m_texts.localized(u"暫停記錄"_s));
    const QStringList formats{m_texts.localized(u"試算表（CSV）…"_s), m_texts.localized(u"資料（JSON）…"_s),
                              m_texts.localized(u"單字卡（以定位字元分隔）…"_s)};
    for (int i = 0; i < formats.size(); ++i)
        m_exportMenu->actions().at(i)->setText(formats[i]);
    m_copyOriginal->setText(m_texts.localized(u"複製原文"_s));
    m_copyTranslation->setText(m_texts.localized(u"複製翻譯"_s));
    m_delete->setText(m_texts.localized(u"刪除此筆翻譯"_s));
    m_banner->setButtonText(m_texts.localized(u"復原"_s));
    m_list->setAccessibleName(m_texts.localized(u"翻譯歷史紀錄"_s));
    m_banner->setMessage(m_undo.undoMessage());
    m_list->relayout();
    updateState();
    updateNotice();
}

void HistoryView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (!m_notice)
        return;
    if (event->type() == QEvent::PaletteChange)
        applyPalette();
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange)
        m_list->relayout();
}

void HistoryView::applyPalette()
{
    QColor quiet = palette().color(QPalette::Text);
    quiet.setAlphaF(0.55f);
    QPalette field = m_search->palette();
    field.setColor(QPalette::PlaceholderText, quiet); // black in the dark palettes of some desktops
    m_search->setPalette(field);
    const QColor text = palette().color(QPalette::ButtonText);
    m_searchSymbol->setIcon(symbolIcon(u"magnifier"_s, quiet));
    m_clearSearch->setIcon(symbolIcon(u"clear"_s, quiet));
    m_clearUnstarred->setIcon(symbolIcon(u"trash"_s, text));
    m_export->setIcon(symbolIcon(u"export"_s, text));
    m_pause->setIcon(symbolIcon(u"pause"_s, text));
    QPalette notice = palette();
    notice.setColor(QPalette::Window, notice.color(QPalette::Base).lightness() > 127 ? QColor(0xFF, 0xF1, 0xC9)
                                                                                     : QColor(0x4A, 0x3D, 0x12));
    m_notice->setPalette(notice);
    m_notice->setAutoFillBackground(true);
    updateState();
}

void HistoryView::updateState()
{
    m_clearSearch->setVisible(!m_search->text().isEmpty());
    m_export->setEnabled(m_model.rowCount() > 0);
    const bool isStoreEmpty = m_manager.history().isEmpty();
    m_content->setCurrentIndex(m_model.rowCount() > 0 || m_model.isSearching() ? 0 : 1);
    m_emptyText->setText(m_texts.localized(isStoreEmpty ? u"尚未有任何翻譯紀錄"_s : u"找不到符合的紀錄"_s));
    QColor faint = palette().color(QPalette::WindowText);
    faint.setAlphaF(0.5f);
    m_emptySymbol->setPixmap(
        symbolPixmap(isStoreEmpty ? u"clock"_s : u"magnifier"_s, emptySymbolSize, faint, devicePixelRatioF()));
    if (m_manager.takeUnreadableNotice()) {
        m_problem = m_texts.localized(u"無法讀取先前的翻譯紀錄，原檔案會保留在同一個資料夾中。"_s);
        updateNotice();
    }
}

void HistoryView::updateNotice()
{
    QStringList lines;
    if (!m_problem.isEmpty())
        lines.append(m_problem);
    if (m_manager.isPaused())
        lines.append(m_texts.localized(u"記錄已暫停：新的翻譯不會加入歷史紀錄。"_s));
    m_notice->setText(lines.join(u'\n'));
    m_notice->setVisible(!lines.isEmpty());
}

void HistoryView::perform(const QModelIndex &index, RowAction action)
{
    if (!index.isValid())
        return;
    const HistoryItem item = m_model.item(index.row());
    switch (action) {
    case RowAction::Star:
        m_manager.toggleStar(item.id);
        break;
    case RowAction::CopyOriginal:
    case RowAction::CopyTranslation:
        copy(item, action);
        break;
    case RowAction::Delete:
        m_undo.deleteItem(item.id);
        break;
    case RowAction::ShowAll:
        m_list->toggleExpanded(index);
        break;
    }
}

void HistoryView::copy(const HistoryItem &item, RowAction action)
{
    QGuiApplication::clipboard()->setText(action == RowAction::CopyOriginal ? item.originalText : item.translatedText);
    m_list->showCopied(item.id, action);
}

void HistoryView::showRowMenu(QPoint place)
{
    QModelIndex index = m_list->indexAt(place);
    if (!index.isValid())
        index = m_list->currentIndex();
    if (!index.isValid())
        return;
    m_list->setCurrentIndex(index);
    m_star->setText(m_texts.localized(m_model.item(index.row()).isStarred ? u"取消收藏"_s : u"收藏"_s));
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (const QString showAll = m_list->help(index, RowAction::ShowAll); !showAll.isEmpty()) {
        connect(menu->addAction(showAll), &QAction::triggered, this,
                [this] { perform(m_list->currentIndex(), RowAction::ShowAll); });
        menu->addSeparator();
    }
    menu->addActions({m_star, m_copyOriginal, m_copyTranslation});
    menu->addSeparator();
    menu->addAction(m_delete);
    menu->popup(m_list->viewport()->mapToGlobal(place));
}

void HistoryView::chooseExportFile(ExportFormat format)
{
    m_model.completeSearch();
    const QList<HistoryItem> shown = m_model.items(); // a copy, since entries may arrive while the dialog is open
    const QString suffix = exportSuffix(format);
    auto *dialog = new QFileDialog(this, m_texts.localized(u"匯出顯示的紀錄"_s), {}, u"*."_s + suffix);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(suffix);
    connect(dialog, &QFileDialog::fileSelected, this, [this, shown, format](const QString &path) {
        const auto written = exportHistory(shown, format, path);
        m_problem = written ? QString() : m_texts.formatted(u"無法匯出：%@"_s, written.error().description);
        updateNotice();
    });
    dialog->open();
}

void HistoryView::showEntry(const QUuid &id)
{
    m_search->clear();
    const QList<HistoryItem> &items = m_model.items();
    const auto entry =
        std::find_if(items.cbegin(), items.cend(), [&id](const HistoryItem &item) { return item.id == id; });
    if (entry == items.cend())
        return;
    m_list->setFocus(Qt::OtherFocusReason);
    m_list->setCurrentIndex(m_model.index(int(entry - items.cbegin())));
}

void HistoryView::windowClosed()
{
    m_problem.clear();
    m_undo.dismiss();
    updateNotice();
}

} // namespace lucentra
