#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

class QTabWidget;
class QWidget;

namespace lucentra {

// The letters that reach a form's controls together with Alt: one of the text's own, or, in scripts without such
// letters, one in brackets behind it. A screen reader gets the text without.

/// Sets the text of a label or a button and keeps its letter.
void setMnemonicText(QWidget &widget, const QString &text);

/// Sets a widget's name for screen readers. Does nothing if it has the name, since screen readers report each call.
void setAccessibleNameOnce(QWidget &widget, const QString &name);

/// Adds a free letter to a text and marks it as taken. Uses `customary` if the text has no letters.
QString withMnemonic(const QString &text, QSet<QChar> &taken, QChar customary = {});

/// Assigns letters to the tabs and to the controls of each page, other than those of the window's menus. `titles` are
/// those of the tabs.
void assignMnemonics(QTabWidget &tabs, const QStringList &titles);

} // namespace lucentra
