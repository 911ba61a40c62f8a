// A plain C++ viewer loop that draws a scene off-screen and reads it back, to compare render targets with.
#include "binding/runtime/pointers.h"
#include "binding/runtime/type_chain.h"
#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxOSG/capture/render_target.h"
#include "platform/hyxSDK/simulation.h"

#include <osg/Image>
#include <osgViewer/Viewer>

namespace {

template <class T>
T* converted(PyObject* object, char const* type_name) {
    void* pointer = nullptr;
    swig_type_info* type = SWIG_Python_TypeQuery(type_name);
    if (!type || SWIG_Python_ConvertPtrAndOwn(object, &pointer, type) != SWIG_OK || !pointer) {
        PyErr_Format(PyExc_TypeError, "expected %s", type_name);
        return nullptr;
    }
    return static_cast<T*>(pointer);
}

osg::ref_ptr<osg::Camera> camera_like(hyxOSG::RenderTarget& target, osg::Image* image) {
    osg::ref_ptr<osg::Camera> camera = new osg::Camera;
    hyx::Vec2u const size = target.getSize();
    image->allocateImage(static_cast<int>(size.x), static_cast<int>(size.y), 1, GL_RGBA, GL_UNSIGNED_BYTE);
    camera->setRenderOrder(osg::Camera::PRE_RENDER);
    camera->setRenderTargetImplementation(osg::Camera::FRAME_BUFFER_OBJECT);
    camera->setReferenceFrame(osg::Transform::ABSOLUTE_RF);
    camera->setViewport(0, 0, static_cast<int>(size.x), static_cast<int>(size.y));
    camera->setViewMatrix(target.getCamera()->getViewMatrix());
    camera->setProjectionMatrix(target.getCamera()->getProjectionMatrix());
    camera->setCullMask(~0u);
    camera->attach(osg::Camera::COLOR_BUFFER, image);
    return camera;
}

// run(application, target, frames): steps and draws so many times with a camera of its own where the target looks;
// returns the sum of one byte of each picture, so that the reading cannot be left out.
PyObject* run(PyObject*, PyObject* arguments) {
    PyObject* application_object = nullptr;
    PyObject* target_object = nullptr;
    int frames = 0;
    if (!PyArg_ParseTuple(arguments, "OOi", &application_object, &target_object, &frames))
        return nullptr;
    auto* application = converted<hyxOSG::ExampleApplication>(application_object, "hyxOSG::ExampleApplication *");
    auto* target = application ? converted<hyxOSG::RenderTarget>(target_object, "hyxOSG::RenderTarget *") : nullptr;
    if (!target)
        return nullptr;
    osg::ref_ptr<osg::Image> image = new osg::Image;
    osg::ref_ptr<osg::Camera> camera = camera_like(*target, image);
    camera->addChild(application->getSceneRoot());
    application->getRoot()->addChild(camera);
    unsigned long long sum = 0;
    for (int i = 0; i < frames; ++i) {
        application->getSimulation()->step();
        application->getViewer()->frame(application->getSimulation()->getTimeStamp());
        sum += image->data()[4 * (image->s() / 2 + image->s() * (image->t() / 2))];
    }
    application->getRoot()->removeChild(camera);
    return PyLong_FromUnsignedLongLong(sum);
}

PyMethodDef methods[] = {{"run", run, METH_VARARGS, nullptr}, {nullptr, nullptr, 0, nullptr}};
PyModuleDef definition = {
    PyModuleDef_HEAD_INIT, "plain_read_back", nullptr, -1, methods, nullptr, nullptr, nullptr, nullptr};

} // namespace

PyMODINIT_FUNC PyInit_plain_read_back() {
    return PyModule_Create(&definition);
}
