#include "MainQueue.h"
#include "Columns.h"
#include "TestProgram.h"
#include "Text.h"

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

    void charactersAreUserPerceived_data()
    {
        columns<QString, int, QString>("text", "count", "firstTwo");
        QTest::newRow("empty") << u""_s << 0 << u""_s;
        QTest::newRow("ideographs") << u"螢幕翻譯"_s << 4 << u"螢幕"_s;
        QTest::newRow("combining accent") << u"e\u0301a\u0308b"_s << 3 << u"e\u0301a\u0308"_s;
        QTest::newRow("flag and emoji") << u"🇹🇼👍x"_s << 3 << u"🇹🇼👍"_s;
        QTest::newRow("supplementary ideograph") << u"𠮷"_s << 1 << u"𠮷"_s;
    }

    void charactersAreUserPerceived()
    {
        QFETCH(QString, text);
        QFETCH(int, count);
        QCOMPARE(characterCount(text), count);
        QTEST(firstCharacters(text, 2), "firstTwo");
    }

    void brokenUtf8IsNoText_data()
    {
        columns<QByteArray, bool>("bytes", "valid");
        QTest::newRow("ideographs") << QByteArray("譯") << true;
        QTest::newRow("cut off") << QByteArray("\xe8\xad") << false;
        QTest::newRow("overlong") << QByteArray("\xc0\xaf") << false;
        QTest::newRow("surrogate") << QByteArray("\xed\xa0\x80") << false;
        QTest::newRow("Latin-1") << QByteArray("caf\xe9") << false;
        QTest::newRow("a NUL is a character") << QByteArray("a\0b", 3) << true;
    }

    void brokenUtf8IsNoText()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, valid);
        const auto text = decodeUtf8(bytes);
        QCOMPARE(text.has_value(), valid);
        if (valid)
            QCOMPARE(text->toUtf8(), bytes);
    }
};

static const TestClass<SupportTest> supportTest;
#include "SupportTest.moc"
