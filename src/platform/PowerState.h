#pragma once

#include <functional>

namespace lucentra {

/// Whether the computer has to save power.
class PowerState
{
public:
    virtual ~PowerState() = default;

    /// Whether it runs on battery, or the user has chosen to save power. False if unknown.
    virtual bool isSaving() = 0;
    /// Calls the handler when that changes; replaces the previous handler. Main thread.
    virtual void setChangeHandler(std::function<void()> changed) = 0;
};

} // namespace lucentra
