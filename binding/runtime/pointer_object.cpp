// The type of the objects that carry a native pointer.
#include "binding/runtime/pointer_object.h"

#include "binding/runtime/client_data.h"
#include "binding/runtime/errors.h"
#include "binding/runtime/reference.h"
#include "binding/runtime/state.h"
#include "binding/runtime/type_chain.h"
#include "binding/runtime/user_code.h"

#include <structmember.h>

#include <cstdio>
#include <cstring>
#include <utility>
#include <vector>

using runtime::Reference;

namespace {

SwigPyObject* as_pointer_object(PyObject* object) noexcept {
    return reinterpret_cast<SwigPyObject*>(object);
}

// Tells what is lent from the undefined padding that stands there in objects of siblings.
constexpr std::int32_t lent_mark = 0x6c656e74;
constexpr std::int32_t used_mark = 0x75730000; // plus how many calls use it
constexpr std::int32_t most_uses = 0x3fff;     // more than the stack has room for

// A pointer into the memory of another object.
struct View {
    SwigPyObject object;
    PyObject* container; // owned
};

PyTypeObject* view_type() noexcept;

PyObject* represent(PyObject* self) noexcept {
    Reference const texts = Reference::take(PyList_New(0));
    for (runtime::Views view(as_pointer_object(self)); texts && view.get(); view.advance()) {
        Reference const text = Reference::take(PyUnicode_FromFormat(
            "<Swig Object of type '%s' at %p>", SWIG_Python_PrettyTypeName(view.get()->ty), view.get()));
        if (!text || PyList_Append(texts.get(), text.get()) != 0)
            return nullptr;
    }
    Reference const nothing = Reference::take(texts ? PyUnicode_New(0, 0) : nullptr);
    return nothing ? PyUnicode_Join(nothing.get(), texts.get()) : nullptr;
}

PyObject* compare(PyObject* a, PyObject* b, int op) noexcept {
    if (PyErr_Occurred())
        return nullptr;
    if ((op != Py_EQ && op != Py_NE) || !SwigPyObject_Recognise(b))
        Py_RETURN_NOTIMPLEMENTED;
    bool const same = as_pointer_object(a)->ptr == as_pointer_object(b)->ptr;
    return PyBool_FromLong(same == (op == Py_EQ));
}

PyObject* address(PyObject* self) noexcept {
    return PyLong_FromVoidPtr(as_pointer_object(self)->ptr);
}

PyObject* disown(PyObject* self, PyObject*) noexcept {
    as_pointer_object(self)->own = 0;
    Py_RETURN_NONE;
}

bool refuse_owning(SwigPyObject const* object) noexcept {
    if (object->mark == lent_mark)
        PyErr_SetString(PyExc_ValueError, "the object lies inside of another one and cannot be owned");
    return object->mark == lent_mark;
}

PyObject* acquire(PyObject* self, PyObject*) noexcept {
    if (refuse_owning(as_pointer_object(self)))
        return nullptr;
    as_pointer_object(self)->own = 1;
    Py_RETURN_NONE;
}

PyObject* own(PyObject* self, PyObject* args) noexcept {
    PyObject* value = nullptr;
    if (!PyArg_UnpackTuple(args, "own", 0, 1, &value))
        return nullptr;
    SwigPyObject* object = as_pointer_object(self);
    bool const before = object->own;
    if (value) {
        bool const owned = PyObject_IsTrue(value) != 0; // a failing truth test counts as true
        runtime::clear_error();
        if (PyErr_Occurred())
            return nullptr;
        if (owned && refuse_owning(object))
            return nullptr;
        object->own = owned;
    }
    return PyBool_FromLong(before);
}

PyObject* next(PyObject* self, PyObject*) noexcept {
    PyObject* next = as_pointer_object(self)->next;
    return Py_NewRef(next ? next : Py_None);
}

PyObject* represent_method(PyObject* self, PyObject*) noexcept {
    return represent(self);
}

// Calls the class's destroy function for self; NULL with an error set when it failed.
Reference call_destroy(SwigPyClientData const& data, PyObject* self) noexcept {
    SwigPyObject* object = as_pointer_object(self);
    if (!data.delargs) {
        PyObject* destroy_self = PyCFunction_GET_SELF(data.destroy);
        Py_SET_REFCNT(self, 1); // lives during the call
        Reference result = Reference::take(PyCFunction_GET_FUNCTION(data.destroy)(destroy_self, self));
        Py_SET_REFCNT(self, Py_REFCNT(self) - 1);
        return result;
    }
    // self is already dying: the callable gets a stand-in.
    Reference stand_in = Reference::take(SwigPyObject_Create(object->ptr, object->ty, 0));
    return stand_in ? Reference::take(
                          runtime::run_user_code([&] { return PyObject_CallOneArg(data.destroy, stand_in.get()); }))
                    : Reference();
}

struct Destroyer {
    swig_type_info* type;
    void (*destroy)(void*);
};

std::vector<Destroyer> destroyers;

bool destroy_unregistered(SwigPyObject* object) noexcept {
    for (Destroyer const& destroyer : destroyers) {
        if (destroyer.type != object->ty)
            continue;
        destroyer.destroy(object->ptr);
        return true;
    }
    return false;
}

void destroy_native(PyObject* self) noexcept {
    SwigPyObject* object = as_pointer_object(self);
    auto* data = object->ty ? static_cast<SwigPyClientData*>(object->ty->clientdata) : nullptr;
    // The class had data, and the tear-down of the table has released them: the interpreter is ending, which is no
    // leak.
    if (!data && object->ty && object->ty->owndata)
        return;
    if (!data || !data->destroy) {
        if (destroy_unregistered(object))
            return;
        std::printf("swig/python detected a memory leak of type '%s', no destructor found.\n",
                    SWIG_Python_PrettyTypeName(object->ty));
        return;
    }
    runtime::SavedError pending;
    if (!call_destroy(*data, self))
        PyErr_WriteUnraisable(data->destroy);
}

// One after another: a chain may be longer than the stack is deep.
void release_views(PyObject* view) noexcept {
    while (view && Py_REFCNT(view) == 1 && SwigPyObject_Recognise(view)) {
        PyObject* next = std::exchange(as_pointer_object(view)->next, nullptr);
        Py_DECREF(view);
        view = next;
    }
    Py_XDECREF(view);
}

// An object that was acquired gives back a reference that it has never taken, but never the published one.
void release_capsule() noexcept {
    if (Swig_Capsule_global && Py_REFCNT(Swig_Capsule_global) == 1) {
        runtime::SavedError const pending;
        if (SWIG_Python_GetModuleChain() == &swig_module)
            return;
    }
    Py_XDECREF(Swig_Capsule_global);
}

void deallocate(PyObject* self) noexcept {
    SwigPyObject* object = as_pointer_object(self);
    if (object->own == 1) {
        destroy_native(self);
        release_capsule();
        if (Py_REFCNT(self) > 0) { // the destroy function has kept it
            object->own = 0;
            return;
        }
    }
    object->mark = 0; // nothing of the mark for who gets the memory next
    PyTypeObject* type = Py_TYPE(self);
    release_views(object->next);
    if (type == view_type()) {
        if (runtime::view_ended)
            runtime::view_ended(object);
        Py_XDECREF(reinterpret_cast<View*>(self)->container);
    }
    if (PyType_IS_GC(type)) // a class that a script derives has its instances collected
        type->tp_free(self);
    else
        PyObject_Free(self);
    Py_DECREF(type);
}

PyMethodDef swigobject_methods[] = {
    {"disown", disown, METH_NOARGS, "releases ownership of the pointer"},
    {"acquire", acquire, METH_NOARGS, "acquires ownership of the pointer"},
    {"own", own, METH_VARARGS, "returns/sets ownership of the pointer"},
    {"append", SwigPyObject_append, METH_O, "appends another 'this' object"},
    {"next", next, METH_NOARGS, "returns the next 'this' object"},
    {"__repr__", represent_method, METH_NOARGS, "returns object representation"},
    {nullptr, nullptr, 0, nullptr},
};

char doc[] = "Swig object carries a C/C++ instance pointer";

PyType_Slot slots[] = {
    {Py_tp_dealloc, reinterpret_cast<void*>(deallocate)},
    {Py_tp_repr, reinterpret_cast<void*>(represent)},
    {Py_tp_getattro, reinterpret_cast<void*>(PyObject_GenericGetAttr)},
    {Py_tp_doc, doc},
    {Py_tp_richcompare, reinterpret_cast<void*>(compare)},
    {Py_tp_methods, swigobject_methods},
    {Py_nb_int, reinterpret_cast<void*>(address)},
    {0, nullptr},
};

PyType_Spec spec = {pointer_object_type_name, sizeof(SwigPyObject), 0, Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE, slots};

PyMemberDef view_members[] = {
    {"__swig_container", T_OBJECT_EX, offsetof(View, container), READONLY, "the object whose memory this points into"},
    {nullptr, 0, 0, 0, nullptr},
};

PyType_Slot view_slots[] = {
    {Py_tp_dealloc, reinterpret_cast<void*>(deallocate)},
    {Py_tp_repr, reinterpret_cast<void*>(represent)},
    {Py_tp_getattro, reinterpret_cast<void*>(PyObject_GenericGetAttr)},
    {Py_tp_doc, doc},
    {Py_tp_richcompare, reinterpret_cast<void*>(compare)},
    {Py_tp_methods, swigobject_methods},
    {Py_tp_members, view_members},
    {Py_nb_int, reinterpret_cast<void*>(address)},
    {0, nullptr},
};

// Under the same name: the siblings know pointer objects by it.
PyType_Spec view_spec = {pointer_object_type_name, sizeof(View), 0, Py_TPFLAGS_DEFAULT, view_slots};

PyTypeObject* view_type() noexcept {
    static PyTypeObject* const type = reinterpret_cast<PyTypeObject*>(PyType_FromSpec(&view_spec));
    return type;
}

// Classes of scripts that bear the name of pointer objects have no such layout: their instances are collected, or
// derive from something else.
bool has_layout(PyTypeObject const* type) noexcept {
    return !(type->tp_flags & Py_TPFLAGS_HAVE_GC) && type->tp_itemsize == 0 && type->tp_base == &PyBaseObject_Type &&
           type->tp_basicsize >= static_cast<Py_ssize_t>(sizeof(SwigPyObject));
}

void fill(SwigPyObject* object, void* ptr, swig_type_info* ty, int own) noexcept {
    object->ptr = ptr;
    object->ty = ty;
    object->own = own;
    object->mark = 0;
    object->next = nullptr;
}

} // namespace

bool runtime::is_pointer_type(PyTypeObject* type) noexcept {
    return type == SwigPyObject_type() ||
           (std::strcmp(type->tp_name, pointer_object_type_name) == 0 && has_layout(type));
}

bool runtime::is_view(SwigPyObject const* object) noexcept {
    return Py_IS_TYPE(reinterpret_cast<PyObject*>(const_cast<SwigPyObject*>(object)), view_type());
}

void runtime::set_destroyer(swig_type_info* type, void (*destroy)(void*)) {
    for (Destroyer const& destroyer : destroyers)
        if (destroyer.type == type)
            return;
    destroyers.push_back({type, destroy});
}

void runtime::lend(PyObject* pointer_object) noexcept {
    if (Py_IS_TYPE(pointer_object, SwigPyObject_type()) || Py_IS_TYPE(pointer_object, view_type()))
        as_pointer_object(pointer_object)->mark = lent_mark;
}

bool runtime::is_lent(PyObject* pointer_object) noexcept {
    return as_pointer_object(pointer_object)->mark == lent_mark;
}

bool runtime::is_used(SwigPyObject const* pointer_object) noexcept {
    return pointer_object->mark > used_mark && pointer_object->mark <= used_mark + most_uses;
}

runtime::Use::Use(SwigPyObject* pointer_object) noexcept : object_(pointer_object) {
    if (!object_)
        return;
    Py_INCREF(object_);
    marked_ = object_->mark != lent_mark;
    if (marked_)
        object_->mark = is_used(object_) ? object_->mark + 1 : used_mark + 1;
}

void runtime::Use::let_end() noexcept {
    if (marked_ && is_used(object_) && --object_->mark == used_mark)
        object_->mark = 0;
    marked_ = false;
}

runtime::Use::~Use() {
    let_end();
    Py_XDECREF(object_);
}

PyTypeObject* SwigPyObject_type() noexcept {
    static PyTypeObject* const type = reinterpret_cast<PyTypeObject*>(PyType_FromSpec(&spec));
    return type;
}

bool SwigPyObject_Recognise(PyObject* object) noexcept {
    return runtime::is_pointer_type(Py_TYPE(object));
}

PyObject* SwigPyObject_Create(void* ptr, swig_type_info* ty, int own) noexcept {
    SwigPyObject* object = PyObject_New(SwigPyObject, SwigPyObject_type());
    if (!object)
        return nullptr;
    fill(object, ptr, ty, own);
    if (own == 1)
        Py_XINCREF(Swig_Capsule_global);
    return reinterpret_cast<PyObject*>(object);
}

PyObject* SwigPyObject_CreateView(void* ptr, swig_type_info* ty, PyObject* container) noexcept {
    View* view = PyObject_New(View, view_type());
    if (!view)
        return nullptr;
    fill(&view->object, ptr, ty, 0);
    view->object.mark = lent_mark;
    view->container = Py_XNewRef(container);
    return reinterpret_cast<PyObject*>(view);
}

PyObject* SwigPyObject_append(PyObject* self, PyObject* other) noexcept {
    if (!SwigPyObject_Recognise(other)) {
        PyErr_SetString(PyExc_TypeError, "Attempt to append a non SwigPyObject");
        return nullptr;
    }
    SwigPyObject* object = as_pointer_object(self);
    PyObject* const replaced = std::exchange(as_pointer_object(other)->next, object->next);
    object->next = Py_NewRef(other);
    release_views(replaced);
    Py_RETURN_NONE;
}
