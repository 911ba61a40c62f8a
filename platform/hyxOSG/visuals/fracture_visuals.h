// Visuals for the pieces that break off.
#pragma once

#include "platform/hyx/values/vec4f.h"

namespace osg {
class Group;
} // namespace osg

namespace hyxModel {
class FractureGenerator;
} // namespace hyxModel

namespace hyxOSG {

/// Makes visuals under `root` for the pieces that `generator` makes. The visual of the body that broke goes by itself.
/// Nothing for null arguments.
void addRenderCallbackToFracture(hyxModel::FractureGenerator* generator, osg::Group* root);

/// The same with pieces in `color`.
void addRenderColorCallbackToFracture(hyxModel::FractureGenerator* generator, osg::Group* root,
                                      hyx::Vec4f const& color);

} // namespace hyxOSG
