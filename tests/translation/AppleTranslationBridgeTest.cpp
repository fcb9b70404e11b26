#include "AppleTranslationBridge.h"
#include "LanguageIdentifier.h"
#include "OnDeviceNote.h"
#include "TestProgram.h"
#include "TestTexts.h"

#include <QTest>
#include <QThread>

#include <atomic>
#include <chrono>
#include <future>
#include <mutex>
#include <vector>

using namespace lucentra;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

/// The language is what stands before a text's colon.
class WrittenLanguages : public LanguageIdentifier
{
public:
    QStringList identify(const QStringList &texts) override
    {
        QStringList codes;
        for (const QString &text : texts)
            codes.append(text.section(u':', 0, 0));
        return codes;
    }
};

/// Translates by writing the target before the text; not what says "hard" or comes "early". Keeps what it was asked.
class NotingService : public OnDeviceTranslationService
{
public:
    std::mutex mutex;
    QStringList requests;          ///< "en>ja a|b"
    QList<OnDeviceAddition> added; ///< what would help with Korean and English

    QList<OnDeviceOutcome> translate(const LanguagePair &pair, const QStringList &texts,
                                     const std::function<bool()> &isWanted) override
    {
        while (isWanted && isWanted()) // a slow one, which notices
            QThread::msleep(1);
        const std::lock_guard lock(mutex);
        requests.append(pair.source + u'>' + pair.target + u' ' + texts.join(u'|'));
        QList<OnDeviceOutcome> outcomes;
        for (const QString &text : texts) {
            if (text.contains(u"early"_s))
                outcomes.append({.kind = OnDeviceOutcome::Kind::NotReady});
            else if (text.contains(u"hard"_s))
                outcomes.append({.kind = OnDeviceOutcome::Kind::UnknownPhrase});
            else
                outcomes.append({.kind = OnDeviceOutcome::Kind::Translated, .text = pair.target + u' ' + text});
        }
        return outcomes;
    }
    QList<OnDeviceServiceStatus> status() override { return {}; } // would wait
    QList<OnDeviceServiceStatus> currentStatus() override { return {{.name = u"noting"_s}}; }
    QList<OnDeviceAddition> additions(const LanguagePair &pair) override
    {
        if (pair.source == u"nl")
            return {{.package = u"dutch"_s}};
        return pair.source == u"fr" ? QList<OnDeviceAddition>() : added;
    }
};

} // namespace

class AppleTranslationBridgeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textsAreGroupedTranslatedAndGathered()
    {
        m_bridge.setParentView(this);
        const auto check = [&](const QString &target, const QString &texts, const QString &result,
                               const QString &requests) {
            QCOMPARE(translate(texts.split(u' '), target).texts.join(u'|'), result);
            QCOMPARE(m_service.requests.join(u", "_s), requests);
        };
        check(u"zh-Hant"_s, u"en:a ja:b zh-Hant:c en:d"_s, u"zh-Hant en:a|zh-Hant ja:b|zh-Hant:c|zh-Hant en:d"_s,
              u"en>zh-Hant en:a|en:d, ja>zh-Hant ja:b"_s);
        check(u"ja"_s, u":123 und:x unknown:y"_s, u":123|und:x|unknown:y"_s, u""_s); // no language
        check(u"zh-Hans"_s, u"zh-Hant:a"_s, u"zh-Hant:a"_s, u""_s);
        check(u"en-US"_s, u"en:a"_s, u"en:a"_s, u""_s); // a region makes no other language
        check(u"ja"_s, u"en:a en:hard en:c"_s, u"ja en:a|en:hard|ja en:c"_s, u"en>ja en:a|en:hard|en:c"_s);
    }

    void withoutAParentTextsComeBack()
    {
        auto view = std::make_unique<QObject>();
        m_bridge.setParentView(view.get());
        QCOMPARE(translate({u"en:a"_s}, u"ja"_s).texts, QStringList{u"ja en:a"_s});
        view.reset();
        QCOMPARE(translate({u"en:a"_s}, u"ja"_s).texts, QStringList{u"en:a"_s});
        m_bridge.setParentView(this);
        m_bridge.setParentView(nullptr);
        QCOMPARE(translate({u"en:a"_s}, u"ja"_s).texts, QStringList{u"en:a"_s});
        QVERIFY(m_service.requests.isEmpty());
    }

    void whatIsNotWantedEnds()
    {
        m_bridge.setParentView(this);
        std::atomic<bool> isWanted = true;
        auto result = std::async([&] {
            return m_bridge.translate({u"en:hard"_s, u"fr:hard"_s}, u"ja"_s, [&] { return isWanted.load(); });
        });
        QCOMPARE(result.wait_for(20ms), std::future_status::timeout);
        isWanted = false;
        result.get();
    }

    void callsOverlap()
    {
        m_bridge.setParentView(this);
        std::vector<std::future<QStringList>> calls;
        for (int i = 0; i < 40; ++i)
            calls.push_back(std::async([this, own = QString::number(i)] {
                return m_bridge.translate({u"en:"_s + own, u"ja:"_s + own, u"fr:"_s + own}, u"ko"_s).texts;
            }));
        for (int i = 0; i < 40; ++i)
            QCOMPARE(calls[size_t(i)].get().join(u' '), u"ko en:%1 ko ja:%1 ko fr:%1"_s.arg(i));
    }

    void theNoteSaysWhyNothingIsNew()
    {
        const TestTexts lookup;
        m_bridge.setParentView(this);
        const auto note = [&](const QStringList &texts) {
            return onDeviceNote(texts, translate(texts, u"ja"_s), lookup.manager);
        };
        const QString unknown = u"這部電腦上的程式沒有這些文字的譯文。請改用其他翻譯引擎。"_s;
        QCOMPARE(note({u"en:a"_s, u"en:hard"_s}), u""_s); // one is new
        QCOMPARE(note({u"en:hard"_s, u"ja:own"_s}), unknown);
        QCOMPARE(note({}), u""_s);
        m_service.added = {{.package = u"one"_s}, {.package = u"two"_s}};
        QCOMPARE(note({u"en:hard"_s}), unknown + u"\n安裝這些套件也有幫助：one two"_s);
        QCOMPARE(note({u"en:hard"_s, u"nl:hard"_s}), unknown + u"\n安裝這些套件也有幫助：one two dutch"_s);
        QCOMPARE(note({u"en:hard words, and many more of them"_s, u"nl:hard"_s}),
                 unknown + u"\n安裝這些套件也有幫助：one two"_s);
        QCOMPARE(note({u"fr:hard words, and many more of them"_s, u"nl:hard"_s}),
                 unknown + u"\n安裝這些套件也有幫助：dutch"_s);
        QCOMPARE(note({u"en:early"_s, u"en:hard"_s}), u"正在收集這部電腦上的譯文，請稍後再試。"_s);
        QCOMPARE(note({u"ja:a"_s}), u"文字已是目標語言。"_s);
        QCOMPARE(note({u":12"_s, u"ja:a"_s}), u"無法判斷文字的語言。"_s);
        m_service.added.append({.models = {u"ko"_s, u"ja"_s}, .bytes = 73'400'000});
        QCOMPARE(note({u"en:hard"_s, u"ko:hard"_s}),
                 u"這部電腦還沒有能翻譯這些文字的模型。請在設定的「翻譯」分頁下載：한국어 → 日本語 (73 MB)"_s);
        m_service.added.append({.models = {u"en"_s, u"ja"_s}, .isRepair = true});
        QCOMPARE(note({u"en:hard"_s}), u"這些翻譯模型無法使用，檔案可能已損壞：English → 日本語。請移除後重新下載。"_s);
    }

private:
    OnDeviceTranslations translate(const QStringList &texts, const QString &target)
    {
        m_service.requests.clear();
        const OnDeviceTranslations result = m_bridge.translate(texts, target);
        m_service.requests.sort();
        return result;
    }

    WrittenLanguages m_identifier;
    NotingService m_service;
    AppleTranslationBridge m_bridge{m_identifier, m_service};
};

static const TestClass<AppleTranslationBridgeTest> appleTranslationBridgeTest;
#include "AppleTranslationBridgeTest.moc"
