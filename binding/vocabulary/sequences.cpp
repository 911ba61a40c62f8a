// Hands out what points into a container, with the container kept alive.
#include "binding/vocabulary/sequences.h"

#include "binding/containers/container_key.h"
#include "binding/runtime/client_data.h"
#include "binding/runtime/errors.h"
#include "binding/runtime/pointers.h"
#include "binding/runtime/reference.h"
#include "binding/vocabulary/guards.h"
#include "binding/vocabulary/native_types.h"

#include <stdexcept>

namespace vocabulary {

namespace {

// The class registered for a type, where it can be raised; RuntimeError otherwise.
PyObject* exception_class(swig_type_info const* type) noexcept {
    auto const* data = static_cast<SwigPyClientData const*>(type->clientdata);
    return data && PyExceptionClass_Check(data->klass) ? data->klass : PyExc_RuntimeError;
}

// Has an unowned result keep an object alive.
void keep(PyObject* result, PyObject* container) noexcept {
    SwigPyObject* const handle = SWIG_Python_GetSwigThis(result);
    if (!handle || handle->own == 1 || PyObject_SetAttr(result, containers::container_key(), container) == 0)
        return;
    // A bare pointer object has no attributes, but a chain of further views, each of which it owns.
    PyErr_Clear();
    PyObject* const view = reinterpret_cast<PyObject*>(SWIG_Python_GetSwigThis(container));
    Py_XDECREF(SwigPyObject_append(reinterpret_cast<PyObject*>(handle), view));
    PyErr_Clear();
}

// What an object keeps alive, or the object itself where it owns its pointer or keeps nothing.
runtime::Reference owner_of(PyObject* object) noexcept {
    SwigPyObject* const handle = SWIG_Python_GetSwigThis(object);
    if (!handle || handle->own == 1)
        return runtime::Reference::share(object);
    runtime::Reference kept = runtime::Reference::take(PyObject_GetAttr(object, containers::container_key()));
    PyErr_Clear();
    return kept ? kept : runtime::Reference::share(handle->next ? handle->next : object);
}

} // namespace

PyObject* keep_container(PyObject* result, Call const& call) noexcept {
    keep(result, call.arguments[0]);
    return result;
}

PyObject* keep_element_part(PyObject* result, Call const& call) noexcept {
    if (SwigPyObject* const view = SWIG_Python_GetSwigThis(result); view && view->own != 1)
        containers::watch_inside(view);
    return keep_container(result, call);
}

PyObject* keep_owner(PyObject* result, Call const& call) noexcept {
    keep(result, owner_of(call.arguments[0]).get());
    return result;
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
        swig_type_info* const type = descriptor<std::invalid_argument>();
        PyObject* const value =
            SWIG_Python_NewPointerObj(new std::invalid_argument(error), type, PointerResult::owned_proxied);
        if (value)
            SWIG_Python_SetErrorObj(exception_class(type), value);
    } catch (...) {
        translate_native_exception();
    }
}

} // namespace vocabulary
