#pragma once

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

protected:
    /// Escape ends what an input method is composing before it does anything else.
    void keyPressEvent(QKeyEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;
    QMimeData *createMimeDataFromSelection() const override;

private:
    void insertWhole(QTextCursor cursor, const QString &text);
    QString textBetween(int start, int end) const;

    bool m_hasPieces = false; ///< whether there may be lines in pieces
};

} // namespace lucentra
