// Asks a script for the colour of a laser point.
#include "modules/hyxOSG/renderers/lidar_color_director.h"

#include "binding/directors/python_call.h"
#include "binding/runtime/errors.h"
#include "binding/runtime/pointers.h"
#include "binding/vocabulary/native_types.h"

using Base = hyxOSG::LidarOutputRendererColorFunctionCallback;

namespace {

Swig::DirectorMethod get_lidar_point_color{"LidarOutputRendererColorFunctionCallback", "getLidarPointColor", nullptr};

// Throws DirectorTypeMismatchException for anything but a colour; None is no colour.
osg::Vec4f to_color(runtime::Reference const& result) {
    void* pointer = nullptr;
    int own = 0;
    int const status = SWIG_Python_ConvertPtrAndOwn(result.get(), &pointer, vocabulary::descriptor<osg::Vec4f>(),
                                                    PointerConversion::general, &own);
    if (status < 0 || !pointer)
        Swig::DirectorTypeMismatchException::raise(
            SWIG_Python_ErrorType(argument_error(status < 0 ? status : int(SWIG_TypeError))),
            "in output value of type 'osg::Vec4'");
    auto* color = static_cast<osg::Vec4f*>(pointer);
    osg::Vec4f const copy = *color;
    if (own & SWIG_CAST_NEW_MEMORY)
        delete color;
    return copy;
}

} // namespace

SwigDirector_LidarOutputRendererColorFunctionCallback::SwigDirector_LidarOutputRendererColorFunctionCallback(
    PyObject* self)
    : Swig::Director(self) {}

bool SwigDirector_LidarOutputRendererColorFunctionCallback::swig_get_inner(char const* name) const {
    auto const found = swig_inner.find(name);
    return found != swig_inner.end() && found->second;
}

void SwigDirector_LidarOutputRendererColorFunctionCallback::swig_set_inner(char const* name, bool value) const {
    swig_inner[name] = value;
}

hyxOSG::LidarOutputRenderer::IntensityState::ColorFunc
SwigDirector_LidarOutputRendererColorFunctionCallback::swig_keeping_color_function() {
    return [kept = runtime::KeptReference(swig_get_self()), function = *getColorFunction()](float intensity) {
        return function(intensity);
    };
}

osg::Vec4f SwigDirector_LidarOutputRendererColorFunctionCallback::getLidarPointColor(float intensity) {
    Swig::Callee const callee(*this);
    if (callee.is_gone())
        return Base::getLidarPointColor(intensity);
    return to_color(Swig::call_python(callee, get_lidar_point_color, Swig::to_python(intensity)));
}
