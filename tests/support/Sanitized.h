#pragma once

namespace lucentra {

/// Whether the program is built with the address sanitizer, which multiplies the costs of what only concerns time and
/// memory.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
inline constexpr bool isSanitized = true;
#else
inline constexpr bool isSanitized = false;
#endif
#else
inline constexpr bool isSanitized = false;
#endif

} // namespace lucentra
