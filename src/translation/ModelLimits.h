#pragma once

namespace lucentra {

/// How long an answer of a language model may become, in tokens, and how freely it may choose its words: the same for
/// every service that can be told.
inline constexpr int mostOutputTokens = 8192;
inline constexpr double batchTemperature = 0.1;

} // namespace lucentra
