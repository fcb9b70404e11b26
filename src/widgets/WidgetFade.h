#pragma once

#include <chrono>
#include <functional>

class QWidget;

namespace lucentra {

/// Lets a widget appear or disappear between two opacities (0 to 1), and then calls `done` where it is set. Ends
/// silently where the widget goes meanwhile.
void fadeWidget(QWidget &widget, double from, double to, std::chrono::milliseconds duration,
                std::function<void()> done);

} // namespace lucentra
