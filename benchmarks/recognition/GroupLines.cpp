// Joins lines to paragraphs as the program does. Each line of standard input is a picture's lines as JSON: {"width",
// "height", "lines": [{"text", "x", "y", "width", "height"}...]}, in pixels with the origin top-left; each line of
// standard output its blocks: {"blocks": [{"text", "x", "y", "width", "height"}...]}.
#include "Paragraphs.h"
#include "TextRecognition.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <iostream>
#include <string>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

QJsonObject grouped(const QJsonObject &picture)
{
    const QSizeF size(picture[u"width"_s].toDouble(), picture[u"height"_s].toDouble());
    QList<TextLine> lines;
    for (const QJsonValue &line : picture[u"lines"_s].toArray()) {
        const QRectF rect(line[u"x"_s].toDouble(), line[u"y"_s].toDouble(), line[u"width"_s].toDouble(),
                          line[u"height"_s].toDouble());
        lines.append({line[u"text"_s].toString(), NormBox::of(rect, size)});
    }
    QJsonArray blocks;
    for (const TextBlock &block : paragraphsFromLines(lines, size)) {
        const QRectF rect = block.normBox.in(size);
        blocks.append(QJsonObject{{u"text"_s, block.text},
                                  {u"x"_s, rect.x()},
                                  {u"y"_s, rect.y()},
                                  {u"width"_s, rect.width()},
                                  {u"height"_s, rect.height()}});
    }
    return {{u"blocks"_s, blocks}};
}

} // namespace

int main()
{
    for (std::string line; std::getline(std::cin, line);) {
        const QJsonObject picture = QJsonDocument::fromJson(QByteArray::fromStdString(line)).object();
        std::cout << QJsonDocument(grouped(picture)).toJson(QJsonDocument::Compact).constData() << std::endl;
    }
}
