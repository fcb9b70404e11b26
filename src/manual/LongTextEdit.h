#pragma once

#include <QElapsedTimer>
#include <QPlainTextEdit>

namespace lucentra {

/// An editor of plain text that stays quick when a very long line is put into it.
///
/// The toolkit lays a line out anew with every key, which takes seconds for a megabyte, and minutes where it has no
/// space. Such a line is kept as several pieces, which are joined again in whatever leaves the editor. Main thread
/// only.
class LongTextEdit : public QPlainTextEdit
{
public:
    /// The longest piece, in UTF-16 units.
    static constexpr qsizetype greatestPiece = 2000;

    using QPlainTextEdit::QPlainTextEdit;

    /// The text as it was put in; use these instead of `toPlainText` and `setPlainText`.
    QString wholeText() const;
    void setWholeText(const QString &text);

    /// Whether an input method is composing, or has ended that with the key that is under way: then Escape is its own.
    bool takesEscape() const;

protected:
    /// Escape ends what an input method is composing before it does anything else.
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;
    QMimeData *createMimeDataFromSelection() const override;

private:
    void insertWhole(QTextCursor cursor, const QString &text);
    QString textBetween(int start, int end) const;
    bool isComposing() const;

    QElapsedTimer m_composingEnded; ///< invalid where nothing has been composed
    bool m_hasPieces = false;       ///< whether there may be lines in pieces
};

} // namespace lucentra
