#pragma once

#include <QKeySequence>
#include <QList>
#include <QStringView>

class QWidget;

namespace lucentra {

/// One of the commands of text fields.
struct EditCommand
{
    QStringView titleKey;
    QKeySequence shortcut;
    const char *slot;         ///< of the text field
    bool startsGroup = false; ///< a separator precedes it
};

/// In the order of the menu.
const QList<EditCommand> &editCommands();

/// Whether the commands apply to the widget. False for null.
bool isTextField(const QWidget *widget);

/// Does nothing if the widget isn't a text field.
void performEditCommand(const EditCommand &command, QWidget *widget);

} // namespace lucentra
