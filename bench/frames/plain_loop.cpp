// A plain C++ viewer loop over an application's scene, to compare the loop driven from Python with.
#include "binding/runtime/pointers.h"
#include "binding/runtime/type_chain.h"
#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxSDK/simulation.h"

#include <osgViewer/Viewer>

namespace {

// run(application, frames): steps the simulation and draws a frame, so many times.
PyObject* run(PyObject*, PyObject* arguments) {
    PyObject* object = nullptr;
    int frames = 0;
    if (!PyArg_ParseTuple(arguments, "Oi", &object, &frames))
        return nullptr;
    void* pointer = nullptr;
    swig_type_info* type = SWIG_Python_TypeQuery("hyxOSG::ExampleApplication *");
    if (!type || SWIG_Python_ConvertPtrAndOwn(object, &pointer, type) != SWIG_OK || !pointer) {
        PyErr_SetString(PyExc_TypeError, "an application is needed");
        return nullptr;
    }
    auto* application = static_cast<hyxOSG::ExampleApplication*>(pointer);
    hyxSDK::Simulation* simulation = application->getSimulation();
    osgViewer::Viewer* viewer = application->getViewer();
    for (int i = 0; i < frames; ++i) {
        simulation->step();
        viewer->frame(simulation->getTimeStamp());
    }
    Py_RETURN_NONE;
}

PyMethodDef methods[] = {{"run", run, METH_VARARGS, nullptr}, {nullptr, nullptr, 0, nullptr}};
PyModuleDef definition = {
    PyModuleDef_HEAD_INIT, "plain_loop", nullptr, -1, methods, nullptr, nullptr, nullptr, nullptr};

} // namespace

PyMODINIT_FUNC PyInit_plain_loop() {
    return PyModule_Create(&definition);
}
