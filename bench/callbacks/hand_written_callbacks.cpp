// Native overrides that call Python as one would write them by hand for one method each, and the clock around either
// kind of override: both are called through the base class, in a loop without Python.
#include "binding/runtime/pointers.h"
#include "binding/runtime/type_chain.h"
#include "platform/hyx/values/affine_matrix4x4.h"
#include "platform/hyxOSG/application/example_application_listener.h"
#include "platform/hyxOSG/picking/gui_event_listener.h"
#include "platform/hyxOSG/renderers/lidar_output_renderer_color_function_callback.h"

#include <Python.h>

#include <chrono>
#include <cstring>

namespace {

swig_type_info *object_type, *matrix_type, *application_type, *color_type;

// Calls a method with new arguments, which it releases. A new reference, or NULL with the error left set.
template <class... A>
PyObject* call(PyObject* self, PyObject* name, A... arguments) {
    PyObject* const all[] = {self, arguments...};
    PyObject* result = PyObject_VectorcallMethod(name, all, sizeof...(A) + 1, nullptr);
    (Py_DECREF(arguments), ...);
    return result;
}

PyObject* borrowed(void const* object, swig_type_info* type) {
    return SWIG_Python_NewPointerObj(const_cast<void*>(object), type, PointerResult::borrowed_proxied);
}

bool is_true(PyObject* result) {
    if (!result || !PyBool_Check(result))
        PyErr_SetString(PyExc_TypeError, "expected a bool");
    bool const answer = result == Py_True;
    Py_XDECREF(result);
    return answer;
}

class InputListener : public hyxOSG::GuiEventListener {
public:
    explicit InputListener(PyObject* self) : self_(self) {}

    void update(float x, float y) override {
        static PyObject* const name = PyUnicode_InternFromString("update");
        Py_XDECREF(call(self_, name, PyFloat_FromDouble(x), PyFloat_FromDouble(y)));
    }

    void rebind() override {
        static PyObject* const name = PyUnicode_InternFromString("rebind");
        Py_XDECREF(call(self_, name));
    }

    bool mouse(MouseButtonMask buttons, MouseState state, float x, float y) override {
        static PyObject* const name = PyUnicode_InternFromString("mouse");
        return is_true(call(self_, name, PyLong_FromLong(buttons), PyLong_FromLong(state), PyFloat_FromDouble(x),
                            PyFloat_FromDouble(y)));
    }

    void addObject(hyx::Object* object, bool replace) override {
        static PyObject* const name = PyUnicode_InternFromString("addObject");
        Py_XDECREF(call(self_, name, borrowed(object, object_type), PyBool_FromLong(replace)));
    }

    void setInverseTransform(hyx::AffineMatrix4x4 const& matrix) override {
        static PyObject* const name = PyUnicode_InternFromString("setInverseTransform");
        Py_XDECREF(call(self_, name, borrowed(&matrix, matrix_type)));
    }

private:
    PyObject* self_;
};

class FrameListener : public hyxOSG::ExampleApplicationListener {
public:
    explicit FrameListener(PyObject* self) : self_(self) {}

    void preFrame(hyxOSG::ExampleApplication* application) override {
        static PyObject* const name = PyUnicode_InternFromString("preFrame");
        Py_XDECREF(call(self_, name, borrowed(application, application_type)));
    }

private:
    PyObject* self_;
};

class Colors : public hyxOSG::LidarOutputRendererColorFunctionCallback {
public:
    explicit Colors(PyObject* self) : self_(self) {}

    osg::Vec4f getLidarPointColor(float intensity) override {
        static PyObject* const name = PyUnicode_InternFromString("getLidarPointColor");
        PyObject* result = call(self_, name, PyFloat_FromDouble(intensity));
        void* color = nullptr;
        if (!result || SWIG_Python_ConvertPtrAndOwn(result, &color, color_type) != SWIG_OK || !color)
            return {};
        osg::Vec4f const copy = *static_cast<osg::Vec4f*>(color);
        Py_DECREF(result);
        return copy;
    }

private:
    PyObject* self_;
};

template <class Call>
PyObject* nanoseconds(long count, Call&& call) {
    auto const start = std::chrono::steady_clock::now();
    for (long i = 0; i < count; ++i)
        call();
    std::chrono::duration<double, std::nano> const passed = std::chrono::steady_clock::now() - start;
    return PyErr_Occurred() ? nullptr : PyFloat_FromDouble(passed.count() / double(count));
}

PyObject* time_input(hyxOSG::GuiEventListener& listener, char const* method, long count, void* thing) {
    if (!std::strcmp(method, "update"))
        return nanoseconds(count, [&] { listener.update(1.5f, 2.5f); });
    if (!std::strcmp(method, "rebind"))
        return nanoseconds(count, [&] { listener.rebind(); });
    if (!std::strcmp(method, "mouse"))
        return nanoseconds(
            count, [&] { listener.mouse(hyxSDK::GuiEventListener::LEFT, hyxSDK::GuiEventListener::UP, 1.5f, 2.5f); });
    if (!std::strcmp(method, "addObject"))
        return nanoseconds(count, [&] { listener.addObject(static_cast<hyx::Object*>(thing), true); });
    hyx::AffineMatrix4x4 const matrix;
    return nanoseconds(count, [&] { listener.setInverseTransform(matrix); });
}

bool query(swig_type_info*& type, char const* name) {
    type = SWIG_Python_TypeQuery(name);
    if (!type)
        PyErr_Format(PyExc_ImportError, "no module registers '%s'", name);
    return type;
}

// The descriptors of the modules, whenever those are imported.
bool query_types() {
    return query(object_type, "hyx::Object *") && query(matrix_type, "hyx::AffineMatrix4x4 *") &&
           query(application_type, "hyxOSG::ExampleApplication *") && query(color_type, "osg::Vec4 *");
}

// The address of a new hand-written object that calls `self` (borrowed). It lives until the process ends.
PyObject* make(PyObject*, PyObject* arguments) {
    char const* kind = nullptr;
    PyObject* self = nullptr;
    if (!PyArg_ParseTuple(arguments, "sO", &kind, &self) || !query_types())
        return nullptr;
    if (!std::strcmp(kind, "input"))
        return PyLong_FromVoidPtr(static_cast<hyxOSG::GuiEventListener*>(new InputListener(self)));
    if (!std::strcmp(kind, "frames"))
        return PyLong_FromVoidPtr(static_cast<hyxOSG::ExampleApplicationListener*>(new FrameListener(self)));
    return PyLong_FromVoidPtr(static_cast<hyxOSG::LidarOutputRendererColorFunctionCallback*>(new Colors(self)));
}

// Nanoseconds a call of the virtual method of the object at the address.
PyObject* measure(PyObject*, PyObject* arguments) {
    char const *kind = nullptr, *method = nullptr;
    PyObject *address = nullptr, *thing = nullptr;
    long count = 0;
    if (!PyArg_ParseTuple(arguments, "sO!slO!", &kind, &PyLong_Type, &address, &method, &count, &PyLong_Type, &thing))
        return nullptr;
    void *const object = PyLong_AsVoidPtr(address), *const argument = PyLong_AsVoidPtr(thing);
    if (!std::strcmp(kind, "input"))
        return time_input(*static_cast<hyxOSG::GuiEventListener*>(object), method, count, argument);
    if (!std::strcmp(kind, "frames"))
        return nanoseconds(count, [&] {
            static_cast<hyxOSG::ExampleApplicationListener*>(object)->preFrame(
                static_cast<hyxOSG::ExampleApplication*>(argument));
        });
    return nanoseconds(count, [&] {
        static_cast<hyxOSG::LidarOutputRendererColorFunctionCallback*>(object)->getLidarPointColor(0.5f);
    });
}

PyMethodDef methods[] = {
    {"make", make, METH_VARARGS, nullptr},
    {"measure", measure, METH_VARARGS, nullptr},
    {nullptr, nullptr, 0, nullptr},
};
PyModuleDef definition = {
    PyModuleDef_HEAD_INIT, "hand_written_callbacks", nullptr, -1, methods, nullptr, nullptr, nullptr, nullptr};

} // namespace

PyMODINIT_FUNC PyInit_hand_written_callbacks() {
    return PyModule_Create(&definition);
}
