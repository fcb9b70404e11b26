#include "AppleTranslationBridge.h"
#include "LanguageIdentifier.h"
#include "MainQueue.h"
#include "OnDeviceNote.h"
#include "TestTexts.h"

#include <QTest>
#include <QThread>

#include <atomic>
#include <mutex>
#include <optional>
#include <thread>

using namespace lucentra;
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
    QStringList requests; ///< "en>ja a|b"
    OnDeviceServiceStatus state{.name = u"noting"_s};

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
    PairAvailability availability(const LanguagePair &) override { return PairAvailability::Available; }
    QList<OnDeviceServiceStatus> status() override { return {state}; }
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
        const auto isWanted = std::make_shared<std::atomic<bool>>(true);
        std::optional<OnDeviceTranslations> result;
        m_bridge.translate(
            {u"en:hard"_s}, u"ja"_s, [&](const OnDeviceTranslations &translations) { result = translations; },
            [isWanted] { return isWanted->load(); });
        QTest::qWait(20);
        QVERIFY(!result);
        *isWanted = false;
        QTRY_VERIFY(result);
        QVERIFY(result->isCancelled);
    }

    void callsOverlap()
    {
        m_bridge.setParentView(this);
        constexpr int calls = 40;
        int completed = 0;
        std::thread other([&] { // any thread may call
            for (int i = 0; i < calls; ++i) {
                const QString own = QString::number(i);
                m_bridge.translate(
                    {u"en:"_s + own, u"ja:"_s + own, u"fr:"_s + own}, u"ko"_s,
                    [&completed, own](const OnDeviceTranslations &translations) {
                        const QStringList expected{u"ko en:"_s + own, u"ko ja:"_s + own, u"ko fr:"_s + own};
                        completed += translations.texts == expected ? 1 : 0;
                    });
            }
        });
        other.join();
        QTRY_COMPARE(completed, calls);
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
        m_service.state.addableBy = {u"one"_s, u"two"_s};
        QCOMPARE(note({u"en:hard"_s}), unknown + u"\n安裝這些套件也有幫助：one two"_s);
        QCOMPARE(note({u"en:early"_s, u"en:hard"_s}), u"正在收集這部電腦上的譯文，請稍後再試。"_s);
        QCOMPARE(note({u"ja:a"_s}), u"文字已是目標語言。"_s);
        QCOMPARE(note({u":12"_s, u"ja:a"_s}), u"無法判斷文字的語言。"_s);
    }

private:
    OnDeviceTranslations translate(const QStringList &texts, const QString &target)
    {
        std::optional<OnDeviceTranslations> result;
        int completions = 0;
        m_service.requests.clear();
        m_bridge.translate(texts, target, [&](const OnDeviceTranslations &translations) {
            result = translations;
            ++completions;
        });
        const bool isLate = !result;
        while (!result)
            QTest::qWait(1);
        m_queue.drain();
        m_service.requests.sort();
        return isLate && completions == 1 ? *result : OnDeviceTranslations{};
    }

    WrittenLanguages m_identifier;
    NotingService m_service;
    MainQueue m_queue;
    AppleTranslationBridge m_bridge{m_identifier, m_service, m_queue};
};

QTEST_GUILESS_MAIN(AppleTranslationBridgeTest)
#include "AppleTranslationBridgeTest.moc"
