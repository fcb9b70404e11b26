#include "ManualInputView.h"

#include "LocalizationManager.h"
#include "LongTextEdit.h"
#include "ManualInputViewModel.h"
#include "ProgressIndicator.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Leaves room for the border's glow.
constexpr QMargins margins(9, 0, 9, 9);
constexpr double cornerRadius = 10;
constexpr int padding = 14;
constexpr int lowPanelPadding = 5;
constexpr int headerHeight = 30;
constexpr int headerPixels = 11;
constexpr int textPixels = 15;
constexpr int wheelSide = 16;
constexpr int markSide = 11;
constexpr int leastHeightWithHeaders = 150;

/// The tint of the glass. White text on white is readable only with it.
const QColor groundColor(12, 17, 26, 204);
const QColor outlineColor = QColor::fromRgbF(1, 1, 1, 0.10F);
const QColor dividerColor = QColor::fromRgbF(1, 1, 1, 0.12F);
const QColor primaryColor = QColor::fromRgbF(1, 1, 1, 0.95F);
const QColor secondaryColor = QColor::fromRgbF(1, 1, 1, 0.72F);
const QColor tertiaryColor = QColor::fromRgbF(1, 1, 1, 0.55F);
const QColor copiedColor(92, 219, 122);
const QColor selectionColor(47, 111, 228);

constexpr auto scrollBarStyle = R"(
    QScrollBar { background: transparent; width: 8px; margin: 2px; border: none; }
    QScrollBar::handle { background: rgba(255, 255, 255, 70); border-radius: 2px; min-height: 24px; }
    QScrollBar::handle:hover { background: rgba(255, 255, 255, 120); }
    QScrollBar::add-line, QScrollBar::sub-line { height: 0; }
    QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
)";

QFont fontOf(const QWidget &widget, int pixels, QFont::Weight weight)
{
    QFont font = widget.font();
    font.setPixelSize(pixels);
    font.setWeight(weight);
    return font;
}

QLabel *makeLabel(QFont::Weight weight, const QColor &color, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setFont(fontOf(*label, headerPixels, weight));
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, color);
    label->setPalette(palette);
    return label;
}

LongTextEdit *makeTextArea(QWidget *parent)
{
    auto *area = new LongTextEdit(parent);
    area->setFrameShape(QFrame::NoFrame);
    area->setFont(fontOf(*area, textPixels, QFont::Normal));
    area->document()->setDocumentMargin(padding);
    area->setMinimumHeight(0);
    area->setTabChangesFocus(true); // so that Tab leads to the buttons
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->verticalScrollBar()->setStyleSheet(QString::fromLatin1(scrollBarStyle));
    area->viewport()->setAutoFillBackground(false);
    QPalette palette = area->palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    palette.setColor(QPalette::Text, primaryColor);
    palette.setColor(QPalette::PlaceholderText, secondaryColor);
    palette.setColor(QPalette::Highlight, selectionColor);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    area->setPalette(palette);
    return area;
}

class CheckMark : public QWidget
{
public:
    explicit CheckMark(QWidget *parent)
        : QWidget(parent)
    {
        setFixedSize(markSide, markSide);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(copiedColor, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(QPolygonF({{1.5, 6}, {4.3, 9}, {9.5, 2.5}}));
    }
};

QWidget *makeHeader(const QList<QWidget *> &leading, const QList<QWidget *> &trailing, QWidget *parent)
{
    auto *header = new QWidget(parent);
    header->setMinimumHeight(headerHeight); // a note may need more
    header->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    auto *row = new QHBoxLayout(header);
    row->setContentsMargins(padding, 0, padding, 0);
    row->setSpacing(6);
    for (QWidget *widget : leading)
        row->addWidget(widget);
    row->addStretch();
    for (QWidget *widget : trailing)
        row->addWidget(widget);
    return header;
}

} // namespace

ManualInputView::ManualInputView(ManualInputViewModel &viewModel, const LocalizationManager &localization,
                                 bool reduceMotion, QWidget *parent)
    : QWidget(parent)
    , m_viewModel(viewModel)
    , m_localization(localization)
    , m_reduceMotion(reduceMotion)
    , m_sourceHeader(makeSourceHeader())
    , m_resultHeader(makeResultHeader())
    , m_editor(makeTextArea(this))
    , m_result(makeTextArea(this))
{
    m_result->setReadOnly(true);
    m_result->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto *stack = new QVBoxLayout(this);
    stack->setContentsMargins(margins);
    stack->setSpacing(0);
    stack->addWidget(m_sourceHeader);
    stack->addWidget(m_editor, 1);
    stack->addSpacing(1); // the divider
    stack->addWidget(m_resultHeader);
    stack->addWidget(m_result, 1);
    setFocusProxy(m_editor);
    setFocusPolicy(Qt::ClickFocus); // so that dragging a header doesn't take the focus from the editor

    connect(m_editor, &QPlainTextEdit::textChanged, this, [this] { m_viewModel.setInputText(m_editor->wholeText()); });
    connect(&viewModel, &ManualInputViewModel::changed, this, &ManualInputView::render);
    localization.observeLanguage(this, [this] { renderTexts(); });
    renderTexts();
    render();
}

void ManualInputView::setReduceMotion(bool reduceMotion)
{
    m_reduceMotion = reduceMotion;
    render();
}

bool ManualInputView::takesEscape() const
{
    return m_editor->takesEscape();
}

QWidget *ManualInputView::makeSourceHeader()
{
    m_sourceTitle = makeLabel(QFont::DemiBold, secondaryColor, this);
    m_hint = makeLabel(QFont::Normal, tertiaryColor, this);
    return makeHeader({m_sourceTitle, m_hint}, {}, this);
}

QWidget *ManualInputView::makeResultHeader()
{
    m_resultTitle = makeLabel(QFont::DemiBold, secondaryColor, this);
    m_progress = new ProgressIndicator(this);
    m_progress->setFixedSize(wheelSide, wheelSide);
    m_translating = makeLabel(QFont::Normal, secondaryColor, this);
    m_checkMark = new CheckMark(this);
    m_copied = makeLabel(QFont::Medium, copiedColor, this);
    m_note = makeLabel(QFont::Normal, secondaryColor, this);
    m_note->setWordWrap(true);
    QWidget *header = makeHeader({m_resultTitle, m_note}, {m_progress, m_translating, m_checkMark, m_copied}, this);
    static_cast<QHBoxLayout *>(header->layout())->setStretchFactor(m_note, 1);
    return header;
}

void ManualInputView::renderTexts()
{
    const auto text = [this](const QString &key) { return m_localization.localized(key); };
    m_sourceTitle->setText(text(u"原文"_s));
    m_hint->setText(text(u"停止輸入後自動翻譯"_s));
    m_editor->setAccessibleName(text(u"翻譯原文"_s));
    m_editor->setPlaceholderText(text(u"輸入或貼上要翻譯的文字"_s));
    m_resultTitle->setText(text(u"翻譯"_s));
    m_translating->setText(text(u"翻譯中"_s));
    m_progress->setAccessibleName(text(u"翻譯中"_s));
    m_copied->setText(text(u"已複製"_s));
    m_result->setAccessibleName(text(u"翻譯"_s));
    m_result->setPlaceholderText(text(u"翻譯結果會顯示在這裡"_s));
}

void ManualInputView::render()
{
    if (m_viewModel.inputText().isEmpty() && !m_editor->document()->isEmpty())
        m_editor->clear();
    if (m_shownTranslation != m_viewModel.translatedText()) {
        m_shownTranslation = m_viewModel.translatedText();
        m_result->setWholeText(m_shownTranslation);
    }
    const bool isTranslating = m_viewModel.isTranslating();
    const bool tellsOfCopy = m_viewModel.isCopied() && !isTranslating;
    m_progress->setVisible(isTranslating);
    m_progress->setTurning(isTranslating && !m_reduceMotion);
    m_translating->setVisible(isTranslating);
    m_note->setText(m_viewModel.note());
    m_note->setVisible(!isTranslating && !m_viewModel.note().isEmpty());
    m_checkMark->setVisible(tellsOfCopy);
    m_copied->setVisible(tellsOfCopy);
}

bool ManualInputView::hasHeaders() const
{
    return height() >= leastHeightWithHeaders;
}

void ManualInputView::resizeEvent(QResizeEvent *)
{
    m_sourceHeader->setVisible(hasHeaders());
    m_resultHeader->setVisible(hasHeaders());
    for (LongTextEdit *area : {m_editor, m_result}) {
        area->document()->setDocumentMargin(hasHeaders() ? padding : lowPanelPadding);
        area->setVerticalScrollBarPolicy(hasHeaders() ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    }
}

void ManualInputView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(outlineColor, 1));
    painter.setBrush(groundColor);
    const QRectF ground = QRectF(rect().marginsRemoved(margins)).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.drawRoundedRect(ground, cornerRadius, cornerRadius);
    painter.fillRect(QRectF(ground.left(), m_editor->geometry().bottom() + 1, ground.width(), 1), dividerColor);
}

} // namespace lucentra
