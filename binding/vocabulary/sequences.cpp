// Hands out what points into a container, with the container kept alive.
#include "binding/vocabulary/sequences.h"

#include "binding/containers/container_key.h"
#include "binding/runtime/client_data.h"
#include "binding/runtime/errors.h"
#include "binding/runtime/pointers.h"
#include "binding/runtime/reference.h"
#include "binding/runtime/state.h"
#include "binding/runtime/type_chain.h"
#include "binding/runtime/values.h"
#include "binding/vocabulary/guards.h"

#include <stdexcept>

namespace vocabulary {

namespace {

using runtime::Reference;

// The class registered for a type, where it can be raised; RuntimeError otherwise.
PyObject* exception_class(swig_type_info const* type) noexcept {
    auto const* data = static_cast<SwigPyClientData const*>(type->clientdata);
    return data && PyExceptionClass_Check(data->klass) ? data->klass : PyExc_RuntimeError;
}

// The Python exception carries the text, and as its "this" a copy of the native one, like every proxy.
void raise_invalid_argument(std::invalid_argument const& error) {
    swig_type_info* const type = runtime::required_type("_p_std__invalid_argument");
    runtime::set_destroyer(type, release_converted<std::invalid_argument>);
    PyObject* const cls = exception_class(type);
    Reference const native =
        Reference::take(SWIG_Python_NewPointerObj(new std::invalid_argument(error), type, PointerResult::owned_bare));
    Reference const arguments = Reference::take(Py_BuildValue("(N)", SWIG_FromCharPtr(error.what())));
    if (!native || !arguments)
        return;
    Reference const raised = Reference::take(
        reinterpret_cast<PyTypeObject*>(cls)->tp_new(reinterpret_cast<PyTypeObject*>(cls), arguments.get(), nullptr));
    if (raised && PyObject_SetAttr(raised.get(), SWIG_This(), native.get()) == 0)
        PyErr_SetObject(cls, raised.get());
}

// Has an unowned result keep an object alive. Returns what stands for the result then.
PyObject* keep(PyObject* result, PyObject* container) noexcept {
    SwigPyObject* const handle = SWIG_Python_GetSwigThis(result);
    if (!handle || handle->own == 1)
        return result;
    runtime::lend(reinterpret_cast<PyObject*>(handle));
    if (reinterpret_cast<PyObject*>(handle) != result &&
        PyObject_SetAttr(result, containers::container_key(), container) == 0)
        return result;
    // A bare pointer object has no attributes: one with room for the container takes its place.
    PyErr_Clear();
    Reference view = Reference::take(SwigPyObject_CreateView(handle->ptr, handle->ty, container));
    if (view && reinterpret_cast<PyObject*>(handle) != result)
        return PyObject_SetAttr(result, SWIG_This(), view.get()) == 0 ? result : nullptr;
    Py_DECREF(result);
    return view.release();
}

// What an object keeps alive, or the object itself where it owns its pointer or keeps nothing.
runtime::Reference owner_of(PyObject* object) noexcept {
    SwigPyObject* const handle = SWIG_Python_GetSwigThis(object);
    if (!handle || handle->own == 1)
        return runtime::Reference::share(object);
    runtime::Reference kept = runtime::Reference::take(PyObject_GetAttr(object, containers::container_key()));
    PyErr_Clear();
    return kept ? kept : runtime::Reference::share(object);
}

} // namespace

PyObject* keep_container(PyObject* result, Call const& call) noexcept {
    return keep(result, call.arguments[0]);
}

PyObject* keep_element_part(PyObject* result, Call const& call) noexcept {
    PyObject* const kept = keep_container(result, call);
    SwigPyObject* const view = kept ? SWIG_Python_GetSwigThis(kept) : nullptr;
    if (view && view->own != 1)
        containers::watch_inside(view);
    return kept;
}

PyObject* keep_owner(PyObject* result, Call const& call) noexcept {
    return keep(result, owner_of(call.arguments[0]).get());
}

PyObject* hold_sequence(PyObject* result, Call const& call) noexcept {
    void* iterator = nullptr;
    if (SWIG_Python_ConvertPtrAndOwn(result, &iterator, swig::SwigPyIterator::descriptor()) == SWIG_OK && iterator)
        static_cast<swig::SwigPyIterator*>(iterator)->hold(call.arguments[0]);
    return result;
}

void translate_iterator_exception() {
    try {
        throw;
    } catch (swig::stop_iteration const&) {
        SWIG_Python_SetErrorObj(PyExc_StopIteration, Py_NewRef(Py_None));
    } catch (std::invalid_argument const& error) {
        raise_invalid_argument(error);
    } catch (...) {
        translate_native_exception();
    }
}

} // namespace vocabulary
