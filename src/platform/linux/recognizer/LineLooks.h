#pragma once

#include "LineNormalizer.h"

namespace lucentra {

/// The writing that a line looks to be in, before anybody has read it.
enum class LineLooks { Latin, Kana, Ideographs };

/// Judges a strip by its strokes: ideographs have many of them one above another, Latin letters have most of their ink
/// between two heights, kana are light. For lines of a dozen letters and more it is right 99 times of 100, for words 19
/// times of 20; Korean looks like ideographs. It decides only who reads first. `strip` is 36 pixels high. Any thread.
LineLooks looksOf(const Strip &strip);

} // namespace lucentra
