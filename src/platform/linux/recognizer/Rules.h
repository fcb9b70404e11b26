#pragma once

#include <QtGlobal>

namespace lucentra {

/// Whether a rule applies. They all do, except in the benchmarks, where `benchmarks/recognition/ablate` switches off
/// one at a time to see what it earns.
#ifdef LUCENTRA_ABLATION
inline bool isOn(const char *rule)
{
    return qgetenv("LUCENTRA_WITHOUT") != rule;
}
#else
constexpr bool isOn(const char *)
{
    return true;
}
#endif

} // namespace lucentra
