#pragma once

/// The constants of the overlays' layout, in points unless stated otherwise. They were tuned by eye.
namespace lucentra::overlay {

/// Left free at the pane's left and right edge: the border and its glow are drawn there.
inline constexpr double edgeInset = 4.0;
/// A source line must be wider and higher than this; smaller rectangles are specks that no text would fit.
inline constexpr double minimumSourceSide = 4.0;

/// How wide an overlay may grow to keep its text on one line: this many times its source's width ...
inline constexpr double widthGrowth = 2.25;
/// ... or this much, so that a one-word source leaves room for a longer word.
inline constexpr double minimumGrownWidth = 220.0;

/// Between an overlay's edge and its text.
inline constexpr double sidePadding = 4.0;
inline constexpr double verticalPadding = 2.0;
/// Added to a measured text height: the padding above and below.
inline constexpr double verticalSlack = 2 * verticalPadding;

/// The smallest readable sizes, in the automatic mode and for a size that the user has fixed.
inline constexpr double minimumAutomaticSize = 10.0;
inline constexpr double minimumFixedSize = 12.0;
inline constexpr double maximumSize = 48.0;
/// Used if the size is fixed and none is stored.
inline constexpr double defaultFixedSize = 22.0;
/// A line's box is a little higher than the font size of its text.
inline constexpr double sizeOfSourceHeight = 0.9;
/// One line at a smaller size is better than two, down to this part of the starting size.
inline constexpr double singleLineShrink = 0.8;
/// The step between the sizes that are tried for several lines.
inline constexpr double sizeStep = 0.5;
/// More lines would hide what is around the source.
inline constexpr int maximumLines = 4;

/// The lines of a paragraph may be closer than the font's by this factor, ...
inline constexpr double tightestLines = 0.9;
/// ... and one may reach beyond the area by this part of itself, since the edges are rounded.
inline constexpr double roundingOfLines = 0.15;

/// The text's grey level (white is 1) on dark and on light ground, and its opaque shadow: offset downwards, which a
/// white one doesn't have, and the deviation of its blur.
inline constexpr float textWhite = 0.96F;
inline constexpr float textBlack = 0.07F;
inline constexpr double shadowOffset = 1.0;
inline constexpr double shadowDeviation = 2.0;

} // namespace lucentra::overlay
