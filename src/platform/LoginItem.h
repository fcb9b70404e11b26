#pragma once

#include "Result.h"

namespace lucentra {

/// The desktop's record of whether it starts the program at login. There is no other record: the user may change it
/// behind the program's back. Main thread only.
class LoginItem
{
public:
    virtual ~LoginItem() = default;

    virtual bool isEnabled() const = 0;
    /// A failure's description says why, for the log.
    virtual Result<void> setEnabled(bool enabled) = 0;
};

} // namespace lucentra
