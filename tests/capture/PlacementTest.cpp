#include "Columns.h"
#include "OverlayPlacement.h"
#include "Paragraphs.h"
#include "Pixels.h"
#include "TestProgram.h"
#include "TextRecognition.h"
#include "WindowButtonMask.h"

#include <QTest>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

/// Serves observations, or a failure, and keeps the request.
class PlayedRecognizer : public TextRecognizer
{
public:
    Result<QList<RecognizedTextObservation>> answer;
    TextRecognitionRequest asked;

    Result<QList<RecognizedTextObservation>> perform(const TextRecognitionRequest &request, const QImage &) override
    {
        asked = request;
        return answer;
    }
};

QStringList textsOf(const QList<TextBlock> &blocks)
{
    QStringList texts;
    for (const TextBlock &block : blocks)
        texts.append(block.text);
    return texts;
}

/// A line in pixels, y down.
struct Row
{
    double x = 0, y = 0, width = 0;
    QString text;
    double height = 16;
};

QList<TextBlock> blocksOf(const QList<Row> &rows)
{
    const QSizeF size(800, 600);
    QList<TextLine> lines;
    for (const Row &row : rows)
        lines.append({row.text, NormBox::of({row.x, row.y, row.width, row.height}, size)});
    const auto isPhrase = [](const QString &text) {
        return text == u"Restore the Previous Session Now" || text == u"train arrived.";
    };
    return paragraphsFromLines(lines, size, isPhrase);
}

} // namespace

class PlacementTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noiseIsNoBlock()
    {
        const auto isBlock = [](const QString &text) { return !blocksFromObservations({{{text}, {}}}).isEmpty(); };
        // Signs, a lone letter or number, and characters next to the scripts whose characters are words.
        for (const QString &noise : {u"---"_s, u" • "_s, u"🙂"_s, u"x"_s, u"e\u0301"_s, u"\u3040"_s, u"한"_s})
            QVERIFY2(!isBlock(noise), qPrintable(noise));
        for (const QString &text : {u"I"_s, u"A"_s, u"x "_s, u"か\u3099"_s, u"譯"_s, u"\u9fff"_s, u"+5"_s, u"①②"_s})
            QVERIFY2(isBlock(text), qPrintable(text));
    }

    void theBestCandidateCountsAndOrderStays()
    {
        const auto blocks = blocksFromObservations({{{u"second"_s, u"2nd"_s}, {0, 0.1, 1, 0.1}},
                                                    {{}, {}},
                                                    {{u"-"_s, u"word"_s}, {}},
                                                    {{u" first "_s}, {0, 0.8, 1, 0.1}}});
        QCOMPARE(textsOf(blocks), (QStringList{u"second"_s, u" first "_s}));
        QCOMPARE(blocks[1].normBox, (NormBox{0, 0.8, 1, 0.1}));
    }

    void aFailedRequestFindsNothing()
    {
        PlayedRecognizer recognizer;
        recognizer.answer = tl::unexpected(Failure{});
        const QImage image(10, 10, QImage::Format_RGB32);
        QVERIFY(recognizeLines(recognizer, image, image.rect()).lines.isEmpty());
        QCOMPARE(recognizer.asked.languages, (QStringList{u"zh-Hant"_s, u"en-US"_s, u"ja-JP"_s}));
        recognizer.answer = QList<RecognizedTextObservation>{{{u"text"_s}, {0, 0.5, 1, 0.5}}};
        const auto inPart = recognizeLines(recognizer, image, {5, 0, 5, 5}).lines;
        QCOMPARE(inPart.value(0).normBox, (NormBox{0.5, 0.75, 0.5, 0.25}));
        QCOMPARE(recognizer.asked.minimumTextHeight, 2 * minimumTextHeight); // of a picture half as high
    }

    void linesOfAParagraphAreJoined_data()
    {
        const auto row = columns<QList<Row>, QStringList>("rows", "blocks");
        row("two paragraphs, a gap between, a word that was broken and one that is written with a hyphen",
            {{0, 0, 330, u"The bakery opens at mid-"_s},
             {0, 24, 330, u"night and closes when the well-"_s},
             {0, 48, 210, u"known bread is gone."_s},
             {0, 96, 330, u"Nobody looked surprised when a"_s},
             {0, 120, 120, u"train arrived."_s}},
            {u"The bakery opens at midnight and closes when the well-known bread is gone."_s,
             u"Nobody looked surprised when a train arrived."_s});
        row("ideographs, indented paragraphs without a gap, no space at the joints",
            {{32, 0, 304, u"整理桌面不是把東西全部丟掉，而是先決"_s},
             {0, 24, 160, u"定檔案要放在哪裡。"_s},
             {32, 48, 304, u"新版編輯器把常用的功能都放在左側，跟"_s},
             {0, 72, 96, u"著步驟操作。"_s}},
            {u"整理桌面不是把東西全部丟掉，而是先決定檔案要放在哪裡。"_s,
             u"新版編輯器把常用的功能都放在左側，跟著步驟操作。"_s});
        row("Korean, broken within a word and between two",
            {{0, 0, 300, u"빵은 열 시에 반죽하고 열한 시에 모양"_s},
             {0, 24, 300, u"을 잡으며 광장의 시계가 열두 시를 치면"_s},
             {0, 48, 100, u"팔기 시작합니다."_s}},
            {u"빵은 열 시에 반죽하고 열한 시에 모양을 잡으며 광장의 시계가 열두 시를 치면 팔기 시작합니다."_s});
        row("lines that were read wrongly, by which their boxes are too high or too low, and a word below",
            {{0, 0, 330, u"The bakery opens at midnight and the"_s},
             {0, 21, 322, u"line that was rëad wrongly is too h1gh"_s, 23},
             {0, 49, 326, u"for its letters, as this one, which is"_s, 14},
             {0, 72, 50, u"lower."_s},
             {0, 120, 320, u"What we learned from forty small"_s, 24},
             {0, 150, 110, u"gardens"_s, 24}},
            {u"The bakery opens at midnight and the line that was rëad wrongly is too h1gh for its letters, as this "
             "one, which is lower."_s,
             u"What we learned from forty small gardens"_s});
        row("two columns",
            {{0, 0, 300, u"The first thing to check is"_s},
             {340, 0, 300, u"A garden of this size needs"_s},
             {0, 24, 150, u"the power cord."_s},
             {340, 24, 140, u"much more water."_s},
             {0, 60, 120, u"A caption"_s, 13},
             {0, 84, 300, u"Nobody looked surprised when"_s},
             {340, 84, 120, u"Read more"_s},
             {0, 108, 150, u"a train arrived."_s}},
            {u"The first thing to check is the power cord."_s, u"A caption"_s,
             u"Nobody looked surprised when a train arrived."_s, u"A garden of this size needs much more water."_s,
             u"Read more"_s});
        row("a menu on rows of its own beside a text",
            {{160, 0, 300, u"The first thing to check is"_s},
             {0, 6, 60, u"Storage"_s},
             {160, 24, 150, u"the power cord."_s},
             {0, 36, 60, u"Keyboard"_s},
             {0, 66, 60, u"Battery"_s},
             {160, 72, 300, u"Nobody looked surprised when"_s},
             {160, 96, 150, u"a train arrived."_s}},
            {u"Storage"_s, u"Keyboard"_s, u"Battery"_s, u"The first thing to check is the power cord."_s,
             u"Nobody looked surprised when a train arrived."_s});
        row("a line that the engine knows as a whole",
            {{0, 0, 330, u"Windows that were open, of which the"_s},
             {0, 24, 330, u"Restore the Previous Session Now"_s},
             {0, 48, 330, u"knows nothing, and which were not, as a"_s},
             {0, 72, 120, u"train arrived."_s}},
            {u"Windows that were open, of which the"_s, u"Restore the Previous Session Now"_s,
             u"knows nothing, and which were not, as a train arrived."_s});
        row("bubbles beside each other, and a paragraph in pieces with a very short last line",
            {{100, 0, 120, u"Did you see where"_s},
             {400, 0, 120, u"Nobody came,"_s},
             {110, 20, 100, u"the boat went?"_s},
             {415, 20, 90, u"so we left."_s},
             {132, 100, 200, u"Justified text is wide"_s},
             {352, 100, 100, u"and it has"_s},
             {100, 124, 352, u"spaces that look as the gaps of columns,"_s},
             {100, 148, 24, u"too."_s},
             {132, 172, 320, u"The next paragraph begins here, and is"_s},
             {100, 196, 40, u"long."_s}},
            {u"Did you see where the boat went?"_s,
             u"Justified text is wide and it has spaces that look as the gaps of columns, too."_s,
             u"The next paragraph begins here, and is long."_s, u"Nobody came, so we left."_s});
        row("justified text whose spaces are as wide as the gaps of columns",
            {{0, 0, 330, u"The records of two hundred and"_s},
             {0, 24, 60, u"eleven"_s},
             {105, 24, 50, u"days,"_s},
             {200, 24, 40, u"and"_s},
             {285, 24, 45, u"the"_s},
             {0, 48, 90, u"remaining"_s},
             {130, 48, 60, u"days"_s},
             {230, 48, 100, u"of them,"_s},
             {0, 72, 180, u"are unreliable."_s}},
            {u"The records of two hundred and eleven days, and the remaining days of them, are unreliable."_s});
        row("entries with a hanging indent",
            {{0, 0, 320, u"這個工具可以在編譯過程中必要的時候以普通"_s},
             {32, 22, 120, u"使用者來模擬。"_s},
             {0, 44, 320, u"上游版本號只包含字母和數字，以及加號、減"_s},
             {32, 66, 60, u"號。"_s}},
            {u"這個工具可以在編譯過程中必要的時候以普通使用者來模擬。"_s,
             u"上游版本號只包含字母和數字，以及加號、減號。"_s});
        row("a subtitle", {{240, 560, 320, u"別擔心，我會在車站等你。"_s}, {290, 584, 220, u"不要一個人回去。"_s}},
            {u"別擔心，我會在車站等你。不要一個人回去。"_s});
        for (const auto &[name, rows] : std::initializer_list<std::pair<const char *, QList<Row>>>{
                 {"a menu of long entries",
                  {{0, 0, 160, u"Open a recent document"_s},
                   {0, 20, 190, u"Restore the previous session"_s},
                   {0, 40, 80, u"Save a copy"_s},
                   {0, 60, 120, u"Show hidden files"_s}}},
                 {"a table below a sentence",
                  {{0, 0, 330, u"So many of these shops open at night"_s},
                   {0, 24, 76, u"1,990"_s},
                   {127, 24, 76, u"2,000"_s},
                   {254, 24, 76, u"2,010"_s},
                   {0, 48, 76, u"Bakery"_s},
                   {110, 48, 70, u"Cobbler"_s},
                   {270, 48, 60, u"Barber"_s}}},
                 {"two centred entries of a menu",
                  {{325, 300, 150, u"繼續上次的遊戲"_s, 20}, {335, 328, 130, u"回到標題畫面"_s, 20}}},
                 {"centred verse",
                  {{300, 100, 200, u"有許多工具可用，"_s},
                   {350, 124, 100, u"低壓力"_s},
                   {250, 148, 300, u"切換至先前選取的圖層，"_s},
                   {325, 172, 150, u"再處理這些。"_s}}},
                 {"a label above its explanation",
                  {{0, 0, 70, u"自動更新"_s}, {0, 22, 190, u"在背景下載並安裝更新。"_s}}},
                 {"another size",
                  {{0, 0, 300, u"What we learned from the small"_s, 16}, {0, 22, 90, u"gardens here"_s, 12}}},
                 {"a numbered list",
                  {{0, 0, 320, u"1. Choose a folder for the exported report"_s},
                   {0, 22, 200, u"2. Press the other button"_s}}},
                 {"a list of sentences",
                  {{0, 0, 320, u"Windows that are open are restored now."_s},
                   {0, 22, 316, u"Files of other programs, too, are found."_s},
                   {0, 44, 318, u"Nothing else happens, whatever comes."_s}}},
                 {"code",
                  {{0, 0, 320, u"const auto lines = readLines(argument, 1);"_s},
                   {0, 22, 220, u"for (const Line &line : lines) {"_s}}},
                 {"verse",
                  {{0, 0, 240, u"The lamps are lit along the shore,"_s},
                   {0, 22, 244, u"And no one walks there any more,"_s},
                   {0, 44, 240, u"The boats lie still, the nets are dry,"_s},
                   {0, 66, 236, u"A single gull goes drifting by,"_s}}}}) {
            QStringList blocks;
            for (const Row &each : rows)
                blocks.append(each.text);
            row(name, rows, blocks);
        }
    }

    void columnsAreJoinedInEitherUnit()
    {
        PlayedRecognizer recognizer;
        // x, y, height in pixels of an image of 800 by 600; a column is 20 wide.
        const auto readColumns = [&](const QList<std::tuple<double, double, double, QString>> &columns) {
            QList<RecognizedTextObservation> observations{{{u"横書き"_s}, {0.1, 0.95, 0.2, 0.03}}};
            for (const auto &[x, y, height, text] : columns)
                observations.append({{text}, NormBox::of({x, y, 20, height}, {800, 600}), true});
            recognizer.answer = observations;
            const QImage image(800, 600, QImage::Format_RGB32);
            const QList<TextLine> lines = recognizeLines(recognizer, image, image.rect()).lines;
            const QList<TextBlock> blocks = composeBlocks(lines, image.size(), TextUnit::Line);
            [&] { QCOMPARE(composeBlocks(lines, image.size(), TextUnit::Paragraph), blocks); }();
            return blocks;
        };
        const auto bubbles = readColumns({{700, 100, 120, u"君はいつも"_s},
                                          {674, 100, 100, u"遅いね。"_s},
                                          {648, 120, 60, u"もう行く。"_s},
                                          {300, 90, 80, u"待って！"_s}});
        QCOMPARE(textsOf(bubbles), (QStringList{u"横書き"_s, u"君はいつも遅いね。もう行く。"_s, u"待って！"_s}));
        QCOMPARE(bubbles[1].alignment, Qt::AlignCenter);
        QVERIFY(bubbles[1].lineCount > 1);
        const auto page = readColumns({{700, 120, 380, u"　坂を上りきると、急に海が"_s},
                                       {664, 100, 120, u"見えた。"_s},
                                       {628, 120, 380, u"白い船が一隻、沖へ向かっ"_s},
                                       {592, 100, 400, u"ている。少年は自転車を降り"_s},
                                       {556, 100, 80, u"た。"_s},
                                       {520, 100, 400, u"「待って」と彼女が言っ"_s},
                                       {484, 100, 80, u"た。"_s}});
        QCOMPARE(textsOf(page), (QStringList{u"横書き"_s, u"坂を上りきると、急に海が見えた。"_s,
                                             u"白い船が一隻、沖へ向かっている。少年は自転車を降りた。"_s,
                                             u"「待って」と彼女が言った。"_s}));
    }

    void linesOfAParagraphAreJoined()
    {
        QFETCH(QList<Row>, rows);
        QTEST(textsOf(blocksOf(rows)), "blocks");
    }

    void narrowTextIsAlignedAsItsLinesAre()
    {
        const auto blocks = blocksOf({{0, 0, 137, u"Swimming pool closed"_s, 13},
                                      {1, 20, 136, u"until June because the"_s, 13},
                                      {0, 40, 142, u"roof has to be repaired."_s, 17},
                                      {400, 0, 120, u"You said that"_s, 13},
                                      {405, 20, 110, u"it would be here"_s, 13},
                                      {406, 40, 108, u"by seven today!"_s, 13}});
        QCOMPARE(blocks.size(), 2);
        QCOMPARE(blocks[0].alignment, Qt::AlignLeft);
        QCOMPARE(blocks[0].lineHeight, 13.0 / 600); // the usual one
        QCOMPARE(blocks[1].alignment, Qt::AlignHCenter);
    }

    void boxesAreMappedOntoThePane()
    {
        const QSizeF pane(404, 304);
        QCOMPARE(paneRect({0, 0.5, 0.5, 0.25}, pane), QRectF(2, 77, 200, 75));
        QCOMPARE(paneRect({0.00125, 0.5, 0.00625, 0.005}, pane), QRectF(3, 151, 3, 2)); // halves away from zero
        QCOMPARE(paneRect({0, 0, 1, 1}, {3, 2}), QRectF(2, 2, 1, 1));                   // narrower than the inset
    }

    void textsWithoutTranslationKeepTheirSource()
    {
        const QList<TextBlock> blocks{
            {u"a1"_s, {0, 0.7, 1, 0.1}}, {u"b2"_s, {0, 0.5, 1, 0.1}}, {u"c3"_s, {0, 0.3, 1, 0.1}}};
        const auto placement = placeOverlays(blocks, {u"A"_s, u""_s}, {404, 304}, {});
        QCOMPARE(placement.copyList, (QStringList{u"A"_s, u"c3"_s}));
        QCOMPARE(placement.candidates.size(), 2);
        QCOMPARE(placement.candidates[1].rect.top(), 182.0);
    }

    void startsCloseToOneAnotherBecomeOne()
    {
        const auto placement = placeOverlays({{u"a"_s, {0.0525, 0.7, 0.5, 0.1}},
                                              {u"b"_s, {0.1, 0.6, 0.5, 0.1}},
                                              {u"c"_s, {0.045, 0.5, 0.5, 0.1}},
                                              {u"d"_s, {0.055, 0.4, 0.5, 0.1}}},
                                             {}, {404, 304}, {});
        QList<double> starts, ends;
        for (const auto &candidate : placement.candidates) {
            starts.append(candidate.rect.left());
            ends.append(candidate.rect.right());
        }
        QCOMPARE(starts, (QList<double>{20, 42, 20, 24}));
        QCOMPARE(ends, (QList<double>{223, 242, 220, 224}));
    }

    void whatLiesUnderTheButtonsIsCopiedButNotDrawn()
    {
        // The line's rectangle is (2, 77, 200, 75), its centre (102, 114.5).
        for (const auto &[excluded, isDrawn] : {std::pair(QRectF(102, 114.5, 10, 10), false), // on the near edges
                                                std::pair(QRectF(92, 100, 10, 40), true),     // on the far right one
                                                std::pair(QRectF(90, 104.5, 40, 10), true),   // on the far bottom one
                                                std::pair(QRectF(0, 70, 90, 90), true)}) {    // beside the centre
            const auto placement = placeOverlays({{u"text"_s, {0, 0.5, 0.5, 0.25}}}, {u"T"_s}, {404, 304}, {excluded});
            QCOMPARE(placement.copyList, QStringList{u"T"_s});
            QCOMPARE(!placement.candidates.isEmpty(), isDrawn);
        }
    }

    void overlaysGrowToTheNextText_data()
    {
        columns<QList<QRectF>, QList<double>, QList<double>>("rects", "bottoms", "rights");
        constexpr double free = std::numeric_limits<double>::infinity();
        const auto row = [](const char *name, const QList<QRectF> &rects, const QList<double> &bottoms,
                            QList<double> rights = {}) {
            rights.resize(rects.size(), free);
            QTest::newRow(name) << rects << bottoms << rights;
        };
        row("nothing below: the pane's edge less the gap", {{10, 10, 100, 20}}, {296});
        row("a gap of ten", {{10, 10, 100, 20}, {10, 40, 100, 20}}, {36, 296});
        row("a gap of two: the own height stays", {{10, 10, 100, 20}, {10, 32, 100, 20}}, {30, 296});
        row("boxes that overlap by two are stacked", {{10, 10, 100, 20}, {10, 28, 100, 20}}, {30, 296});
        row("boxes that overlap by three are not", {{10, 10, 100, 20}, {10, 27, 100, 20}}, {296, 296});
        row("side by side, four points shared", {{10, 10, 100, 20}, {106, 60, 100, 20}}, {296, 296});
        row("side by side, five points shared", {{10, 10, 100, 20}, {105, 60, 100, 20}}, {56, 296});
        row("the nearest counts, whatever the order", {{10, 200, 100, 20}, {10, 10, 100, 20}, {10, 100, 100, 20}},
            {296, 96, 196});
        row("below the pane's edge", {{10, 290, 100, 20}}, {310});
        row("a row of three: each ends before the next", {{200, 12, 40, 16}, {10, 10, 40, 20}, {100, 11, 98, 16}},
            {296, 296, 296}, {free, 96, 198});
        row("what overlaps or shares four points of a row is no neighbour",
            {{10, 10, 40, 20}, {40, 10, 40, 20}, {60, 26, 40, 20}}, {296, 296, 296});
        row("a flat box below itself", {{10, 50, 100, 2}}, {52});
    }
    void overlaysGrowToTheNextText()
    {
        QFETCH(QList<QRectF>, rects);
        QList<TextBlock> blocks; // captured in a pane of 404 by 300 points
        for (const QRectF &rect : rects)
            blocks.append({u"text"_s, NormBox::of(rect.translated(-2, -2), {400, 296})});
        QList<double> bottoms, rights;
        for (const auto &candidate : placeOverlays(blocks, {}, {404, 300}, {}).candidates) {
            bottoms.append(candidate.limits.bottom);
            rights.append(candidate.limits.right);
        }
        QTEST(bottoms, "bottoms");
        QTEST(rights, "rights");
    }

    void buttonsAreMasked()
    {
        // The grey is in a capture of twice as many pixels as points.
        for (const auto &[rect, grey] : {std::pair(QRectF(10, 10, 20, 10), QRect(16, 16, 40, 20)),
                                         std::pair(QRectF(0, 0, 12, 12), QRect(0, 0, 20, 20)), // over the edge
                                         std::pair(QRectF(0, 0, 2, 100), QRect()),             // in the inset alone
                                         std::pair(QRectF(10.2, 10.2, 1, 1), QRect(16, 16, 3, 3))}) {
            QImage image(192, 92, QImage::Format_RGB32);
            image.fill(Qt::white);
            const QImage masked = maskWindowButtons(image, {rect}, {100, 50});
            QCOMPARE(boundsOf(masked, [](QRgb pixel) { return pixel != qRgb(255, 255, 255); }), grey);
            if (!grey.isEmpty())
                QCOMPARE(masked.pixel(grey.center()), qRgb(46, 46, 46));
        }
    }
};

static const TestClass<PlacementTest> placementTest;
#include "PlacementTest.moc"
