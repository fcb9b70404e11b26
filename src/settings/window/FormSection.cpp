#include "FormSection.h"

#include "Mnemonics.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QSlider>
#include <QStyle>
#include <QStyleOptionButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr int sidePadding = 14;
constexpr int rowPadding = 9;
constexpr int labelToControl = 16;
constexpr int fieldWidth = 300;

/// Leaves the wheel to the page while the control under the pointer doesn't have the focus.
class WheelGuard : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *widget = qobject_cast<QWidget *>(watched);
        if (event->type() != QEvent::Wheel || !widget || widget->hasFocus())
            return false;
        event->ignore();
        return true;
    }
};

/// With Qt's own style, the outline of a check box can hardly be seen on a dark ground.
class OutlinedCheckBox : public QCheckBox
{
public:
    using QCheckBox::QCheckBox;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QCheckBox::paintEvent(event);
        QColor line = palette().color(QPalette::WindowText);
        if (style()->name() != "fusion"_L1 || line.lightness() < palette().color(QPalette::Window).lightness())
            return;
        QStyleOptionButton option;
        initStyleOption(&option);
        const QRectF box = style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, this);
        line.setAlphaF(0.5F);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(line);
        painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
    }
};

void guardFromWheel(QWidget &control)
{
    control.setFocusPolicy(Qt::StrongFocus);
    control.installEventFilter(new WheelGuard(&control));
}

QFont scaled(QFont font, qreal factor)
{
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * factor);
    else
        font.setPixelSize(int(font.pixelSize() * factor));
    return font;
}

constexpr qreal cornerRadius = 9;
constexpr int lineInset = 14;

QColor mixed(const QColor &one, const QColor &other, qreal share)
{
    const auto part = [share](int a, int b) { return int(a + (b - a) * share); };
    return {part(one.red(), other.red()), part(one.green(), other.green()), part(one.blue(), other.blue())};
}

/// The rounded background of a section's rows, with a thin line between rows, in the colours of the palette.
class FormPlate : public QFrame
{
public:
    /// The boolean property of a row that has no line above it.
    static constexpr char continuesRow[] = "continuesRow";

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QColor window = palette().color(QPalette::Window);
        const QColor text = palette().color(QPalette::WindowText);
        const bool isDark = window.lightness() < text.lightness();
        const QColor plate = isDark ? mixed(window, Qt::white, 0.06) : mixed(window, Qt::white, 0.7);
        const QColor line = mixed(plate, text, 0.14);
        painter.setPen(QPen(line, 1));
        painter.setBrush(plate);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
        painter.setRenderHint(QPainter::Antialiasing, false);
        bool isFirst = true;
        for (int i = 0; i < layout()->count(); ++i) {
            const QWidget *row = layout()->itemAt(i)->widget();
            if (!row || row->isHidden())
                continue;
            if (!isFirst && !row->property(continuesRow).toBool())
                painter.drawLine(lineInset, row->y(), width() - lineInset, row->y());
            isFirst = false;
        }
    }
};

} // namespace

QLabel *makeSmallPrint()
{
    auto *label = new QLabel;
    constexpr qreal smallPrint = 0.9;
    label->setFont(scaled(label->font(), smallPrint));
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

void showText(QLineEdit &field, const QString &text)
{
    if (field.text() != text)
        field.setText(text);
}

void setTone(QLabel &label, Tone tone)
{
    const QPalette own = QPalette();
    const bool isDark = own.color(QPalette::Window).lightness() < own.color(QPalette::WindowText).lightness();
    // Each colour has a contrast of at least 4.5 to 1 on the plate.
    const QColor color = [&] {
        switch (tone) {
        case Tone::Quiet:
            return isDark ? QColor(0xb4, 0xb6, 0xba) : QColor(0x5c, 0x5e, 0x62);
        case Tone::Good:
            return isDark ? QColor(0x6f, 0xd1, 0x87) : QColor(0x1c, 0x76, 0x35);
        case Tone::Warning:
            return isDark ? QColor(0xf2, 0xae, 0x55) : QColor(0x9c, 0x55, 0x00);
        case Tone::Bad:
            break;
        }
        return isDark ? QColor(0xff, 0x8f, 0x85) : QColor(0xb8, 0x20, 0x1a);
    }();
    QPalette palette = label.palette();
    palette.setColor(QPalette::WindowText, color);
    label.setPalette(palette);
}

FormSection::FormSection(SettingsForm &form, const QString &titleKey)
    : m_form(form)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    auto *title = new QLabel;
    title->setTextFormat(Qt::PlainText);
    QFont font = title->font();
    font.setBold(true);
    title->setFont(font);
    title->setContentsMargins(4, 0, 4, 0);
    form.keepText([this, title, titleKey] {
        title->setText(m_form.text(titleKey));
        setAccessibleName(title->text());
    });
    layout->addWidget(title);
    auto *plate = new FormPlate;
    m_rows = new QVBoxLayout(plate);
    m_rows->setContentsMargins(0, 0, 0, 0);
    m_rows->setSpacing(0);
    layout->addWidget(plate);
    m_footers = new QVBoxLayout;
    m_footers->setContentsMargins(4, 0, 4, 0);
    m_footers->setSpacing(2);
    layout->addLayout(m_footers);
}

QWidget *FormSection::addWidget(QWidget *widget)
{
    auto *row = new QWidget;
    auto *layout = new QVBoxLayout(row);
    layout->setContentsMargins(sidePadding, rowPadding, sidePadding, rowPadding);
    layout->addWidget(widget);
    m_rows->addWidget(row);
    return row;
}

QWidget *FormSection::addRemark(QWidget *remark)
{
    QWidget *row = addWidget(remark);
    row->setProperty(FormPlate::continuesRow, true);
    row->layout()->setContentsMargins(sidePadding, 0, sidePadding, rowPadding);
    return row;
}

QLabel *FormSection::addRow(const QString &labelKey, QWidget *control)
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(sidePadding, rowPadding, sidePadding, rowPadding);
    layout->setSpacing(labelToControl);
    auto *label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    QWidget *focused = control->focusProxy() ? control->focusProxy() : control;
    if (focused->focusPolicy() != Qt::NoFocus)
        label->setBuddy(focused);
    m_form.keepText([this, label, control, labelKey] {
        setMnemonicText(*label, m_form.text(labelKey));
        setAccessibleNameOnce(*control, label->accessibleName());
    });
    layout->addWidget(label);
    layout->addStretch(1);
    layout->addWidget(control);
    m_rows->addWidget(row);
    return label;
}

QComboBox *FormSection::addPicker(const QString &labelKey, const QList<PickerOption> &options,
                                  Binding<QVariant> binding)
{
    auto *picker = new QComboBox;
    guardFromWheel(*picker);
    picker->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    for (const PickerOption &option : options)
        picker->addItem(QString(), option.value);
    m_form.keepText([this, picker, options] {
        for (int i = 0; i < options.size(); ++i)
            picker->setItemText(i, m_form.text(options[i].textKey));
    });
    const auto inForce = [picker, read = std::move(binding.read)] { return std::max(0, picker->findData(read())); };
    m_form.keepValue([picker, inForce] { picker->setCurrentIndex(inForce()); });
    connect(picker, &QComboBox::activated, this, [picker, inForce, write = std::move(binding.write)](int index) {
        if (index != inForce()) // not if the current choice is chosen again
            write(picker->itemData(index));
    });
    addRow(labelKey, picker);
    return picker;
}

QCheckBox *FormSection::addToggle(std::function<QString()> text, Binding<bool> binding)
{
    auto *toggle = new OutlinedCheckBox;
    const auto apply = [toggle, text = std::move(text)] { setMnemonicText(*toggle, text()); };
    m_form.keepText(apply);
    m_form.keepValue([toggle, read = std::move(binding.read)] {
        const QSignalBlocker quiet(toggle);
        toggle->setChecked(read());
    });
    // Not `clicked`: assistive technologies toggle without a click.
    connect(toggle, &QCheckBox::toggled, this, std::move(binding.write));
    addWidget(toggle);
    return toggle;
}

QCheckBox *FormSection::addToggle(const QString &textKey, Binding<bool> binding)
{
    return addToggle([this, textKey] { return m_form.text(textKey); }, std::move(binding));
}

QSlider *FormSection::addSlider(std::function<QString()> label, int first, int last, Binding<int> binding)
{
    auto *holder = new QWidget;
    auto *layout = new QVBoxLayout(holder);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    auto *name = new QLabel;
    name->setTextFormat(Qt::PlainText);
    auto *slider = new QSlider(Qt::Horizontal);
    guardFromWheel(*slider);
    slider->setRange(first, last);
    slider->setPageStep(std::max(1, (last - first) / 6));
    name->setBuddy(slider);
    layout->addWidget(name);
    layout->addWidget(slider);
    const auto showLabel = [name, slider, label = std::move(label)] {
        setMnemonicText(*name, label());
        setAccessibleNameOnce(*slider, name->accessibleName());
    };
    m_form.keepText(showLabel);
    m_form.keepValue([slider, showLabel, read = std::move(binding.read)] {
        const QSignalBlocker quiet(slider);
        slider->setValue(read());
        showLabel();
    });
    connect(slider, &QSlider::valueChanged, this, [showLabel, write = std::move(binding.write)](int value) {
        write(value);
        showLabel();
    });
    addWidget(holder);
    return slider;
}

QLineEdit *FormSection::addField(const QString &labelKey, Binding<QString> binding)
{
    auto *field = new QLineEdit;
    field->setMinimumWidth(fieldWidth);
    m_form.keepValue([field, read = std::move(binding.read)] { showText(*field, read()); });
    connect(field, &QLineEdit::textEdited, this, std::move(binding.write));
    addRow(labelKey, field);
    return field;
}

QPushButton *FormSection::addButton(const QString &textKey, std::function<void()> clicked)
{
    auto *button = new QPushButton;
    button->setAutoDefault(false);
    m_form.keepText([this, button, textKey] { setMnemonicText(*button, m_form.text(textKey)); });
    connect(button, &QPushButton::clicked, this, std::move(clicked));
    addWidget(button)->layout()->setAlignment(button, Qt::AlignLeft);
    return button;
}

QLabel *FormSection::addParagraph(std::function<QString()> text)
{
    auto *label = new QLabel;
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    m_form.keepText([label, text = std::move(text)] { label->setText(text()); });
    addWidget(label);
    return label;
}

QLabel *FormSection::addFooter(const QString &textKey)
{
    QLabel *label = makeSmallPrint();
    m_form.keepText([this, label, textKey] {
        label->setText(m_form.text(textKey));
        setTone(*label, Tone::Quiet);
    });
    m_footers->addWidget(label);
    return label;
}

} // namespace lucentra
