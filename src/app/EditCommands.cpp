#include "EditCommands.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace lucentra {

namespace {

/// Text fields have a key for deleting, but no slot.
constexpr const char *deleteSelection = nullptr;

void deleteSelected(QWidget *widget)
{
    auto *line = qobject_cast<QLineEdit *>(widget);
    if (line && line->hasSelectedText())
        line->del(); // without a selection it deletes the next character
    else if (auto *text = qobject_cast<QTextEdit *>(widget))
        text->textCursor().removeSelectedText();
    else if (auto *plain = qobject_cast<QPlainTextEdit *>(widget))
        plain->textCursor().removeSelectedText();
}

} // namespace

const QList<EditCommand> &editCommands()
{
    static const QList<EditCommand> commands{
        {u"還原", Qt::CTRL | Qt::Key_Z, "undo"},      {u"重做", Qt::CTRL | Qt::SHIFT | Qt::Key_Z, "redo"},
        {u"剪下", Qt::CTRL | Qt::Key_X, "cut", true}, {u"複製", Qt::CTRL | Qt::Key_C, "copy"},
        {u"貼上", Qt::CTRL | Qt::Key_V, "paste"},     {u"刪除", Qt::Key_Backspace, deleteSelection},
        {u"全選", Qt::CTRL | Qt::Key_A, "selectAll"},
    };
    return commands;
}

bool isTextField(const QWidget *widget)
{
    return qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QTextEdit *>(widget) ||
           qobject_cast<const QPlainTextEdit *>(widget);
}

void performEditCommand(const EditCommand &command, QWidget *widget)
{
    if (!isTextField(widget))
        return;
    if (command.slot)
        QMetaObject::invokeMethod(widget, command.slot);
    else
        deleteSelected(widget);
}

} // namespace lucentra
