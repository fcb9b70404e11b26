// Draws ordinary windows with the toolkit's own widgets, and writes down which text is where: material to measure by.
//
//     draw-windows FOLDER COUNT SEED
//
// The same seed gives the same windows. FOLDER gets pictures and a truth.json as `run` takes them. Text is taken from
// what the widgets hand to the painter, so check marks, arrows and icons are never in it.
#include "NotingDevice.h"

#include <QtWidgets>

#include <cmath>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

/// What is random about a window.
struct Look
{
    QRandomGenerator random;
    QStringList texts;
    QString title;
    bool isDark = false;
    int size = 14; // of the font, pixels

    int below(int end) { return int(random.bounded(end)); }
    QString text() { return texts[below(int(texts.size()))]; }
};

/// A small picture such as tool bars have: strokes or areas that mean nothing.
QIcon anIcon(Look &look, const QColor &ink)
{
    QPixmap pixmap(64, 64);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ink, 5));
    switch (look.below(8)) {
    case 0: // a document
        painter.drawPolygon(QPolygonF({{14, 6}, {38, 6}, {50, 18}, {50, 58}, {14, 58}}));
        painter.drawLine(22, 30, 42, 30);
        painter.drawLine(22, 42, 42, 42);
        break;
    case 1: // a folder
        painter.setBrush(QColor(90, 150, 230));
        painter.drawPolygon(QPolygonF({{6, 14}, {26, 14}, {32, 22}, {58, 22}, {58, 52}, {6, 52}}));
        break;
    case 2: // a magnifying glass
        painter.drawEllipse(8, 8, 34, 34);
        painter.drawLine(38, 38, 56, 56);
        break;
    case 3: // a cogwheel
        painter.drawEllipse(18, 18, 28, 28);
        for (int i = 0; i < 8; ++i) {
            const QPointF out(std::cos(i * 0.785), std::sin(i * 0.785));
            painter.drawLine(QPointF(32, 32) + 16 * out, QPointF(32, 32) + 27 * out);
        }
        break;
    case 4: // three bars
        for (int y : {16, 32, 48})
            painter.drawLine(8, y, 56, y);
        break;
    case 5: // a plus
        painter.drawLine(32, 8, 32, 56);
        painter.drawLine(8, 32, 56, 32);
        break;
    case 6: // an arrow
        painter.drawPolyline(QPolygonF({{30, 10}, {8, 32}, {30, 54}}));
        painter.drawLine(8, 32, 58, 32);
        break;
    default: // a star
        painter.drawPolygon(QPolygonF(
            {{32, 4}, {40, 24}, {60, 24}, {44, 38}, {50, 58}, {32, 46}, {14, 58}, {20, 38}, {4, 24}, {24, 24}}));
    }
    return QIcon(pixmap);
}

/// A sliding switch, on or off.
class Switch : public QWidget
{
public:
    Switch(bool isOn, int height, QWidget *parent)
        : QWidget(parent)
        , m_isOn(isOn)
    {
        setFixedSize(2 * height - 4, height);
    }

private:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF track = QRectF(rect()).adjusted(1, 1, -1, -1);
        painter.setPen(QPen(palette().color(QPalette::Mid), 1));
        painter.setBrush(m_isOn ? palette().color(QPalette::Highlight) : palette().color(QPalette::Button));
        painter.drawRoundedRect(track, track.height() / 2, track.height() / 2);
        painter.setBrush(Qt::white);
        const double side = track.height() - 4;
        painter.drawEllipse(QRectF(m_isOn ? track.right() - side - 2 : track.left() + 2, track.top() + 2, side, side));
    }
    bool m_isOn;
};

/// Minimise, maximise, close: strokes, framed strokes, discs or discs with strokes.
class TitleButtons : public QWidget
{
public:
    TitleButtons(int kind, int height, QWidget *parent)
        : QWidget(parent)
        , m_kind(kind)
    {
        setFixedSize(height * 11 / 4, height);
    }

private:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing, m_kind != 1);
        const QColor ink = palette().color(QPalette::WindowText);
        for (int i = 0; i < 3; ++i) {
            const QRectF cell(i * height() * 11 / 12.0 + 1, 1, height() * 10 / 12.0, height() * 10 / 12.0);
            painter.setPen(QPen(ink, 1));
            painter.setBrush(Qt::NoBrush);
            if (m_kind == 1)
                painter.drawRoundedRect(cell, 2, 2);
            if (m_kind >= 2) {
                painter.setPen(Qt::NoPen);
                painter.setBrush(m_kind == 2 ? QColor::fromHsv(i * 45, 190, 235) : palette().color(QPalette::Mid));
                painter.drawEllipse(cell);
            }
            painter.setPen(QPen(ink, height() > 24 ? 2 : 1));
            painter.setBrush(Qt::NoBrush);
            const double inset = cell.width() * (m_kind == 0 ? 0.24 : 0.32);
            const QRectF sign = cell.adjusted(inset, inset, -inset, -inset);
            if (m_kind == 2)
                continue;
            if (i == 0)
                painter.drawLine(QPointF(sign.left(), m_kind == 0 ? sign.center().y() : sign.bottom()),
                                 QPointF(sign.right(), m_kind == 0 ? sign.center().y() : sign.bottom()));
            else if (i == 1)
                painter.drawRect(sign);
            else {
                painter.drawLine(sign.topLeft(), sign.bottomRight());
                painter.drawLine(sign.topRight(), sign.bottomLeft());
            }
        }
    }
    int m_kind;
};

QPalette paletteOf(Look &look)
{
    QPalette palette;
    if (!look.isDark)
        return look.below(2) ? QPalette(QColor(239, 240, 241)) : QPalette(QColor(250, 250, 250));
    const QColor base = look.below(2) ? QColor(35, 38, 41) : QColor(48, 48, 48);
    palette = QPalette(base.lighter(130), base);
    palette.setColor(QPalette::Base, base.darker(120));
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(role, QColor(235, 235, 235));
    palette.setColor(QPalette::Highlight, QColor(61, 174, 233));
    return palette;
}

/// As flat desktops have it: no shading, boxes and rings filled with the accent where they are chosen.
QString flatStyle(bool isDark)
{
    return QStringLiteral(
               "QCheckBox::indicator, QRadioButton::indicator { width: 1em; height: 1em; border: 1px solid %1;"
               " background: %2; } QCheckBox::indicator { border-radius: 3px; }"
               " QRadioButton::indicator { border-radius: 0.5em; }"
               " QCheckBox::indicator:checked, QRadioButton::indicator:checked { background: #3584e4; }"
               " QPushButton, QToolButton { border: 0; border-radius: 5px; padding: 4px 10px;"
               " background: %2; } QGroupBox { border: 0; margin-top: 1.4em; }")
        .arg(isDark ? u"#666666"_s : u"#b5b1ad"_s, isDark ? u"#3a3a3a"_s : u"#fdfdfd"_s);
}

QWidget *titleBar(Look &look, QWidget *window)
{
    auto *bar = new QWidget(window);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(8, 4, 8, 4);
    bar->setAutoFillBackground(true);
    QPalette palette = window->palette();
    if (look.below(3) == 0) {
        palette.setColor(QPalette::Window, QColor(115, 155, 205));
        palette.setColor(QPalette::WindowText, Qt::white);
    }
    bar->setPalette(palette);
    auto *icon = new QLabel(bar);
    icon->setPixmap(anIcon(look, palette.color(QPalette::WindowText)).pixmap(look.size + 2));
    auto *title = new QLabel(look.title, bar);
    QFont bold = title->font();
    bold.setBold(look.below(2));
    title->setFont(bold);
    row->addWidget(icon);
    row->addStretch();
    row->addWidget(title);
    row->addStretch();
    row->addWidget(new TitleButtons(look.below(4), look.size + 6 + look.below(8), bar));
    return bar;
}

QWidget *form(Look &look, QWidget *parent)
{
    auto *box = new QGroupBox(look.text(), parent);
    auto *layout = new QFormLayout(box);
    auto *combo = new QComboBox(box);
    combo->addItem(look.text());
    auto *spin = new QSpinBox(box);
    spin->setMaximum(9999);
    spin->setValue(look.below(2000));
    auto *edit = new QLineEdit(look.text(), box);
    edit->setReadOnly(true);
    edit->setMinimumWidth(9 * look.size);
    layout->addRow(look.text() + u':', combo);
    layout->addRow(look.text() + u':', edit);
    layout->addRow(look.text() + u':', spin);
    for (int i = 0; i < 2; ++i)
        layout->addRow(look.text(), new Switch(look.below(2), look.size + 6, box));
    return box;
}

QWidget *choices(Look &look, QWidget *parent)
{
    auto *box = new QGroupBox(look.text(), parent);
    auto *column = new QVBoxLayout(box);
    for (int i = 0; i < 4; ++i) {
        auto *check = new QCheckBox(look.text(), box);
        check->setChecked(look.below(2));
        column->addWidget(check);
    }
    for (int i = 0; i < 3; ++i) {
        auto *radio = new QRadioButton(look.text(), box);
        radio->setChecked(i == 1);
        column->addWidget(radio);
    }
    return box;
}

QWidget *tree(Look &look, QWidget *parent)
{
    auto *tree = new QTreeWidget(parent);
    tree->setHeaderHidden(true);
    for (int i = 0; i < 3; ++i) {
        auto *top = new QTreeWidgetItem(tree, {look.text()});
        if (look.below(2))
            top->setIcon(0, anIcon(look, tree->palette().color(QPalette::Text)));
        for (int j = 0; j < 2; ++j) {
            auto *item = new QTreeWidgetItem(top, {look.text()});
            if (look.below(2))
                item->setCheckState(0, look.below(2) ? Qt::Checked : Qt::Unchecked);
            else
                item->setIcon(0, anIcon(look, tree->palette().color(QPalette::Text)));
        }
        top->setExpanded(i != 1);
    }
    tree->setMinimumSize(16 * look.size, 8 * (look.size + 12));
    return tree;
}

QWidget *menuBar(Look &look, QWidget *parent)
{
    auto *bar = new QMenuBar(parent);
    for (int i = 0; i < 5; ++i)
        bar->addMenu(look.text().section(u' ', 0, 0));
    return bar;
}

QWidget *toolBar(Look &look, QWidget *parent)
{
    auto *bar = new QWidget(parent);
    auto *row = new QHBoxLayout(bar);
    for (int i = 0; i < 4; ++i) {
        auto *button = new QToolButton(bar);
        button->setText(look.text().section(u' ', 0, 0));
        button->setIcon(anIcon(look, bar->palette().color(QPalette::ButtonText)));
        button->setIconSize(QSize(look.size + 2, look.size + 2));
        button->setToolButtonStyle(i == 3 ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextBesideIcon);
        button->setAutoRaise(look.below(2));
        row->addWidget(button);
    }
    row->addStretch();
    return bar;
}

QWidget *buttons(Look &look, QWidget *parent)
{
    auto *bar = new QWidget(parent);
    auto *row = new QHBoxLayout(bar);
    row->addStretch();
    for (int i = 0; i < 3; ++i) {
        auto *button = new QPushButton(look.text().section(u' ', 0, 1) + (i == 0 ? u"…"_s : QString()), bar);
        if (look.below(2))
            button->setIcon(anIcon(look, bar->palette().color(QPalette::ButtonText)));
        row->addWidget(button);
    }
    return bar;
}

void fill(QWidget &window, Look &look)
{
    auto *column = new QVBoxLayout(&window);
    column->setContentsMargins(0, 0, 0, 6);
    column->addWidget(titleBar(look, &window));
    column->addWidget(menuBar(look, &window));
    column->addWidget(toolBar(look, &window));
    auto *middle = new QHBoxLayout;
    middle->setContentsMargins(10, 4, 10, 4);
    middle->addWidget(form(look, &window));
    middle->addWidget(look.below(2) ? choices(look, &window) : tree(look, &window));
    if (look.below(2))
        middle->addWidget(choices(look, &window));
    column->addLayout(middle);
    column->addWidget(buttons(look, &window));
}

const QMap<QString, QStringList> texts{
    {u"en"_s, {u"Show line numbers"_s, u"Check spelling"_s, u"System Default"_s,
               u"Restore defaults"_s,  u"Open folder"_s,    u"Options"_s,
               u"Export as text"_s,    u"Keep a copy"_s,    u"Vertical ruler"_s,
               u"Use dark colours"_s,  u"Language"_s,       u"Volume"_s,
               u"Only over Wi-Fi"_s,   u"Zoom"_s,           u"Quality"_s,
               u"Every 10 minutes"_s,  u"Cancel"_s,         u"Apply"_s,
               u"View hidden files"_s, u"Do not disturb"_s, u"Only once"_s,
               u"Xerox printer"_s}},
    {u"zh"_s, {u"顯示行號"_s,   u"檢查拼字"_s,   u"系統預設"_s, u"還原預設值"_s,   u"回上一頁"_s,
               u"日期與時間"_s, u"國家或地區"_s, u"入口網站"_s, u"一般設定"_s,     u"使用深色模式"_s,
               u"語言"_s,       u"自動更新"_s,   u"田字格"_s,   u"匯出為文字檔"_s, u"取消"_s,
               u"套用"_s,       u"每 10 分鐘"_s, u"口袋清單"_s, u"人工智慧"_s,     u"八月"_s}},
    {u"ja"_s,
     {u"行番号を表示"_s, u"スペルチェック"_s, u"既定に戻す"_s, u"一般"_s, u"日付と時刻"_s, u"ロック画面"_s,
      u"回線の速度"_s, u"言語"_s, u"自動的に更新"_s, u"ダークモード"_s, u"キャンセル"_s, u"適用"_s, u"開く"_s,
      u"国と地域"_s, u"入力方法"_s, u"口座の管理"_s, u"ソフトウェア"_s}}};

void draw(const QDir &folder, int number, quint32 seed, QJsonObject &images)
{
    Look look{QRandomGenerator(seed + quint32(number)), {}, {}};
    const QString language = texts.keys()[number % 3];
    look.texts = texts[language];
    look.title = look.text();
    look.isDark = look.below(2);
    look.size = 12 + look.below(5);
    const double scale = QList<double>{1, 1, 1.25, 1.5, 2}[look.below(5)];
    const QStringList families =
        language == u"en"_s   ? QStringList{u"Noto Sans"_s, u"DejaVu Sans"_s, u"Cantarell"_s, u"Liberation Sans"_s}
        : language == u"zh"_s ? QStringList{u"Noto Sans CJK TC"_s, u"WenQuanYi Micro Hei"_s}
                              : QStringList{u"Noto Sans CJK JP"_s, u"IPAPGothic"_s};
    QFont font(families[look.below(int(families.size()))]);
    font.setPixelSize(look.size);
    QApplication::setStyle(u"Fusion"_s);
    qApp->setStyleSheet(look.below(3) == 0 ? flatStyle(look.isDark) : QString());
    QApplication::setPalette(paletteOf(look));
    QApplication::setFont(font);
    QWidget window;
    fill(window, look);
    window.adjustSize();
    QImage image((QSizeF(window.size()) * scale).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    window.render(&image);
    NotingDevice device(image.size());
    QPainter painter(&device);
    painter.scale(scale, scale);
    window.render(&painter);
    painter.end();
    const QString name = u"%1_%2_%3.png"_s.arg(number, 3, 10, QLatin1Char('0')).arg(language).arg(look.size * scale);
    image.save(folder.filePath(name));
    images[name] = QJsonObject{{u"category"_s, language + (look.isDark ? u" dark"_s : u" light"_s)},
                               {u"lines"_s, linesOf(device.engine.words)}};
}

} // namespace

int main(int count, char **arguments)
{
    QApplication application(count, arguments);
    const QStringList given = QApplication::arguments();
    if (given.size() != 4 || !QDir().mkpath(given[1])) {
        qWarning("draw-windows FOLDER COUNT SEED");
        return 2;
    }
    const QDir folder(given[1]);
    QJsonObject images;
    for (int i = 0; i < given[2].toInt(); ++i)
        draw(folder, i, given[3].toUInt(), images);
    QFile truth(folder.filePath(u"truth.json"_s));
    if (!truth.open(QIODevice::WriteOnly))
        return 1;
    truth.write(QJsonDocument(QJsonObject{{u"images"_s, images}}).toJson());
    return 0;
}
