#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace lucentra {

/// A sentence of a text, and what separates it from the next one. A part without a sentence is only copied.
struct TextPart
{
    QString sentence;
    QString separator;
    bool isLanguage = false; ///< whether it has words; numbers, addresses, code and placeholders alone have none

    bool operator==(const TextPart &) const = default;
};

/// Divides a text; the parts put together are the text again.
QList<TextPart> partsOfText(const QString &text, const QString &language);
/// Puts the translated sentences together. Languages with and without spaces between sentences differ in separators.
QString joinedText(const QList<TextPart> &parts, const QString &targetLanguage);

/// What must come out of a translation as it was: placeholders, tags, addresses, code. In the order of the text.
QStringList protectedWords(const QString &sentence);
/// Whether a translation has all these words, each as often as there.
bool hasWords(const QString &translation, const QStringList &words);

/// A sentence as a model reads it best: one that is written in capitals is made an ordinary one.
QString readableSentence(const QString &sentence);
/// Restores in a translation what the source has at its edges: capitals, the sign at the end.
QString restoredSentence(const QString &translation, const QString &source, const QString &targetLanguage);

} // namespace lucentra
