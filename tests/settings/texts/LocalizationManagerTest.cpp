#include "LocalizationManager.h"
#include "TestProgram.h"

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
    void init()
    {
        m_settings.reset(); // what it still writes goes into the folder of its own test
        m_folder = std::make_unique<QTemporaryDir>();
        m_settings = std::make_unique<SettingsStore>(m_folder->filePath(u"preferences.json"_s));
    }

    void theSystemsLanguageIsResolved()
    {
        const auto check = [&](const QString &preferred, const QString &code, const QString &textInBoth) {
            const auto texts = manager(u"an unknown language"_s, preferred.split(u' ', Qt::SkipEmptyParts));
            QCOMPARE(texts->language(), AppLanguage::System);
            QCOMPARE(texts->resolvedLanguageCode(), code);
            QCOMPARE(texts->targetCode(AppLanguage::System), code);
            QCOMPARE(texts->localized(u"兩表皆有"_s), textInBoth); // which table it is
        };
        const QString key = u"兩表皆有"_s;
        for (const QString &preferred : {u"zh-Hant-HK"_s, u"zh-MO"_s, u"zh en"_s})
            check(preferred, u"zh-Hant"_s, key);
        for (const QString &preferred : {u"zh-SG"_s, u"zh-CN"_s, u"zh-Hans-TW"_s}) // no such table in this folder
            check(preferred, u"zh-Hans"_s, key);
        check(u"ja-JP en-US"_s, u"ja"_s, u"両方にある"_s);
        check(u"ko"_s, u"ko"_s, key); // no such table in this folder
        check(u"fr-FR ja"_s, u"en"_s, u"in both"_s);
        check(u"C"_s, u"en"_s, u"in both"_s);
        check(u""_s, u"en"_s, key); // no preference: two answers
    }

    void missingTextsFallBack()
    {
        const auto text = [&](const QString &language, const QString &key) {
            return manager(language)->localized(key);
        };
        const QString nowhere = u"哪裡都沒有"_s;
        const QString inEnglish = u"只有英文"_s;
        QCOMPARE(text(u"ja"_s, u"兩表皆有"_s), u"両方にある"_s);
        QCOMPARE(text(u"ja"_s, inEnglish), u"English only"_s);
        QCOMPARE(text(u"ja"_s, nowhere), nowhere);
        QCOMPARE(text(u"en"_s, nowhere), nowhere);
        QCOMPARE(text(u"zh-Hant"_s, inEnglish), inEnglish);
        QCOMPARE(text(u"zh-Hant"_s, u"有覆寫"_s), u"覆寫的文字"_s);
        QCOMPARE(text(u"ko"_s, inEnglish), inEnglish); // has no table
        QCOMPARE(text(u"en"_s, u""_s), u""_s);
    }

    void patternsAreFilledInOnePass()
    {
        const auto resets = qScopeGuard([previous = QLocale()] { QLocale::setDefault(previous); });
        QLocale::setDefault(QLocale(u"de"_s)); // numbers follow the interface language
        const auto texts = manager(u"zh-Hant"_s);
        const auto filled = [&](const QString &pattern) {
            return texts->formatted(pattern, u"%@ %d"_s, 1234, u"尾"_s);
        };
        QCOMPARE(filled(u"%@ API 錯誤 %d：%@"_s), u"%@ %d API 錯誤 1,234：尾"_s);
        QCOMPARE(filled(u"只有 %@"_s), u"只有 %@ %d"_s);
        QCOMPARE(filled(u"%@%d%@，%@ 與 %d"_s), u"%@ %d1,234尾，%@ 與 %d"_s);
        QCOMPARE(filled(u"%d/%@"_s), u"%@ %d/1,234"_s); // a number where a text was meant
        QCOMPARE(filled(u"%%：100%% %@%"_s), u"%：100% %@ %d%"_s);
        QCOMPARE(filled(u"%s %1 %@"_s), u"%s %1 %@ %d"_s);
        QCOMPARE(filled(u""_s), u""_s);
    }

    void aChangeIsStoredAndPostedOnce()
    {
        const auto texts = manager(u"ja"_s);
        QStringList seen;
        texts->observeLanguage(this, [&](const QString &stored) {
            QCOMPARE(stored, rawValue(texts->language())); // the manager knows it first
            seen.append(stored);
        });
        texts->setLanguage(AppLanguage::Japanese);
        QCOMPARE(seen, QStringList());
        texts->setLanguage(AppLanguage::Korean);
        texts->setLanguage(AppLanguage::Korean);
        m_settings->write(settings::appLanguage, u"en"_s); // as by another process
        QCOMPARE(seen, (QStringList{u"ko"_s, u"en"_s}));
        m_settings.reset();
    }

    void theTargetFollowsUnlessSwitchedOff()
    {
        const auto check = [&](const QString &language, const QString &target) {
            const auto texts = manager(language, {u"ko-KR"_s});
            m_settings->write(settings::targetLanguageCode, u"kept"_s);
            QCOMPARE(texts->syncTargetLanguage(), target == u"kept" ? std::nullopt : std::optional(target));
            QCOMPARE(m_settings->read(settings::targetLanguageCode), target);
        };
        check(u"ja"_s, u"ja"_s); // never set
        m_settings->write(settings::targetLanguageFollowsInterface, true);
        check(u"system"_s, u"ko"_s);
        check(u"an unknown language"_s, u"ko"_s);
        m_settings->write(settings::targetLanguageFollowsInterface, false);
        check(u"ja"_s, u"kept"_s);
    }

    void lookUpsGoOnWhileTheLanguageChanges()
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

private:
    std::unique_ptr<LocalizationManager> manager(const QString &language, const QStringList &preferred = {})
    {
        m_settings->write(settings::appLanguage, language);
        return std::make_unique<LocalizationManager>(*m_settings, QStringLiteral(TEST_TABLES), preferred);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<SettingsStore> m_settings;
};

static const TestClass<LocalizationManagerTest> localizationManagerTest;
#include "LocalizationManagerTest.moc"
