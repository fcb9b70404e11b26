#pragma once

#include <memory>

namespace lucentra {

template <auto release>
struct Release
{
    void operator()(auto *object) const { release(object); }
};

/// Owns an object of a C library, which the library's function `release` frees.
template <typename Object, auto release>
using Owned = std::unique_ptr<Object, Release<release>>;

} // namespace lucentra
