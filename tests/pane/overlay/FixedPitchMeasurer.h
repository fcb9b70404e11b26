#pragma once

#include "OverlayFit.h"

#include <algorithm>
#include <cmath>

namespace lucentra {

/// Measures that can be worked out by hand: each character is half an em wide, a line is 1.2 em high, and lines break
/// between any two characters.
class FixedPitchMeasurer : public OverlayTextMeasurer
{
public:
    SingleLineMeasure measureSingleLine(const QString &text, double fontSize) override
    {
        return {std::ceil(1.2 * fontSize), std::ceil(0.5 * fontSize * double(text.size()))};
    }

    double boundingHeight(const QString &text, double width, double fontSize, double) override
    {
        const double perLine = std::max(1.0, std::floor(width / (0.5 * fontSize)));
        return std::ceil(double(text.size()) / perLine) * 1.2 * fontSize;
    }
};

} // namespace lucentra
