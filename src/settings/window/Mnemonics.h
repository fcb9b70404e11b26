#pragma once

#include <QString>
#include <QStringList>

class QTabWidget;
class QWidget;

namespace lucentra {

// The letters that reach a form's controls together with Alt: one of the text's own, or, in scripts without such
// letters, one in brackets behind it. A screen reader gets the text without. Main thread only.

/// Gives a label or a button its text, with the letter that it has by now.
void setMnemonicText(QWidget &widget, const QString &text);

/// Gives the tabs and what each page shows letters of their own. `titles` are those of the tabs.
void assignMnemonics(QTabWidget &tabs, const QStringList &titles);

} // namespace lucentra
