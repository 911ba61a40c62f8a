// Conversions of text arguments into native strings.
#pragma once

#include "binding/vocabulary/record.h"

namespace vocabulary {

// A status code, and a string that release_std_string gives back.
int convert_std_string(PyObject* object, void** result);
void release_std_string(void* text);

extern Conversion const std_string_conversion;
extern Conversion const hyx_string_conversion;

// Specialised (value: a pointer to a Conversion) for every class that is made from a Python iterable.
template <class T>
inline constexpr Conversion const* sequence_conversion = nullptr;

} // namespace vocabulary
