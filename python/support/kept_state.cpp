// Keeps classes and dictionaries by the addresses of native objects.
#include "python/support/kept_state.h"

#include "binding/runtime/pointer_object.h"

#include <algorithm>
#include <unordered_map>
#include <utility>
#include <vector>

namespace proxy {
namespace {

struct Kept {
    PyObject* type; // owned, as are the others
    PyObject* dict;
    vocabulary::Family const* family;
    void* root;
};

std::unordered_map<void*, Kept>& kept_states() {
    static auto* const states = new std::unordered_map<void*, Kept>; // proxies may end after static objects
    return *states;
}

std::size_t most_before_sweep = 64;

void drop(Kept const& kept) {
    Py_DECREF(kept.type);
    Py_XDECREF(kept.dict);
    kept.family->drop(kept.root);
}

void sweep() {
    auto& states = kept_states();
    std::vector<Kept> left; // dropped at last: that may run Python code, which keeps and revives others
    for (auto state = states.begin(); state != states.end();) {
        if (state->second.family->count(state->second.root) > 1) {
            ++state;
            continue;
        }
        left.push_back(state->second);
        state = states.erase(state);
    }
    most_before_sweep = std::max<std::size_t>(64, 2 * states.size());
    std::for_each(left.begin(), left.end(), drop);
}

// Whether anybody but the proxy holds the native object.
bool is_held_elsewhere(Handle const* handle) {
    auto const* pointer = reinterpret_cast<SwigPyObject const*>(handle->pointer);
    int const own = (pointer && pointer->own == 1) + handle->has_reference;
    return own > 0 && handle->family->count(handle->held) > own;
}

} // namespace

void keep_state(PyObject* object) {
    auto* handle = reinterpret_cast<Handle*>(object);
    // What native code calls is kept whole by those who call it.
    if (!handle->held || handle->is_called || !(Py_TYPE(object)->tp_flags & Py_TPFLAGS_HEAPTYPE) ||
        Py_TYPE(object)->tp_dictoffset == 0 || !is_held_elsewhere(handle))
        return;
    PyObject *type, *value, *trace;
    PyErr_Fetch(&type, &value, &trace);
    PyObject* dict = PyObject_GenericGetDict(object, nullptr);
    PyErr_Clear();
    if (kept_states().size() >= most_before_sweep)
        sweep();
    Kept const kept{Py_NewRef(reinterpret_cast<PyObject*>(Py_TYPE(object))), dict, handle->family, handle->held};
    if (kept_states().emplace(handle->shown, kept).second) {
        handle->family->take(handle->held);
    } else {
        Py_DECREF(kept.type);
        Py_XDECREF(dict);
    }
    PyErr_Restore(type, value, trace);
}

bool is_kept(void* whole) {
    return kept_states().contains(whole);
}

PyObject* revive(void* whole, PyTypeObject* wanted) {
    auto& states = kept_states();
    if (states.empty())
        return nullptr;
    auto const found = states.find(whole);
    if (found == states.end())
        return nullptr;
    auto* const type = reinterpret_cast<PyTypeObject*>(found->second.type);
    if (!PyType_IsSubtype(type, wanted))
        return nullptr;
    PyObject* object = type->tp_alloc(type, 0);
    if (object && found->second.dict && PyObject_GenericSetDict(object, found->second.dict, nullptr) != 0)
        Py_CLEAR(object);
    if (!object)
        return nullptr;
    Kept const kept = found->second;
    states.erase(found);
    drop(kept); // somebody else holds the native object: it was just given
    return object;
}

PyObject* sweep_kept(PyObject*, PyObject* arguments) {
    PyObject *phase = nullptr, *details = nullptr;
    if (!PyArg_ParseTuple(arguments, "UO!", &phase, &PyDict_Type, &details))
        return nullptr;
    PyObject* generation = PyDict_GetItemString(details, "generation"); // borrowed
    bool const young = !generation || PyLong_AsLong(generation) == 0;
    if (!young && PyUnicode_CompareWithASCIIString(phase, "start") == 0)
        sweep();
    Py_RETURN_NONE;
}

} // namespace proxy
