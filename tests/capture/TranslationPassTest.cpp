#include "TranslationPass.h"
#include "Columns.h"
#include "TestProgram.h"

#include "MainQueue.h"
#include "ManualScheduler.h"
#include "ScreenCapture.h"
#include "Settings.h"
#include "TestTexts.h"

#include <QHash>
#include <QLoggingCategory>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <array>
#include <atomic>
#include <condition_variable>
#include <mutex>

using namespace lucentra;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

/// A pane of 404 by 304 points that notes what is done to it.
class NotingPane : public PassSource, public PassView
{
public:
    bool onScreen = true;
    bool inputMode = false;
    bool processing = false;
    QStringList log;
    QList<std::array<double, 3>> places; ///< of each overlay: top, bottom, and the lowest that it may reach
    QList<QRectF> exclusions;
    std::function<void()> cardAction;

    bool isOnScreen() const override { return onScreen; }
    GlassArea glassArea() const override { return {{0, 0, 404, 304}, {0, 0, 404, 304}, 1}; }
    QList<QRectF> windowControlExclusionRects(double) const override { return exclusions; }
    bool isInputMode() const override { return inputMode; }
    void setProcessing(bool isProcessing) override
    {
        if (isProcessing)
            log.append(u"clear"_s);
        processing = isProcessing;
    }
    void showTranslations(const QList<TranslationOverlayCandidate> &candidates, const QString &note) override
    {
        for (const TranslationOverlayCandidate &candidate : candidates) {
            log.append(u"overlay "_s + candidate.text);
            places.append({candidate.rect.top(), candidate.rect.bottom(), candidate.limits.bottom});
        }
        if (!note.isEmpty())
            log.append(u"note "_s + note);
    }
    void changeTranslations(const QList<TranslationOverlayCandidate> &candidates) override
    {
        QStringList texts;
        for (const TranslationOverlayCandidate &candidate : candidates)
            texts.append(candidate.text);
        log.append(u"now "_s + texts.join(u' '));
    }
    void showErrorCard(const QString &title, const QString &message, const QString &,
                       std::function<void()> action) override
    {
        log.append(u"card "_s + title + u'|' + message);
        cardAction = std::move(action);
    }
};

/// Holds every call until the test answers it.
template <typename Answer>
class Held
{
public:
    Answer ask()
    {
        std::unique_lock lock(m_mutex);
        const int number = m_asked++;
        m_answered.wait(lock, [&] { return m_isClosed || m_answers.contains(number); });
        return m_isClosed ? Answer() : m_answers[number];
    }
    int asked()
    {
        const std::lock_guard lock(m_mutex);
        return m_asked;
    }
    /// The first call that has no answer yet.
    int next() const { return m_next; }
    void answer(int number, Answer answer)
    {
        const std::lock_guard lock(m_mutex);
        m_answers.insert(number, std::move(answer));
        m_next = std::max(m_next, number + 1);
        m_answered.notify_all();
    }
    void close() ///< answers all that come
    {
        const std::lock_guard lock(m_mutex);
        m_isClosed = true;
        m_answered.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_answered;
    QHash<int, Answer> m_answers;
    int m_asked = 0;
    int m_next = 0;
    bool m_isClosed = false;
};

class HeldCapture : public ScreenCapture
{
public:
    std::atomic<bool> granted = true;
    bool mayAsk = false;
    Held<Result<QImage>> held;

    bool isGranted() const override { return granted; }
    void allowAsking() override { mayAsk = true; }
    Result<CaptureSurroundings> surroundings(quint32) override
    {
        return CaptureSurroundings{.paneWindow = ScreenRect(0, 0, 404, 304), .displays = {{0, 0, 1920, 1080}}};
    }
    Result<QImage> capture(const ScreenRect &) override { return held.ask(); }
};

} // namespace

class TranslationPassTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_texts = std::make_unique<TestTexts>();
        m_queue = std::make_unique<MainQueue>();
        m_clock = std::make_unique<ManualScheduler>();
        m_pane = std::make_unique<NotingPane>();
        m_capture = std::make_unique<HeldCapture>();
        m_lines = {{u"一"_s, {0, 0.5, 0.5, 0.25}}, {u"二"_s, {0, 0.1, 0.5, 0.2}}};
        m_translations = std::make_unique<Held<Result<BlockTranslations>>>();
        m_readings = 0;
        m_isLastTranslationWanted = true;
        m_isHoldingReader = false;
        m_copied.clear();
        m_recorded.clear();
        PassSteps steps{
            .capture = *m_capture,
            .recognize =
                [this](const QImage &image, const QRect &, ReadingEffort, const std::function<bool()> &isWanted) {
                    m_read = image;
                    ++m_readings;
                    while (m_isHoldingReader && isWanted())
                        QThread::msleep(1);
                    return RecognizedLines{m_lines, m_areLinesLeftOut};
                },
            .translate =
                [this](const QList<TextBlock> &blocks, const std::function<bool()> &isWanted) {
                    m_asked.clear();
                    for (const TextBlock &block : blocks)
                        m_asked.append(block.text);
                    const auto translations = m_translations->ask();
                    m_isLastTranslationWanted = isWanted();
                    return translations;
                },
            .copy = [this](const QString &text) { m_copied.append(text); },
            .record = [this](const QString &source, const QString &text) { m_recorded.append(source + u'>' + text); },
            .openScreenRecordingSettings = [this] { m_pane->log.append(u"settings"_s); },
        };
        m_pass = std::make_unique<TranslationPass>(*m_pane, *m_pane, steps, m_texts->settings, m_texts->manager,
                                                   *m_queue, *m_clock);
    }

    void cleanup() { end(); }

    void howAPassEnds_data()
    {
        // log: after the pane was cleared
        const auto row = columns<int, bool, BlockTranslations, QStringList, QString, QString>(
            "lines", "autoCopy", "translations", "log", "copied", "recorded");
        row("overlays, copy and history", 2, true, {.texts = {u"one"_s, u"two"_s}},
            {u"overlay one"_s, u"overlay two"_s}, u"one\ntwo"_s, u"一\n二>one\ntwo"_s);
        row("fewer translations than lines, and no copy", 2, false, {.texts = {u"one"_s}},
            {u"overlay one"_s, u"overlay 二"_s}, {}, u"一\n二>one"_s);
        row("an empty translation", 1, true, {.texts = {u""_s}}, {}, {}, {});
        row("nothing is new", 2, false, {.texts = {u"一"_s, u"二"_s}, .note = u"why"_s},
            {u"overlay 一"_s, u"overlay 二"_s, u"note why"_s}, {}, u"一\n二>一\n二"_s);
    }
    void howAPassEnds()
    {
        const auto [lines, autoCopy, translations, log, copied, recorded] =
            fetched<int, bool, BlockTranslations, QStringList, QString, QString>();
        m_lines.resize(lines);
        m_texts->settings.write(settings::autoCopy, autoCopy);
        m_pass->startCapturePass();
        QVERIFY(m_pane->processing);
        capture();
        translate(0, translations);
        QVERIFY(!m_pane->processing);
        QCOMPARE(m_pane->log, QStringList{u"clear"_s} + log);
        QCOMPARE(m_copied.join(u'|'), copied);
        QCOMPARE(m_recorded.join(u'|'), recorded);
        if (m_pane->places.size() == 2) { // each with its own line's place
            const auto [first, second] = std::pair(m_pane->places[0], m_pane->places[1]);
            QVERIFY(first[1] < second[0] && first[2] < second[1] && first[2] > first[1] && second[2] > second[1]);
        }
    }

    void theWindowsButtonsAreNeitherReadNorCovered()
    {
        m_texts->settings.write(settings::autoCopy, true);
        m_lines = {{u"一"_s, {0, 0.95, 0.1, 0.04}}, {u"二"_s, {0, 0.1, 0.5, 0.2}}};
        m_areLinesLeftOut = true;
        m_pane->exclusions = {{2, 0, 72, 32}};
        m_pass->startCapturePass();
        QImage screen(400, 300, QImage::Format_RGB32);
        screen.fill(Qt::white);
        capture(screen);
        translate(0, BlockTranslations{.texts = {u"one"_s, u"two"_s}});
        QVERIFY(m_read.pixelColor(20, 10) != QColor(Qt::white));
        QCOMPARE(m_read.pixelColor(120, 10), QColor(Qt::white));
        QCOMPARE(m_pane->log.mid(0, 2), (QStringList{u"clear"_s, u"overlay two"_s}));
        QVERIFY(m_pane->log.last().startsWith(u"note "_s)); // some lines were left out
        QCOMPARE(m_copied, QStringList{u"one\ntwo"_s});
        QCOMPARE(m_recorded, QStringList{u"一\n二>one\ntwo"_s});
        m_areLinesLeftOut = false;
    }

    void aNewerPassDropsTheOlderOnesResults()
    {
        startPass();
        settle([&] { return m_translations->asked() == 1; });
        m_pass->startCapturePass();
        settle([&] { return isCaptureWaiting(); });
        m_translations->answer(0, BlockTranslations{.texts = {u"old"_s, u"old"_s}});
        settle([&] { return m_isLastTranslationWanted == false; });
        QVERIFY(m_pane->processing); // the newer pass is still at work
        startPass(tl::unexpected(Failure{.description = u"late"_s})); // the second pass's failure is no news either
        capture();
        QVERIFY(m_pane->processing);
        translate(1, BlockTranslations{.texts = {u"new"_s, u"new"_s}});
        QVERIFY(!m_pane->processing);
        QCOMPARE(m_pane->log, (QStringList{u"clear"_s, u"clear"_s, u"clear"_s, u"overlay new"_s, u"overlay new"_s}));
    }

    void whatIsSupersededIsNeitherReadNorSent()
    {
        m_isHoldingReader = true;
        startPass();
        settle([&] { return m_readings == 1; });
        for (int i = 0; i < 20; ++i) {
            startPass();
        }
        m_isHoldingReader = false;
        settle([&] { return m_translations->asked() > 0; });
        QTest::qWait(50);
        QCOMPARE(m_translations->asked(), 1);

        m_isHoldingReader = true; // until the end of the pass
        startPass();
        settle([&, before = m_readings.load()] { return m_readings > before || m_pane->processing; });
        end();
        QCOMPARE(m_isLastTranslationWanted, false); // so that what isn't sent yet stays here
        QCOMPARE(m_translations->asked(), 1);
    }

    void failuresEndInTheirCards()
    {
        int failures = 0;
        m_pass->onFailed = [&] { ++failures; };
        const auto shown = [&] {
            settle([&] { return !m_pane->processing; });
            return m_pane->log.last();
        };
        const auto cardOf = [&](const Failure &failure) {
            startPass(tl::unexpected(failure));
            return shown();
        };
        QCOMPARE(cardOf({.description = u"reason"_s}), u"card 無法擷取畫面|reason"_s);
        m_capture->granted = false;
        QVERIFY(cardOf({.description = u"reason"_s}).startsWith(u"card 需要螢幕錄製權限|"_s));
        m_pane->cardAction();
        QCOMPARE(m_pane->log.last(), u"settings"_s);
        QCOMPARE(cardOf({.domain = screenAccessDomain.toString(), .description = u"not asked"_s}),
                 u"card 需要螢幕錄製權限|not asked"_s);
        QVERIFY(!m_capture->mayAsk);
        m_pane->cardAction();
        QVERIFY(m_capture->mayAsk);
        capture(tl::unexpected(Failure()));
        shown();
        QCOMPARE(cardOf({.domain = screenServiceDomain.toString(), .description = u"install"_s}),
                 u"card 無法擷取畫面|install"_s);
        startPass();
        translate(0, tl::unexpected(Failure{.description = u"no key"_s}));
        QCOMPARE(shown(), u"card 翻譯失敗|no key"_s);
        QCOMPARE(failures, 6);

        m_lines.clear();
        startPass();
        QVERIFY(shown().startsWith(u"card 沒有偵測到文字|"_s));
        QCOMPARE(failures, 6); // it would be the same again
        QVERIFY(m_recorded.isEmpty());
    }

    void nothingComesOfAPassOnceTextIsTyped()
    {
        m_texts->settings.write(settings::autoCopy, true);
        startPass();
        settle([&] { return m_translations->asked() == 1; });
        m_pass->startCapturePass();
        settle([&] { return isCaptureWaiting(); });
        m_pass->scheduleDebouncedCapture();
        m_pane->inputMode = true;
        m_pass->supersede();
        QVERIFY(!m_pane->processing);
        m_pass->scheduleDebouncedCapture(); // moved while text is typed
        m_clock->advance(10s);
        capture(tl::unexpected(Failure{.description = u"reason"_s}));
        m_translations->answer(0, BlockTranslations{.texts = {u"one"_s, u"two"_s}});
        settle([&] { return m_isLastTranslationWanted == false; });
        end();
        QVERIFY(!m_pane->processing);
        QCOMPARE(passes(), 2);
        QCOMPARE(m_pane->log, (QStringList{u"clear"_s, u"clear"_s}));
        QVERIFY(m_copied.isEmpty() && m_recorded.isEmpty());
    }

    void aLookChangesWhatIsNewAndNothingElse()
    {
        m_texts->settings.write(settings::autoCopy, true);
        m_pass->setFollowing(true);
        m_pass->scheduleDebouncedCapture();
        QVERIFY(m_clock->isIdle()); // looks follow a move by themselves
        QImage screen(400, 300, QImage::Format_RGB32);
        screen.fill(Qt::white);
        look({.picture = screen, .changed = screen.rect()});
        m_translations->answer(0, BlockTranslations{.texts = {u"one"_s, u"two"_s}});
        QTRY_VERIFY(m_report);
        QCOMPARE(m_pane->log, QStringList{u"now one two"_s});
        QCOMPARE(m_report->lines.size(), 2);

        m_lines = {{u"—"_s, {0, 0.5, 0.5, 0.25}}, {u"三"_s, {0, 0.1, 0.5, 0.2}}}; // the first one misread
        const QRect second(0, 210, 200, 60);
        for (int y = second.top(); y <= second.bottom(); ++y)
            screen.setPixelColor(10, y, Qt::black);
        look({.picture = screen, .changed = second, .nextRequest = 1s});
        QTRY_VERIFY(m_report); // not yet
        QCOMPARE(m_pane->log.last(), u"now one"_s);
        QCOMPARE(m_report->again, 1s);
        QCOMPARE(m_translations->asked(), 1);
        look({.picture = screen, .time = 1s, .nextRequest = 1s});
        settle([&] { return m_translations->asked() == 2; });
        m_translations->answer(1, tl::unexpected(Failure{.description = u"busy"_s}));
        QTRY_VERIFY(m_report);
        QVERIFY(m_report->hasFailed && m_report->trouble == u"busy"_s);
        look({.picture = screen, .time = 3s});
        settle([&] { return m_translations->asked() == 3; });
        QCOMPARE(m_asked, QStringList{u"三"_s});
        m_translations->answer(2, BlockTranslations{.texts = {u"three"_s}});
        QTRY_VERIFY(m_report);
        QCOMPARE(m_pane->log.last(), u"now one three"_s);
        QCOMPARE(m_copied, (QStringList{u"one\ntwo"_s, u"three"_s}));
        QCOMPARE(m_recorded, (QStringList{u"一\n二>one\ntwo"_s, u"三>three"_s}));
        QCOMPARE(m_pane->log.filter(u"card"_s), QStringList());

        m_lines[1].text = u"四"_s;
        screen.setPixelColor(20, second.center().y(), Qt::black);
        int sent = 0;
        m_pass->onSent = [&] { ++sent; };
        look({.picture = screen, .changed = second, .time = 9s});
        QTRY_COMPARE(sent, 1);
        QCOMPARE(m_pane->log.last(), u"now one three"_s);
        m_clock->advance(1s);
        QCOMPARE(m_pane->log.last(), u"now one"_s); // the answer is long in coming
        m_pass->startCapturePass();
        QVERIFY(m_report && m_report->isDropped);
        m_translations->answer(3, BlockTranslations{.texts = {u"four"_s}});

        int failures = 0;
        m_pass->onFailed = [&] { ++failures; };
        capture(screen);
        const QList<OnDeviceOutcome> oneNotReady{{.kind = OnDeviceOutcome::Kind::Translated},
                                                 {.kind = OnDeviceOutcome::Kind::NotReady}};
        translate(4, BlockTranslations{.texts = {u"one"_s, u"四"_s}, .note = {}, .outcomes = oneNotReady});
        QCOMPARE(m_pane->log.last(), u"overlay one"_s);
        QCOMPARE(failures, 1);
        look({.picture = screen, .time = 11s});
        QCOMPARE(m_asked, QStringList{u"四"_s});
        m_translations->answer(5, BlockTranslations{.texts = {u"four"_s}});
        QTRY_VERIFY(m_report);

        m_pass->startCapturePass();
        capture(screen);
        settle([&] { return m_translations->asked() == 7; });
        m_pass->forgetScreen(); // another language was chosen
        translate(6, BlockTranslations{.texts = {u"one"_s, u"four"_s}});
        look({.picture = screen, .changed = screen.rect(), .time = 12s});
        QCOMPARE(m_asked.size(), 2);
        m_translations->answer(7, BlockTranslations{.texts = {u"eins"_s, u"vier"_s}});
        QTRY_VERIFY(m_report);
        QCOMPARE(m_pane->log.last(), u"now eins vier"_s);
    }

    void whereLinesHaveMovedIsReported()
    {
        const auto screen = [](int top) {
            QImage image(400, 300, QImage::Format_RGB32);
            image.fill(Qt::white);
            QPainter painter(&image);
            for (int x = 0; x < 200; x += 5)
                painter.fillRect(x, top, 2, x % 3 == 0 ? 75 : 50, Qt::black);
            return image;
        };
        m_lines = {{u"一"_s, {0, 0.5, 0.5, 0.25}}};
        look({.picture = screen(75), .changed = QRect(0, 0, 400, 300)});
        m_translations->answer(0, BlockTranslations{.texts = {u"one"_s}});
        QTRY_VERIFY(m_report);
        QVERIFY(!m_pass->follow(screen(75)));
        const FollowedLines moved = m_pass->follow(screen(55)).value();
        QCOMPARE(moved.lines, QList{QRect(0, 55, 200, 75)});
        QVERIFY(moved.unread.isEmpty() && moved.uncovered.isEmpty());
        QImage other = screen(75);
        for (const QPoint &dot : {QPoint(100, 70), QPoint(300, 70)}) // where the line was, and beside it
            other.setPixelColor(dot, Qt::black);
        const FollowedLines again = m_pass->follow(other).value();
        QCOMPARE(again.unread, QRegion(96, 64, 32, 32) | QRect(288, 64, 32, 32));
        QCOMPARE(again.uncovered, QRegion(96, 64, 32, 32));
        QVERIFY(!again.areTextsLost);
        const FollowedLines partial = m_pass->follow(screen(55), QRect(150, 75, 100, 75)).value();
        QVERIFY(partial.unread.contains(QRect(0, 55, 200, 75))); // more of the line may have come before it moved
        const QImage blank = [&] {
            QImage image = screen(55);
            image.fill(Qt::white);
            return image;
        }();
        QVERIFY(m_pass->follow(blank).value().areTextsLost);
    }

    void aDragCostsOnePass()
    {
        for (int i = 0; i < 40; ++i) {
            m_pass->scheduleDebouncedCapture();
            m_clock->advance(100ms);
        }
        QCOMPARE(passes(), 0);
        m_clock->advance(699ms);
        QCOMPARE(passes(), 0);
        m_clock->advance(1ms);
        QCOMPARE(passes(), 1);
        m_clock->advance(10s);
        QCOMPARE(passes(), 1);
    }

    void aSecondDragPutsThePassOff()
    {
        for (const bool moves : {true, false}) { // false: it ends where it began
            const auto before = passes();
            m_pass->userHolds(true);
            m_pass->userHolds(false); // nothing was due
            QVERIFY(m_clock->isIdle());
            m_pass->scheduleDebouncedCapture(40ms);
            m_clock->advance(400ms);
            m_pass->userHolds(true);
            m_clock->advance(2s);
            m_pass->userHolds(true); // held for long, and moved at last
            QCOMPARE(passes(), before);
            if (moves)
                m_pass->scheduleDebouncedCapture(40ms);
            else
                m_pass->userHolds(false);
            m_clock->advance(moves ? 759ms : 799ms);
            QCOMPARE(passes(), before);
            m_clock->advance(1ms);
            QCOMPARE(passes(), before + 1);
        }
    }

    void theManualModeStartsNothingByItself()
    {
        m_texts->settings.write(settings::triggerMode, TriggerMode::Manual);
        m_pass->scheduleDebouncedCapture();
        QVERIFY(m_clock->isIdle());
        m_texts->settings.write(settings::triggerMode, TriggerMode::AfterMoving);
        m_pass->scheduleDebouncedCapture();
        m_texts->settings.write(settings::triggerMode, TriggerMode::Manual); // switched while the timer runs
        m_clock->advance(1s);
        QCOMPARE(passes(), 0);
    }

    void anExplicitTriggerAbsorbsTheTimer()
    {
        m_pass->scheduleDebouncedCapture();
        m_clock->advance(500ms);
        m_pass->startCapturePass();
        m_clock->advance(10s);
        QCOMPARE(passes(), 1);
    }

    void nothingHappensOffScreen()
    {
        m_pane->onScreen = false;
        m_pass->startCapturePass();
        QVERIFY(!m_pane->processing && m_pane->log.isEmpty());
    }

    void whoAsksIsToldHowLongTheStagesTook()
    {
        const QString number = u"\\d+\\.\\d ms"_s;
        const QStringList stages{u"capture"_s, u"recognition"_s, u"translation"_s, u"layout"_s, u"paint"_s};
        QTest::ignoreMessage(
            QtDebugMsg, QRegularExpression(u"^"_s + stages.join(u' ' + number + u", "_s) + u' ' + number + u"$"_s));
        QLoggingCategory::setFilterRules(u"lucentra.pass.debug=true"_s);
        startPass();
        translate(0, BlockTranslations{.texts = {u"one"_s, u"two"_s}});
        m_clock->advance(0ms);
        QLoggingCategory::setFilterRules({});
    }

private:
    /// Whether the newest pass waits for its picture.
    bool isCaptureWaiting() const { return m_capture->held.asked() > m_capture->held.next(); }

    void startPass(Result<QImage> image = QImage(400, 300, QImage::Format_RGB32))
    {
        m_pass->startCapturePass();
        capture(std::move(image));
    }

    void capture(Result<QImage> image = QImage(400, 300, QImage::Format_RGB32))
    {
        settle([&] { return isCaptureWaiting(); });
        m_capture->held.answer(m_capture->held.next(), std::move(image));
    }

    void look(const ScreenChange &change)
    {
        m_report.reset();
        const int asked = m_translations->asked();
        m_pass->look(change, [this](const LookReport &report) { m_report = report; });
        QTRY_VERIFY(m_report || m_translations->asked() > asked);
    }

    void translate(int request, Result<BlockTranslations> translations)
    {
        settle([&] { return m_translations->asked() > request; });
        m_translations->answer(request, std::move(translations));
        settle([&] { return !m_pane->processing; });
    }

    /// Ends the pass while what it waits for comes, which changes nothing any more.
    void end()
    {
        const QStringList before = m_pane->log;
        m_capture->held.close();
        m_translations->close();
        m_pass.reset();
        m_queue->drain();
        QCOMPARE(m_pane->log, before);
    }

    void settle(const std::function<bool()> &reached) { QTRY_VERIFY(reached()); }

    qsizetype passes() const { return m_pane->log.count(u"clear"_s); }

    std::unique_ptr<TestTexts> m_texts;
    std::unique_ptr<MainQueue> m_queue;
    std::unique_ptr<ManualScheduler> m_clock;
    std::unique_ptr<NotingPane> m_pane;
    std::unique_ptr<HeldCapture> m_capture;
    QList<TextLine> m_lines;
    bool m_areLinesLeftOut = false;
    QImage m_read; ///< what the reader was given last
    std::atomic<int> m_readings = 0;
    std::atomic<bool> m_isHoldingReader = false; ///< it reads as long as the image is wanted
    std::unique_ptr<Held<Result<BlockTranslations>>> m_translations;
    QStringList m_asked; ///< the texts of the last request
    std::atomic<bool> m_isLastTranslationWanted = true; ///< whether it still was when it came
    std::optional<LookReport> m_report; ///< of the last look
    QStringList m_copied;
    QStringList m_recorded;
    std::unique_ptr<TranslationPass> m_pass;
};

static const TestClass<TranslationPassTest> translationPassTest;
#include "TranslationPassTest.moc"
