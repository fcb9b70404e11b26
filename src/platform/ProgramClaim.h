#pragma once

#include <functional>

namespace lucentra {

/// Makes the program the only instance in its session without a session bus: another start asks the running program to
/// show its pane.
class ProgramClaim
{
public:
    virtual ~ProgramClaim() = default;

    /// Whether another instance runs.
    virtual bool isTaken() const = 0;
    /// Asks that instance to show its pane.
    virtual void askToShow() = 0;

    /// Called when another start asks for the pane.
    std::function<void()> onShowAsked;
};

} // namespace lucentra
