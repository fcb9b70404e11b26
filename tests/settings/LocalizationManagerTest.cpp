#include "LocalizationManager.h"

#include "NotificationCenter.h"
#include "Settings.h"
#include "SettingsStore.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <thread>

using namespace lucentra;
using namespace Qt::StringLiterals;

class LocalizationManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theSystemsLanguageIsResolved_data();
    void theSystemsLanguageIsResolved();
    void missingTextsFallBack_data();
    void missingTextsFallBack();
    void patternsAreFilledInOnePass_data();
    void patternsAreFilledInOnePass();
    void numbersFollowTheInterfaceLanguage();
    void aChangeIsStoredAndPostedOnce();
    void theTargetFollowsUnlessSwitchedOff_data();
    void theTargetFollowsUnlessSwitchedOff();
    void lookUpsGoOnWhileTheLanguageChanges();
    void theProgramsOwnTablesAreInPlace();
    void observersLeaveWithTheirContext();

private:
    std::unique_ptr<LocalizationManager> manager(const QString &language, const QStringList &preferred = {})
    {
        m_settings->write(settings::appLanguage, language);
        return std::make_unique<LocalizationManager>(*m_settings, m_notifications, QStringLiteral(TEST_TABLES),
                                                     preferred);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<SettingsStore> m_settings;
    NotificationCenter m_notifications;
};

void LocalizationManagerTest::init()
{
    m_settings.reset(); // what it still writes goes into the folder of its own test
    m_folder = std::make_unique<QTemporaryDir>();
    m_settings = std::make_unique<SettingsStore>(m_folder->filePath(u"preferences.json"_s));
}

void LocalizationManagerTest::theSystemsLanguageIsResolved_data()
{
    QTest::addColumn<QStringList>("preferred");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("textInBoth"); // tells which table the look-up uses
    const auto key = u"兩表皆有"_s;
    QTest::newRow("Hong Kong") << QStringList{u"zh-Hant-HK"_s} << u"zh-Hant"_s << key;
    QTest::newRow("Macao, no script") << QStringList{u"zh-MO"_s} << u"zh-Hant"_s << key;
    QTest::newRow("bare Chinese") << QStringList{u"zh"_s, u"en"_s} << u"zh-Hant"_s << key;
    QTest::newRow("Singapore") << QStringList{u"zh-SG"_s} << u"zh-Hans"_s << key; // no such table in this folder
    QTest::newRow("China") << QStringList{u"zh-CN"_s} << u"zh-Hans"_s << key;
    QTest::newRow("simplified script") << QStringList{u"zh-Hans-TW"_s} << u"zh-Hans"_s << key;
    QTest::newRow("Japanese first") << QStringList{u"ja-JP"_s, u"en-US"_s} << u"ja"_s << u"両方にある"_s;
    QTest::newRow("Korean") << QStringList{u"ko"_s} << u"ko"_s << key; // no such table in this folder
    QTest::newRow("French first") << QStringList{u"fr-FR"_s, u"ja"_s} << u"en"_s << u"in both"_s;
    QTest::newRow("the C locale") << QStringList{u"C"_s} << u"en"_s << u"in both"_s;
    QTest::newRow("no preference: two answers") << QStringList() << u"en"_s << key;
}

void LocalizationManagerTest::theSystemsLanguageIsResolved()
{
    QFETCH(QStringList, preferred);
    const auto texts = manager(u"an unknown language"_s, preferred);
    QCOMPARE(texts->language(), AppLanguage::System);
    QTEST(texts->resolvedLanguageCode(), "code");
    QTEST(texts->targetCode(AppLanguage::System), "code");
    QTEST(texts->localized(u"兩表皆有"_s), "textInBoth");
}

void LocalizationManagerTest::missingTextsFallBack_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("text");
    QTest::newRow("in its own table") << u"ja"_s << u"兩表皆有"_s << u"両方にある"_s;
    QTest::newRow("missing there: English") << u"ja"_s << u"只有英文"_s << u"English only"_s;
    QTest::newRow("missing there too: the key") << u"ja"_s << u"哪裡都沒有"_s << u"哪裡都沒有"_s;
    QTest::newRow("missing in English: the key") << u"en"_s << u"哪裡都沒有"_s << u"哪裡都沒有"_s;
    QTest::newRow("traditional Chinese: the key, not English") << u"zh-Hant"_s << u"只有英文"_s << u"只有英文"_s;
    QTest::newRow("traditional Chinese with an entry") << u"zh-Hant"_s << u"有覆寫"_s << u"覆寫的文字"_s;
    QTest::newRow("a language without a table: the key") << u"ko"_s << u"只有英文"_s << u"只有英文"_s;
    QTest::newRow("empty") << u"en"_s << u""_s << u""_s;
}

void LocalizationManagerTest::missingTextsFallBack()
{
    QFETCH(QString, language);
    QFETCH(QString, key);
    QTEST(manager(language)->localized(key), "text");
}

void LocalizationManagerTest::patternsAreFilledInOnePass_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text"); // filled with "%@ %d", 1234 and "尾"
    QTest::newRow("in order") << u"%@ API 錯誤 %d：%@"_s << u"%@ %d API 錯誤 1,234：尾"_s;
    QTest::newRow("more arguments than places") << u"只有 %@"_s << u"只有 %@ %d"_s;
    QTest::newRow("fewer arguments than places") << u"%@%d%@，%@ 與 %d"_s << u"%@ %d1,234尾，%@ 與 %d"_s;
    QTest::newRow("a number where a text was meant") << u"%d/%@"_s << u"%@ %d/1,234"_s;
    QTest::newRow("per cent") << u"%%：100%% %@%"_s << u"%：100% %@ %d%"_s;
    QTest::newRow("another sign") << u"%s %1 %@"_s << u"%s %1 %@ %d"_s;
    QTest::newRow("none") << u""_s << u""_s;
}

void LocalizationManagerTest::patternsAreFilledInOnePass()
{
    QFETCH(QString, pattern);
    QTEST(manager(u"zh-Hant"_s)->formatted(pattern, u"%@ %d"_s, 1234, u"尾"_s), "text");
}

void LocalizationManagerTest::numbersFollowTheInterfaceLanguage()
{
    const QLocale previous;
    QLocale::setDefault(QLocale(u"de"_s));
    const auto texts = manager(u"en"_s);
    QCOMPARE(texts->formatted(u"已刪除 %d 筆紀錄"_s, 12345), u"Deleted 12,345 entries"_s);
    QCOMPARE(texts->formatted(u"已刪除 %d 筆紀錄"_s, qint64(-1) << 40), u"Deleted -1,099,511,627,776 entries"_s);
    QLocale::setDefault(previous);
}

void LocalizationManagerTest::aChangeIsStoredAndPostedOnce()
{
    const auto texts = manager(u"ja"_s);
    QStringList seen;
    m_notifications.observe(notifications::appLanguageDidChange, this,
                            [&](const QVariant &) { seen.append(m_settings->read(settings::appLanguage)); });
    texts->setLanguage(AppLanguage::Japanese);
    QCOMPARE(seen, QStringList());
    texts->setLanguage(AppLanguage::Korean);
    texts->setLanguage(AppLanguage::Korean);
    QCOMPARE(seen, QStringList{u"ko"_s});
    disconnect(&m_notifications, nullptr, this, nullptr);
}

void LocalizationManagerTest::theTargetFollowsUnlessSwitchedOff_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QVariant>("follows");
    QTest::addColumn<QString>("target"); // "kept" was stored before
    QTest::newRow("never set") << u"ja"_s << QVariant() << u"ja"_s;
    QTest::newRow("on, the system's language") << u"system"_s << QVariant(true) << u"ko"_s;
    QTest::newRow("on, an unknown language") << u"tlh"_s << QVariant(true) << u"ko"_s;
    QTest::newRow("off") << u"ja"_s << QVariant(false) << u"kept"_s;
}

void LocalizationManagerTest::theTargetFollowsUnlessSwitchedOff()
{
    QFETCH(QString, language);
    QFETCH(QVariant, follows);
    QFETCH(QString, target);
    const auto texts = manager(language, {u"ko-KR"_s});
    m_settings->write(settings::targetLanguageCode, u"kept"_s);
    if (follows.isValid())
        m_settings->write(settings::targetLanguageFollowsInterface, follows.toBool());
    QCOMPARE(texts->syncTargetLanguage(), target == u"kept" ? std::nullopt : std::optional(target));
    QCOMPARE(m_settings->read(settings::targetLanguageCode), target);
}

void LocalizationManagerTest::lookUpsGoOnWhileTheLanguageChanges()
{
    const auto texts = manager(u"ja"_s);
    std::atomic<bool> isOver = false;
    std::atomic<int> wrong = 0;
    std::thread reader([&] {
        while (!isOver) {
            const QString text = texts->formatted(u"兩表皆有"_s, 1);
            if (text != u"両方にある" && text != u"in both")
                ++wrong;
        }
    });
    for (int i = 0; i < 50; ++i)
        texts->setLanguage(i % 2 ? AppLanguage::Japanese : AppLanguage::English);
    isOver = true;
    reader.join();
    QCOMPARE(wrong.load(), 0);
}

void LocalizationManagerTest::theProgramsOwnTablesAreInPlace()
{
    const StringTables tables(QStringLiteral(PROGRAM_TABLES));
    QStringList texts;
    for (const AppLanguage language : allAppLanguages) {
        if (language != AppLanguage::System)
            texts.append(tables.text(rawValue(language), pickerLabelKey(AppLanguage::Japanese)));
    }
    QCOMPARE(texts, (QStringList{u"日文"_s, u"日文"_s, u"Japanese"_s, u"日本語"_s, u"일본어"_s}));
}

void LocalizationManagerTest::observersLeaveWithTheirContext()
{
    NotificationCenter center;
    QStringList seen;
    auto first = std::make_unique<QObject>();
    QObject second;
    center.observe(notifications::targetLanguageChanged, first.get(), [&](const QVariant &value) {
        seen.append(u"first "_s + value.toString());
        first.reset(); // in the middle of being told
    });
    center.observe(notifications::targetLanguageChanged, &second,
                   [&](const QVariant &value) { seen.append(u"second "_s + value.toString()); });
    center.post(notifications::updateNeonBorder);
    center.post(notifications::targetLanguageChanged, u"ja"_s);
    center.post(notifications::targetLanguageChanged, u"ko"_s);
    QCOMPARE(seen, (QStringList{u"first ja"_s, u"second ja"_s, u"second ko"_s}));
}

QTEST_GUILESS_MAIN(LocalizationManagerTest)
#include "LocalizationManagerTest.moc"
