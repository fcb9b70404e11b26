#pragma once

#include <tl/expected.hpp>

#include <QString>

namespace lucentra {

/// Why an operation failed, as a value.
///
/// The program acts on `domain` and `code`; `description` is the sentence for the user, in the interface language. None
/// of them ever contains a key, a URL's query, captured text or a file's content.
struct Failure
{
    QString domain;
    int code = 0;
    QString description;

    bool operator==(const Failure &) const = default;
};

/// A value, or why there is none.
template <typename Value>
using Result = tl::expected<Value, Failure>;

} // namespace lucentra
