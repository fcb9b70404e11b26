#include "LongTextEdit.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>
#include <QTextBoundaryFinder>
#include <QTextLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// The property of blocks that continue the line of the previous block. It is in the block's format because undo
/// restores formats.
constexpr int goesOnProperty = QTextFormat::UserProperty + 1;

bool goesOn(const QTextBlock &block)
{
    return block.blockFormat().boolProperty(goesOnProperty);
}

QTextBlockFormat pieceFormat()
{
    QTextBlockFormat format;
    format.setProperty(goesOnProperty, true);
    return format;
}

/// Some input methods end a composition at the Escape key and then pass the key on.
constexpr int sameKeyMilliseconds = 50;

/// The length of the next piece of a long line: up to a space, or else up to the end of a character.
qsizetype pieceLength(QStringView rest)
{
    if (rest.size() <= LongTextEdit::greatestPiece)
        return rest.size();
    const qsizetype space = rest.lastIndexOf(u' ', LongTextEdit::greatestPiece - 1);
    if (space > 0)
        return space + 1;
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, rest.first(LongTextEdit::greatestPiece + 1));
    characters.setPosition(LongTextEdit::greatestPiece);
    if (!characters.isAtBoundary())
        characters.toPreviousBoundary();
    return characters.position() > 0 ? characters.position() : LongTextEdit::greatestPiece;
}

QString withPlainLineEnds(QString text)
{
    return text.replace("\r\n"_L1, "\n"_L1).replace(u'\r', u'\n').replace(QChar::ParagraphSeparator, u'\n');
}

} // namespace

QString LongTextEdit::wholeText() const
{
    if (!m_hasPieces) // the document itself is faster at joining many lines
        return document()->toRawText().replace(QChar::ParagraphSeparator, u'\n').replace(QChar::LineSeparator, u'\n');
    return textBetween(0, document()->characterCount());
}

void LongTextEdit::setWholeText(const QString &text)
{
    clear();
    m_hasPieces = false;
    insertWhole(textCursor(), withPlainLineEnds(text));
    moveCursor(QTextCursor::Start);
}

void LongTextEdit::insertFromMimeData(const QMimeData *source)
{
    if (!source->hasText())
        return;
    insertWhole(textCursor(), withPlainLineEnds(source->text()));
    ensureCursorVisible();
}

void LongTextEdit::insertWhole(QTextCursor cursor, const QString &text)
{
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    bool isFirstLine = true;
    for (QStringView line : QStringView(text).split(u'\n')) {
        if (!std::exchange(isFirstLine, false))
            cursor.insertBlock(QTextBlockFormat());
        for (;;) {
            const qsizetype length = pieceLength(line);
            cursor.insertText(line.first(length).toString());
            line = line.sliced(length);
            if (line.isEmpty())
                break;
            cursor.insertBlock(pieceFormat());
            m_hasPieces = true;
        }
    }
    cursor.endEditBlock();
}

void LongTextEdit::keyPressEvent(QKeyEvent *event)
{
    if (!isReadOnly() && event->matches(QKeySequence::InsertParagraphSeparator)) {
        textCursor().insertBlock(QTextBlockFormat()); // a new line, even within a piece
        ensureCursorVisible();
        return;
    }
    if (event->key() != Qt::Key_Escape || !takesEscape()) {
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    // If the input method leaves the key to us, the composition is dropped and the pane stays.
    if (isComposing()) {
        QGuiApplication::inputMethod()->reset();
        QInputMethodEvent nothing;
        QCoreApplication::sendEvent(this, &nothing);
    }
    m_composingEnded.invalidate();
}

void LongTextEdit::inputMethodEvent(QInputMethodEvent *event)
{
    const bool wasComposing = isComposing();
    QPlainTextEdit::inputMethodEvent(event);
    if (wasComposing && !isComposing())
        m_composingEnded.start();
}

bool LongTextEdit::takesEscape() const
{
    return isComposing() || (m_composingEnded.isValid() && m_composingEnded.elapsed() < sameKeyMilliseconds);
}

bool LongTextEdit::isComposing() const
{
    return !textCursor().block().layout()->preeditAreaText().isEmpty();
}

QMimeData *LongTextEdit::createMimeDataFromSelection() const
{
    auto *copied = new QMimeData;
    copied->setText(textBetween(textCursor().selectionStart(), textCursor().selectionEnd()));
    return copied;
}

QString LongTextEdit::textBetween(int start, int end) const
{
    QString text;
    for (QTextBlock block = document()->findBlock(start); block.isValid() && block.position() <= end;
         block = block.next()) {
        const int skipped = std::max(0, start - block.position());
        if (skipped == 0 && block.position() > start && !goesOn(block))
            text += u'\n';
        text += QStringView(block.text()).mid(skipped, end - block.position() - skipped);
    }
    return text.replace(QChar::LineSeparator, u'\n');
}

} // namespace lucentra
