// Turns the records into the dictionaries that `python -m hyx_describe` prints.
#include "binding/vocabulary/describe.h"

#include "binding/runtime/reference.h"
#include "binding/vocabulary/refusal.h"
#include "binding/vocabulary/text.h"

#include <algorithm>
#include <string>

namespace vocabulary {

namespace {

using runtime::Reference;

char const* role_name(Role role) {
    static constexpr char const* names[] = {"function",   "constructor", "destructor",   "member-get", "member-set",
                                            "static-get", "static-set",  "swigregister", "swiginit",   "disown"};
    return names[int(role)];
}

char const* convention_name(Function const& function) {
    if (function.dispatches())
        return "dispatch";
    return function.flags == METH_O ? "one" : function.flags == METH_NOARGS ? "noargs" : "tuple";
}

std::string type_text(std::string_view type) {
    std::string text;

    struct Sink {
        std::string& text;

        void put(char c) { text += c; }
    } sink{text};

    put_type(sink, type);
    return text;
}

std::size_t list_size(std::string_view list) {
    std::size_t size = 0;
    while (!list_item(list, size).empty())
        ++size;
    return size;
}

Reference text_object(std::string_view text) {
    return Reference::take(PyUnicode_FromStringAndSize(text.data(), Py_ssize_t(text.size())));
}

Reference describe_parameters(Form const& form) {
    std::size_t const count = list_size(form.parameter_list);
    std::string const defaults = "(" + std::string(form.default_list) + ")";
    std::size_t const required = count - list_size(defaults);
    Reference list = Reference::take(PyList_New(0));
    for (std::size_t i = 0; list && i < count; ++i) {
        std::string const type = type_text(list_item(form.parameter_list, i));
        Reference fallback = i < required ? Reference::share(Py_None) : text_object(list_item(defaults, i - required));
        Reference item = Reference::take(Py_BuildValue("{s:s,s:O}", "type", type.c_str(), "default", fallback.get()));
        if (!item || PyList_Append(list.get(), item.get()) != 0)
            return {};
    }
    return list;
}

std::string prototype(Form const& form) {
    std::string text = form.class_name ? form.class_name + std::string("::") : "";
    text += form.method;
    std::string_view const list = form.parameter_list;
    text += type_text(list.substr(0, list_end(list)));
    return form.is_const ? text + " const" : text;
}

PyObject* boolean(bool value) {
    return value ? Py_True : Py_False;
}

Reference describe_form(Form const& form) {
    Reference parameters = describe_parameters(form);
    if (!parameters)
        return {};
    return Reference::take(Py_BuildValue(
        "{s:s,s:z,s:s,s:O,s:O,s:O,s:{s:s,s:O}}", "prototype", prototype(form).c_str(), "class", form.class_name,
        "method", form.method, "static", boolean(form.is_static), "const", boolean(form.is_const), "parameters",
        parameters.get(), "result", "type", form.result, "owned", boolean(form.result_owned)));
}

Reference describe_function(Function const& function) {
    Reference forms = Reference::take(PyList_New(0));
    for (std::size_t i = 0; forms && i < function.form_count; ++i) {
        Reference form = describe_form(function.forms[i]);
        if (!form || PyList_Append(forms.get(), form.get()) != 0)
            return {};
    }
    if (!forms)
        return {};
    Form const* first = function.form_count ? function.forms : nullptr;
    return Reference::take(Py_BuildValue(
        "{s:s,s:s,s:s,s:z,s:z,s:O,s:O}", "name", function.name, "role", role_name(function.role), "convention",
        convention_name(function), "class", first ? first->class_name : function.class_name, "method",
        first ? first->method : nullptr, "static", boolean(first && first->is_static), "forms", forms.get()));
}

} // namespace

PyObject* prototypes(Function const* function) {
    std::string const head = "  Possible C/C++ prototypes are:\n";
    if (function->failure) {
        std::string_view const text = function->failure;
        return text_object(text.substr(std::min(text.find(head), text.size()))).release();
    }
    return text_object(head + "    " + prototype(function->forms[0]) + "\n").release();
}

PyObject* describe_functions(Function const* const* functions, std::size_t count) {
    Reference list = Reference::take(PyList_New(0));
    for (std::size_t i = 0; list && i < count; ++i) {
        Reference item = describe_function(*functions[i]);
        if (!item || PyList_Append(list.get(), item.get()) != 0)
            return nullptr;
    }
    return list.release();
}

} // namespace vocabulary
