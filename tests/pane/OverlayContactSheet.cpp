// Writes a picture of overlays in typical situations, over light and over dark content, to be looked at:
// OverlayContactSheet <picture> [scale]

#include "FrostedBackdrop.h"
#include "OverlayLayout.h"
#include "OverlayPainter.h"
#include "OverlayTypesetter.h"

#include <QGuiApplication>
#include <QPainter>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

constexpr double glassOpacity = 0.75;
constexpr QSizeF cell(400, 150);
constexpr int columns = 4;

/// A line of the content, with its translation.
struct Line
{
    QString source;
    double top;
    double height; ///< of its letters, as a recognizer would measure it
    QString translation;
    double left = 16;
};

struct Situation
{
    QString language;
    QList<Line> lines;
    OverlayFontSettings settings = {};
};

QList<Situation> situations()
{
    return {
        {u"zh-Hant"_s, {{u"Settings"_s, 30, 60, u"設定"_s}}},
        {u"zh-Hant"_s,
         {{u"The quick brown fox jumps over the lazy dog."_s, 14, 16, u"敏捷的棕色狐狸跳過了懶惰的狗。"_s},
          {u"A second line stands close below the first one."_s, 38, 16, u"第二行緊接在第一行的下方。"_s},
          {u"And a third, after which there is nothing more."_s, 62, 16, u"還有第三行，之後就沒有了。"_s}}},
        {u"en"_s,
         {{u"翻譯"_s, 14, 15, u"Translate the text beneath the pane into the language of your choice"_s},
          {u"下方還有空間"_s, 95, 15, u"There is room below"_s}}},
        {u"ja"_s,
         {{u"Open the file, edit it, and save it under another name before closing."_s, 20, 14,
           u"ファイルを開いて編集し、閉じる前に別の名前で保存してください。「上書き」はできません。"_s}}},
        {u"ko"_s,
         {{u"Long text in a small source"_s, 12, 12,
           u"작은 원문에 긴 번역문이 들어가는 경우에는 글자 크기를 줄이고 여러 줄로 나누어 표시합니다. "_s
           u"그래도 들어가지 않으면 마지막 줄이 생략 부호로 잘립니다. 네 줄까지만 그려집니다."_s}}},
        {u"ar"_s,
         {{u"Welcome to the desktop"_s, 20, 24, u"مرحبًا بك في سطح المكتب"_s},
          {u"Choose a language"_s, 70, 16, u"اختر اللغة التي تريد ترجمة النص إليها من القائمة"_s}}},
        {u"he"_s, {{u"Welcome to version 2"_s, 20, 24, u"ברוכים הבאים לגרסה 2 (beta)"_s}}},
        {u"zh-Hant"_s,
         {{u"Well done! 🎉"_s, 16, 20, u"做得好！🎉👍🏽 ❤️ → ✔ ①"_s},
          {u"Family"_s, 60, 32, u"家庭 👨‍👩‍👧 🇹🇼"_s}}},
        {u"en"_s,
         {{u"右邊緣"_s, 20, 18, u"Moved to the left at the right edge"_s, 330},
          {u"也是"_s, 70, 14, u"This one needs several lines, since it may not grow any further"_s, 350}}},
        {u"en"_s,
         {{u"固定大小"_s, 10, 18,
           u"A fixed size of thirty points keeps its size, and whatever does not fit into four lines is cut off "
           u"with an ellipsis at the end"_s}},
         {.isAuto = false, .storedFontSize = 30}},
        {u"th"_s, {{u"Hello world"_s, 20, 20, u"สวัสดีชาวโลก ที่นี่มีน้ำ"_s}, {u"नमस्ते"_s, 70, 20, u"नमस्ते दुनिया"_s}}},
        {u"zh-Hans"_s,
         {{u"Incomprehensibilities"_s, 20, 18,
           u"Donaudampfschifffahrtselektrizitätenhauptbetriebswerkbauunterbeamtengesellschaft"_s, 16},
          {u"\U000F0123 tofu"_s, 100, 16, u"\U000F0123\uE0FF無空格 \U0001F6DC ឃ්"_s}}},
    };
}

/// The content of one cell with its lines of text drawn so that their letters fill the line's height.
QImage content(const Situation &situation, bool light, double scale)
{
    QImage image((cell * scale).toSize(), QImage::Format_RGB32);
    image.fill(light ? QColor(Qt::white) : QColor(24, 26, 30));
    QPainter painter(&image);
    painter.scale(scale, scale);
    painter.fillRect(QRectF(cell.width() - 90, cell.height() - 50, 70, 34),
                     light ? QColor(40, 120, 230) : QColor(200, 70, 40));
    painter.setPen(light ? Qt::black : QColor(225, 228, 232));
    for (const Line &line : situation.lines) {
        QFont font(u"Noto Sans"_s);
        font.setPixelSize(int(line.height));
        painter.setFont(font);
        painter.drawText(QPointF(line.left, line.top + line.height * 0.8), line.source);
    }
    return image;
}

double sourceWidth(const Line &line)
{
    QFont font(u"Noto Sans"_s);
    font.setPixelSize(int(line.height));
    return QFontMetricsF(font).horizontalAdvance(line.source);
}

void drawOverlays(QPainter &painter, const Situation &situation)
{
    OverlayTypesetter typesetter(situation.language);
    for (qsizetype i = 0; i < situation.lines.size(); ++i) {
        const Line &line = situation.lines[i];
        const QRectF rect(line.left, line.top, sourceWidth(line), line.height);
        const double next = i + 1 < situation.lines.size() ? situation.lines[i + 1].top : cell.height();
        const auto layout = layOutOverlay(typesetter, line.translation, {std::max(rect.bottom(), next - 4)}, rect,
                                          QRectF(QPointF(), cell), situation.settings);
        if (layout)
            OverlayPainter(typesetter.typeset(line.translation), *layout).paint(painter);
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2)
        return 1;
    const double scale = arguments.size() > 2 ? arguments[2].toDouble() : 1;
    const QList<Situation> all = situations();
    // Each situation four times: the content and the result, light and dark.
    QImage sheet(QSizeF(cell.width() * columns * scale, cell.height() * double(all.size()) * scale).toSize(),
                 QImage::Format_RGB32);
    QPainter painter(&sheet);
    painter.scale(scale, scale);
    for (qsizetype row = 0; row < all.size(); ++row) {
        for (int column = 0; column < columns; ++column) {
            painter.save();
            painter.translate(column * cell.width(), double(row) * cell.height());
            painter.setClipRect(QRectF(QPointF(), cell));
            const QImage beneath = content(all[row], column < columns / 2, scale);
            painter.drawImage(QRectF(QPointF(), cell), beneath);
            if (column % 2 == 1) {
                FrostedBackdrop(beneath, scale).paint(painter, QRectF(QPointF(), cell), glassOpacity);
                drawOverlays(painter, all[row]);
            }
            painter.restore();
        }
    }
    painter.end();
    return sheet.save(arguments[1]) ? 0 : 1;
}
