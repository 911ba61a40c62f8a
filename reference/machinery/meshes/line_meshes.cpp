// Makes unlit meshes of lines.
#include "reference/machinery/meshes/line_meshes.h"

#include "reference/machinery/meshes/mesh_builder.h"
#include "reference/machinery/shading/node_state.h"

#include <osg/LineWidth>

#include <cmath>
#include <stdexcept>

namespace hyxOSG {

void makeUnlit(osg::StateSet& state) {
    osg::StateAttribute::GLModeValue const off = setByScript & ~osg::StateAttribute::ON;
    state.setMode(GL_LIGHTING, off);
    state.setTextureMode(0, GL_TEXTURE_2D, off);
}

osg::ref_ptr<osg::Geometry> lineMesh(osg::Vec3Array* points, GLenum mode, osg::Vec4 const& color, float width) {
    if (!(width > 0) || !std::isfinite(width))
        throw std::invalid_argument("the width of a line must be a positive number of pixels");
    osg::ref_ptr<osg::Geometry> const lines = new osg::Geometry;
    osg::ref_ptr<osg::Vec4Array> const colors = new osg::Vec4Array;
    colors->push_back(color);
    lines->setVertexArray(points);
    lines->setColorArray(colors, osg::Array::BIND_OVERALL);
    lines->addPrimitiveSet(new osg::DrawArrays(mode, 0, static_cast<GLsizei>(points->size())));
    useVertexBuffers(*lines);
    osg::StateSet& state = *lines->getOrCreateStateSet();
    state.setAttributeAndModes(new osg::LineWidth(width));
    makeUnlit(state);
    setOpacity(state, color.a());
    return lines;
}

} // namespace hyxOSG
