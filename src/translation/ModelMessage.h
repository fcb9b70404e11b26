#pragma once

#include <QString>

namespace lucentra {

/// A message to a language model.
struct ModelMessage
{
    QString instruction;       ///< for the service's system or instruction field
    QString userText;          ///< the batch of blocks or the typed text
    bool isStructured = false; ///< the answer must be JSON
};

} // namespace lucentra
