// Labels on visuals.
#pragma once

#include "platform/hyx/values/vec3.h"
#include "platform/hyx/values/vec4f.h"

#include <cstddef>
#include <string>

namespace osg {
class Geode;
class Group;
} // namespace osg

namespace hyxCollide {
class Geometry;
} // namespace hyxCollide

namespace hyxOSG {

/// Text (UTF-8) in the world, turned to the camera. `size` is the height of a letter in metres; it must be positive and
/// finite, else std::invalid_argument. Nothing holds the result: put it into a scene to keep it.
osg::Geode* createText(std::string const& text, hyx::Vec3 const& position = hyx::Vec3(),
                       hyx::Vec4f const& color = hyx::Vec4f(1, 1, 1, 1), double size = 0.2);

/// Attaches text to the visual of `geometry` under `root`, at `localPosition` in the geometry's frame. False when there
/// is no such visual or an argument is null.
bool addText(hyxCollide::Geometry const* geometry, osg::Group* root, std::string const& text,
             hyx::Vec3 const& localPosition = hyx::Vec3(), hyx::Vec4f const& color = hyx::Vec4f(1, 1, 1, 1),
             double size = 0.2);

/// Takes away the text number `index` (from 0) of the visual of `geometry`. False when there is no such text.
bool removeText(hyxCollide::Geometry const* geometry, osg::Group* root, std::size_t index = 0);

} // namespace hyxOSG
