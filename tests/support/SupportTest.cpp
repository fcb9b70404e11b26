#include "MainQueue.h"
#include "TestProgram.h"

#include <QTest>

#include <thread>

using namespace lucentra;
using namespace Qt::StringLiterals;

class SupportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tasksRunInOrderOnTheMainThread()
    {
        MainQueue queue;
        QList<int> order;
        const auto mainThread = std::this_thread::get_id();
        bool onMainThread = true;
        std::thread worker([&] {
            for (int i = 0; i < 100; ++i)
                queue.post([&, i] {
                    order.append(i);
                    onMainThread = onMainThread && std::this_thread::get_id() == mainThread;
                });
        });
        worker.join();
        QVERIFY(order.isEmpty());
        QTRY_COMPARE(order.size(), 100);
        QVERIFY(std::is_sorted(order.begin(), order.end()));
        QVERIFY(onMainThread);
    }

    void drainRunsWhatTasksPost()
    {
        MainQueue queue;
        QString order;
        queue.post([&] {
            order += u'a';
            queue.post([&] { order += u'c'; });
        });
        queue.post([&] { order += u'b'; });
        queue.drain();
        QCOMPARE(order, u"abc"_s);
        QCoreApplication::processEvents(); // the wake-ups of tasks that drain() has run find nothing
        QCOMPARE(order, u"abc"_s);
    }
};

static const TestClass<SupportTest> supportTest;
#include "SupportTest.moc"
