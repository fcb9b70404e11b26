#pragma once

namespace lucentra {

/// The maximum length of a language model's answer in tokens and its temperature, for every service with these options.
inline constexpr int mostOutputTokens = 8192;
inline constexpr double batchTemperature = 0.1;

} // namespace lucentra
