#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

namespace lucentra {

/// The place of a number, a name or another value in a phrase: slot i is the character `firstSlot` + i of the private
/// use area. In keys every slot is `firstSlot`.
inline constexpr char16_t firstSlot = u'\uE000';
inline constexpr int mostSlots = 9;
/// Longer phrases aren't stored: they don't fit on one line of a screen.
inline constexpr qsizetype longestPhrase = 160;

/// Punctuation at the end of a phrase, which is translated separately.
enum class PhraseTail { None, Colon, Ellipsis, FullStop };

/// A phrase as it is stored: without mnemonics, markup, accelerators and tail, its white space collapsed, its
/// placeholders as slots.
struct PhraseForm
{
    QString text;
    PhraseTail tail = PhraseTail::None;
    /// The argument of each slot of `text` ("1" of %1$s, "name" of {name}), by slot number.
    QStringList arguments;

    bool operator==(const PhraseForm &) const = default;
};

/// The form of a catalogue's source text.
PhraseForm catalogueForm(const QString &source);
/// Whether a source text has a mnemonic, so that its translations have one, too.
bool mayHaveMnemonic(const QString &source);
/// The form of a translation, slots numbered as the source's. Returns nullopt if it has an argument that the source
/// doesn't have.
std::optional<QString> translationForm(const QString &translation, const PhraseForm &source, bool hasMnemonic);

/// A form of a line of the screen by which a phrase may be found.
struct ScreenForm
{
    QString text;
    QStringList values; ///< of the slots of `text`
};

/// A line of the screen in parts: the surroundings of its phrase, and the phrase's forms, the most exact first.
struct ScreenPhrase
{
    QString prefix; ///< a bullet or the like, with the white space after it
    QString suffix; ///< a keyboard shortcut, with the white space before it
    PhraseTail tail = PhraseTail::None;
    QList<ScreenForm> forms;
};
ScreenPhrase screenPhrase(const QString &line);

/// The key of all spellings of a phrase: case, quotation marks and widths are folded, and there is no
/// white space in a text of ideographs, kana or hangul.
QString phraseKey(const QString &text);

/// Whether there is anything to translate in a text.
bool hasLetter(QStringView text);

/// The text with the values in its slots.
QString fillSlots(const QString &text, const QStringList &values);

/// The tail as a language writes it.
QString tailText(PhraseTail tail, QStringView language);

/// True for characters of a script without white space between words: ideographs and kana; also hangul, whose white
/// space recognizers get wrong.
bool isDenseScript(char32_t c);

} // namespace lucentra
