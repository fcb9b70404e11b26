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
class QSlider;
class QVBoxLayout;

namespace lucentra {

/// One choice of a picker: the key of its text, and what is stored for it.
struct PickerOption
{
    QString textKey;
    QVariant value;
};

/// A titled group of rows on a plate, with footers beneath it. Every row keeps its text in the interface language and
/// its value true to the settings; a label is its control's buddy and accessible name. Main thread only.
class FormSection : public QWidget
{
public:
    /// Reads and writes what a control shows. Writing happens on the user's doing alone.
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

    FormSection(SettingsForm &form, const QString &titleKey, QWidget *parent = nullptr);

    /// The first option is also shown for a stored value that none has; it is the one in force then.
    QComboBox *addPicker(const QString &labelKey, const QList<PickerOption> &options, Binding<QVariant> binding);
    /// The text is made by the function, whenever the interface language or a setting changes.
    QCheckBox *addToggle(std::function<QString()> text, Binding<bool> binding);
    QCheckBox *addToggle(const QString &textKey, Binding<bool> binding);
    /// A slider over whole steps. The label is the one that belongs to the value.
    QSlider *addSlider(std::function<QString()> label, int first, int last, Binding<int> binding);
    QLineEdit *addField(const QString &labelKey, Binding<QString> binding);

    /// A label beside a control.
    QLabel *addRow(const QString &labelKey, QWidget *control);
    /// A row that is one widget; returns the row.
    QWidget *addWidget(QWidget *widget);
    /// What belongs to the row above; returns the row of its own, by which it is shown and hidden.
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

/// A label in small print that breaks its lines; the text can be selected by the pointer.
QLabel *makeSmallPrint(QWidget *parent = nullptr);

/// Puts a text into a field unless it is there, so that the cursor stays.
void showText(QLineEdit &field, const QString &text);

} // namespace lucentra
