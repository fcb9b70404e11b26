#pragma once

#include <tl/expected.hpp>

#include <QString>

namespace lucentra {

/// Why an operation failed, as a value.
///
/// `domain` and `code` are what the program acts on; `description` is the sentence for the user, already in the
/// interface language. None of them ever holds a key, a URL's query, captured text or a file's content.
struct Failure
{
    QString domain;
    int code = 0;
    QString description;

    bool operator==(const Failure &) const = default;
};

/// A value, or the reason why there is none.
template <typename Value>
using Result = tl::expected<Value, Failure>;

} // namespace lucentra
