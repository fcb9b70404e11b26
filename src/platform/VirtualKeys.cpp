#include "VirtualKeys.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

enum class Kind {
    Character, ///< one of `characterKeys`
    Named,
    Modifier,
};

struct KeyRow
{
    quint16 virtualKeyCode;
    quint8 xKeyCode;
    QStringView name;
    Kind kind = Kind::Named;
    QStringView toolkit{}; ///< its name in the toolkit, if that is another one
    QStringView portal{};  ///< the same in the portal
};

/// What is added to the X key code of a key that the stored numbering lacks.
constexpr quint32 unnumbered = 0x100;
constexpr quint32 firstXKeyCode = 8;
constexpr quint32 lastXKeyCode = 255;

/// Neighbouring keys, whose X key codes follow one another.
struct CharacterKeys
{
    quint8 firstXKeyCode;
    QStringView characters; ///< on American keyboards; a key is shown by the one that the layout puts there
    std::array<quint16, 13> virtualKeyCodes;
};

// X key codes are the kernel's plus 8.
constexpr CharacterKeys characterKeys[]{
    // The four rows
    {10, u"1234567890-=", {18, 19, 20, 21, 23, 22, 26, 28, 25, 29, 27, 24}},
    {24, u"QWERTYUIOP[]", {12, 13, 14, 15, 17, 16, 32, 34, 31, 35, 33, 30}},
    {38, u"ASDFGHJKL;'`", {0, 1, 2, 3, 5, 4, 38, 40, 37, 41, 39, 50}},
    {51, u"\\ZXCVBNM,./", {42, 6, 7, 8, 9, 11, 45, 46, 43, 47, 44}},
    // Those that only other keyboards have
    {94, u"<", {10}},
    {97, u"_", {0x5E}},
    {132, u"¥", {0x5D}},
    // The keypad
    {63, u"*", {0x43}},
    {79, u"789-456+1230.", {0x59, 0x5B, 0x5C, 0x4E, 0x56, 0x57, 0x58, 0x45, 0x53, 0x54, 0x55, 0x52, 0x41}},
    {106, u"/", {0x4B}},
    {125, u"=", {0x51}},
    {129, u",", {0x5F}},
};

constexpr KeyRow otherKeys[]{
    // Around the characters
    {0x24, 36, u"↩", Kind::Named, u"Return", u"Return"},
    {0x30, 23, u"⇥", Kind::Named, u"Tab", u"Tab"},
    {0x31, 65, u"Space", Kind::Named, u"Space", u"space"},
    {0x33, 22, u"⌫", Kind::Named, u"Backspace", u"BackSpace"},
    {0x35, 9, u"⎋", Kind::Named, u"Esc", u"Escape"},
    {0x6E, 135, u"Menu"},
    {0x37, 133, u"⌘", Kind::Modifier},
    {0x36, 134, u"⌘", Kind::Modifier},
    {0x38, 50, u"⇧", Kind::Modifier},
    {0x3C, 62, u"⇧", Kind::Modifier},
    {0x3A, 64, u"⌥", Kind::Modifier},
    {0x3D, 108, u"⌥", Kind::Modifier},
    {0x3B, 37, u"⌃", Kind::Modifier},
    {0x3E, 105, u"⌃", Kind::Modifier},
    {0x39, 66, u"⇪", Kind::Modifier},
    {0x66, 131, u"Eisu"},
    {0x68, 130, u"Kana"}, // the two language keys, also Hanja and Hangul

    // Function keys
    {0x7A, 67, u"F1"},
    {0x78, 68, u"F2"},
    {0x63, 69, u"F3"},
    {0x76, 70, u"F4"},
    {0x60, 71, u"F5"},
    {0x61, 72, u"F6"},
    {0x62, 73, u"F7"},
    {0x64, 74, u"F8"},
    {0x65, 75, u"F9"},
    {0x6D, 76, u"F10"},
    {0x67, 95, u"F11"},
    {0x6F, 96, u"F12"},
    {0x69, 191, u"F13"},
    {0x6B, 192, u"F14"},
    {0x71, 193, u"F15"},
    {0x6A, 194, u"F16"},
    {0x40, 195, u"F17"},
    {0x4F, 196, u"F18"},
    {0x50, 197, u"F19"},
    {0x5A, 198, u"F20"},
    {unnumbered + 199, 199, u"F21"},
    {unnumbered + 200, 200, u"F22"},
    {unnumbered + 201, 201, u"F23"},
    {unnumbered + 202, 202, u"F24"},
    {unnumbered + 107, 107, u"Print"},
    {unnumbered + 78, 78, u"Scroll Lock"},
    {unnumbered + 127, 127, u"Pause"},

    // The block of the arrows
    {0x72, 118, u"Insert", Kind::Named, u"Ins", u"Insert"},
    {0x75, 119, u"⌦", Kind::Named, u"Del", u"Delete"},
    {0x73, 110, u"Home"},
    {0x77, 115, u"End"},
    {0x74, 112, u"Page Up", Kind::Named, u"PgUp", u"Page_Up"},
    {0x79, 117, u"Page Down", Kind::Named, u"PgDown", u"Page_Down"},
    {0x7B, 113, u"←", Kind::Named, u"Left", u"Left"},
    {0x7C, 114, u"→", Kind::Named, u"Right", u"Right"},
    {0x7D, 116, u"↓", Kind::Named, u"Down", u"Down"},
    {0x7E, 111, u"↑", Kind::Named, u"Up", u"Up"},

    // The keypad
    {0x47, 77, u"Num Lock", Kind::Modifier},
    {0x4C, 104, u"⌅", Kind::Named, u"Enter", u"KP_Enter"},

    // Sound
    {0x48, 123, u"Volume Up"},
    {0x49, 122, u"Volume Down"},
    {0x4A, 121, u"Mute"},
};

/// All keys.
const std::vector<KeyRow> &keyRows()
{
    static const std::vector<KeyRow> rows = [] {
        std::vector<KeyRow> all(std::begin(otherKeys), std::end(otherKeys));
        for (const CharacterKeys &keys : characterKeys) {
            for (qsizetype i = 0; i < keys.characters.size(); ++i)
                all.push_back({keys.virtualKeyCodes[size_t(i)], quint8(keys.firstXKeyCode + i),
                               keys.characters.sliced(i, 1), Kind::Character});
        }
        return all;
    }();
    return rows;
}

const KeyRow *rowOfVirtualKey(quint32 virtualKeyCode)
{
    const auto row = std::find_if(keyRows().begin(), keyRows().end(),
                                  [=](const KeyRow &each) { return each.virtualKeyCode == virtualKeyCode; });
    return row == keyRows().end() ? nullptr : &*row;
}

struct ModifierRow
{
    quint32 flag;
    quint32 hotkeyModifier;
    QChar symbol;
    QStringView desktopName;
};

/// In the order in which they are shown.
constexpr std::array modifierRows{
    ModifierRow{modifierFlag::control, hotkeyModifier::control, u'⌃', u"Ctrl+"},
    ModifierRow{modifierFlag::option, hotkeyModifier::option, u'⌥', u"Alt+"},
    ModifierRow{modifierFlag::shift, hotkeyModifier::shift, u'⇧', u"Shift+"},
    ModifierRow{modifierFlag::command, hotkeyModifier::command, u'⌘', u"Meta+"},
};

QString keyName(const QString &name, QStringView KeyRow::*column)
{
    const auto row = std::find_if(std::begin(otherKeys), std::end(otherKeys),
                                  [&](const KeyRow &each) { return each.name == name && !(each.*column).isEmpty(); });
    return row == std::end(otherKeys) ? name : (row->*column).toString();
}

char32_t lastCodePoint(QStringView text)
{
    const QChar last = text.back();
    if (text.size() > 1 && last.isLowSurrogate() && text[text.size() - 2].isHighSurrogate())
        return QChar::surrogateToUcs4(text[text.size() - 2], last);
    return last.unicode();
}

QString textOf(char32_t codePoint)
{
    return QString::fromUcs4(&codePoint, 1);
}

} // namespace

quint32 hotkeyModifiersOfFlags(quint64 flags)
{
    quint32 modifiers = 0;
    for (const ModifierRow &row : modifierRows) {
        if (flags & row.flag)
            modifiers |= row.hotkeyModifier;
    }
    return modifiers;
}

std::optional<quint8> xKeyCodeOfVirtualKey(quint32 virtualKeyCode)
{
    if (const KeyRow *row = rowOfVirtualKey(virtualKeyCode))
        return row->xKeyCode;
    const quint32 xKeyCode = virtualKeyCode - unnumbered; // wraps around below: then it is no key code either
    if (xKeyCode > lastXKeyCode || virtualKeyOfXKeyCode(xKeyCode) != virtualKeyCode)
        return std::nullopt;
    return quint8(xKeyCode);
}

std::optional<quint32> virtualKeyOfXKeyCode(quint32 xKeyCode)
{
    if (xKeyCode < firstXKeyCode || xKeyCode > lastXKeyCode)
        return std::nullopt;
    const auto row =
        std::find_if(keyRows().begin(), keyRows().end(), [=](const KeyRow &each) { return each.xKeyCode == xKeyCode; });
    return row == keyRows().end() ? unnumbered + xKeyCode : row->virtualKeyCode;
}

bool isModifierKey(quint32 virtualKeyCode)
{
    const KeyRow *row = rowOfVirtualKey(virtualKeyCode);
    return row && row->kind == Kind::Modifier;
}

QString virtualKeyName(quint32 virtualKeyCode)
{
    const KeyRow *row = rowOfVirtualKey(virtualKeyCode);
    return row && row->kind != Kind::Character ? row->name.toString() : QString();
}

QString americanKeyLabel(quint32 virtualKeyCode)
{
    const KeyRow *row = rowOfVirtualKey(virtualKeyCode);
    return row ? row->name.toString() : QString();
}

QString modifierNames(quint32 hotkeyModifiers)
{
    QString names;
    for (const ModifierRow &row : modifierRows) {
        if (hotkeyModifiers & row.hotkeyModifier)
            names += row.desktopName;
    }
    return names;
}

QString toolkitKeyName(const QString &name)
{
    return keyName(name, &KeyRow::toolkit);
}

QString portalKeyName(const QString &name)
{
    return keyName(name, &KeyRow::portal);
}

QString hotkeyDisplayString(quint32 flags, const QString &key)
{
    if (key.isEmpty())
        return {};
    QString combination;
    for (const ModifierRow &row : modifierRows) {
        if (flags & row.flag)
            combination += row.symbol;
    }
    const char32_t character = lastCodePoint(key);
    const QString characterAlone = textOf(character);
    return combination + (key == characterAlone ? textOf(QChar::toUpper(character)) : key);
}

QString desktopNameOfHotkey(const QString &combination)
{
    QString name;
    QStringView key = combination;
    for (const ModifierRow &row : modifierRows) {
        if (!key.startsWith(row.symbol))
            continue;
        name += row.desktopName;
        key = key.sliced(1);
    }
    return name + key.toString();
}

QString menuKeyOfDisplayString(const QString &combination)
{
    if (combination.isEmpty())
        return u"t"_s;
    const auto isSymbol = [](QChar character) {
        return std::any_of(modifierRows.begin(), modifierRows.end(),
                           [=](const ModifierRow &row) { return row.symbol == character; });
    };
    const auto keyStart = std::find_if_not(combination.begin(), combination.end(), isSymbol);
    const QStringView key(keyStart, combination.end());
    const bool isName = std::any_of(std::begin(otherKeys), std::end(otherKeys),
                                    [=](const KeyRow &row) { return row.kind == Kind::Named && row.name == key; });
    if (isName)
        return key.toString();
    const char32_t shown = lastCodePoint(combination);
    const char32_t lower = QChar::toLower(shown);
    // A letter that isn't its small letter's capital ("İ") stays, or a menu would show another one ("I").
    return textOf(QChar::toUpper(lower) == QChar::toUpper(shown) ? lower : shown);
}

} // namespace lucentra
