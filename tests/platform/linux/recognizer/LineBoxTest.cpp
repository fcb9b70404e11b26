#include "judge/LineBox.h"
#include "Columns.h"
#include "Pictures.h"
#include "TestProgram.h"

#include <QGuiApplication>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace lucentra;
using namespace lucentra::pictures;
using namespace Qt::StringLiterals;

class LineBoxTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesOfOneFontGetBoxesOfItsSize_data()
    {
        // ascent: em, of the box; spread: pixels; small ideographs aren't hinted to whole ones
        columns<QString, QStringList, double, int>("family", "texts", "ascent", "spread");
        const QStringList words{u"more"_s, u"Cancel"_s, u"Apply"_s, u"spelling"_s, u"1920"_s,
                                u"NEW"_s,  u"(zoom)"_s, u"Çığır"_s, u"a, b; c"_s,  u"toot"_s};
        QTest::newRow("Latin, wide face") << u"DejaVu Sans"_s << words << 0.76 << 1;
        QTest::newRow("Latin, low x-height") << u"Liberation Sans"_s << words << 0.76 << 1;
        QTest::newRow("ideographs, with Latin among them")
            << u"Noto Sans CJK TC"_s << QStringList{u"一般設定"_s, u"檔案 (F)"_s, u"「關閉」"_s, u"下載"_s} << 0.88
            << 3;
        QTest::newRow("kana") << u"Noto Sans CJK JP"_s << QStringList{u"ありがとう"_s, u"タイトル"_s, u"開く"_s} << 0.88
                              << 3;
        QTest::newRow("hangul") << u"Noto Sans CJK KR"_s << QStringList{u"설정"_s, u"파일 열기"_s} << 0.88 << 3;
    }

    void linesOfOneFontGetBoxesOfItsSize()
    {
        QFETCH(const QString, family);
        QFETCH(const QStringList, texts);
        QFETCH(const double, ascent);
        QFETCH(const int, spread);
        for (const int size : {14, 16, 32}) {
            QImage image = blank({600, 40 + 60 * int(texts.size())}, Qt::white);
            QList<TypeLine> lines;
            for (qsizetype i = 0; i < texts.size(); ++i)
                lines.append({write(image, {20, 60 + 60 * int(i)}, texts[i], font(family, size), Qt::black), texts[i]});
            const QList<QRect> boxes = typographicBoxes(lines, image.rect());
            QCOMPARE(boxes.size(), lines.size());
            const auto [least, most] = std::minmax_element(
                boxes.begin(), boxes.end(), [](const QRect &a, const QRect &b) { return a.height() < b.height(); });
            QVERIFY2(most->height() - least->height() <= spread,
                     qPrintable(u"%1 to %2 at %3"_s.arg(least->height()).arg(most->height()).arg(size)));
            for (qsizetype i = 0; i < boxes.size(); ++i) {
                QVERIFY2(std::abs(boxes[i].height() - size) <= spread + 0.06 * size,
                         qPrintable(u"%1: %2 at %3"_s.arg(texts[i]).arg(boxes[i].height()).arg(size)));
                QVERIFY2(std::abs(boxes[i].top() - (60 + 60 * i - ascent * size)) <= spread + 0.06 * size,
                         qPrintable(texts[i]));
                QCOMPARE(boxes[i].left(), lines[i].ink.left());
                QCOMPARE(boxes[i].width(), lines[i].ink.width());
            }
        }
    }

    void differentSizesStayDifferent()
    {
        const QList<TypeLine> lines{{QRect(0, 100, 60, 18), u"Title"_s}, {QRect(0, 140, 60, 10), u"Title"_s}};
        const QList<QRect> boxes = typographicBoxes(lines, QRect(0, 0, 200, 200));
        QCOMPARE(boxes[0].height(), 24);
        QCOMPARE(boxes[1].height(), 13);
    }

    void whatTellsNoSizeKeepsItsInk()
    {
        const QRect ink(40, 50, 30, 2);
        for (const QString &text : {u"---"_s, u"..."_s, u""_s, u"一"_s})
            QCOMPARE(typographicBoxes({{ink, text}}, QRect(0, 0, 100, 100)), QList<QRect>{ink});
    }

    void boxesEndAtTheImage()
    {
        const QRect image(0, 0, 100, 20);
        QCOMPARE(typographicBoxes({{QRect(0, 1, 99, 19), u"acne"_s}}, image), QList<QRect>{QRect(0, 0, 99, 20)});
    }
};

static const TestClass<LineBoxTest, QGuiApplication> lineBoxTest;
#include "LineBoxTest.moc"
