// Says what is wrong with a call: which argument, what it should be, and what it is.
#include "python/support/speech.h"

#include "binding/runtime/pointer_object.h"
#include "python/support/adaptation.h"
#include "python/support/handle.h"

#include <cstring>
#include <set>
#include <string>

namespace proxy {

namespace {

using vocabulary::Kind;

std::string type_name(PyObject* object) {
    return object == Py_None ? "None" : Py_TYPE(object)->tp_name;
}

// The class as scripts call it; empty where that cannot be told.
std::string class_name(PyTypeObject* type) {
    std::string name;
    PyObject* const package = PyObject_GetAttrString(reinterpret_cast<PyObject*>(type), "__module__");
    PyObject* const qualified = PyObject_GetAttrString(reinterpret_cast<PyObject*>(type), "__qualname__");
    if (package && qualified && PyUnicode_Check(package) && PyUnicode_Check(qualified))
        if (PyObject* text = PyUnicode_FromFormat("%U.%U", package, qualified)) {
            char const* const letters = PyUnicode_AsUTF8(text);
            name = letters ? letters : "";
            Py_DECREF(text);
        }
    Py_XDECREF(package);
    Py_XDECREF(qualified);
    PyErr_Clear();
    return name;
}

std::string native_name(Parameter const& parameter) {
    return {parameter.text, parameter.text_size};
}

std::string expected_object(RecordTable const& records, Parameter const& parameter) {
    PyTypeObject* const type = class_of(records, parameter);
    std::string name = type ? class_name(type) : "";
    if (name.empty())
        name = native_name(parameter);
    if (takes_sequence(records, parameter))
        name += " or a sequence of its values";
    return parameter.reference ? name : name + " or None";
}

std::string expected(RecordTable const& records, Parameter const& parameter) {
    switch (parameter.kind) {
    case Kind::boolean:
        return "bool";
    case Kind::int32:
    case Kind::int64:
    case Kind::uint32:
    case Kind::uint64:
        return "int";
    case Kind::real:
    case Kind::single:
        return "float";
    case Kind::slice:
        return "slice";
    case Kind::pointer:
    case Kind::disowned:
        return expected_object(records, parameter);
    default:
        if (is_text(parameter))
            return "str";
        if (parameter.kind == Kind::converted)
            return "an iterable of values for " + native_name(parameter);
        return parameter.kind == Kind::untyped ? "a wrapped object or None" : native_name(parameter);
    }
}

PyObject* text(std::string const& words) {
    return PyUnicode_DecodeUTF8(words.data(), static_cast<Py_ssize_t>(words.size()), "replace");
}

bool holds_nothing(PyObject* object) {
    if (!PyObject_TypeCheck(object, &handle_type))
        return false;
    PyObject* const pointer = reinterpret_cast<Handle*>(object)->pointer;
    return !pointer || (std::strcmp(Py_TYPE(pointer)->tp_name, pointer_object_type_name) == 0 &&
                        !reinterpret_cast<SwigPyObject*>(pointer)->ptr);
}

// What is wrong with the object that a method is called on.
PyObject* self_text(Row const& row, Spoken const& spoken, Form const& form, PyObject* given) {
    if (PyObject_TypeCheck(given, &handle_type)) {
        PyTypeObject* const type = class_of(*row.records, form.parameters[0]);
        if (!type || PyObject_TypeCheck(given, type))
            return text(std::string(spoken.kind == Spoken::Kind::member ? "belongs to" : "was called on") +
                        " an object that holds no native one: it has ended, or its base class's __init__ has not run");
    }
    Parameter self = form.parameters[0];
    self.reference = true;
    return text("must be called on " + expected_object(*row.records, self) + ", not " + type_name(given));
}

} // namespace

PyObject* spoken_name(Spoken const& spoken) {
    if (spoken.kind == Spoken::Kind::constructor && spoken.owner_name != Py_None)
        return PyUnicode_FromFormat("%S()", spoken.owner_name);
    char const* const brackets = spoken.kind == Spoken::Kind::member ? "" : "()";
    if (spoken.owner_name == Py_None)
        return PyUnicode_FromFormat("%S%s", spoken.name, brackets);
    return PyUnicode_FromFormat("%S.%S%s", spoken.owner_name, spoken.name, brackets);
}

void speak(Row const& row, Spoken const& spoken, PyObject* type, PyObject* text, PyObject* cause) {
    PyObject* const name = text ? spoken_name(spoken) : nullptr;
    PyObject* const prototypes = name ? row.records->prototypes(row.function) : nullptr;
    PyObject* const message = prototypes ? PyUnicode_FromFormat("%U %U\n%U", name, text, prototypes) : nullptr;
    if (PyObject* error = message ? PyObject_CallOneArg(type, message) : nullptr) {
        if (cause)
            PyException_SetCause(error, Py_NewRef(cause));
        PyErr_SetObject(type, error);
        Py_DECREF(error);
    }
    Py_XDECREF(message);
    Py_XDECREF(prototypes);
    Py_XDECREF(name);
    Py_XDECREF(text);
    Py_XDECREF(cause);
}

PyObject* argument_text(Row const& row, Spoken const& spoken, Form const& form, int argument, PyObject* name,
                        PyObject* given, bool out_of_range, int leading) {
    if (argument < leading)
        return self_text(row, spoken, form, given);
    Parameter const& parameter = form.parameters[argument];
    std::string words;
    if (spoken.kind != Spoken::Kind::member) {
        words = "argument " + std::to_string(argument - leading + 1) + " ";
        char const* const letters = name ? PyUnicode_AsUTF8(name) : nullptr;
        if (letters)
            words += "'" + std::string(letters) + "' ";
    }
    if (out_of_range)
        return text(words + "is out of range for " + native_name(parameter));
    return text(words + "must be " + expected(*row.records, parameter) + ", not " + type_name(given));
}

bool is_wrong_self(Row const& row, Form const& form, PyObject* given) {
    PyTypeObject* const type = class_of(*row.records, form.parameters[0]);
    return type && (!PyObject_TypeCheck(given, type) || holds_nothing(given));
}

PyObject* count_text(Function const& function, int leading, Py_ssize_t given) {
    if (given < leading)
        return text("needs the object that it is called on");
    std::set<int> counts;
    for (std::size_t i = 0; i < function.form_count; ++i)
        for (int count = function.forms[i].minimum; count <= function.forms[i].maximum; ++count)
            counts.insert(count - leading);
    std::string words = "takes ";
    bool const gapless = counts.size() > 2 && *counts.rbegin() - *counts.begin() + 1 == static_cast<int>(counts.size());
    if (gapless)
        counts = {*counts.begin(), *counts.rbegin()};
    for (auto count = counts.begin(); count != counts.end(); ++count) {
        if (count != counts.begin())
            words += gapless ? " to " : std::next(count) == counts.end() ? " or " : ", ";
        words += *count == 0 && counts.size() == 1 ? "no" : std::to_string(*count);
    }
    words += *counts.rbegin() == 1 ? " argument (" : " arguments (";
    return text(words + std::to_string(given - leading) + " given)");
}

PyObject* no_form_text(PyObject* const* arguments, Py_ssize_t count, PyObject* keyword_names, int leading) {
    std::string words = "has no form for (";
    Py_ssize_t const keywords = keyword_names ? PyTuple_GET_SIZE(keyword_names) : 0;
    for (Py_ssize_t i = leading; i < count + keywords; ++i) {
        words += i > leading ? ", " : "";
        if (i >= count) {
            char const* const name = PyUnicode_AsUTF8(PyTuple_GET_ITEM(keyword_names, i - count));
            PyErr_Clear();
            words += std::string(name ? name : "?") + "=";
        }
        words += type_name(arguments[i]);
    }
    return text(words + ")");
}

} // namespace proxy
