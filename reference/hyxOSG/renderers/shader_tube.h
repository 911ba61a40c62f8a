// A tube that the graphics processor makes from its stations.
#pragma once

#include "platform/hyxOSG/renderers/spline_shader.h"
#include "reference/hyxOSG/renderers/tube_drawing.h"
#include "reference/machinery/shading/node_state.h"

namespace hyxOSG {

class ShaderTube : public TubeDrawing {
public:
    osg::Node* node() override { return m_shader.get(); }

    void show(std::vector<TubeStation> const& stations, double radius, osg::Vec4f const& color) override {
        m_shader->resetCounters();
        bool joined = false;
        for (TubeStation const& station : stations) {
            m_shader->add2(station.position, station.rotation, radius, joined ? 1 : 0, station.value);
            joined = true;
        }
        m_shader->getCylinderColorUniform()->set(color);
        setOpacity(*m_shader->getOrCreateStateSet(), color.a());
        m_shader->update();
    }

private:
    osg::ref_ptr<SplineShader> m_shader = new SplineShader;
};

} // namespace hyxOSG
