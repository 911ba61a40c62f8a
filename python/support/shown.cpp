// Keeps the table of the native objects that Python sees.
#include "python/support/shown.h"

#include "binding/runtime/client_data.h"
#include "binding/runtime/pointer_object.h"
#include "python/support/kept_state.h"

#include <cstring>
#include <typeindex>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace proxy {
namespace {

// By descriptor; the entries stay where they are.
std::unordered_map<swig_type_info*, SharedClass> classes;
// The most derived class by what the compiler calls the complete object; null for none.
std::unordered_map<std::type_index, SharedClass const*> exact_classes;

// Null for anything else.
SwigPyObject const* as_pointer_object(PyObject* object) {
    bool const is_one = std::strcmp(Py_TYPE(object)->tp_name, pointer_object_type_name) == 0;
    return is_one ? reinterpret_cast<SwigPyObject const*>(object) : nullptr;
}

SharedClass const* find_class(swig_type_info* type) {
    static swig_type_info* last_type = nullptr;
    static SharedClass const* last_class = nullptr;
    if (type != last_type) {
        auto const known = classes.find(type);
        last_class = known == classes.end() ? nullptr : &known->second;
        last_type = type;
    }
    return last_class;
}

// The proxy class (borrowed), null before it registers.
PyTypeObject* python_class(SharedClass const& shared) {
    auto const* data = static_cast<SwigPyClientData const*>(shared.type->clientdata);
    return data && data->klass && PyType_Check(data->klass) ? reinterpret_cast<PyTypeObject*>(data->klass) : nullptr;
}

SharedClass const* find_exact_class(vocabulary::Family const& family, void* root) {
    auto const [place, unknown] = exact_classes.try_emplace(family.type(root), nullptr);
    if (!unknown)
        return place->second;
    SharedClass const*& exact = place->second;
    for (auto const& [type, shared] : classes) {
        PyTypeObject* python = python_class(shared);
        if (python && shared.operations->family->of_scene_graph == family.of_scene_graph &&
            shared.operations->from_root(root) && (!exact || PyType_IsSubtype(python, python_class(*exact))))
            exact = &shared;
    }
    return exact;
}

bool owns(Handle const* handle) {
    auto const* pointer = reinterpret_cast<SwigPyObject const*>(handle->pointer);
    return pointer && pointer->own == 1;
}

// Not one that ends, nor one from which its native object was taken.
bool keeps(Handle const* handle) {
    return Py_REFCNT(handle) > 0 && (handle->has_reference || owns(handle));
}

// The proxies by the addresses of their complete native objects, chained through the proxies themselves.
class ShownTable {
public:
    Handle* find(void* whole) const {
        for (Handle* handle = buckets_[place(whole)]; handle; handle = handle->next_shown)
            if (handle->shown == whole && keeps(handle))
                return handle;
        return nullptr;
    }

    void add(Handle* handle) {
        if (count_ == buckets_.size())
            grow();
        link(handle);
        ++count_;
    }

    void remove(Handle* handle) {
        Handle** link = &buckets_[place(handle->shown)];
        while (*link != handle)
            link = &(*link)->next_shown;
        *link = handle->next_shown;
        --count_;
    }

private:
    std::size_t place(void* whole) const {
        return (reinterpret_cast<std::uintptr_t>(whole) >> 4) * 0x9e3779b97f4a7c15u >> 32 & (buckets_.size() - 1);
    }

    void link(Handle* handle) {
        Handle*& first = buckets_[place(handle->shown)];
        handle->next_shown = first;
        first = handle;
    }

    void grow() {
        std::vector<Handle*> const before = std::exchange(buckets_, std::vector<Handle*>(2 * buckets_.size()));
        for (Handle* handle : before)
            while (handle)
                link(std::exchange(handle, handle->next_shown));
    }

    std::vector<Handle*> buckets_ = std::vector<Handle*>(256); // a power of two
    std::size_t count_ = 0;
};

ShownTable& shown_table() {
    static auto* const table = new ShownTable; // proxies may end after static objects
    return *table;
}

void hold(Handle* handle, vocabulary::Family const& family, void* root, void* whole) {
    handle->has_reference = !owns(handle) || family.count(root) == 0;
    if (handle->has_reference)
        family.take(root);
    handle->family = &family;
    handle->held = root;
    handle->shown = whole;
    shown_table().add(handle);
}

// An object that does not count: kept by what it lies in, unless Python owns it.
PyObject* keep_owner(Handle* handle, SwigPyObject const* pointer, PyObject* owner) {
    if (!handle->container && pointer->own != 1 && owner && PyObject_TypeCheck(owner, &handle_type))
        handle->container = Py_NewRef(owner);
    return reinterpret_cast<PyObject*>(handle);
}

PyObject* show_items(PyObject* list) {
    for (Py_ssize_t i = 0; i < PyList_GET_SIZE(list); ++i) {
        PyObject* const shown = show(PyList_GET_ITEM(list, i), nullptr);
        PyList_SET_ITEM(list, i, shown);
        if (!shown) {
            Py_DECREF(list);
            return nullptr;
        }
    }
    return list;
}

// A new proxy of an object that the class's root shows as; null with an error set, and where no proxies are registered.
Handle* make_shown(SharedClass const& shared, void* root, void* whole) {
    PyTypeObject* const type = python_class(shared);
    if (!type || !PyType_IsSubtype(type, &handle_type))
        return nullptr;
    vocabulary::Family const& family = *shared.operations->family;
    family.take(root); // what is kept of it ends with its revival
    PyObject* const pointer = shared.records->borrow(shared.operations->from_root(root), shared.type);
    PyObject* object = pointer ? revive(whole, type) : nullptr;
    if (pointer && !object && !PyErr_Occurred())
        object = type->tp_alloc(type, 0);
    auto* handle = reinterpret_cast<Handle*>(object);
    if (handle) {
        handle->pointer = pointer;
        hold(handle, family, root, whole);
    } else {
        Py_XDECREF(pointer);
    }
    family.drop(root);
    return handle;
}

// A new reference to the proxy of an object that counts references; null as above. Where no other fits better it is
// `made`, unless that is null.
PyObject* show_shared(SharedClass const& declared, void* object, Handle* made) {
    vocabulary::Family const& family = *declared.operations->family;
    void* const root = declared.operations->to_root(object);
    void* const whole = family.whole(root);
    PyTypeObject* const wanted = python_class(declared);
    if (Handle* shown = shown_table().find(whole); shown && wanted && PyObject_TypeCheck(shown, wanted))
        return Py_NewRef(reinterpret_cast<PyObject*>(shown));
    SharedClass const* exact = find_exact_class(family, root);
    if (made && (!exact || exact == &declared) && !is_kept(whole)) {
        hold(made, family, root, whole);
        return Py_NewRef(reinterpret_cast<PyObject*>(made));
    }
    return reinterpret_cast<PyObject*>(make_shown(exact ? *exact : declared, root, whole));
}

PyObject* show_native(void* object, swig_type_info* type) {
    SharedClass const* declared = find_class(type);
    return declared ? show_shared(*declared, object, nullptr) : nullptr;
}

bool let_go(PyObject* proxy) {
    auto* handle = reinterpret_cast<Handle*>(proxy);
    if (!PyObject_TypeCheck(proxy, &handle_type) || !handle->held)
        return false;
    if (handle->is_called)
        return std::exchange(handle->let_go, true);
    bool const had_reference = handle->has_reference;
    empty(handle);
    return had_reference;
}

} // namespace

void learn_classes(vocabulary::RecordTable const& records) {
    static std::unordered_set<vocabulary::RecordTable const*> known;
    if (!known.insert(&records).second)
        return;
    for (std::size_t i = 0; i < records.count; ++i)
        if (auto const* operations = records.functions[i]->operations) {
            swig_type_info* type = records.types[operations->type];
            classes.try_emplace(type, SharedClass{type, operations, &records});
        }
    exact_classes.clear();
    records.shower->show = show_native;
    records.shower->let_go = let_go;
    *records.show = [](PyObject* proxy) { return show(proxy, nullptr); };
}

PyObject* show(PyObject* result, PyObject* owner) {
    if (PyList_CheckExact(result))
        return show_items(result);
    if (!PyObject_TypeCheck(result, &handle_type))
        return result;
    auto* handle = reinterpret_cast<Handle*>(result);
    auto const* pointer = reinterpret_cast<SwigPyObject const*>(handle->pointer);
    if (!pointer || handle->held)
        return result;
    SharedClass const* declared = find_class(pointer->ty);
    if (!declared)
        return keep_owner(handle, pointer, owner);
    PyObject* const shown = show_shared(*declared, pointer->ptr, handle);
    if (!shown && !PyErr_Occurred())
        return result;
    Py_DECREF(result);
    return shown;
}

void hold_constructed(Handle* handle, ConstructedClass& known) {
    auto const* pointer = reinterpret_cast<SwigPyObject const*>(handle->pointer);
    if (known.type != pointer->ty)
        known = {pointer->ty, find_class(pointer->ty)};
    if (!known.shared || handle->held)
        return;
    vocabulary::Family const& family = *known.shared->operations->family;
    void* const root = known.shared->operations->to_root(pointer->ptr);
    hold(handle, family, root, family.whole(root));
}

void keep_constructed(PyObject* pointer) {
    auto const* object = as_pointer_object(pointer);
    SharedClass const* shared = object ? find_class(object->ty) : nullptr;
    void* const root = shared ? shared->operations->to_root(object->ptr) : nullptr;
    if (root && shared->operations->family->count(root) == 0)
        shared->operations->family->take(root); // for good: nothing tells when the last of several ends
}

void empty(Handle* handle) {
    PyObject* const pointer = std::exchange(handle->pointer, nullptr);
    PyObject* const container = std::exchange(handle->container, nullptr);
    if (handle->held) {
        shown_table().remove(handle);
        void* const root = std::exchange(handle->held, nullptr);
        if (handle->has_reference) {
            PyObject *type, *value, *trace;
            PyErr_Fetch(&type, &value, &trace); // what ends with the native object may run Python code
            handle->family->drop(root);
            PyErr_Restore(type, value, trace);
        }
    }
    Py_XDECREF(pointer);
    Py_XDECREF(container);
}

void release(PyObject* pointer) {
    auto const* object = as_pointer_object(pointer);
    if (SharedClass const* shared = object ? find_class(object->ty) : nullptr)
        shared->operations->release(object->ptr);
}

} // namespace proxy
