// Python's slice objects as arguments.
#pragma once

#include <Python.h>

// The declared type of a slice parameter, as the prototypes show it.
using SWIGPY_SLICEOBJECT = PySliceObject;

namespace swig {

// Start, stop and step of a slice of a sequence of some size, not yet cut to it: only negative ones are counted from
// the end. False with a Python error set when they are no integers or the step is 0.
struct SliceIndices {
    Py_ssize_t start = 0;
    Py_ssize_t stop = 0;
    Py_ssize_t step = 1;

    template <class Sequence> bool read(SWIGPY_SLICEOBJECT * slice, Sequence const & sequence)
    {
        // Unpacking can run Python code, so the size is asked for afterwards.
        if (PySlice_Unpack(reinterpret_cast<PyObject *>(slice), &start, &stop, &step) < 0)
            return false;
        auto const size = static_cast<Py_ssize_t>(sequence.size());
        start += start < 0 ? size : 0;
        stop += stop < 0 ? size : 0;
        return true;
    }
};

}
