#pragma once

#include <QElapsedTimer>
#include <QPlainTextEdit>

namespace lucentra {

/// An editor of plain text that stays quick when a very long line is put into it.
///
/// The toolkit lays out a whole line after each key, which takes seconds for a megabyte, and minutes if the line has no
/// spaces. Such a line is stored as several pieces, which are joined again in all text that leaves the editor.
class LongTextEdit : public QPlainTextEdit
{
public:
    /// The longest piece, in UTF-16 units.
    static constexpr qsizetype greatestPiece = 2000;

    using QPlainTextEdit::QPlainTextEdit;

    /// The text with whole lines. Use these instead of `toPlainText` and `setPlainText`.
    QString wholeText() const;
    void setWholeText(const QString &text);

    /// Whether an input method is composing, or has just ended a composition with the current key, so that Escape
    /// belongs to it.
    bool takesEscape() const;

protected:
    /// Escape first ends a composition.
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;
    QMimeData *createMimeDataFromSelection() const override;

private:
    void insertWhole(QTextCursor cursor, const QString &text);
    QString textBetween(int start, int end) const;
    bool isComposing() const;

    QElapsedTimer m_composingEnded; ///< invalid before the first composition
    bool m_hasPieces = false;       ///< whether lines may be split
};

} // namespace lucentra
