// Status codes of the conversions, shared by the whole family.
#pragma once

enum SwigStatus : int {
    SWIG_OK = 0,
    SWIG_ERROR = -1,
    SWIG_IOError = -2,
    SWIG_RuntimeError = -3,
    SWIG_IndexError = -4,
    SWIG_TypeError = -5,
    SWIG_DivisionByZero = -6,
    SWIG_OverflowError = -7,
    SWIG_SyntaxError = -8,
    SWIG_ValueError = -9,
    SWIG_SystemError = -10,
    SWIG_AttributeError = -11,
    SWIG_MemoryError = -12,
    SWIG_NullReferenceError = -13,
    // Code of the user that the conversion ran has raised: its error is set, and stays.
    SWIG_UserError = -100,
    // Success, and the destination holds a new native object that the caller deletes after use.
    SWIG_NEWOBJ = 512,
};

// Bits of the ownership out-value of a pointer conversion.
enum SwigOwnership : int {
    SWIG_POINTER_OWN = 1,     // the Python object owned the native one
    SWIG_CAST_NEW_MEMORY = 2, // the cast made a temporary that the caller deletes
};

// A failed conversion without a more specific code counts as a wrong type.
constexpr int argument_error(int status) noexcept {
    return status == SWIG_ERROR ? int(SWIG_TypeError) : status;
}
