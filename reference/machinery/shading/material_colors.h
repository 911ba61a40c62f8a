// The colours that materials start with, and how ambient follows diffuse colour.
#pragma once

#include <osg/LightModel>
#include <osg/Material>

namespace hyxOSG {

inline constexpr osg::Material::Face bothFaces = osg::Material::FRONT_AND_BACK;

/// The material of everything that has none of its own: light grey, a little shine.
osg::Material& defaultMaterial();

/// The light that comes from everywhere. Where programs light each pixel every surface has two sides; elsewhere the
/// second side costs time.
osg::ref_ptr<osg::LightModel> createLightModel(bool twoSided);

/// A copy that no later change of the original reaches.
osg::ref_ptr<osg::Material> copyOf(osg::Material const& material);

/// Colours both faces. In the shade the colour keeps its hue: the ambient colour follows, until one was set.
void setDiffuse(osg::Material& material, osg::Vec4 const& color);

/// Sets the ambient colour of both faces, which no longer follows the diffuse one.
void setAmbient(osg::Material& material, osg::Vec4 const& color);

} // namespace hyxOSG
