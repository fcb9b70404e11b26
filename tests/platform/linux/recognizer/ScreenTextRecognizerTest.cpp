#include "ScreenTextRecognizer.h"
#include "Columns.h"
#include "Pictures.h"
#include "TestProgram.h"

#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QTest>

#include <atomic>
#include <ctime>
#include <thread>

using namespace lucentra;
using namespace lucentra::pictures;
using namespace Qt::StringLiterals;

namespace {

const TextRecognitionRequest usual{{u"zh-Hant"_s, u"en-US"_s, u"ja-JP"_s}, RecognitionLevel::Accurate, 0.008};
QStringList textsOf(const QList<RecognizedTextObservation> &lines)
{
    QStringList texts;
    for (const RecognizedTextObservation &line : lines)
        texts.append(line.topCandidates(1));
    return texts;
}

/// Sizes and distances in pixels.
QImage verticalText(const QStringList &columns, int size, int apart)
{
    QImage image = blank({10 * size, 26 * size / 3}, Qt::white);
    for (int x = 0; x < columns.size(); ++x) {
        for (int y = 0; y < columns[x].size(); ++y)
            write(image, {20 * size / 3 - apart * x, (2 + y) * size}, columns[x].mid(y, 1),
                  font(u"Noto Sans CJK JP"_s, size), Qt::black);
    }
    return image;
}

bool areModelsForColumnsInstalled()
{
    const QString model = u"/usr/share/tesseract-ocr/5/tessdata/%1.traineddata"_s;
    return QFile::exists(model.arg("jpn_vert"_L1)) && QFile::exists(model.arg("chi_tra_vert"_L1));
}

} // namespace

class ScreenTextRecognizerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_recognizer.warmUp(); }

    void clearLinesAreRead_data()
    {
        columns<QColor, QColor, int>("paper", "ink", "outline"); // pixels, black
        QTest::newRow("light theme") << QColor(Qt::white) << QColor(30, 30, 30) << 0;
        QTest::newRow("dark theme") << QColor(28, 28, 32) << QColor(225, 225, 225) << 0;
        QTest::newRow("on an accent colour") << QColor(30, 90, 200) << QColor(Qt::white) << 0;
        QTest::newRow("outlined") << QColor(240, 180, 110) << QColor(Qt::white) << 2;
    }

    void clearLinesAreRead()
    {
        QFETCH(const QColor, paper);
        QFETCH(const QColor, ink);
        QFETCH(const int, outline);
        QImage image = blank({520, 170}, paper);
        const auto writeAt = [&](const QPoint &start, const QColor &colour) {
            write(image, start + QPoint(20, 40), u"Open the report"_s, font(latin, 20), colour);
            write(image, start + QPoint(20, 90), u"下載位置"_s, font(han, 24), colour);
            write(image, start + QPoint(20, 140), u"ありがとう"_s, font(u"Noto Sans CJK JP"_s, 24), colour);
        };
        for (int y = -outline; y <= outline && outline > 0; ++y) {
            for (int x = -outline; x <= outline; ++x)
                writeAt({x, y}, Qt::black);
        }
        writeAt({}, ink);
        const auto lines = m_recognizer.perform(usual, image);
        QVERIFY(lines);
        QCOMPARE(textsOf(*lines), QStringList({u"Open the report"_s, u"下載位置"_s, u"ありがとう"_s}));
    }

    void smallPrintOfScreens_data()
    {
        columns<QString, int, QStringList>("family", "size", "lines");
        QTest::newRow("code") << latin << 14
                              << QStringList{u"if (i != 1 && !isOn) {"_s, u"typedef __ssize_t ssize_t;"_s};
        QTest::newRow("typewriter") << u"DejaVu Sans Mono"_s << 13
                                    << QStringList{u"size_t len(void);"_s, u"/etc/resolv.conf"_s, u"V:0, I:6"_s};
        QTest::newRow("beside ideographs")
            << u"DejaVu Sans Mono"_s << 14 << QStringList{u"ms = 2500; // 毫秒"_s, u"确定"_s};
    }

    void smallPrintOfScreens()
    {
        QFETCH(const QString, family);
        QFETCH(const int, size);
        QFETCH(const QStringList, lines);
        QImage image = blank({320, 150}, Qt::white);
        for (int i = 0; i < lines.size(); ++i)
            write(image, {20, 40 + 40 * i}, lines[i], font(family, size), Qt::black);
        QCOMPARE(textsOf(*m_recognizer.perform(usual, image)), lines);
    }

    void columnsAreReadFromTheRight_data()
    {
        columns<QStringList, QStringList, int>("columns", "texts", "apart");
        const auto row = [](const char *name, const QStringList &columns, const QStringList &texts, int apart = 44) {
            QTest::newRow(name) << columns << texts << apart;
        };
        row("two columns", {u"広い海の中に"_s, u"魚が住んで"_s}, {u"広い海の中に"_s, u"魚が住んで"_s});
        const QStringList page{u"広い海の中に"_s, u"魚が住んで毎"_s, u"日を静かに暮"_s, u"らしていまし"_s};
        row("as close as columns are", page, page, 39);
        const QStringList narrow{u"広い海の中に魚"_s, u"が静かに住んで"_s};
        row("hardly closer in columns than between them", narrow, narrow, 32);
        const QStringList simplified{u"这封信没有加"_s, u"密传送时所有"_s, u"人都可以看见"_s};
        row("simplified Chinese", simplified, simplified);
        row("dots behind a letter", {u"広い海の中に"_s, u"は︙︙"_s}, {u"広い海の中に"_s, u"は……"_s});
    }

    void columnsAreReadFromTheRight()
    {
        QFETCH(const QStringList, columns);
        QFETCH(const QStringList, texts);
        QFETCH(const int, apart);
        if (!areModelsForColumnsInstalled())
            QSKIP("a model of vertical writing isn't installed");
        const auto lines = m_recognizer.perform(usual, verticalText(columns, 30, apart));
        QVERIFY(lines);
        QCOMPARE(textsOf(*lines), texts);
        QVERIFY(lines->first().isVertical &&
                lines->first().boundingBox.x > lines->last().boundingBox.unitRect().right());
    }

    /// The last column may have a single narrow character, which is hardly found at some sizes.
    void narrowCharactersAreColumns()
    {
        if (!areModelsForColumnsInstalled())
            QSKIP("a model of vertical writing isn't installed");
        int right = 0;
        int all = 0;
        for (const int size : {22, 26, 30, 34, 38}) {
            for (const QString &last : {u"く"_s, u"と"_s, u"い"_s}) {
                const QStringList columns{u"広い海の中に"_s, u"魚が泳いで行"_s, last};
                right += textsOf(*m_recognizer.perform(usual, verticalText(columns, size, 3 * size / 2))) == columns;
                ++all;
            }
        }
        QVERIFY2(3 * right >= all, qPrintable(QString::number(right)));
    }

    void boxesAreFractionsFromTheBottomLeft()
    {
        QImage image = blank({400, 200}, Qt::white);
        const QRect box = write(image, {40, 60}, u"Upper left"_s, font(latin, 24), Qt::black);
        const auto lines = m_recognizer.perform(usual, image);
        QVERIFY(lines);
        QCOMPARE(lines->size(), 1);
        const NormBox found = lines->first().boundingBox;
        const double pixel = 1.0 / 200;
        QVERIFY(std::abs(found.x - box.left() / 400.0) <= pixel);
        QVERIFY(std::abs(found.width - box.width() / 400.0) <= 2 * pixel);
        const double descent = 0.24 * 24; // the letters' box ends at the descenders, this line's p
        QVERIFY(std::abs(found.y - (1 - (60 + descent) / 200.0)) <= 2 * pixel);
        QVERIFY(std::abs(found.height - 24 / 200.0) <= 2 * pixel);
    }

    void textColumnsAreReadOneByOne()
    {
        QImage image = blank({560, 150}, Qt::white);
        const QStringList left{u"The first column"_s, u"goes on and on"_s, u"to its own end"_s, u"at the bottom"_s};
        const QStringList right{u"A second column"_s, u"begins up here"_s, u"and is read after"_s, u"the other one"_s};
        for (int i = 0; i < 4; ++i) {
            write(image, {20, 30 + 30 * i}, left[i], font(latin, 18), Qt::black);
            write(image, {300, 30 + 30 * i}, right[i], font(latin, 18), Qt::black);
        }
        const auto lines = m_recognizer.perform(usual, image);
        QVERIFY(lines);
        QCOMPARE(textsOf(*lines), left + right);
    }

    void screensInFurtherLanguages_data()
    {
        columns<QString, int, QStringList>("family", "size", "texts");
        QTest::newRow("Korean") << u"Noto Sans CJK KR"_s << 24
                                << QStringList{u"자동 업데이트"_s, u"언어와 지역"_s, u"저장 공간"_s, u"알림"_s};
        QTest::newRow("Latin letters among Korean")
            << u"Noto Sans CJK KR"_s << 16
            << QStringList{u"데비안은 GNU/Linux 배포판입니다"_s, u"이 FAQ에서 원하는 내용을 찾으세요"_s};
        QTest::newRow("simplified Chinese")
            << u"Noto Sans CJK SC"_s << 24
            << QStringList{u"语言和地区"_s, u"显示与亮度"_s, u"键盘快捷键"_s, u"选择窗口的外观"_s};
        QTest::newRow("a few words of simplified Chinese")
            << u"Noto Sans CJK SC"_s << 18 << QStringList{u"关闭窗口"_s, u"设置"_s, u"帮助"_s};
        QTest::newRow("a few words of traditional Chinese")
            << han << 18 << QStringList{u"關閉視窗"_s, u"設定"_s, u"說明"_s};
        QTest::newRow("a menu in simplified Chinese")
            << u"Noto Sans CJK SC"_s << 14
            << QStringList{u"打开"_s, u"保存"_s, u"设置"_s, u"查看"_s, u"编辑"_s, u"帮助"_s, u"文件"_s};
        QTest::newRow("a menu in traditional Chinese")
            << han << 14 << QStringList{u"開啟"_s, u"儲存"_s, u"設定"_s, u"檢視"_s, u"編輯"_s, u"說明"_s, u"檔案"_s};
        QTest::newRow("traditional Chinese")
            << han << 24 << QStringList{u"語言與地區"_s, u"入口網站"_s, u"系統預設"_s, u"自動更新"_s, u"7"_s};
        QTest::newRow("Latin letters among Chinese")
            << han << 13
            << QStringList{u"對於有永久 IP 地址的系統"_s, u"使用 127.0.1.1 的 IP 地址"_s, u"關閉 Firefox 視窗"_s};
        QTest::newRow("small simplified Chinese")
            << u"Noto Sans CJK SC"_s << 15
            << QStringList{u"打开文件夹 (O)"_s, u"替代的方式"_s, u"更改图层样式"_s, u"关闭窗口"_s};
        QTest::newRow("I and 1") << latin << 18 << QStringList{u"node1.html"_s, u"V:39, I:147"_s, u"All hills (1)"_s};
        QTest::newRow("keys of menus") << han << 13
                                       << QStringList{u"檔案(F)"_s, u"編輯(E)"_s, u"工具(T)"_s, u"說明(H)"_s};
    }

    /// What was read of a screen first decides who reads the rest.
    void screensInFurtherLanguages()
    {
        QFETCH(const QString, family);
        QFETCH(const int, size);
        QFETCH(const QStringList, texts);
        QImage image = blank({420, 60 + 50 * int(texts.size())}, Qt::white);
        for (qsizetype i = 0; i < texts.size(); ++i)
            write(image, {20, 50 + 50 * int(i)}, texts[i], font(family, size), Qt::black);
        const auto lines = m_recognizer.perform(usual, image);
        QVERIFY(lines);
        QStringList read = textsOf(*lines);
        QStringList expected = texts;
        for (QStringList *list : {&read, &expected})
            list->replaceInStrings(u" "_s, QString());
        QCOMPARE(read, expected);
    }

    void loneCharacters_data()
    {
        columns<QString, int>("family", "size");
        for (const QString &family : {han, u"Noto Sans CJK JP"_s}) {
            for (const int size : {16, 18})
                QTest::addRow("%s, %d pixels", qPrintable(family), size) << family << size;
        }
    }

    /// A calendar's days, keys with one character.
    void loneCharacters()
    {
        QFETCH(const QString, family);
        QFETCH(const int, size);
        const QString characters = u"月火木金中大小設定編明語あいかきくるれエカ"_s;
        QImage image = blank({90 * 7, 80 * 3}, Qt::white);
        for (int i = 0; i < characters.size(); ++i)
            write(image, {30 + i % 7 * 90, 50 + i / 7 * 80}, characters[i], font(family, size), Qt::black);
        qsizetype right = 0;
        for (const QString &text : textsOf(*m_recognizer.perform(usual, image))) {
            QVERIFY2(text.size() == 1 && characters.contains(text), qPrintable(text));
            ++right;
        }
        QVERIFY2(10 * right >= 9 * characters.size(), qPrintable(QString::number(right)));
    }

    void iconsBesideTextAreLeftOut_data()
    {
        columns<QString, QList<QLine>>("text", "icon");
        QTest::newRow("scribble") << u"請指定寬度"_s
                                  << QList<QLine>{
                                         {22, 31, 28, 17}, {20, 20, 35, 27}, {30, 16, 28, 31}, {26, 29, 23, 22}};
        QTest::newRow("table") << u"請指定寬度"_s
                               << QList<QLine>{{32, 19, 21, 26}, {27, 18, 35, 22}, {24, 18, 21, 31}, {26, 20, 34, 30}};
        QTest::newRow("sword") << u"請指定寬度"_s
                               << QList<QLine>{{26, 31, 32, 27}, {27, 16, 20, 25}, {23, 17, 20, 30}, {26, 30, 33, 29}};
        QTest::newRow("none") << u"第 3 章"_s << QList<QLine>();
    }

    /// An icon is read as a character or two, but not surely.
    void iconsBesideTextAreLeftOut()
    {
        QFETCH(const QString, text);
        QFETCH(const QList<QLine>, icon);
        QImage image = blank({260, 50}, QColor(32, 26, 20));
        const QRect ink = write(image, {44, 29}, text, font(han, 15), Qt::white);
        QPainter painter(&image);
        painter.setPen(QColor(230, 230, 230));
        painter.drawLines(icon);
        painter.end();
        const auto lines = m_recognizer.perform(usual, image);
        QVERIFY(lines);
        QCOMPARE(textsOf(*lines).join(u'\n').remove(u' '), QString(text).remove(u' '));
        QVERIFY(std::abs(lines->first().boundingBox.in(image.size()).left() - ink.left()) <= 4);
    }

    void arrowsAloneAreNoText()
    {
        for (const int side : {9, 12, 14, 17}) {
            for (const double turn : {0.0, 90.0, 180.0, 270.0}) {
                QImage image = blank({80, 60}, QColor(62, 66, 70));
                QPainter painter(&image);
                painter.setRenderHint(QPainter::Antialiasing);
                painter.translate(40, 30);
                painter.rotate(turn);
                painter.setPen(Qt::NoPen);
                painter.setBrush(QColor(200, 200, 205));
                painter.drawPolygon(
                    QPolygonF({{-side / 2.0, -side / 4.0}, {side / 2.0, -side / 4.0}, {0, side / 4.0}}));
                painter.end();
                QCOMPARE(textsOf(*m_recognizer.perform(usual, image)), QStringList());
            }
        }
    }

    /// The model makes a word of nearly each syllable.
    void koreanWordSpaces()
    {
        QImage image = blank({700, 160}, Qt::white);
        const QStringList texts{u"가능한 패키지 목록과 설명은 여기에서 찾을 수 있습니다"_s,
                                u"사용자는 언제든지 이 설정을 바꿀 수 있습니다"_s};
        for (int i = 0; i < texts.size(); ++i)
            write(image, {20, 50 + 60 * i}, texts[i], font(u"Noto Sans CJK KR"_s, 18), Qt::black);
        const auto lines = m_recognizer.perform(usual, image);
        QVERIFY(lines);
        QCOMPARE(textsOf(*lines), texts);
    }

    void theRequestIsHonoured()
    {
        QImage image = blank({500, 200}, Qt::white);
        write(image, {20, 40}, u"small print"_s, font(latin, 14), Qt::black);
        write(image, {20, 150}, u"Large"_s, font(latin, 60), Qt::black);
        TextRecognitionRequest request = usual;
        request.minimumTextHeight = 0.15;
        QCOMPARE(textsOf(*m_recognizer.perform(request, image)), QStringList{u"Large"_s});
        request.level = RecognitionLevel::Fast;
        request.languages = QStringList{u"en-US"_s};
        QCOMPARE(textsOf(*m_recognizer.perform(request, image)), QStringList{u"Large"_s});
        request.languages = QStringList();
        QCOMPARE(m_recognizer.perform(request, image).error().domain, u"TextRecognition"_s);
    }

    void nobodyWantsItAnyMore()
    {
        QImage image = blank({600, 300}, Qt::white);
        write(image, {20, 60}, u"The lighthouse keeper writes"_s, font(latin, 24), Qt::black);
        write(image, {20, 140}, u"系統預設與自動更新"_s, font(han, 24), Qt::black);
        write(image, {20, 200}, u"下載位置"_s, font(han, 24), Qt::black);
        write(image, {20, 260}, u"xéœ¬ %¤ §µ ¶¿"_s, font(latin, 24), Qt::black); // nobody is sure of it
        for (int wanted = 0; wanted < 20; ++wanted) {
            std::atomic<int> left = wanted; // questions that are answered with yes
            TextRecognitionRequest request = usual;
            request.isWanted = [&left] { return left-- > 0; };
            QVERIFY(m_recognizer.perform(request, image).has_value());
        }
    }

    /// A reading can't be interrupted; so a line far wider than a screen is read in pieces.
    void aWideLineEndsSoon()
    {
        QImage image = blank({12'000, 50}, Qt::white);
        write(image, {20, 32}, u"The keeper writes the letter that nobody reads. "_s.repeated(26), font(latin, 18),
              Qt::black);
        std::atomic<int> left = 4; // the pass, the look, the reading, the first piece
        TextRecognitionRequest request = usual;
        request.isWanted = [&left] { return left-- > 0; };
        QVERIFY(textsOf(*m_recognizer.perform(request, image)).isEmpty());
        const QStringList whole = textsOf(*m_recognizer.perform(usual, image));
        QCOMPARE(whole.size(), 1);
        QVERIFY2(whole.first().size() > 1200, qPrintable(QString::number(whole.first().size())));
        QCOMPARE(whole.first().count(u"nobody reads."_s), 26);
    }

    void severalThreadsAtOnce()
    {
        QImage first = blank({300, 60}, Qt::white);
        write(first, {20, 40}, u"First window"_s, font(latin, 20), Qt::black);
        QImage second = blank({300, 60}, Qt::black);
        write(second, {20, 40}, u"Second window"_s, font(latin, 20), Qt::white);
        QStringList texts;
        std::thread other([&] { texts = textsOf(*m_recognizer.perform(usual, first)); });
        const QStringList own = textsOf(*m_recognizer.perform(usual, second));
        other.join();
        QCOMPARE(texts, QStringList{u"First window"_s});
        QCOMPARE(own, QStringList{u"Second window"_s});
    }

    void threadsDoNotChangeWhatIsRead()
    {
        QImage image = blank({420, 300}, Qt::white);
        const QStringList texts{u"选择窗口和文字的外观"_s, u"仅在接通电源时下载更新"_s,
                                u"键盘快捷键"_s,           u"备份与恢复"_s,
                                u"语言和地区"_s,           u"应用"_s};
        for (int i = 0; i < texts.size(); ++i)
            write(image, {20, 40 + 45 * i}, texts[i], font(u"Noto Sans CJK SC"_s, 18), Qt::black);
        ScreenTextRecognizer::Options alone;
        alone.workers = 1;
        ScreenTextRecognizer::Options crowd;
        crowd.workers = 4;
        const QStringList read = textsOf(*ScreenTextRecognizer(alone).perform(usual, image));
        QCOMPARE(read, texts);
        ScreenTextRecognizer many(crowd);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(textsOf(*many.perform(usual, image)), read);
    }

    void hostilePicturesAreBounded_data()
    {
        QTest::addColumn<QImage>("image");
        QTest::newRow("no picture") << QImage();
        QTest::newRow("one pixel") << blank({1, 1}, Qt::white);
        QTest::newRow("flat") << blank({1200, 800}, Qt::darkGreen);
        QTest::newRow("noise") << noise({800, 600});
        QTest::newRow("dots everywhere") << dots({800, 600});
        QTest::newRow("transparent") << QImage(300, 200, QImage::Format_ARGB32_Premultiplied);
    }

    void hostilePicturesAreBounded()
    {
        QFETCH(QImage, image);
        if (image.hasAlphaChannel())
            image.fill(Qt::transparent);
        const std::clock_t start = std::clock();
        const auto lines = m_recognizer.perform(usual, image);
        QVERIFY(lines);
        QVERIFY2(lines->size() <= 2, "dots may look like letters here and there");
        const double seconds = double(std::clock() - start) / CLOCKS_PER_SEC; // of all threads
        QVERIFY2(seconds < 60, "generous, for sanitizers");
    }

private:
    ScreenTextRecognizer m_recognizer;
};

static const TestClass<ScreenTextRecognizerTest, QGuiApplication> screenTextRecognizerTest;
#include "ScreenTextRecognizerTest.moc"
