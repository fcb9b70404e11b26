// Draws lines of text into a picture, as a page or a dark terminal would show them:
// render_page OUT.png [--size WxH] [--pixels N] [--columns N] [--dark] -- LINE...

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOptions({{u"size"_s, u"width and height"_s, u"WxH"_s, u"960x560"_s},
                       {u"pixels"_s, u"font size"_s, u"N"_s, u"22"_s},
                       {u"columns"_s, u"columns"_s, u"N"_s, u"1"_s},
                       {u"dark"_s, u"light text on a dark ground"_s}});
    parser.process(application);
    QStringList lines = parser.positionalArguments();
    const QString path = lines.takeFirst();
    const QStringList size = parser.value(u"size"_s).split(u'x');
    const int pixels = parser.value(u"pixels"_s).toInt();
    const int columns = parser.value(u"columns"_s).toInt();
    const bool isDark = parser.isSet(u"dark"_s);

    QImage page(size[0].toInt(), size[1].toInt(), QImage::Format_RGB32);
    page.fill(isDark ? 0xff1e1f29 : 0xfffbfbf8);
    QPainter painter(&page);
    QFont font(u"Noto Sans"_s);
    font.setFamilies({u"Noto Sans"_s, u"Noto Sans CJK TC"_s});
    font.setPixelSize(pixels);
    painter.setFont(font);
    painter.setPen(isDark ? QColor(0xd8, 0xd9, 0xe0) : QColor(0x22, 0x22, 0x26));
    for (int i = 0; i < lines.size(); ++i)
        painter.drawText(40 + i % columns * (page.width() - 40) / columns, 40 + pixels + i / columns * 3 * pixels,
                         lines[i]);
    painter.end();
    return page.save(path) ? 0 : 1;
}
