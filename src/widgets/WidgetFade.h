#pragma once

#include <chrono>
#include <functional>

class QWidget;

namespace lucentra {

/// Animates a widget's opacity (0 to 1), and then calls `done`, which may be empty. Ends silently if the widget is
/// deleted.
void fadeWidget(QWidget &widget, double from, double to, std::chrono::milliseconds duration,
                std::function<void()> done);

} // namespace lucentra
