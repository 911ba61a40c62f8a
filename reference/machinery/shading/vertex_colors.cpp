// Lets vertex colours decide, with and without light.
#include "reference/machinery/shading/vertex_colors.h"

#include "reference/machinery/shading/node_state.h"

#include <osg/Material>

#include <algorithm>

namespace hyxOSG {

namespace {

void follow(osg::Geometry& geometry, osg::Array* colors) {
    geometry.setColorArray(colors, osg::Array::BIND_PER_VERTEX);
    osg::ref_ptr<osg::Material> const material = new osg::Material;
    material->setColorMode(osg::Material::AMBIENT_AND_DIFFUSE);
    geometry.getOrCreateStateSet()->setAttributeAndModes(material);
}

void blend(osg::Geometry& geometry, bool translucent) {
    osg::StateSet& state = *geometry.getOrCreateStateSet();
    bool const blends = state.getAttribute(osg::StateAttribute::BLENDFUNC) != nullptr;
    if (blends != translucent)
        setOpacity(state, translucent ? 0 : 1);
}

} // namespace

void useVertexColors(osg::Geometry& geometry, osg::Vec4Array* colors) {
    follow(geometry, colors);
}

void useVertexColors(osg::Geometry& geometry, osg::Vec4ubArray* colors) {
    colors->setNormalize(true);
    follow(geometry, colors);
}

void followOpacity(osg::Geometry& geometry, osg::Vec4Array const& colors) {
    blend(geometry, std::any_of(colors.begin(), colors.end(), [](auto const& color) { return color.a() < 1; }));
}

void followOpacity(osg::Geometry& geometry, osg::Vec4ubArray const& colors) {
    blend(geometry, std::any_of(colors.begin(), colors.end(), [](auto const& color) { return color.a() < 255; }));
}

void useNoLight(osg::Geometry& geometry) {
    geometry.getOrCreateStateSet()->setMode(GL_LIGHTING, keptOff);
}

} // namespace hyxOSG
