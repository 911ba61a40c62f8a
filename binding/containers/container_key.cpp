// Makes the key under which views keep their container alive, once a process.
#include "binding/containers/container_key.h"

PyObject* containers::container_key() {
    static PyObject* const key = PyUnicode_InternFromString("__swig_container");
    return key;
}
