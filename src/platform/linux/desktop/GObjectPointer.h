#pragma once

#include <gio/gio.h>

#include <memory>

namespace lucentra {

struct GObjectRelease
{
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// Owns one reference of a GObject.
template <typename Object>
using GObjectPointer = std::unique_ptr<Object, GObjectRelease>;

} // namespace lucentra
