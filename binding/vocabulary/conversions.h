// Conversions of text arguments into native strings.
#pragma once

#include "binding/vocabulary/record.h"

namespace vocabulary {

extern Conversion const std_string_conversion;
extern Conversion const hyx_string_conversion;

// Specialised (value: a pointer to a Conversion) for every class that is made from a Python iterable.
template <class T>
inline constexpr Conversion const* sequence_conversion = nullptr;

} // namespace vocabulary
