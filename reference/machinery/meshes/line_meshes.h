// Meshes of unlit lines.
#pragma once

#include <osg/Geometry>
#include <osg/ref_ptr>

namespace hyxOSG {

/// Lines of one colour, `width` pixels wide, between the points as `mode` (GL_LINES, GL_LINE_STRIP) says.
/// \throws std::invalid_argument unless the width is positive and finite
osg::ref_ptr<osg::Geometry> lineMesh(osg::Vec3Array* points, GLenum mode, osg::Vec4 const& color, float width);

/// Draws `state` without light and textures.
void makeUnlit(osg::StateSet& state);

} // namespace hyxOSG
