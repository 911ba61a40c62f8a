// Vectors of which the processor works out all parts at once.
#pragma once

#include <LinearMath/btVector3.h>

/// Before a function: it exists twice, and the processor at hand decides. What it calls is to be `HYX_INLINED`.
#if defined(__x86_64__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__)
#define HYX_WIDE_LANES __attribute__((target_clones("arch=x86-64-v3", "default")))
#else
#define HYX_WIDE_LANES
#endif
#define HYX_INLINED __attribute__((always_inline)) inline

namespace hyx {

/// The fourth part takes part, and counts for nothing.
using Lanes = double __attribute__((vector_size(32), aligned(8), may_alias));

HYX_INLINED Lanes const& lanes(btVector3 const& vector) {
    return reinterpret_cast<Lanes const&>(vector);
}

HYX_INLINED Lanes& lanes(btVector3& vector) {
    return reinterpret_cast<Lanes&>(vector);
}

HYX_INLINED double dot(Lanes const& first, Lanes const& second) {
    Lanes const parts = first * second;
    return parts[0] + parts[1] + parts[2];
}

HYX_INLINED double dot(btVector3 const& first, btVector3 const& second) {
    return dot(lanes(first), lanes(second));
}

} // namespace hyx
