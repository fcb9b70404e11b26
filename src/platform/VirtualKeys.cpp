#include "VirtualKeys.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

enum class Kind {
    Character, ///< shown by the character that the layout puts there; its name is the one on American keyboards
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

// X key codes are the kernel's plus 8.
constexpr std::array keyRows{
    // Letters, digits and signs
    KeyRow{0, 38, u"A", Kind::Character},
    KeyRow{1, 39, u"S", Kind::Character},
    KeyRow{2, 40, u"D", Kind::Character},
    KeyRow{3, 41, u"F", Kind::Character},
    KeyRow{4, 43, u"H", Kind::Character},
    KeyRow{5, 42, u"G", Kind::Character},
    KeyRow{6, 52, u"Z", Kind::Character},
    KeyRow{7, 53, u"X", Kind::Character},
    KeyRow{8, 54, u"C", Kind::Character},
    KeyRow{9, 55, u"V", Kind::Character},
    KeyRow{10, 94, u"<", Kind::Character},
    KeyRow{11, 56, u"B", Kind::Character},
    KeyRow{12, 24, u"Q", Kind::Character},
    KeyRow{13, 25, u"W", Kind::Character},
    KeyRow{14, 26, u"E", Kind::Character},
    KeyRow{15, 27, u"R", Kind::Character},
    KeyRow{16, 29, u"Y", Kind::Character},
    KeyRow{17, 28, u"T", Kind::Character},
    KeyRow{18, 10, u"1", Kind::Character},
    KeyRow{19, 11, u"2", Kind::Character},
    KeyRow{20, 12, u"3", Kind::Character},
    KeyRow{21, 13, u"4", Kind::Character},
    KeyRow{22, 15, u"6", Kind::Character},
    KeyRow{23, 14, u"5", Kind::Character},
    KeyRow{24, 21, u"=", Kind::Character},
    KeyRow{25, 18, u"9", Kind::Character},
    KeyRow{26, 16, u"7", Kind::Character},
    KeyRow{27, 20, u"-", Kind::Character},
    KeyRow{28, 17, u"8", Kind::Character},
    KeyRow{29, 19, u"0", Kind::Character},
    KeyRow{30, 35, u"]", Kind::Character},
    KeyRow{31, 32, u"O", Kind::Character},
    KeyRow{32, 30, u"U", Kind::Character},
    KeyRow{33, 34, u"[", Kind::Character},
    KeyRow{34, 31, u"I", Kind::Character},
    KeyRow{35, 33, u"P", Kind::Character},
    KeyRow{37, 46, u"L", Kind::Character},
    KeyRow{38, 44, u"J", Kind::Character},
    KeyRow{39, 48, u"'", Kind::Character},
    KeyRow{40, 45, u"K", Kind::Character},
    KeyRow{41, 47, u";", Kind::Character},
    KeyRow{42, 51, u"\\", Kind::Character},
    KeyRow{43, 59, u",", Kind::Character},
    KeyRow{44, 61, u"/", Kind::Character},
    KeyRow{45, 57, u"N", Kind::Character},
    KeyRow{46, 58, u"M", Kind::Character},
    KeyRow{47, 60, u".", Kind::Character},
    KeyRow{50, 49, u"`", Kind::Character},
    KeyRow{0x5D, 132, u"¥", Kind::Character},
    KeyRow{0x5E, 97, u"_", Kind::Character},

    // Around them
    KeyRow{0x24, 36, u"↩", Kind::Named, u"Return", u"Return"},
    KeyRow{0x30, 23, u"⇥", Kind::Named, u"Tab", u"Tab"},
    KeyRow{0x31, 65, u"Space", Kind::Named, u"Space", u"space"},
    KeyRow{0x33, 22, u"⌫", Kind::Named, u"Backspace", u"BackSpace"},
    KeyRow{0x35, 9, u"⎋", Kind::Named, u"Esc", u"Escape"},
    KeyRow{0x6E, 135, u"Menu"},
    KeyRow{0x37, 133, u"⌘", Kind::Modifier},
    KeyRow{0x36, 134, u"⌘", Kind::Modifier},
    KeyRow{0x38, 50, u"⇧", Kind::Modifier},
    KeyRow{0x3C, 62, u"⇧", Kind::Modifier},
    KeyRow{0x3A, 64, u"⌥", Kind::Modifier},
    KeyRow{0x3D, 108, u"⌥", Kind::Modifier},
    KeyRow{0x3B, 37, u"⌃", Kind::Modifier},
    KeyRow{0x3E, 105, u"⌃", Kind::Modifier},
    KeyRow{0x39, 66, u"⇪", Kind::Modifier},
    KeyRow{0x66, 131, u"Eisu"},
    KeyRow{0x68, 130, u"Kana"}, // the two language keys, also Hanja and Hangul

    // Function keys
    KeyRow{0x7A, 67, u"F1"},
    KeyRow{0x78, 68, u"F2"},
    KeyRow{0x63, 69, u"F3"},
    KeyRow{0x76, 70, u"F4"},
    KeyRow{0x60, 71, u"F5"},
    KeyRow{0x61, 72, u"F6"},
    KeyRow{0x62, 73, u"F7"},
    KeyRow{0x64, 74, u"F8"},
    KeyRow{0x65, 75, u"F9"},
    KeyRow{0x6D, 76, u"F10"},
    KeyRow{0x67, 95, u"F11"},
    KeyRow{0x6F, 96, u"F12"},
    KeyRow{0x69, 191, u"F13"},
    KeyRow{0x6B, 192, u"F14"},
    KeyRow{0x71, 193, u"F15"},
    KeyRow{0x6A, 194, u"F16"},
    KeyRow{0x40, 195, u"F17"},
    KeyRow{0x4F, 196, u"F18"},
    KeyRow{0x50, 197, u"F19"},
    KeyRow{0x5A, 198, u"F20"},
    KeyRow{unnumbered + 199, 199, u"F21"},
    KeyRow{unnumbered + 200, 200, u"F22"},
    KeyRow{unnumbered + 201, 201, u"F23"},
    KeyRow{unnumbered + 202, 202, u"F24"},
    KeyRow{unnumbered + 107, 107, u"Print"},
    KeyRow{unnumbered + 78, 78, u"Scroll Lock"},
    KeyRow{unnumbered + 127, 127, u"Pause"},

    // The block of the arrows
    KeyRow{0x72, 118, u"Insert", Kind::Named, u"Ins", u"Insert"},
    KeyRow{0x75, 119, u"⌦", Kind::Named, u"Del", u"Delete"},
    KeyRow{0x73, 110, u"Home"},
    KeyRow{0x77, 115, u"End"},
    KeyRow{0x74, 112, u"Page Up", Kind::Named, u"PgUp", u"Page_Up"},
    KeyRow{0x79, 117, u"Page Down", Kind::Named, u"PgDown", u"Page_Down"},
    KeyRow{0x7B, 113, u"←", Kind::Named, u"Left", u"Left"},
    KeyRow{0x7C, 114, u"→", Kind::Named, u"Right", u"Right"},
    KeyRow{0x7D, 116, u"↓", Kind::Named, u"Down", u"Down"},
    KeyRow{0x7E, 111, u"↑", Kind::Named, u"Up", u"Up"},

    // The keypad
    KeyRow{0x47, 77, u"Num Lock", Kind::Modifier},
    KeyRow{0x4B, 106, u"/", Kind::Character},
    KeyRow{0x43, 63, u"*", Kind::Character},
    KeyRow{0x4E, 82, u"-", Kind::Character},
    KeyRow{0x45, 86, u"+", Kind::Character},
    KeyRow{0x4C, 104, u"⌅", Kind::Named, u"Enter", u"KP_Enter"},
    KeyRow{0x51, 125, u"=", Kind::Character},
    KeyRow{0x41, 91, u".", Kind::Character},
    KeyRow{0x5F, 129, u",", Kind::Character},
    KeyRow{0x52, 90, u"0", Kind::Character},
    KeyRow{0x53, 87, u"1", Kind::Character},
    KeyRow{0x54, 88, u"2", Kind::Character},
    KeyRow{0x55, 89, u"3", Kind::Character},
    KeyRow{0x56, 83, u"4", Kind::Character},
    KeyRow{0x57, 84, u"5", Kind::Character},
    KeyRow{0x58, 85, u"6", Kind::Character},
    KeyRow{0x59, 79, u"7", Kind::Character},
    KeyRow{0x5B, 80, u"8", Kind::Character},
    KeyRow{0x5C, 81, u"9", Kind::Character},

    // Sound
    KeyRow{0x48, 123, u"Volume Up"},
    KeyRow{0x49, 122, u"Volume Down"},
    KeyRow{0x4A, 121, u"Mute"},
};

const KeyRow *rowOfVirtualKey(quint32 virtualKeyCode)
{
    const auto row = std::find_if(keyRows.begin(), keyRows.end(),
                                  [=](const KeyRow &each) { return each.virtualKeyCode == virtualKeyCode; });
    return row == keyRows.end() ? nullptr : &*row;
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
    const auto row = std::find_if(keyRows.begin(), keyRows.end(),
                                  [&](const KeyRow &each) { return each.name == name && !(each.*column).isEmpty(); });
    return row == keyRows.end() ? name : (row->*column).toString();
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
        std::find_if(keyRows.begin(), keyRows.end(), [=](const KeyRow &each) { return each.xKeyCode == xKeyCode; });
    return row == keyRows.end() ? unnumbered + xKeyCode : row->virtualKeyCode;
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
    const bool isName = std::any_of(keyRows.begin(), keyRows.end(),
                                    [=](const KeyRow &row) { return row.kind == Kind::Named && row.name == key; });
    if (isName)
        return key.toString();
    const char32_t shown = lastCodePoint(combination);
    const char32_t lower = QChar::toLower(shown);
    // A letter that isn't its small letter's capital ("İ") stays, or a menu would show another one ("I").
    return textOf(QChar::toUpper(lower) == QChar::toUpper(shown) ? lower : shown);
}

} // namespace lucentra
