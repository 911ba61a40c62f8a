// From native exceptions to Python errors. Each translator is called inside a handler, looks at the exception in
// flight, and leaves a Python error.
#pragma once

#include <string_view>

namespace vocabulary {

// RuntimeError with what(), or "Unknown exception"; that of a std::system_error has `errno`, `strerror` and `filename`,
// that of a std::invalid_argument or std::out_of_range has `meant`, the type for it in Python (see python/support).
// A Python error that is pending already (a script that the native side ran has failed) is kept.
void translate_native_exception();

// Sequences: std::out_of_range is IndexError, std::invalid_argument ValueError; else as translate_native_exception.
void translate_container_exception();

// Methods of director classes: a Swig::DirectorException leaves the Python error that caused it.
void translate_director_exception();

// Listener-style methods report the exception as a notification of level 4 and raise nothing themselves; the Python
// error that a director raised stays set. name is the Python name, source the interface source that declares the
// method.
void report_listener_exception(std::string_view name, int line, std::string_view source);

} // namespace vocabulary
