#include "read/Writing.h"

#include <algorithm>

namespace lucentra {

Scripts scriptsOf(const QString &text)
{
    Scripts scripts;
    for (const QChar c : text) {
        switch (c.script()) {
        case QChar::Script_Han:
            ++scripts.han;
            break;
        case QChar::Script_Hiragana:
        case QChar::Script_Katakana:
            ++scripts.kana;
            break;
        case QChar::Script_Hangul:
            ++scripts.hangul;
            break;
        default:
            if (c.isLetterOrNumber())
                ++scripts.latin;
        }
    }
    return scripts;
}

Writing writingOf(const QString &text)
{
    const Scripts scripts = scriptsOf(text);
    if (scripts.all() == 0)
        return Writing::None;
    if (scripts.hangul > 0)
        return Writing::Hangul;
    const int wide = scripts.kana + scripts.han;
    if (20 * scripts.kana >= 3 * wide && scripts.kana > 0)
        return Writing::Kana;
    if (scripts.han > 0)
        return Writing::Han;
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); }) ? Writing::Latin
                                                                                       : Writing::Digits;
}

} // namespace lucentra
