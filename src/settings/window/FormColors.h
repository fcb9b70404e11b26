#pragma once

#include <QPalette>

class QLabel;

namespace lucentra {

/// What a line of the form says: each has a colour that can be read on the palette's own background.
enum class Tone { Quiet, Good, Warning, Bad };

/// Colours a label for the application's present palette.
void setTone(QLabel &label, Tone tone);

} // namespace lucentra
