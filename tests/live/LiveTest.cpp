#include "ChangeSettler.h"
#include "RequestLimit.h"
#include "ScreenMemory.h"
#include "ShownBlocks.h"

#include "Columns.h"
#include "TestProgram.h"

#include <QPainter>
#include <QTest>

#include <functional>

using namespace lucentra;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr QSize screenSize(4 * tileSide, 2 * tileSide);

/// A screen of four by two tiles and those who look at it.
class Played
{
public:
    Played()
    {
        m_picture.fill(Qt::darkGray);
        show();
        pass(200ms);
        looks.clear();
    }

    /// Fills a tile with a plain tone, or with letters of a sort and a contrast.
    void plain(int tile, int tone)
    {
        QPainter(&m_picture).fillRect(rectOf(tile), QColor(tone, tone, tone));
        show();
    }
    void letters(int tile, int sort, int contrast = 255)
    {
        draw(tile, 8, [=](int x) { return ((x * (sort + 3)) % 11) < 5 ? contrast : 0; });
        show();
    }
    /// A film in a tile: grass in the wind, and a subtitle in its middle if it is to have one.
    void film(int tile, int subtitle = -1)
    {
        const int step = ++m_step;
        draw(tile, 0, [=](int x) { return (x + step * 5) % 8 < 4 ? 130 + step % 40 : 60; });
        if (subtitle >= 0)
            letters(tile, subtitle);
        else
            show();
    }

    /// Letters have come from somewhere else, but not to this tile.
    void moved(int unread, const QRegion &uncovered = {}) { m_settler.linesMoved(rectOf(unread), uncovered, m_now); }
    void putBack(int tile) { m_settler.putBack(rectOf(tile), m_now); }

    /// Lets time pass; `each` is done every 50 ms, which is how often pictures come.
    void pass(std::chrono::milliseconds duration, const std::function<void()> &each = {})
    {
        for (const auto end = m_now + duration; m_now < end;) {
            m_now += 10ms;
            if (each && m_now % 50ms == 0ms)
                each();
            const auto due = m_settler.take(m_now);
            if (due.changed.isEmpty())
                continue;
            looks.append(due.changed);
            unsettled |= due.unsettled;
            m_settler.found(lines, areNew ? lines : QList<QRect>(), running);
        }
    }

    int looksAt(int tile) const
    {
        return int(std::count_if(looks.begin(), looks.end(),
                                 [&](const QRegion &region) { return region.contains(cornerOf(tile)); }));
    }
    static QRect rectOf(int tile) { return {cornerOf(tile), QSize(tileSide, tileSide)}; }

    QList<QRegion> looks;
    QRegion unsettled;
    QList<QRect> lines;
    bool areNew = true; ///< each time they are looked at
    QRegion running;

private:
    static QPoint cornerOf(int tile) { return {tile % 4 * tileSide, tile / 4 * tileSide}; }
    void draw(int tile, int margin, const std::function<int(int)> &toneAt)
    {
        QPainter painter(&m_picture);
        for (int x = 0; x < tileSide; ++x) {
            const int tone = toneAt(x);
            painter.fillRect(QRect(cornerOf(tile) + QPoint(x, margin), QSize(1, tileSide - 2 * margin)),
                             QColor(tone, tone, tone));
        }
    }
    void show() { m_settler.add(m_picture.copy(), m_picture.rect(), m_now); }

    QImage m_picture{screenSize, QImage::Format_RGB32};
    int m_step = 0;
    std::chrono::milliseconds m_now = 10'000ms;
    ChangeSettler m_settler;
};

TextLine lineAt(const QString &text, int x, int y, int width, int height = 16)
{
    return {text, NormBox::of(QRect(x, y, width, height), {400, 200})};
}

QStringList textsOf(const QList<TextLine> &lines)
{
    QStringList texts;
    for (const TextLine &line : lines)
        texts.append(line.text);
    return texts;
}

} // namespace

class LiveTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatHasChangedIsLookedAtOnceItRests()
    {
        Played screen;
        screen.pass(5s);
        QVERIFY(screen.looks.isEmpty());
        screen.letters(2, 0);
        screen.pass(70ms);
        QVERIFY(screen.looks.isEmpty());
        screen.pass(10ms);
        QCOMPARE(screen.looks, QList{QRegion(Played::rectOf(2))});
        for (int i = 0; i < 4; ++i) { // back to what was seen before anybody looked
            screen.letters(2, 1);
            screen.pass(40ms);
            screen.letters(2, 0);
            screen.pass(100ms);
        }
        QCOMPARE(screen.looks.size(), 1);
        for (int tone = 100; tone < 200; tone += 5) { // slow changes, no step of which is noticed
            screen.letters(5, 0, tone);
            screen.plain(0, tone);
            screen.pass(50ms);
        }
        QVERIFY(screen.looksAt(5) > 0);
        QCOMPARE(screen.looksAt(0), 0); // there is nothing to read
    }

    void aTextThatGoesOnHasNotSettled()
    {
        Played screen;
        screen.letters(0, 0);
        int sort = 0;
        screen.pass(100ms, [&] { screen.letters(1, ++sort); });
        QVERIFY(screen.looksAt(0) > 0);
        QVERIFY(screen.unsettled.contains(Played::rectOf(0).center()));
        screen.unsettled = {};
        screen.letters(6, 0); // both at once
        screen.letters(7, 0);
        screen.pass(100ms);
        QVERIFY(screen.looksAt(6) > 0);
        QVERIFY(!screen.unsettled.contains(Played::rectOf(6).center()));
    }

    void whatNeverRestsHoldsNothingUp()
    {
        Played screen;
        const auto move = [&] { screen.film(0); };
        screen.pass(500ms, move);
        QCOMPARE(screen.looksAt(0), 1);
        QVERIFY(screen.unsettled.contains(Played::rectOf(0).center()));
        screen.pass(20s, move); // learned: there is no line
        QVERIFY2(screen.looksAt(0) <= 4, qPrintable(QString::number(screen.looksAt(0))));
        screen.looks.clear();
        screen.letters(6, 0);
        screen.pass(100ms, move);
        QCOMPARE(screen.looksAt(6), 1);
        QCOMPARE(screen.looksAt(0), 0);
        screen.film(0);
        screen.pass(260ms); // it rests at last
        QCOMPARE(screen.looksAt(0), 1);
        screen.lines = {Played::rectOf(6)};
        screen.areNew = false; // the line's letters are the same, what is beside them isn't
        screen.pass(10s, [&, step = 0]() mutable { screen.letters(6, ++step / 3); });
        QVERIFY2(screen.looksAt(6) <= 10, qPrintable(QString::number(screen.looksAt(6))));
    }

    void writingBeforeAMovingPictureIsSeenAtOnce()
    {
        Played screen;
        screen.pass(10s, [&] { screen.film(0); });
        for (int sort = 0; sort < 3; ++sort) {
            screen.looks.clear();
            screen.lines = {Played::rectOf(0)};
            screen.pass(140ms, [&] { screen.film(0, sort); });
            QCOMPARE(screen.looksAt(0), 1);
            screen.pass(1800ms, [&] { screen.film(0, sort); });
            QVERIFY2(screen.looksAt(0) <= 2, "the same writing isn't looked at again");
        }
        screen.looks.clear();
        screen.lines = {};
        screen.pass(140ms, [&] { screen.film(0); });
        QCOMPARE(screen.looksAt(0), 1); // gone
    }

    void whatRunsPastIsLookedAtOnceItRests()
    {
        Played screen;
        const auto run = [&] {
            screen.film(0);
            screen.film(1);
        };
        screen.running = Played::rectOf(0);
        screen.pass(600ms, run);
        screen.looks.clear();
        screen.running = {};
        screen.pass(20s, run);
        QVERIFY(screen.looks.isEmpty());
        screen.pass(300ms);
        QCOMPARE(screen.looksAt(0) + screen.looksAt(1), 2);
    }

    void aTextThatHasMovedInItsRowRuns_data()
    {
        const auto row = columns<QString, QRect, bool>("text", "place", "runs");
        row("ticker", u"bour opens at seven +"_s, QRect(20, 160, 190, 16), true);
        row("written on", u"The harbour opens at seven o'clock"_s, QRect(40, 160, 340, 16), false);
        row("the next subtitle", u"Nobody knows the captain"_s, QRect(20, 160, 240, 16), false);
        row("another row", u"The harbour opens at seven"_s, QRect(20, 120, 260, 16), false);
        row("at rest", u"bour opens at seven +"_s, QRect(20, 20, 190, 16), false);
    }

    void aTextThatHasMovedInItsRowRuns()
    {
        const auto [text, place, runs] = fetched<QString, QRect, bool>();
        QList<TextLine> lines{{text, NormBox::of(place, {400, 200})}};
        const QString former = u"The harbour opens at seven"_s;
        const QRegion running = takeRunningLines(lines, {lineAt(former, 40, 160, 260), lineAt(former, 40, 20, 260)},
                                                 {400, 200}, QRect(0, 96, 400, 104), {});
        QCOMPARE(running, runs ? QRegion(place) : QRegion());
        QCOMPARE(lines.isEmpty(), runs);
    }

    void whatHasMovedIsKnown()
    {
        Played screen;
        for (int sort = 1; sort < 20; ++sort) { // without an end, but it doesn't count as moving
            screen.letters(2, sort);
            screen.letters(6, sort + 1);
            screen.moved(6);
            screen.pass(300ms);
        }
        QCOMPARE(screen.looksAt(2), 0);
        QVERIFY(screen.looksAt(6) > 2);
        screen.looks.clear();
        screen.letters(2, 0);
        screen.letters(6, 0);
        screen.moved(2, Played::rectOf(6)); // no line was there before
        screen.pass(90ms);
        QCOMPARE(screen.looksAt(2), 1);
        QCOMPARE(screen.looksAt(6), 1);
    }

    void whatIsPutBackIsNotLookedAtInVain()
    {
        Played screen;
        for (int i = 0; i < 4; ++i) {
            screen.putBack(2);
            screen.pass(100ms);
        }
        QCOMPARE(screen.looksAt(2), 4);
        screen.letters(2, 0);
        screen.pass(90ms);
        QCOMPARE(screen.looksAt(2), 5);
    }

    void whatBlinksIsLearned()
    {
        Played screen;
        const auto blink = [&, step = 0]() mutable {
            if (++step % 10 == 0)
                screen.letters(3, step / 10 % 2);
        };
        screen.lines = {Played::rectOf(3)};
        screen.pass(5s, blink);
        screen.looks.clear();
        screen.pass(20s, blink);
        QCOMPARE(screen.looksAt(3), 0);
        screen.letters(3, 5);
        screen.pass(100ms);
        QCOMPARE(screen.looksAt(3), 1);
    }

    void requestsAreLimited_data()
    {
        const auto row = columns<int, bool, int>("perMinute", "saves", "inThreeMinutes");
        row("once a second", 60, false, 180);
        row("a number a minute", 20, false, 60);
        row("half as often on battery", 20, true, 30);
        row("at least one", 1, true, 3);
    }

    void requestsAreLimited()
    {
        const auto [perMinute, saves] = fetched<int, bool>();
        RequestLimit limit;
        limit.set(perMinute, saves);
        int sent = 0;
        std::chrono::milliseconds last = -10s;
        for (auto now = 0ms; now < 3min; now += 100ms) {
            if (limit.next(now) > now)
                continue;
            QVERIFY(now - last >= (saves ? 2s : 1s));
            limit.count(last = now);
            ++sent;
        }
        QTEST(sent, "inThreeMinutes");
    }

    void linesAreKeptWhereNothingHasChanged()
    {
        QImage before(400, 200, QImage::Format_RGB32);
        before.fill(Qt::white);
        const ScreenReading former{before, {lineAt(u"first"_s, 20, 20, 100), lineAt(u"second"_s, 20, 60, 100),
                                            lineAt(u"beside"_s, 220, 60, 100), lineAt(u"last"_s, 20, 100, 100)}};
        QImage now = before;
        QPainter(&now).fillRect(20, 60, 100, 16, Qt::black); // over the second line
        const QRegion changed = changedTiles(before, now, now.rect());
        QList<QRect> parts;
        const auto reading = readAgain(former, now, changed, [&](const QRect &part) {
            parts.append(part);
            return QList{lineAt(u"f1rst"_s, 20, 20, 100), lineAt(u"other"_s, 20, 60, 110), lineAt(u"new"_s, 20, 78, 60)};
        });
        QCOMPARE(textsOf(reading.lines), (QStringList{u"first"_s, u"other"_s, u"new"_s, u"beside"_s, u"last"_s}));
        QCOMPARE(parts.size(), 1);
        QVERIFY(!parts[0].contains(300, 68) && parts[0].contains(QRect(20, 60, 100, 16)));
        QVERIFY(isSamePicture(reading.picture, now, now.rect()));
        auto doubted = former;
        doubted.preliminary = QRect(0, 0, 128, 48);
        const auto again = readAgain(doubted, before, QRect(0, 0, 128, 48), [](const QRect &) {
            return QList{lineAt(u"f1rst"_s, 20, 20, 100), lineAt(u"other"_s, 20, 60, 100)};
        });
        QCOMPARE(textsOf(again.lines), (QStringList{u"f1rst"_s, u"second"_s, u"beside"_s, u"last"_s}));
        QVERIFY(again.preliminary.isEmpty());
        // Nothing is left at the place of the second line. What changes elsewhere without being looked at yet doesn't count.
        QPainter(&now).fillRect(20, 100, 100, 16, Qt::black);
        const auto gone = readAgain(former, now, QRegion(0, 32, 128, 64), [](const QRect &) { return QList<TextLine>(); });
        QCOMPARE(textsOf(gone.lines), (QStringList{u"first"_s, u"beside"_s, u"last"_s}));
        QVERIFY(!isSamePicture(gone.picture, now, now.rect()));
    }

    void whatIsScrolledKeepsItsTranslations()
    {
        const auto page = [](int top, int third, bool hasBeside = true) {
            QImage image(400, 200, QImage::Format_RGB32);
            image.fill(Qt::white);
            QPainter painter(&image);
            const auto write = [&](int x, int y, int sort) {
                for (int column = 0; column < 100; ++column)
                    painter.fillRect(x + column, y, 1, (column * (sort + 3)) % 11 < 5 ? 16 : 6, Qt::black);
            };
            write(20, 20 - top, 0);
            write(20, 60 - top, 1);
            write(20, 100 - top, third);
            if (hasBeside)
                write(220, 60, 3); // beside the list
            return image;
        };
        const TextLine lines[]{lineAt(u"first"_s, 20, 20, 100), lineAt(u"second"_s, 20, 60, 100),
                               lineAt(u"third"_s, 20, 100, 100), lineAt(u"beside"_s, 220, 60, 100)};
        ScreenMemory memory{{page(0, 2), {std::begin(lines), std::end(lines)}}, {}};
        for (const TextLine &line : lines)
            memory.blocks.append(ShownBlock{.block = {line.text, line.normBox}, .translation = line.text.toUpper()});
        QVERIFY(!memory.movedOn(page(0, 5)));
        ScreenMemory alike = memory;
        alike.screen.picture = page(0, 1); // the same text in two lines
        QVERIFY(!alike.movedOn(page(0, 5)));
        const auto moved = memory.movedOn(page(30, 2));
        QVERIFY(moved);
        QCOMPARE(moved->translations(), (QStringList{u"SECOND"_s, u"THIRD"_s, u"BESIDE"_s}));
        QCOMPARE(pixelsOf(moved->blocks[1].block.normBox, {400, 200}).top(), 70);
        QCOMPARE(moved->blocks[2].block.normBox, lines[3].normBox);
        QVERIFY(!moved->movedOn(page(30, 2)));
        const auto unread = [](const ScreenMemory &seen, const QImage &now) {
            return changedTiles(seen.screen.picture, now, now.rect());
        };
        QCOMPARE(unread(*moved, page(30, 2)), QRegion());
        const QImage next = page(30, 5); // the third line is a new one
        QCOMPARE(unread(memory.movedOn(next).value(), next), QRegion(0, 32, 128, 64)); // with what is around it
        const ScreenMemory cut{{page(-90, 2), {lineAt(u"first"_s, 20, 110, 100), lineAt(u"second"_s, 20, 150, 100)}}, {}};
        const QImage whole = page(-82, 2); // the lower half of the third line comes into view
        QVERIFY(unread(cut.movedOn(whole).value(), whole).contains(QPoint(30, 185)));
        const QImage alone = page(30, 2, false); // the line beside the list is gone
        QVERIFY(unread(memory.movedOn(alone).value(), alone).intersects(QRect(220, 60, 100, 16)));
        QCOMPARE(moved->movedOn(page(130, 2)).value().translations(), QStringList{u"BESIDE"_s}); // no line is left to go by
        const auto returned = memory.movedOn(page(20, 2)).value().movedOn(page(0, 2)).value();
        QCOMPARE(returned.screen.preliminary, QRegion(20, 20, 100, 16)); // a part of it may have been outside
        const auto reading = readAgain(memory.screen, page(-20, 5), QRect(0, 0, 400, 200),
                                       [](const QRect &) { return QList{lineAt(u"other"_s, 20, 120, 100)}; });
        QCOMPARE(textsOf(reading.lines), (QStringList{u"first"_s, u"second"_s, u"other"_s, u"beside"_s}));
    }

    void aLineThatGoesOnBesideThePartIsReadWhole()
    {
        QImage picture(400, 200, QImage::Format_RGB32);
        picture.fill(Qt::white);
        QList<QRect> parts;
        const auto reading =
            readAgain({picture, {}}, picture, QRegion(200, 60, 32, 32), [&](const QRect &part) {
                parts.append(part);
                const int left = std::max(40, part.left());
                const int top = std::max(44, part.top());
                return QList{lineAt(left == 40 && top == 44 ? u"whole"_s : u"le"_s, left, top,
                                    std::min(240, part.right()) - left)};
            });
        QCOMPARE(textsOf(reading.lines), QStringList{u"whole"_s});
        QVERIFY(parts.size() > 1);
        // The beginning of a line that is being written stays as it was.
        const auto longer = readAgain({picture, {lineAt(u"whol|"_s, 40, 66, 100)}}, picture, QRegion(150, 60, 32, 32),
                                      [](const QRect &) { return QList{lineAt(u"whole line"_s, 40, 66, 150)}; });
        QCOMPARE(textsOf(longer.lines), QStringList{u"whole line"_s});
        // Its last letters alone wait until all of it is read.
        for (const bool isApart : {false, true}) {
            const auto read = [&](const QRect &part) {
                const int left = std::max(isApart ? 143 : 40, part.left());
                return part.contains(QRect(40, 66, 116, 16)) ? QList{lineAt(u"whole line"_s, 40, 66, 116)}
                                                             : QList{lineAt(u"ne"_s, left, 66, 156 - left)};
            };
            const auto tail = readAgain({picture, {lineAt(u"whole li"_s, 40, 66, 100)}}, picture,
                                        QRegion(128, 64, 32, 32), read);
            QCOMPARE(tail.lines[0].text, u"whole li"_s);
            QCOMPARE(tail.partial, QRegion(40, 66, 116, 16));
            const auto whole = readAgain(tail, picture, tail.partial, read);
            QCOMPARE(textsOf(whole.lines), QStringList{u"whole line"_s});
            QVERIFY(whole.partial.isEmpty());
        }
    }

    void aLineThatEndsBesideMoreWritingIsCut_data()
    {
        const auto row = columns<QRegion, int, bool>("written", "from", "isCut");
        row("a word was missed", QRegion(32, 64, 160, 32), 100, true);
        row("whole", QRegion(96, 64, 96, 32), 100, false);
        row("another line above", QRegion(96, 32, 96, 64), 100, false);
        row("read before", QRegion(32, 64, 160, 32), 40, false);
    }

    void aLineThatEndsBesideMoreWritingIsCut()
    {
        const auto [written, from, isCut] = fetched<QRegion, int, bool>();
        const QList<TextLine> former{lineAt(u"line"_s, 40, 70, 150)};
        QCOMPARE(!cutLines({lineAt(u"line"_s, from, 70, 190 - from)}, former, {400, 200}, written).isEmpty(), isCut);
    }

    void aReadingIsStableWhileItsLettersAre_data()
    {
        const auto row = columns<int, int, QString, QString>("tone", "letters", "read", "kept");
        row("misread before a moving picture", 120, 0, u"subtit1e"_s, u"subtitle"_s);
        row("not read at all", 120, 0, {}, u"subtitle"_s);
        row("another text", 120, 5, u"subtitle two"_s, u"subtitle two"_s);
        row("gone", 120, -1, {}, {});
        row("a letter has changed, the ground hasn't", 90, 1, u"subtit1e"_s, u"subtit1e"_s);
    }

    void aReadingIsStableWhileItsLettersAre()
    {
        QFETCH(const int, tone);
        QFETCH(const int, letters);
        QFETCH(const QString, read);
        QFETCH(const QString, kept);
        const auto picture = [](int ground, int sort) {
            QImage image(400, 200, QImage::Format_RGB32);
            image.fill(QColor(ground, ground, ground));
            QPainter painter(&image);
            for (int x = 100; sort >= 0 && x < 220; ++x) {
                const int own = sort == 1 && x > 204 ? 5 : sort == 1 ? 0 : sort;
                painter.fillRect(x, 160, 1, 16, ((x * (own + 3)) % 11) < 3 ? Qt::white : image.pixelColor(0, 0));
            }
            return image;
        };
        const QImage before = picture(90, 0);
        const QImage now = picture(tone, letters);
        const auto reading = readAgain({before, {lineAt(u"subtitle"_s, 100, 160, 120)}}, now,
                                       changedTiles(before, now, now.rect()), [&](const QRect &) {
                                           return read.isEmpty() ? QList<TextLine>()
                                                                 : QList{lineAt(read, 101, 160, 119)};
                                       });
        QCOMPARE(textsOf(reading.lines).join(u'|'), kept);
    }

    void aTextThatIsBeingWrittenWaits()
    {
        QList<ShownBlock> shown;
        QStringList translated;
        const auto look = [&](const QString &text, std::chrono::milliseconds time, bool isUnsettled = false) {
            const NormBox box{0.1, 0.1, 0.02 * double(text.size()), 0.1};
            BlockChange change =
                compareBlocks(shown, {{text, box}}, {400, 200}, isUnsettled ? QRect(0, 0, 400, 200) : QRegion(), time);
            for (const qsizetype index : change.wanted) {
                ShownBlock &block = change.blocks[index];
                block.isTranslated = true;
                block.translation = block.block.text.toUpper();
                translated.append(block.block.text);
            }
            shown = change.blocks;
            return change.again;
        };
        QCOMPARE(look(u"whole"_s, 0ms), std::nullopt); // there at once
        QCOMPARE(look(u"whole line"_s, 2000ms), 2300ms);
        QCOMPARE(shown[0].translation, u"WHOLE"_s); // meanwhile
        QCOMPARE(look(u"whole line of"_s, 2200ms), 2500ms);
        QCOMPARE(look(u"whole line of"_s, 2500ms), std::nullopt);
        QCOMPARE(translated, (QStringList{u"whole"_s, u"whole line of"_s}));
        for (int i = 1; i <= 8; ++i) // without a pause
            look(u"whole line of"_s + QString(i, u'x'), 4000ms + i * 200ms);
        QCOMPARE(translated.mid(2), QStringList{u"whole line ofxxxxxx"_s}); // after a second
        translated.clear();
        QCOMPARE(look(u"another"_s, 9000ms, true), 9150ms); // found in the midst of a change
        QVERIFY(translated.isEmpty());
        look(u"another"_s, 9300ms);
        look(u"another"_s, 19'000ms);
        QCOMPARE(translated, QStringList{u"another"_s});
    }
};

static const TestClass<LiveTest> liveTest;
#include "LiveTest.moc"
