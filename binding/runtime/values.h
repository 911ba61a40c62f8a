// Conversion of plain values: numbers, booleans and text. The routines return a status code of status.h; a NULL
// destination only asks whether the value converts. Failures leave no exception pending, except that a str which
// cannot be encoded leaves the interpreter's encoding error beneath the caller's message.
#pragma once

#include "binding/runtime/status.h"

#include <Python.h>

#include <string>
#include <string_view>

int SWIG_AsVal_long(PyObject* obj, long* val) noexcept;
int SWIG_AsVal_unsigned_SS_long(PyObject* obj, unsigned long* val) noexcept;
// An int too large for a double is a type error, not an overflow.
int SWIG_AsVal_double(PyObject* obj, double* val) noexcept;
// Infinities and NaN pass; a finite value beyond single precision is an overflow.
int SWIG_AsVal_float(PyObject* obj, float* val) noexcept;
// Only True and False convert.
int SWIG_AsVal_bool(PyObject* obj, bool* val) noexcept;

// A str's own UTF-8 buffer (borrowed, valid as long as obj lives), or a wrapped char pointer. *alloc is always 0.
int SWIG_AsCharPtrAndSize(PyObject* obj, char** cptr, std::size_t* psize, int* alloc) noexcept;
// SWIG_NEWOBJ: *val is a new string that the caller deletes. 0: *val is a wrapped string, or NULL.
int SWIG_AsPtr_std_string(PyObject* obj, std::string** val) noexcept;

// Text decoded as UTF-8 with undecodable bytes kept as lone surrogates.
PyObject* SWIG_FromCharPtrAndSize(char const* text, std::size_t size) noexcept;
// The same for zero-terminated text; None for NULL.
PyObject* SWIG_FromCharPtr(char const* text) noexcept;
PyObject* SWIG_From_unsigned_SS_long(unsigned long value) noexcept;
