#include "KeychainStore.h"
#include "TestProgram.h"

#include "FakeSecretStorage.h"
#include "SettingsStore.h"
#include "StoredAPIKeys.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

const auto account = u"deeplApiKey"_s;
const Failure refusal{.domain = u"Safe"_s, .code = 7, .description = u"The safe is locked"_s};
const Failure nameless{.domain = u"Safe"_s, .code = -25308, .description = {}};

} // namespace

class KeychainStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        std::destroy_at(&m_storage); // it can't be assigned
        std::construct_at(&m_storage);
        m_lines.clear();
    }

    void savedTextsComeBackAsTheyWere()
    {
        for (const QString &value : {u"sk-0123"_s, u"\u3000金鑰 🔑"_s, u"\uFEFFkey"_s}) {
            QVERIFY(m_keychain.saveString(value, account));
            QCOMPARE(m_keychain.readString(account), std::optional(value));
            QCOMPARE(m_keychain.readAll()->value(account), value);
        }
        QVERIFY(m_lines.isEmpty());
    }

    void everyFailureIsOneLine()
    {
        const auto failWith = [&](const Failure &failure) {
            m_storage.lookupFailure = m_storage.storeFailure = m_storage.removeFailure = failure;
        };
        m_storage.secrets.insert(account, "key");
        failWith(nameless);
        QVERIFY(!m_keychain.readString(account));
        failWith(refusal);
        QVERIFY(!m_keychain.readString(account));
        QVERIFY(!m_keychain.readAll());
        QVERIFY(!m_keychain.saveString(u"new key"_s, account)); // which can't be looked up
        m_storage.lookupFailure.reset();
        QVERIFY(!m_keychain.saveString(u"new key"_s, account));
        QVERIFY(!m_keychain.saveString({}, account));
        QVERIFY(!m_keychain.deleteItem(account));
        m_storage.secrets.clear();
        QVERIFY(!m_keychain.saveString(u"new key"_s, account));
        QCOMPARE(m_lines, (QStringList{u"Keychain 讀取失敗 [deeplApiKey]: OSStatus -25308"_s,
                                       u"Keychain 讀取失敗 [deeplApiKey]: The safe is locked"_s,
                                       u"Keychain 讀取失敗 [service]: The safe is locked"_s,
                                       u"Keychain 更新失敗 [deeplApiKey]: The safe is locked"_s,
                                       u"Keychain 更新失敗 [deeplApiKey]: The safe is locked"_s,
                                       u"Keychain 刪除失敗 [deeplApiKey]: The safe is locked"_s,
                                       u"Keychain 刪除失敗 [deeplApiKey]: The safe is locked"_s,
                                       u"Keychain 新增失敗 [deeplApiKey]: The safe is locked"_s}));
    }

    void anUnreadableValueLeavesTheOthers()
    {
        m_storage.secrets = {{u"a"_s, "\xff\xfe"}, {u"b"_s, "fine"}};
        QVERIFY(!m_keychain.readString(u"a"_s));
        QCOMPARE(m_lines.size(), 1);
        QVERIFY(m_lines.first().startsWith(u"Keychain 讀取失敗 [a]: "_s));
        QCOMPARE(*m_keychain.readAll(), (QHash<QString, QString>{{u"b"_s, u"fine"_s}}));
        QCOMPARE(m_lines.size(), 2);
    }

    void legacyCopiesMoveIntoTheKeychain()
    {
        const auto check = [&](const QString &kept, const QJsonValue &legacy, const QString &key, bool staysPlain) {
            for (const bool bySearch : {false, true}) {
                m_storage.secrets.clear();
                if (!kept.isEmpty())
                    m_storage.secrets.insert(account, kept.toUtf8());
                const QTemporaryDir folder;
                SettingsStore settings(folder.filePath(u"preferences.json"_s));
                settings.setValue(account, legacy);
                QCOMPARE(bySearch ? loadStoredAPIKeys(settings, m_keychain, {account}).keys.value(account)
                                  : loadStoredAPIKey(settings, m_keychain, account, account).value_or(u"none"_s),
                         key);
                QCOMPARE(QString::fromUtf8(m_storage.secrets.value(account)), staysPlain ? u""_s : key);
                QCOMPARE(settings.contains(account), staysPlain);
            }
        };
        check(u""_s, QJsonValue::Undefined, u""_s, false);
        check(u"kept"_s, QJsonValue::Undefined, u"kept"_s, false);
        check(u"kept"_s, u"old"_s, u"kept"_s, false);
        check(u"kept"_s, 5, u"kept"_s, false);
        check(u""_s, u"old"_s, u"old"_s, false);
        check(u""_s, u""_s, u""_s, true);
        check(u""_s, 5, u""_s, true);
        m_storage.lookupFailure = m_storage.storeFailure = refusal;
        check(u""_s, u"old"_s, u"old"_s, true); // stays in use
        QCOMPARE(m_lines.size(), 2);            // once for each way of reading
    }

    void allAccountsAreReadByOneSearch()
    {
        const QTemporaryDir folder;
        SettingsStore settings(folder.filePath(u"preferences.json"_s));
        settings.setValue(u"b"_s, u"moved"_s);
        m_storage.secrets = {{u"a"_s, "1"}, {u"not asked for"_s, "2"}};
        const StoredAPIKeys keys = loadStoredAPIKeys(settings, m_keychain, {u"a"_s, u"b"_s, u"c"_s});
        QCOMPARE(keys.keys, (QHash<QString, QString>{{u"a"_s, u"1"_s}, {u"b"_s, u"moved"_s}, {u"c"_s, u""_s}}));
        QCOMPARE(m_storage.searches, 1);
        QCOMPARE(m_storage.lookups.size(), 1); // of the copy that was moved
        QVERIFY(!keys.failure);
        m_storage.lookupFailure = refusal;
        QCOMPARE(loadStoredAPIKeys(settings, m_keychain, {u"a"_s}).failure, std::optional(refusal));
    }

private:
    FakeSecretStorage m_storage;
    QStringList m_lines;
    KeychainStore m_keychain{m_storage, u"service"_s, [this](const QString &line) { m_lines.append(line); }};
};

static const TestClass<KeychainStoreTest> keychainStoreTest;
#include "KeychainStoreTest.moc"
