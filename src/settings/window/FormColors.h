#pragma once

#include <QPalette>

class QLabel;

namespace lucentra {

/// The meaning of a line of the form. Each has a colour that is readable on the palette's background.
enum class Tone { Quiet, Good, Warning, Bad };

/// Sets a label's colour for the application's current palette.
void setTone(QLabel &label, Tone tone);

} // namespace lucentra
