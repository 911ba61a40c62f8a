// Makes native values of sequences and of other libraries' scalars.
#include "python/support/adaptation.h"

#include "binding/runtime/client_data.h"
#include "python/support/handle.h"

#include <string_view>

namespace proxy {

namespace {

using vocabulary::Kind;

bool has(PyTypeObject* type, char const* name) {
    PyObject* const text = PyUnicode_FromString(name);
    bool const found = text && _PyType_Lookup(type, text);
    Py_XDECREF(text);
    return found;
}

bool is_sequence_of_numbers(PyObject* object) {
    return PyTuple_Check(object) || PyList_Check(object) ||
           (has(Py_TYPE(object), "__array__") &&
            (!PyObject_TypeCheck(object, &handle_type) || has(Py_TYPE(object), "__stands_for_numbers__")));
}

PyObject* truth(PyObject* object) {
    std::string_view const name = Py_TYPE(object)->tp_name;
    if (name != "numpy.bool_" && name != "numpy.bool")
        return Py_NewRef(object);
    int const value = PyObject_IsTrue(object);
    return value < 0 ? nullptr : PyBool_FromLong(value);
}

PyObject* whole_number(PyObject* object) {
    return !PyLong_Check(object) && PyIndex_Check(object) ? PyNumber_Index(object) : Py_NewRef(object);
}

PyObject* real_number(PyObject* object) {
    PyNumberMethods const* methods = Py_TYPE(object)->tp_as_number;
    bool const foreign = methods && (methods->nb_float || methods->nb_index) && !PyFloat_Check(object) &&
                         !PyLong_Check(object) && !PyObject_TypeCheck(object, &handle_type);
    return foreign ? PyNumber_Float(object) : Py_NewRef(object);
}

PyObject* path(PyObject* object) {
    if (PyUnicode_Check(object) || !has(Py_TYPE(object), "__fspath__"))
        return Py_NewRef(object);
    return PyOS_FSPath(object);
}

PyObject* value(vocabulary::RecordTable const& records, Parameter const& parameter, PyObject* object) {
    if (!is_sequence_of_numbers(object) || !takes_sequence(records, parameter))
        return Py_NewRef(object);
    return PyObject_CallOneArg(reinterpret_cast<PyObject*>(class_of(records, parameter)), object);
}

PyObject* other(vocabulary::RecordTable const& records, Parameter const& parameter, PyObject* object) {
    switch (parameter.kind) {
    case Kind::boolean:
        return truth(object);
    case Kind::int32:
    case Kind::int64:
    case Kind::uint32:
    case Kind::uint64:
        return whole_number(object);
    case Kind::real:
    case Kind::single:
        return real_number(object);
    case Kind::pointer:
        return value(records, parameter, object);
    default:
        return is_text(parameter) ? path(object) : Py_NewRef(object);
    }
}

} // namespace

PyTypeObject* class_of(vocabulary::RecordTable const& records, Parameter const& parameter) {
    if (parameter.type < 0)
        return nullptr;
    auto const* data = static_cast<SwigPyClientData const*>(records.types[parameter.type]->clientdata);
    return data && data->klass && PyType_Check(data->klass) ? reinterpret_cast<PyTypeObject*>(data->klass) : nullptr;
}

bool takes_sequence(vocabulary::RecordTable const& records, Parameter const& parameter) {
    std::string_view const type(parameter.text, parameter.text_size);
    bool const is_written = (type.ends_with('&') || type.ends_with('*')) && type.find("const") == type.npos;
    PyTypeObject* const known = is_written ? nullptr : class_of(records, parameter);
    return known && has(known, "__takes_sequences__");
}

bool is_text(Parameter const& parameter) {
    std::string_view const type(parameter.text, parameter.text_size);
    return parameter.kind == Kind::text ||
           (parameter.kind == Kind::converted &&
            (type.starts_with("std::string") || type.starts_with("hyx::String") || type.starts_with("hyx::Name")));
}

PyObject* adapted(vocabulary::RecordTable const& records, Parameter const& parameter, PyObject* object,
                  PyObject** reason) {
    PyObject* const found = other(records, parameter, object);
    if (found || !(PyErr_ExceptionMatches(PyExc_TypeError) || PyErr_ExceptionMatches(PyExc_ValueError) ||
                   PyErr_ExceptionMatches(PyExc_OverflowError)))
        return found;
    PyObject *type, *error, *trace;
    PyErr_Fetch(&type, &error, &trace);
    PyErr_NormalizeException(&type, &error, &trace);
    Py_XDECREF(type);
    Py_XDECREF(trace);
    Py_XSETREF(*reason, error);
    return Py_NewRef(object);
}

} // namespace proxy
