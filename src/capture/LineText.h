#pragma once

#include <QChar>
#include <QString>
#include <QStringView>

#include <optional>

/// What the text of a line says about it. Any thread.
namespace lucentra::lines {

bool isIdeographic(QChar character);
/// Whether there are ideographs, kana or hangul, each of which fills a square.
bool hasSquares(const QString &text);

/// Whether a text begins with a bullet or the number of an entry.
bool hasListMark(const QString &text);
bool endsSentence(const QString &text);
/// Whether a text without the mark that ends a sentence is complete, so that another one begins below it.
bool isComplete(const QString &upper, const QString &lower);
/// Marks that sentences have and labels don't.
bool hasSentenceMarks(const QString &text);
/// Whether a word begins at the end of one line and ends in the next.
bool isBrokenWord(const QString &upper, const QString &lower);
bool isCode(const QString &text);
bool isMostlyDigits(const QString &text);

/// The first letter or digit.
std::optional<QChar> firstLetter(const QString &text);
bool hasCase(QChar character);
bool beginsInLowerCase(const QString &text);

/// The approximate width of a text in a proportional font, in ems.
double advance(QStringView text);
/// What a line break keeps together at the start of a text: a word, or an ideograph with the marks that follow it.
QStringView firstWord(QStringView text);

/// Joins two lines of a paragraph. A hyphen at the end of a line is dropped unless the word is written with it
/// elsewhere on the page, has another one, or begins with a part that compounds have. `page` is all text that was
/// recognized.
QString joinedLines(const QString &upper, const QString &lower, const QString &page);

} // namespace lucentra::lines
