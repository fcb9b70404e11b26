#pragma once

#include <QString>

namespace lucentra {

/// How many letters of each kind a text has.
struct Scripts
{
    int latin = 0; // letters and digits
    int kana = 0;
    int han = 0;
    int hangul = 0;

    int wide() const { return kana + han + hangul; }
    int all() const { return latin + wide(); }
};

Scripts scriptsOf(const QString &text);

/// The writing of a text, as far as it decides who reads it.
enum class Writing { None, Digits, Latin, Kana, Han, Hangul };

Writing writingOf(const QString &text);

} // namespace lucentra
