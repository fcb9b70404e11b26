#pragma once

namespace lucentra {

/// The radius of the pane's rounded corners, in points.
inline constexpr double paneCornerRadius = 16.0;

} // namespace lucentra
