// Lets vertex colours decide, with and without light.
#include "reference/hyxOSG/renderers/vertex_colors.h"

#include "reference/machinery/shading/node_state.h"

#include <osg/Material>

namespace hyxOSG {

namespace {

void follow(osg::Geometry& geometry, osg::Array* colors) {
    geometry.setColorArray(colors, osg::Array::BIND_PER_VERTEX);
    osg::ref_ptr<osg::Material> const material = new osg::Material;
    material->setColorMode(osg::Material::AMBIENT_AND_DIFFUSE);
    geometry.getOrCreateStateSet()->setAttributeAndModes(material);
}

} // namespace

void useVertexColors(osg::Geometry& geometry, osg::Vec4Array* colors) {
    follow(geometry, colors);
}

void useVertexColors(osg::Geometry& geometry, osg::Vec4ubArray* colors) {
    colors->setNormalize(true);
    follow(geometry, colors);
}

void useNoLight(osg::Geometry& geometry) {
    geometry.getOrCreateStateSet()->setMode(GL_LIGHTING, keptOff);
}

} // namespace hyxOSG
