// Rows of the functions that colour visuals.
#include "platform/hyxOSG/visuals/materials.h"

#include "binding/vocabulary/rows.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxCollide/geometry.h"
#include "platform/hyxOSG/visuals/camera_functions.h"
#include "platform/hyxOSG/visuals/render_state.h"

#include <osg/Group>
#include <osg/Uniform>
#include <osgViewer/Viewer>

namespace {

template <class Value>
void set_uniform(osg::Node* node, std::string const& name, Value value) {
    if (node)
        node->getOrCreateStateSet()->addUniform(new osg::Uniform(name.c_str(), value), osg::StateAttribute::ON);
}

void setUniformFloat(osg::Node* node, std::string const& name, float value) {
    set_uniform(node, name, value);
}

void setUniformInt(osg::Node* node, std::string const& name, int value) {
    set_uniform(node, name, value);
}

constexpr Declared materials_rows[] = {
    FUNCTION(setDiffuseColor, FREE(hyxOSG::setDiffuseColor, (osg::Node*, hyx::Vec4f const&, bool), false),
             FREE(hyxOSG::setDiffuseColor, (hyx::RigidBody*, hyx::Vec4f const&, osg::Group*)),
             FREE(hyxOSG::setDiffuseColor, (hyxCollide::Geometry*, hyx::Vec4f const&, osg::Group*))),
    FUNCTION(setAmbientColor, FREE(hyxOSG::setAmbientColor, (osg::Node*, hyx::Vec4f const&, bool), false)),
    FUNCTION(setSpecularColor, FREE(hyxOSG::setSpecularColor, (osg::Node*, hyx::Vec4f const&, bool), false)),
    FUNCTION(setShininess, FREE(hyxOSG::setShininess, (osg::Node*, float, bool), false)),
    FUNCTION(setAlpha, FREE(hyxOSG::setAlpha, (osg::Node*, float, bool), false)),
    FUNCTION(setEnableLight, FREE(hyxOSG::setEnableLight, (bool, int, osg::Node*))),
    FUNCTION(setEnableOutline, FREE(hyxOSG::setEnableOutline, (osg::Node*, bool, hyxRender::Color const&, float),
                                    hyxRender::Color(1, 1, 0, 1), 4.0f)),
    FUNCTION(getEnableOutline, FREE(hyxOSG::getEnableOutline, (osg::Node*))),
    FUNCTION(setEnableWireFrameMode, FREE(hyxOSG::setEnableWireFrameMode, (osg::Node*, bool))),
    FUNCTION(forceWireFrameModeOn, FREE(hyxOSG::forceWireFrameModeOn, (osg::Node*))),
    FUNCTION(toggleWireFrameMode, FREE(hyxOSG::toggleWireFrameMode, (osg::Node*))),
    FUNCTION(smoothNormals, FREE(hyxOSG::smoothNormals, (osg::Node*, float), 0.7854f)),
    FUNCTION(setUniformFloat, FREE(setUniformFloat, (osg::Node*, std::string const&, float))),
    FUNCTION(setUniformInt, FREE(setUniformInt, (osg::Node*, std::string const&, int))),
    FUNCTION(setOrbitCamera,
             FREE(hyxOSG::setOrbitCamera,
                  (osgViewer::Viewer*, osg::Group*, hyx::Vec3 const&, hyx::Vec3 const&, hyx::Vec3 const&, int), 1)),
    FUNCTION(getNearFarPoints,
             FREE(hyxOSG::getNearFarPoints, (osg::Camera const*, float, float, hyx::Vec3&, hyx::Vec3&))),
    FUNCTION(getHoveredGeometryContact,
             FREE(hyxOSG::getHoveredGeometryContact, (osg::Camera const*, hyxCollide::Space*, float, float))),
};

} // namespace

ROWS(materials_rows);
