#pragma once

#include "SettingsForm.h"
#include "SettingsStore.h"

#include <QList>
#include <QString>
#include <QVariant>
#include <QWidget>

#include <functional>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSlider;
class QVBoxLayout;

namespace lucentra {

/// One choice of a picker: the key of its text, and the stored value.
struct PickerOption
{
    QString textKey;
    QVariant value;
};

/// A titled group of rows on a plate, with footers below it. Each row follows the interface language and the settings.
/// A label is its control's buddy and accessible name.
class FormSection : public QWidget
{
public:
    /// Reads and writes the value of a control. Only the user's changes are written.
    template <typename Value>
    struct Binding
    {
        std::function<Value()> read;
        std::function<void(const Value &)> write;
    };
    /// The binding to a setting; `Shown` is the type that the control works with.
    template <typename Shown, typename Value>
    Binding<Shown> stored(const Setting<Value> &setting) const
    {
        SettingsStore &store = m_form.services().settings;
        if constexpr (std::is_same_v<Shown, Value>)
            return {[&store, setting] { return store.read(setting); },
                    [&store, setting](const Shown &shown) { store.write(setting, shown); }};
        else if constexpr (std::is_enum_v<Value>)
            return {[&store, setting] { return int(store.read(setting)); },
                    [&store, setting](const Shown &shown) { store.write(setting, Value(shown.toInt())); }};
        else
            return {[&store, setting] { return store.read(setting); },
                    [&store, setting](const Shown &shown) { store.write(setting, shown.template value<Value>()); }};
    }

    FormSection(SettingsForm &form, const QString &titleKey);

    /// The first option is also shown for a stored value that matches none, since it is the one that applies.
    QComboBox *addPicker(const QString &labelKey, const QList<PickerOption> &options, Binding<QVariant> binding);
    /// `text` is called when the interface language or a setting changes.
    QCheckBox *addToggle(std::function<QString()> text, Binding<bool> binding);
    QCheckBox *addToggle(const QString &textKey, Binding<bool> binding);
    /// A slider with whole steps. `label` returns the label for the current value.
    QSlider *addSlider(std::function<QString()> label, int first, int last, Binding<int> binding);
    QLineEdit *addField(const QString &labelKey, Binding<QString> binding);
    /// A button at the left, alone in its row.
    QPushButton *addButton(const QString &textKey, std::function<void()> clicked);

    /// A label beside a control.
    QLabel *addRow(const QString &labelKey, QWidget *control);
    /// Adds a widget as a row, and returns the row.
    QWidget *addWidget(QWidget *widget);
    /// Adds a remark to the row above, and returns the remark's own row, which can be hidden.
    QWidget *addRemark(QWidget *remark);
    /// A paragraph as a row.
    QLabel *addParagraph(std::function<QString()> text);
    /// Small print beneath the plate.
    QLabel *addFooter(const QString &textKey);

    SettingsForm &form() const { return m_form; }

private:
    SettingsForm &m_form;
    QVBoxLayout *m_rows;
    QVBoxLayout *m_footers;
};

/// Makes a label of small print with wrapped lines and selectable text.
QLabel *makeSmallPrint();

/// Sets a field's text if it differs, so that the cursor keeps its place otherwise.
void showText(QLineEdit &field, const QString &text);

/// The meaning of a line of the form. Each has a colour that is readable on the palette's background.
enum class Tone { Quiet, Good, Warning, Bad };

/// Sets a label's colour for the application's current palette.
void setTone(QLabel &label, Tone tone);

} // namespace lucentra
