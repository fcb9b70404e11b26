#include "../HistoryEntries.h"
#include "Columns.h"
#include "HistoryFile.h"
#include "HistoryListView.h"
#include "HistoryManager.h"
#include "HistoryView.h"
#include "MainQueue.h"
#include "ManualScheduler.h"
#include "Sanitized.h"
#include "TestProgram.h"
#include "TestTexts.h"
#include "TextFlow.h"
#include "UndoBanner.h"

#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <climits>
#include <cmath>
#include <ctime>
#include <memory>

using namespace lucentra;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

QList<HistoryItem> manyItems(int count, bool starred = false)
{
    QList<HistoryItem> items;
    for (int i = 0; i < count; ++i)
        items.append(item(u"entry %1 "_s.arg(i).repeated(1 + i * 7 % 40), count - i, starred));
    return items;
}

int coloredWidth(const QImage &image, int y, const QColor &color)
{
    int count = 0;
    for (int x = 0; x < image.width(); ++x)
        count += image.pixelColor(x, y) == color ? 1 : 0;
    return count;
}

/// A window over a store with entries.
struct Window
{
    explicit Window(const QList<HistoryItem> &items)
        : path(texts.folder.filePath(u"history.json"_s))
    {
        (void)writeHistoryFile(path, items);
        manager = std::make_unique<HistoryManager>(path, queue, nullptr);
        queue.drain();
        view = std::make_unique<HistoryView>(*manager, texts.manager, scheduler);
        list = view->findChild<HistoryListView *>();
        search = view->findChild<QLineEdit *>();
        banner = view->findChild<UndoBanner *>();
        view->resize(450, 600);
        view->show();
        view->activateWindow();
        opened = QTest::qWaitForWindowActive(view.get());
        list->setFocus();
    }

    QString names() const
    {
        QStringList all;
        for (const HistoryItem &each : manager->history())
            all.append(each.originalText);
        return all.join(u' ');
    }
    QString message() const { return banner->isVisible() ? banner->findChild<QLabel *>()->text() : QString(); }
    QModelIndex index(int row) const { return list->model()->index(row, 0); }
    /// Presses the control of a row with the pointer, which becomes a hand over each of them.
    void press(int row, RowAction action)
    {
        QCoreApplication::processEvents(); // the layout follows its changes
        const int lowestControls = list->visualRect(index(row)).bottom() - 23;
        QPoint place(0, action == RowAction::ShowAll ? lowestControls - 26 : lowestControls);
        int control = -1;
        for (bool isHand = false; control < (action == RowAction::ShowAll ? 0 : int(action)); place.rx() += 2) {
            QVERIFY(place.x() < list->width());
            QTest::mouseMove(list->viewport(), place);
            const bool wasHand = std::exchange(isHand, list->viewport()->cursor().shape() == Qt::PointingHandCursor);
            control += isHand && !wasHand ? 1 : 0;
        }
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(list->viewport(), &leave);
    }

    TestTexts texts;
    QString path;
    MainQueue queue;
    ManualScheduler scheduler;
    std::unique_ptr<HistoryManager> manager;
    std::unique_ptr<HistoryView> view;
    bool opened = false;
    HistoryListView *list;
    QLineEdit *search;
    UndoBanner *banner;
};

} // namespace

class HistoryWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void deletionsAreTakenBackTogetherOrFinal()
    {
        Window window({item(u"a"_s, 4), item(u"b"_s, 3, true), item(u"c"_s, 2), item(u"d"_s, 1)});
        window.press(1, RowAction::Delete);
        QCOMPARE(window.message(), u"已刪除 1 筆紀錄"_s);
        window.scheduler.advance(4s);
        window.press(0, RowAction::Delete);
        window.scheduler.advance(4s); // the five seconds began anew
        window.press(1, RowAction::Delete);
        QCOMPARE(window.message(), u"已刪除 3 筆紀錄"_s);
        QCOMPARE(window.names(), u"c"_s);
        // Ctrl+Z is the banner's even while something typed could be taken back.
        window.search->setFocus();
        QTest::keyClicks(window.search, u"c"_s);
        QTest::keyClick(window.search, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(window.names(), u"a b c d"_s);
        QVERIFY(window.manager->history()[1].isStarred);
        QTRY_VERIFY(window.message().isEmpty());
        QVERIFY(window.scheduler.isIdle());
        window.search->clear();
        // Final after five seconds, or when the window closes.
        window.press(0, RowAction::Delete);
        window.scheduler.advance(4999ms);
        QVERIFY(!window.message().isEmpty());
        window.scheduler.advance(1ms);
        QTRY_VERIFY(window.message().isEmpty());
        QTest::keyClick(window.list, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(window.names(), u"b c d"_s);
        window.press(0, RowAction::Delete);
        QCOMPARE(window.message(), u"已刪除 1 筆紀錄"_s);
        window.view->windowClosed();
        QTRY_VERIFY(window.message().isEmpty());
        QCOMPARE(window.names(), u"c d"_s);
    }

    void clearing()
    {
        for (const auto &[unstarred, message] :
             {std::pair(0, u""_s), std::pair(1, u"已清除未收藏的紀錄"_s), std::pair(5, u"已刪除 5 筆紀錄"_s)}) {
            Window window(manyItems(unstarred) + QList<HistoryItem>{item(u"star"_s, 0, true)});
            const QString before = window.names();
            HistoryUndo undo(*window.manager, window.texts.manager, window.scheduler);
            undo.clearUnstarred();
            QCOMPARE(undo.undoMessage(), message);
            QCOMPARE(window.names(), u"star"_s);
            if (undo.isPending())
                undo.undo();
            QCOMPARE(window.names(), before);
        }
    }

    void searchingAndItsKeys()
    {
        Window window({item(u"alpha"_s, 3), item(u"beta"_s, 2), item(u"gamma"_s, 1)});
        QSignalSpy closing(window.view.get(), &HistoryView::closeRequested);
        QTest::keyClick(window.list, Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(QApplication::focusWidget(), window.search);
        QTest::keyClicks(window.search, u"MM"_s);
        QCOMPARE(window.list->model()->rowCount(), 1);
        window.manager->add(u"hammer"_s, u"x"_s); // arrives in the open window, as far as it matches
        window.manager->add(u"other"_s, u"x"_s);
        window.queue.drain();
        QCOMPARE(window.list->model()->rowCount(), 2);
        QTest::keyClicks(window.search, u" "_s); // as typed
        QCOMPARE(window.list->model()->rowCount(), 0);
        QTest::keyClick(window.search, Qt::Key_Escape);
        QCOMPARE(window.list->model()->rowCount(), 5);
        QCOMPARE(closing.count(), 0);
        QTest::keyClick(window.list, Qt::Key_Escape);
        QCOMPARE(closing.count(), 1);
    }

    void aLongSearchGoesOnBesideTheEventLoop()
    {
        constexpr int entries = isSanitized ? 3000 : 20000;
        QList<HistoryItem> items;
        for (int i = 0; i < entries; ++i)
            items.append(item(u"entry %1 "_s.arg(i).repeated(30), entries - i, true));
        items.append(item(u"needle"_s, 0));
        Window window(items);
        const auto isEmptyStateShown = [&] { return !window.list->isVisible(); };
        window.search->setText(u"needl"_s);
        QCOMPARE(window.list->model()->rowCount(), 0); // too far down for one go
        QVERIFY(!isEmptyStateShown());                 // nothing is known of yet
        window.search->setText(u"needle"_s);           // from the top once more
        window.scheduler.advance(1ms);
        QCOMPARE(window.list->model()->rowCount(), 1);
        window.search->setText(u"NEEDLE"_s);
        window.manager->toggleStar(items.last().id); // meanwhile, which asks for all of them
        QCOMPARE(window.list->model()->rowCount(), 1);
        QVERIFY(window.scheduler.isIdle());
        window.search->setText(u"nowhere"_s);
        window.scheduler.advance(1ms);
        QVERIFY(isEmptyStateShown());
        window.search->setText(u"entry 1999"_s);
        window.search->clear(); // drops what was still to be looked at
        QCOMPARE(window.list->model()->rowCount(), entries + 1);
        QVERIFY(window.scheduler.isIdle());
    }

    void keysActOnTheCurrentEntry()
    {
        Window window({item(u"a"_s, 3), item(u"b"_s, 2), item(u"c"_s, 1)});
        QTest::keyClick(window.list, Qt::Key_Home);
        QTest::keyClick(window.list, Qt::Key_Down);
        QTest::keyClick(window.list, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"B"_s);
        QTest::keyClick(window.list, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"b"_s);
        QTest::keyClick(window.list, Qt::Key_D, Qt::ControlModifier);
        QVERIFY(window.manager->history()[1].isStarred);
        QTest::keyClick(window.list, Qt::Key_Delete);
        QCOMPARE(window.names(), u"a c"_s);
        QCOMPARE(window.list->currentIndex().data().toString(), u"c"_s); // the next one is ready to go
        QTest::keyClick(window.list, Qt::Key_Delete);
        QTest::keyClick(window.list, Qt::Key_Delete);
        QTest::keyClick(window.list, Qt::Key_Delete); // nothing is left
        QVERIFY(window.names().isEmpty());
    }

    void copyFeedbackIsOfOneRowAndOneButton()
    {
        Window window({item(u"a"_s, 2), item(u"b"_s, 1)});
        const auto picture = [&](int row) {
            return window.list->grab(window.list->visualRect(window.list->model()->index(row, 0))).toImage();
        };
        for (int time = 0; time < 2; ++time)
            window.press(1, RowAction::Star); // from now on it is the current row
        const QImage first = picture(0);
        const QImage second = picture(1);
        window.press(1, RowAction::CopyOriginal);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"b"_s);
        QCOMPARE(picture(0), first);
        const QImage copied = picture(1);
        QVERIFY(copied != second);
        window.press(1, RowAction::CopyTranslation);
        QVERIFY(picture(1) != copied);
        window.scheduler.advance(1499ms);
        QVERIFY(picture(1) != second);
        window.scheduler.advance(1ms);
        QCOMPARE(picture(1), second);
    }

    void aLongTextIsShownWhole()
    {
        Window window({item(u"a\n"_s.repeated(40), 2), item(u"b"_s, 1)});
        const auto height = [&] { return window.list->visualRect(window.index(0)).height(); };
        const int cutOff = height();
        QCOMPARE(window.list->help(window.index(0), RowAction::ShowAll), u"顯示全部"_s);
        QCOMPARE(window.list->help(window.index(1), RowAction::ShowAll), QString());
        window.press(0, RowAction::ShowAll);
        QTRY_VERIFY(height() > 2 * cutOff);
        QCOMPARE(window.list->help(window.index(0), RowAction::ShowAll), u"收合"_s);
        QTest::keyClick(window.list, Qt::Key_Return);
        QTRY_COMPARE(height(), cutOff);
        window.press(0, RowAction::Star);
        QVERIFY(window.manager->history()[0].isStarred);
    }

    void whatIsSeenStaysInItsPlace()
    {
        Window window(manyItems(200, true));
        QScrollBar *bar = window.list->verticalScrollBar();
        bar->setValue(bar->maximum() / 2);
        const QModelIndex seen = window.list->indexAt({200, 100});
        const QPersistentModelIndex entry(seen);
        const int top = window.list->visualRect(entry).top();
        window.manager->add(u"new"_s, u"NEW"_s); // above what is seen
        window.queue.drain();
        QCOMPARE(window.list->model()->rowCount(), 201);
        QCoreApplication::processEvents(); // the layout follows
        QCOMPARE(window.list->visualRect(entry).top(), top);
        // A row from above has another height than was likely; the ones below don't jump.
        for (int i = 0; i < 40; ++i) {
            const QPersistentModelIndex first(window.list->indexAt({200, 0}));
            const int before = window.list->visualRect(first).top();
            bar->setValue(bar->value() - 60);
            QCOMPARE(window.list->visualRect(first).top(), before + 60);
        }
        bar->setValue(0);
        window.manager->add(u"newest"_s, u"NEWEST"_s);
        window.queue.drain();
        QTRY_COMPARE(window.list->indexAt({200, 20}).data().toString(), u"newest"_s);
    }

    void rowsLieOneBelowTheOther()
    {
        Window window(manyItems(300, true));
        QTest::keyClick(window.list, Qt::Key_End);
        const QModelIndex last = window.list->model()->index(299, 0);
        QCOMPARE(window.list->currentIndex(), last);
        const auto isWhollySeen = [&](const QModelIndex &index) {
            return window.list->viewport()->rect().contains(window.list->visualRect(index));
        };
        QVERIFY(isWhollySeen(last));
        for (int key : {Qt::Key_PageUp, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Home, Qt::Key_Down}) {
            QTest::keyClick(window.list, Qt::Key(key));
            QVERIFY(isWhollySeen(window.list->currentIndex()));
        }
        QCOMPARE(window.list->currentIndex().row(), 1);
        for (int y = 0; y < window.list->viewport()->height(); ++y) {
            const QModelIndex index = window.list->indexAt({200, y});
            QVERIFY(window.list->visualRect(index).contains(200, y));
        }
    }

    void aLongTextIsDrawnQuickly()
    {
        const TextFlow::Shape shape{.font = QGuiApplication::font(), .width = 400, .maxLines = SHRT_MAX};
        constexpr int length = isSanitized ? 3'000 : 40'000;
        for (const QString &text : {u"banana "_s.repeated(length), u"banana"_s.repeated(length),
                                    u"banana\n"_s.repeated(std::min(length, 30'000))}) {
            const std::clock_t begin = std::clock(); // processor time: others may be at work
            const TextFlow flow(text, shape, HistorySearch(u"a"_s));
            QImage image(400, 600, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::white);
            QPainter painter(&image);
            for (const qreal place : {0.0, 0.5, 1.0})
                flow.draw(painter, {0, -place * (flow.height() - image.height())}, Qt::black, Qt::yellow);
            painter.end();
            QVERIFY(std::clock() - begin < 10 * CLOCKS_PER_SEC);
            for (const int y : {5, 300, 595})
                QVERIFY(coloredWidth(image, y, Qt::yellow) > 0);
        }
    }

    void matchesAreHighlighted()
    {
        for (const auto &[text, found] :
             {std::pair(u"hay\nhay needle"_s, u"needle"_s), // in the second paragraph
              std::pair(u"שלום עולם"_s, u"עולם"_s), std::pair(u"שלום needle עולם"_s, u"needle"_s)}) {
            const TextFlow::Shape shape{.font = QGuiApplication::font(), .width = 400, .maxLines = 5};
            const TextFlow flow(text, shape, HistorySearch(found));
            QImage image(400, int(std::ceil(flow.height())), QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::white);
            QPainter painter(&image);
            flow.draw(painter, {}, Qt::transparent, Qt::yellow);
            painter.end();
            int widest = 0;
            for (int y = 0; y < image.height(); ++y)
                widest = std::max(widest, coloredWidth(image, y, Qt::yellow));
            const qreal width = QFontMetricsF(shape.font).horizontalAdvance(found);
            QVERIFY2(std::abs(widest - width) <= 3, qPrintable(u"%1 of %2"_s.arg(widest).arg(width)));
        }
    }

    void textFlows_data()
    {
        // lines: by the height
        const auto row = columns<QString, int, bool>("text", "lines", "isCutOff");
        row("nothing", {}, 1, false);
        row("line breaks of all kinds", u"a\r\nb\nc\u2028d"_s, 4, false);
        row("as many as there is room for", u"a\nb\nc\nd\ne"_s, 5, false);
        row("one more", u"a\nb\nc\nd\ne\nf"_s, 5, true);
        row("empty lines at the end", u"a\n\n\n\n\n\n"_s, 5, true);
        row("a word without a break", u"x"_s.repeated(5000), 5, true);
        row("right to left", u"שלום עולם "_s.repeated(200), 5, true);
    }
    void textFlows()
    {
        QFETCH(QString, text);
        const QFont font = QGuiApplication::font();
        const TextFlow::Shape shape{.font = font, .width = 300, .maxLines = 5};
        const qreal line = TextFlow(text.isEmpty() ? u"x"_s : text.left(1), shape, HistorySearch()).height();
        const TextFlow flow(text, shape, HistorySearch());
        QTEST(int(std::lround(flow.height() / line)), "lines");
        QTEST(flow.isCutOff(), "isCutOff");
    }
};

static const TestClass<HistoryWindowTest, QApplication> historyWindowTest;
#include "HistoryWindowTest.moc"
