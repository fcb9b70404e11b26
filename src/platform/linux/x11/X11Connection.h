#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace lucentra {

struct FreeDeleter
{
    void operator()(void *memory) const { std::free(memory); }
};

/// An answer of the X server; freed with its owner.
template <typename Reply>
using X11Reply = std::unique_ptr<Reply, FreeDeleter>;

struct X11Disconnect
{
    void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
};

/// A private connection to the X server. Closing it frees every resource that was made on it.
using X11Connection = std::unique_ptr<xcb_connection_t, X11Disconnect>;

} // namespace lucentra
