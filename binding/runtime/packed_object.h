// The Python object that carries a copy of a small block of native bytes, such as a member pointer.
#pragma once

#include "binding/runtime/type_records.h"

#include <Python.h>

struct SwigPyPacked {
    PyObject_HEAD void* pack; // heap copy of the bytes, owned
    swig_type_info* ty;       // descriptor of the packed value
    std::uint64_t size;       // number of bytes
};

static_assert(offsetof(SwigPyPacked, pack) == 16);
static_assert(offsetof(SwigPyPacked, ty) == 24);
static_assert(offsetof(SwigPyPacked, size) == 32);

// The type object (borrowed), created on first use and kept for the life of the process.
PyTypeObject* SwigPyPacked_type() noexcept;

// A new object with a copy of the bytes; None for a NULL source; NULL without an error when memory is short.
PyObject* SwigPyPacked_Create(void const* bytes, std::size_t size, swig_type_info* ty) noexcept;

namespace runtime {

// "_" and the bytes in memory order, two lowercase hexadecimal digits each. out needs 1 + 2 * size characters; the
// end of what was written is returned.
char* encode_bytes(char* out, void const* bytes, std::size_t size) noexcept;

} // namespace runtime
