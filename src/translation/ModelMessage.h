#pragma once

#include <QString>

namespace lucentra {

/// What a language model is told, whichever it is.
struct ModelMessage
{
    QString instruction;       ///< for the service's system or instruction field
    QString userText;          ///< the batch of blocks or the typed text
    bool isStructured = false; ///< the answer shall be JSON
};

} // namespace lucentra
