#include "directors/director.h"

namespace Swig {

DirectorException::DirectorException(PyObject *error, const char *hdr, const char *msg) : swig_msg(hdr)
{
    if (msg[0]) {
        swig_msg += ' ';
        swig_msg += msg;
    }
    if (!PyErr_Occurred())
        PyErr_SetString(error, what());
}

void DirectorException::raise(const char *msg) { throw DirectorException(PyExc_RuntimeError, msg, ""); }

void DirectorMethodException::raise(const char *msg)
{
    throw DirectorMethodException(PyExc_RuntimeError, "SWIG director method error.", msg);
}

void DirectorTypeMismatchException::raise(PyObject *error, const char *msg)
{
    throw DirectorTypeMismatchException(error, "SWIG director type mismatch", msg);
}

Director::~Director()
{
    if (swig_disown_flag)
        Py_DECREF(swig_self);
}

bool Director::swig_get_inner(const char *) const { return true; }

void Director::swig_set_inner(const char *, bool) const {}

void Director::swig_disown() noexcept
{
    if (swig_disown_flag)
        return;
    swig_disown_flag = true;
    Py_INCREF(swig_self);
}

} // namespace Swig
