#pragma once

#include "Result.h"

namespace lucentra {

/// Whether the desktop starts the program at login. The desktop's own record is the only one: the user may change it
/// without the program.
class LoginItem
{
public:
    virtual ~LoginItem() = default;

    virtual bool isEnabled() const = 0;
    /// The failure's description is for the log.
    virtual Result<void> setEnabled(bool enabled) = 0;
};

} // namespace lucentra
