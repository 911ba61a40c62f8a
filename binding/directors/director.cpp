// What a director does for its Python object, and how its exceptions become Python errors.
#include "binding/directors/director.h"

namespace Swig {

DirectorException::DirectorException(PyObject* error, char const* hdr, char const* msg) : swig_msg(hdr) {
    if (msg[0]) {
        swig_msg += ' ';
        swig_msg += msg;
    }
    if (!PyErr_Occurred())
        PyErr_SetString(error, what());
}

void DirectorException::raise(char const* msg) {
    throw DirectorException(PyExc_RuntimeError, msg, "");
}

void DirectorMethodException::raise(char const* msg) {
    throw DirectorMethodException(PyExc_RuntimeError, "SWIG director method error.", msg);
}

void DirectorTypeMismatchException::raise(PyObject* error, char const* msg) {
    throw DirectorTypeMismatchException(error, "SWIG director type mismatch", msg);
}

Director::Director(PyObject* self) noexcept : swig_self(self) {
    if (!self)
        return;
    swig_watch = runtime::KeptReference(runtime::Reference::take(PyWeakref_NewRef(self, nullptr)));
    if (!swig_watch)
        PyErr_Clear();
}

Director::~Director() = default;

bool Director::swig_is_gone() const noexcept {
    return !swig_watch.alive() || (swig_watch && PyWeakref_GET_OBJECT(swig_watch.get()) == Py_None);
}

bool Director::swig_get_inner(char const*) const {
    return true;
}

void Director::swig_set_inner(char const*, bool) const {}

void Director::swig_disown() noexcept {
    if (swig_disown_flag)
        return;
    swig_disown_flag = true;
    if (!swig_is_gone()) // flat calls may come after its end
        swig_kept = runtime::KeptReference(swig_self);
}

} // namespace Swig
