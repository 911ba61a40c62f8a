// Reads parameter lists, and finds the place of each argument.
#include "python/support/keywords.h"

#include <algorithm>
#include <string_view>

namespace proxy {

namespace {

// The end of the item that starts at `start`: the next comma outside of brackets and quotes.
std::size_t item_end(std::string_view list, std::size_t start) {
    int depth = 0;
    bool quoted = false;
    for (std::size_t i = start; i < list.size(); ++i) {
        char const letter = list[i];
        quoted ^= letter == '"';
        if (quoted)
            continue;
        depth += (letter == '(' || letter == '[') - (letter == ')' || letter == ']');
        if (letter == ',' && depth == 0)
            return i;
    }
    return list.size();
}

Owned text(std::string_view letters) {
    return Owned(PyUnicode_FromStringAndSize(letters.data(), static_cast<Py_ssize_t>(letters.size())));
}

// What a call may name, in order.
Owned joined(std::vector<NamedParameter> const& names) {
    Owned list(PyList_New(0));
    for (NamedParameter const& parameter : names)
        if (!list.get() || PyList_Append(list.get(), parameter.name.get()) < 0)
            break;
    return Owned(PyUnicode_Join(text(", ").get(), list.get()));
}

std::size_t place_of(std::vector<NamedParameter> const& names, PyObject* name) {
    auto const found = std::find_if(names.begin(), names.end(), [name](NamedParameter const& parameter) {
        return PyUnicode_Check(name) && PyUnicode_Compare(parameter.name.get(), name) == 0;
    });
    return static_cast<std::size_t>(found - names.begin());
}

// The value of a default, whose names are packages. Null without an error where it has none.
Owned value_of(PyObject* fallback) {
    if (!fallback || PyUnicode_CompareWithASCIIString(fallback, "...") == 0)
        return {};
    Owned const builtins(PyDict_New());
    char const* const expression = PyUnicode_AsUTF8(fallback);
    PyObject* const modules = PyImport_GetModuleDict(); // borrowed
    return Owned(builtins && expression ? PyRun_String(expression, Py_eval_input, builtins.get(), modules) : nullptr);
}

} // namespace

std::vector<NamedParameter> read_parameters(PyObject* listed) {
    std::vector<NamedParameter> names;
    Py_ssize_t size = 0;
    char const* const letters = PyUnicode_AsUTF8AndSize(listed, &size);
    std::string_view const list(letters ? letters : "", static_cast<std::size_t>(size));
    for (std::size_t start = 0; start < list.size();) {
        std::size_t const end = item_end(list, start);
        std::string_view const item = list.substr(start, end - start);
        std::size_t const mark = item.find('=');
        names.push_back({text(item.substr(0, mark)), mark < item.size() ? text(item.substr(mark + 1)) : Owned()});
        start = end + 2; // a comma and a blank
    }
    return names;
}

std::optional<std::vector<Owned>> bind(Form const& form, std::vector<NamedParameter> const& names, std::size_t leading,
                                       NamedCall const& call) {
    auto const given = static_cast<std::size_t>(call.count);
    Py_ssize_t const keywords = call.keyword_names ? PyTuple_GET_SIZE(call.keyword_names) : 0;
    if (given > form.maximum || given < leading || (keywords > 0 && names.size() + leading != form.maximum))
        return std::nullopt;
    std::vector<Owned> places(form.maximum);
    for (std::size_t i = 0; i < given; ++i)
        places[i] = Owned::share(call.arguments[i]);
    std::size_t count = given;
    for (Py_ssize_t i = 0; i < keywords; ++i) {
        std::size_t const place = leading + place_of(names, PyTuple_GET_ITEM(call.keyword_names, i));
        if (place >= places.size() || places[place])
            return std::nullopt;
        places[place] = Owned::share(call.arguments[call.count + i]);
        count = std::max(count, place + 1);
    }
    for (std::size_t i = given; i < count; ++i)
        if (!places[i] && !(places[i] = value_of(names[i - leading].fallback.get())))
            return std::nullopt;
    if (count < form.minimum)
        return std::nullopt;
    places.resize(count);
    return places;
}

PyObject* misfit(Form const& form, std::vector<NamedParameter> const& names, std::size_t leading,
                 NamedCall const& call) {
    std::vector<bool> filled(names.size());
    std::fill_n(filled.begin(), std::min<std::size_t>(filled.size(), static_cast<std::size_t>(call.count) - leading),
                true);
    for (Py_ssize_t i = 0; i < PyTuple_GET_SIZE(call.keyword_names); ++i) {
        PyObject* const name = PyTuple_GET_ITEM(call.keyword_names, i);
        std::size_t const place = place_of(names, name);
        if (place >= names.size())
            return PyUnicode_FromFormat("got an unexpected keyword argument '%S'\n  It takes %S", name,
                                        joined(names).get());
        if (filled[place])
            return PyUnicode_FromFormat("got multiple values for argument '%S'", name);
        filled[place] = true;
    }
    for (std::size_t i = 0; i < names.size(); ++i)
        if (!filled[i] && i + leading < form.minimum)
            return PyUnicode_FromFormat("is missing argument %zu, '%U'", i + 1, names[i].name.get());
    return nullptr;
}

} // namespace proxy
