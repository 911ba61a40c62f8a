// Lets Python compute the colours of lidar hit points.
#pragma once

#include "binding/directors/director.h"
#include "platform/hyxOSG/renderers/lidar_output_renderer_color_function_callback.h"

class SwigDirector_LidarOutputRendererColorFunctionCallback : public hyxOSG::LidarOutputRendererColorFunctionCallback,
                                                              public Swig::Director {
public:
    explicit SwigDirector_LidarOutputRendererColorFunctionCallback(PyObject* self);

    bool swig_get_inner(char const* name) const override;
    void swig_set_inner(char const* name, bool value) const override;

    // The colour function for someone who shall keep the Python object alive as long as there is a copy of it.
    hyxOSG::LidarOutputRenderer::IntensityState::ColorFunc swig_keeping_color_function();

    osg::Vec4f getLidarPointColor(float intensity) override;

private:
    mutable std::map<std::string, bool> swig_inner;
};
