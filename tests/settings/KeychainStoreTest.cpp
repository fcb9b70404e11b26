#include "KeychainStore.h"

#include "FakeSecretStorage.h"
#include "SettingsStore.h"
#include "StoredAPIKeys.h"

#include <QTemporaryDir>
#include <QTest>

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
    void init();
    void savedTextsComeBackAsTheyWere_data();
    void savedTextsComeBackAsTheyWere();
    void anEmptyTextRemovesTheItem();
    void everyFailureIsOneLine_data();
    void everyFailureIsOneLine();
    void anUnreadableValueLeavesTheOthers();
    void legacyCopiesMoveIntoTheKeychain_data();
    void legacyCopiesMoveIntoTheKeychain();
    void allAccountsAreReadByOneSearch();

private:
    FakeSecretStorage m_storage;
    QStringList m_lines;
    KeychainStore m_keychain{m_storage, u"service"_s, [this](const QString &line) { m_lines.append(line); }};
};

void KeychainStoreTest::init()
{
    m_storage = {};
    m_lines.clear();
}

void KeychainStoreTest::savedTextsComeBackAsTheyWere_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("plain") << u"sk-0123"_s;
    QTest::newRow("pasted with a full-width space and an emoji") << u"\u3000金鑰 🔑"_s;
    QTest::newRow("with a byte-order mark") << u"\uFEFFkey"_s;
}

void KeychainStoreTest::savedTextsComeBackAsTheyWere()
{
    QFETCH(QString, value);
    QVERIFY(m_keychain.saveString(u"before"_s, account));
    QVERIFY(m_keychain.saveString(value, account));
    QCOMPARE(m_keychain.readString(account), std::optional(value));
    QCOMPARE(m_keychain.readAllStrings().value(account), value);
    QVERIFY(m_lines.isEmpty());
}

void KeychainStoreTest::anEmptyTextRemovesTheItem()
{
    QVERIFY(m_keychain.saveString({}, account)); // where nothing is
    QCOMPARE(m_storage.stores, 0);
    QVERIFY(m_keychain.saveString(u"key"_s, account));
    QVERIFY(m_keychain.saveString({}, account));
    QVERIFY(!m_keychain.readString(account)); // silently
    QVERIFY(m_lines.isEmpty());
}

void KeychainStoreTest::everyFailureIsOneLine_data()
{
    using Call = std::function<bool(const KeychainStore &)>;
    QTest::addColumn<Call>("succeeds");
    QTest::addColumn<Failure>("failure");
    QTest::addColumn<bool>("isStoreOnly"); // looking up works
    QTest::addColumn<bool>("hasItem");
    QTest::addColumn<QString>("line");
    const Call read = [](const KeychainStore &keychain) { return keychain.readString(account).has_value(); };
    const Call readAll = [](const KeychainStore &keychain) { return !keychain.readAllStrings().isEmpty(); };
    const Call save = [](const KeychainStore &keychain) { return keychain.saveString(u"new key"_s, account); };
    const Call clear = [](const KeychainStore &keychain) { return keychain.saveString({}, account); };
    const Call remove = [](const KeychainStore &keychain) { return keychain.deleteItem(account); };
    QTest::newRow("read") << read << refusal << false << true
                          << u"Keychain 讀取失敗 [deeplApiKey]: The safe is locked"_s;
    QTest::newRow("read, no reason given")
        << read << nameless << false << true << u"Keychain 讀取失敗 [deeplApiKey]: OSStatus -25308"_s;
    QTest::newRow("read all") << readAll << refusal << false << true
                              << u"Keychain 讀取失敗 [service]: The safe is locked"_s;
    QTest::newRow("save while locked") << save << refusal << false << true
                                       << u"Keychain 更新失敗 [deeplApiKey]: The safe is locked"_s;
    QTest::newRow("save over an item") << save << refusal << true << true
                                       << u"Keychain 更新失敗 [deeplApiKey]: The safe is locked"_s;
    QTest::newRow("save a new item") << save << nameless << true << false
                                     << u"Keychain 新增失敗 [deeplApiKey]: OSStatus -25308"_s;
    QTest::newRow("save an empty text") << clear << refusal << true << true
                                        << u"Keychain 刪除失敗 [deeplApiKey]: The safe is locked"_s;
    QTest::newRow("delete") << remove << refusal << true << true
                            << u"Keychain 刪除失敗 [deeplApiKey]: The safe is locked"_s;
}

void KeychainStoreTest::everyFailureIsOneLine()
{
    QFETCH(std::function<bool(const KeychainStore &)>, succeeds);
    QFETCH(Failure, failure);
    QFETCH(bool, isStoreOnly);
    QFETCH(bool, hasItem);
    if (hasItem)
        m_storage.secrets.insert(account, "key");
    m_storage.storeFailure = failure;
    m_storage.removeFailure = failure;
    if (!isStoreOnly)
        m_storage.lookupFailure = failure;
    QVERIFY(!succeeds(m_keychain));
    QTEST(m_lines.join(u'\n'), "line");
}

void KeychainStoreTest::anUnreadableValueLeavesTheOthers()
{
    m_storage.secrets = {{u"a"_s, "\xff\xfe"}, {u"b"_s, "fine"}};
    QVERIFY(!m_keychain.readString(u"a"_s));
    QCOMPARE(m_lines.size(), 1);
    QVERIFY(m_lines.first().startsWith(u"Keychain 讀取失敗 [a]: "_s));
    QCOMPARE(m_keychain.readAllStrings(), (QHash<QString, QString>{{u"b"_s, u"fine"_s}}));
    QCOMPARE(m_lines.size(), 2);
}

void KeychainStoreTest::legacyCopiesMoveIntoTheKeychain_data()
{
    QTest::addColumn<QString>("kept");
    QTest::addColumn<QJsonValue>("legacy");
    QTest::addColumn<bool>("isRefusing");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("keptAfterwards");
    QTest::addColumn<bool>("hasLegacyAfterwards");
    const QJsonValue none(QJsonValue::Undefined);
    QTest::newRow("nowhere") << u""_s << none << false << u""_s << u""_s << false;
    QTest::newRow("in the keychain") << u"kept"_s << none << false << u"kept"_s << u"kept"_s << false;
    QTest::newRow("in both: the keychain's counts")
        << u"kept"_s << QJsonValue(u"old"_s) << false << u"kept"_s << u"kept"_s << false;
    QTest::newRow("in both, the copy of another type")
        << u"kept"_s << QJsonValue(5) << false << u"kept"_s << u"kept"_s << false;
    QTest::newRow("a copy alone: moved") << u""_s << QJsonValue(u"old"_s) << false << u"old"_s << u"old"_s << false;
    QTest::newRow("an empty copy alone") << u""_s << QJsonValue(u""_s) << false << u""_s << u""_s << true;
    QTest::newRow("a number alone") << u""_s << QJsonValue(5) << false << u""_s << u""_s << true;
    QTest::newRow("a copy alone, the keychain refuses: stays in use")
        << u""_s << QJsonValue(u"old"_s) << true << u"old"_s << u""_s << true;
}

void KeychainStoreTest::legacyCopiesMoveIntoTheKeychain()
{
    QFETCH(QString, kept);
    QFETCH(QJsonValue, legacy);
    QFETCH(bool, isRefusing);
    for (const bool bySearch : {false, true}) {
        m_storage = {};
        if (!kept.isEmpty())
            m_storage.secrets.insert(account, kept.toUtf8());
        if (isRefusing)
            m_storage.lookupFailure = m_storage.storeFailure = refusal;
        const QTemporaryDir folder;
        SettingsStore settings(folder.filePath(u"preferences.json"_s));
        settings.setValue(account, legacy);
        const QString key = bySearch ? loadStoredAPIKeys(settings, m_keychain, {account}).keys.value(account)
                                     : loadStoredAPIKey(settings, m_keychain, account, account).value_or(u"none"_s);
        QTEST(key, "key");
        QTEST(QString::fromUtf8(m_storage.secrets.value(account)), "keptAfterwards");
        QTEST(settings.contains(account), "hasLegacyAfterwards");
    }
}

void KeychainStoreTest::allAccountsAreReadByOneSearch()
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

QTEST_GUILESS_MAIN(KeychainStoreTest)
#include "KeychainStoreTest.moc"
