#include "Files.h"
#include "OverlayTypesetter.h"
#include "TestProgram.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>

using namespace lucentra;
using namespace Qt::StringLiterals;

/// A desktop with hardly any fonts: the fonts are listed before the application starts.
class FewFontsTest : public QObject
{
    Q_OBJECT

public:
    static void initMain()
    {
        static const QTemporaryDir folder;
        const QString path = folder.filePath(u"fonts.conf"_s);
        writeFile(path, "<fontconfig><dir>/usr/share/fonts/truetype/dejavu</dir><cachedir>" +
                            folder.filePath(u"cache"_s).toUtf8() + "</cachedir></fontconfig>");
        qputenv("FONTCONFIG_FILE", path.toUtf8());
    }

private Q_SLOTS:
    void scriptsWithoutFontShowReplacementCharacters()
    {
        const auto painted = [](const QString &text) {
            OverlayTypesetter typesetter(u"zh-Hant"_s);
            QImage image(400, 80, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::transparent);
            QPainter painter(&image);
            painter.setPen(Qt::white);
            typesetter.typeset(text)->draw(painter, QPointF(), 400, 30, 1);
            return image;
        };
        const QImage replaced = painted(u"A \uFFFD\uFFFD B"_s);
        QVERIFY(replaced != painted({}));
        QVERIFY(painted(u"plain"_s) != painted({}));
        for (const QString &text : {u"A 螢幕 B"_s, u"A नम B"_s})
            QCOMPARE(painted(text), replaced);
    }
};

static const TestClass<FewFontsTest, QApplication> fewFontsTest;
#include "FewFontsTest.moc"
