#include "SettingsFixture.h"
#include "TestProgram.h"

#include <QApplication>
#include <QLineEdit>
#include <QToolButton>

using namespace lucentra;
using namespace Qt::StringLiterals;

/// The key fields of the engines, and the keyring behind them.
class SettingsKeysTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theLastOfSeveralKeysWins()
    {
        SettingsFixture m;
        m.settings.setValue(u"deeplApiKey"_s, u"plain"_s);
        m.show();
        QVERIFY(!m.settings.contains(u"deeplApiKey"_s));
        for (const QString &key : {u"k"_s, u"ke"_s, u"key"_s})
            m.apiKeys->save(u"deeplApiKey"_s, key);
        m.settle();
        QCOMPARE(m.secrets.secrets.value(u"deeplApiKey"_s), "key");
        m.apiKeys->save(u"deeplApiKey"_s, {});
        m.settle();
        QVERIFY(!m.secrets.secrets.contains(u"deeplApiKey"_s));
    }

    void aKeyThatCannotBeSavedIsTriedAgain()
    {
        using Problem = SecretStorageProblem;
        for (const auto &[problem, advice] : {std::pair(int(Problem::Locked), u"鑰匙圈已鎖定"_s),
                                              {int(Problem::NoKeyring), u"鑰匙圈已鎖定"_s},
                                              {int(Problem::NoService), u"沒有鑰匙圈服務"_s},
                                              {2, u"鑰匙圈沒有回應"_s}}) { // of the system's own
            SettingsFixture m;
            m.settings.write(settings::translationEngine, 4);
            m.secrets.lookupFailure = m.secrets.storeFailure = Failure{.code = problem, .description = u"refused"_s};
            m.show(1);
            QTRY_COMPARE(m.linesWith(advice), 1); // the stored one can't be read
            const auto field = m.control<QLineEdit>(u"API Key"_s);
            m.secrets.secrets.insert(u"deeplApiKey"_s, "stored");
            m.secrets.lookupFailure.reset();
            m.apiKeys->retryFailed();
            m.settle();
            QTRY_COMPARE(field->text(), u"stored"_s);
            QCOMPARE(m.linesWith(advice), 0);
            QTest::keyClicks(field, u"abc"_s);
            m.settle();
            QTRY_COMPARE(m.linesWith(advice), 1);
            QCOMPARE(field->text(), u"storedabc"_s);
            m.secrets.storeFailure.reset();
            m.apiKeys->retryFailed();
            m.settle();
            QTRY_COMPARE(m.linesWith(advice), 0);
            QCOMPARE(m.secrets.secrets.value(u"deeplApiKey"_s), "storedabc");
        }
    }

    void anUnsavedKeyIsShownAgain()
    {
        for (const bool isBack : {true, false}) { // the keyring
            SettingsFixture m;
            m.settings.write(settings::translationEngine, 4);
            m.secrets.secrets.insert(u"deeplApiKey"_s, "old");
            m.show(1);
            const Failure away{.code = int(SecretStorageProblem::NoService), .description = u"gone"_s};
            m.secrets.lookupFailure = m.secrets.storeFailure = m.secrets.removeFailure = away;
            QTest::keyClicks(m.control<QLineEdit>(u"API Key"_s), u"NEW"_s);
            m.settle();
            QTRY_COMPARE(m.linesWith(u"沒有鑰匙圈服務"_s), 1);
            if (isBack)
                m.secrets.lookupFailure = m.secrets.storeFailure = m.secrets.removeFailure = std::nullopt;
            m.view.emplace(m.services, *m.apiKeys);
            m.view->setCurrentIndex(1);
            m.view->show();
            m.apiKeys->retryFailed(); // as the window does when it comes up
            m.settle();
            auto *field = m.control<QLineEdit>(u"API Key"_s);
            QTRY_COMPARE(field->text(), u"oldNEW"_s);
            QCOMPARE(m.linesWith(u"沒有鑰匙圈服務"_s), isBack ? 0 : 1);
            QCOMPARE(m.secrets.secrets.value(u"deeplApiKey"_s), isBack ? "oldNEW" : "old");
            QTest::keyClicks(field, u"!"_s);
            m.settle();
            QCOMPARE(m.secrets.secrets.value(u"deeplApiKey"_s), isBack ? "oldNEW!" : "old");
        }
    }

    void aKeyShownInClearCannotBeSelected()
    {
        SettingsFixture m;
        m.settings.write(settings::translationEngine, 4);
        m.show(1);
        auto *field = m.control<QLineEdit>(u"API Key"_s);
        QTest::keyClicks(field, u"hidden"_s);
        const QImage dots = field->grab().toImage();
        m.control<QToolButton>(u"顯示 API Key"_s)->click();
        QVERIFY(field->grab().toImage() != dots);
        QTest::keyClicks(field, u"-shown"_s);
        field->selectAll();
        QVERIFY(!field->hasSelectedText());
        // A click goes to the letter that is seen there.
        QTest::mouseClick(field, Qt::LeftButton, {}, {3, field->height() / 2});
        QTest::keyClicks(field, u"0"_s);
        QCOMPARE(field->text(), u"0hidden-shown"_s);
        m.control<QToolButton>(u"隱藏 API Key"_s)->click();
        field->selectAll();
        QVERIFY(field->hasSelectedText());
    }

    void whatWasTypedIsNotOverwrittenByWhatIsLoaded()
    {
        SettingsFixture m;
        m.secrets.secrets.insert(u"deeplApiKey"_s, "stored");
        m.settings.write(settings::translationEngine, 4);
        m.apiKeys.emplace(m.settings, m.keychain, m.mainQueue);
        m.view.emplace(m.services, *m.apiKeys);
        m.view->show();
        auto *field = m.control<QLineEdit>(u"API Key"_s);
        QTest::keyClicks(field, u"new"_s); // before the load has come back
        m.settle();
        QCOMPARE(field->text(), u"new"_s);
        QCOMPARE(m.secrets.secrets.value(u"deeplApiKey"_s), "new");
    }
};

static const TestClass<SettingsKeysTest, QApplication> settingsKeysTest;
#include "SettingsKeysTest.moc"
