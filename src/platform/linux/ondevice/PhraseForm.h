#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

namespace lucentra {

/// Where a number, a name or another value stands in a phrase: slot i is the character `firstSlot` + i of the private
/// use area. In keys every slot is `firstSlot`.
inline constexpr char16_t firstSlot = u'\uE000';
inline constexpr int mostSlots = 9;
/// Longer phrases aren't stored: they don't fit on one line of a screen.
inline constexpr qsizetype longestPhrase = 160;

/// What stands at the end of a phrase and goes from one language to the other by itself.
enum class PhraseTail { None, Colon, Ellipsis, FullStop };

/// A phrase as the memory stores it: without mnemonics, markup, accelerators and tail, its white space collapsed, its
/// placeholders as slots.
struct PhraseForm
{
    QString text;
    PhraseTail tail = PhraseTail::None;
    /// Which argument each slot of `text` stands for ("1" of %1$s, "name" of {name}), by slot number.
    QStringList arguments;

    bool operator==(const PhraseForm &) const = default;
};

/// The form of a catalogue's source text.
PhraseForm catalogueForm(const QString &source);
/// Whether a source text has one of the marks of mnemonics, and so its translations.
bool mayHaveMnemonic(const QString &source);
/// The form of a translation, slots numbered as the source's; nothing where it names an argument that the source
/// doesn't have.
std::optional<QString> translationForm(const QString &translation, const PhraseForm &source, bool hasMnemonic);

/// A text of the screen in the forms in which a phrase may be found, the most exact first.
struct ScreenForm
{
    QString text;
    QStringList values; ///< what stands in the slots of `text`
};

/// A line of the screen taken apart: what surrounds its phrase, and the phrase's forms.
struct ScreenPhrase
{
    QString prefix; ///< a bullet or the like, with the white space after it
    QString suffix; ///< a keyboard shortcut, with the white space before it
    PhraseTail tail = PhraseTail::None;
    QList<ScreenForm> forms;
};
ScreenPhrase screenPhrase(const QString &line);

/// What two spellings of one phrase have in common: case, quotation marks and widths are folded, and there is no
/// white space in a text of ideographs, kana or hangul.
QString phraseKey(const QString &text);

/// The text with the values in its slots.
QString fillSlots(const QString &text, const QStringList &values);

/// The tail as a language writes it.
QString tailText(PhraseTail tail, QStringView language);

/// True for characters of a script without white space between words: ideographs and kana; also hangul, whose white
/// space recognizers get wrong.
bool isDenseScript(char32_t c);

} // namespace lucentra
