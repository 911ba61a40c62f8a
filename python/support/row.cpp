// Finding the record that belongs to a flat function: it has the same index as its method-table row.
#include "python/support/row.h"

#include "python/support/keywords.h"
#include "python/support/shown.h"

#include <algorithm>
#include <cerrno>
#include <string_view>

namespace proxy {

namespace {

// The attribute in the error's own dictionary; a new reference, or null without an error.
PyObject* attribute(PyObject* error, char const* name) {
    PyObject* found = PyObject_GetAttrString(error, name);
    if (!found)
        PyErr_Clear();
    return found;
}

PyObject *argument_error, *place_error; // owned by the module for good

PyObject* new_error(char const* name, PyObject* kind, char const* text) {
    PyObject* bases = PyTuple_Pack(2, kind, PyExc_RuntimeError);
    PyObject* error = bases ? PyErr_NewExceptionWithDoc(name, text, bases, nullptr) : nullptr;
    Py_XDECREF(bases);
    return error;
}

// Of an error number; a new reference. The RuntimeError, which tells what was being done, becomes its cause.
PyObject* system_error(PyObject* error, PyObject* number) {
    if (PyLong_AsLong(number) == ENOMEM)
        return PyObject_CallNoArgs(PyExc_MemoryError);
    Owned const reason(attribute(error, "strerror")), path(attribute(error, "filename"));
    if (!reason || !path)
        return nullptr;
    PyObject* found = PyObject_CallFunctionObjArgs(PyExc_OSError, number, reason.get(), path.get(), nullptr);
    if (found)
        PyException_SetCause(found, Py_NewRef(error));
    return found;
}

// What a RuntimeError of the flat functions is in Python: a new reference, or null where it is just that.
PyObject* python_error(PyObject* error) {
    PyObject* found = nullptr;
    if (Owned const meant(attribute(error, "meant")); meant)
        found = PyObject_Call(meant.get() == PyExc_IndexError ? place_error : argument_error,
                              reinterpret_cast<PyBaseExceptionObject*>(error)->args, nullptr);
    else if (Owned const number(attribute(error, "errno")); number && PyLong_Check(number.get()))
        found = system_error(error, number.get());
    if (!found)
        PyErr_Clear();
    return found;
}

} // namespace

bool add_errors(PyObject* module) {
    argument_error = new_error("hyx.ArgumentError", PyExc_ValueError,
                               "A value that the native side refuses: a ValueError, and a RuntimeError as the flat "
                               "functions raise it.");
    place_error = new_error("hyx.PlaceError", PyExc_IndexError,
                            "A place where the native side has nothing: an IndexError, and a RuntimeError as the flat "
                            "functions raise it.");
    return argument_error && place_error && PyModule_AddObjectRef(module, "ArgumentError", argument_error) == 0 &&
           PyModule_AddObjectRef(module, "PlaceError", place_error) == 0;
}

void raise_as_python() {
    PyObject *type = nullptr, *value = nullptr, *traceback = nullptr;
    if (PyErr_Occurred() != PyExc_RuntimeError)
        return;
    PyErr_Fetch(&type, &value, &traceback);
    PyErr_NormalizeException(&type, &value, &traceback);
    if (PyObject* error = python_error(value)) {
        Py_SETREF(type, Py_NewRef(reinterpret_cast<PyObject*>(Py_TYPE(error))));
        Py_SETREF(value, error);
    }
    PyErr_Restore(type, value, traceback);
}

ModuleDefinition const* find_definition(PyObject* module) {
    if (PyModule_Check(module)) {
        auto const* definition = reinterpret_cast<ModuleDefinition const*>(PyModule_GetDef(module));
        if (definition && definition->magic == vocabulary::record_table_magic && definition->records)
            return definition;
        PyErr_Clear();
    }
    PyErr_Format(PyExc_TypeError, "%R is no extension module of the hyx family", module);
    return nullptr;
}

namespace {

// Values, numbers and texts are nobody else's.
bool may_show(Function const& function) {
    return std::any_of(function.forms, function.forms + function.form_count,
                       [](vocabulary::Form const& form) {
                           std::string_view const type = form.result;
                           return type.ends_with('*') || type.ends_with('&');
                       }) &&
           function.role != vocabulary::Role::constructor;
}

} // namespace

bool find_row(PyObject* flat, Row& row) {
    if (!PyCFunction_Check(flat) || !PyCFunction_GET_SELF(flat)) {
        PyErr_Format(PyExc_TypeError, "%R is no function of an extension module", flat);
        return false;
    }
    ModuleDefinition const* definition = find_definition(PyCFunction_GET_SELF(flat));
    if (!definition)
        return false;
    PyMethodDef const* method = reinterpret_cast<PyCFunctionObject*>(flat)->m_ml;
    std::ptrdiff_t const index = method - definition->def.m_methods;
    if (index < 0 || static_cast<std::size_t>(index) >= definition->records->count) {
        PyErr_Format(PyExc_TypeError, "%R is not in its module's method table", flat);
        return false;
    }
    row.function = definition->records->functions[index];
    row.records = definition->records;
    row.run = definition->records->call;
    row.exact_count = (method->ml_flags & METH_O) ? 1 : (method->ml_flags & METH_NOARGS) ? 0 : -1;
    row.flat = Py_NewRef(flat);
    row.shows = may_show(*row.function);
    row.shower = definition->records->shower;
    row.has_self =
        row.function->form_count > 0 && row.function->forms[0].class_name && !row.function->forms[0].is_static;
    learn_classes(*definition->records);
    return true;
}

} // namespace proxy
