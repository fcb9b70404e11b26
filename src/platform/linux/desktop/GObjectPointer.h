#pragma once

#include "Owned.h"

#include <gio/gio.h>

namespace lucentra {

/// Owns one reference of a GObject.
template <typename Object>
using GObjectPointer = Owned<Object, g_object_unref>;

} // namespace lucentra
