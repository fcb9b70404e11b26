#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

class QTabWidget;
class QWidget;

namespace lucentra {

// The letters that reach a form's controls together with Alt: one of the text's own, or, in scripts without such
// letters, one in brackets behind it. A screen reader gets the text without.

/// Gives a label or a button its text, with the letter that it has by now.
void setMnemonicText(QWidget &widget, const QString &text);

/// Names a widget for screen readers, which are told of every call, unless it has the name.
void setAccessibleNameOnce(QWidget &widget, const QString &name);

/// A text with a letter that isn't taken yet, and now is. `customary` is the one to use if the text has no letters.
QString withMnemonic(const QString &text, QSet<QChar> &taken, QChar customary = {});

/// Gives the tabs and what each page shows letters of their own, other than those of the window's menus. `titles` are
/// those of the tabs.
void assignMnemonics(QTabWidget &tabs, const QStringList &titles);

} // namespace lucentra
