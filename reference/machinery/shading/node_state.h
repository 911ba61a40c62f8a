// State sets of nodes that may share them with other nodes.
#pragma once

#include <osg/Material>
#include <osg/Node>
#include <osg/StateSet>
#include <osg/ref_ptr>

namespace hyxOSG {

/// What a script sets on a node beats what loaded models and the nodes above say: the nearest setting wins.
inline constexpr osg::StateAttribute::GLModeValue setByScript =
    osg::StateAttribute::ON | osg::StateAttribute::OVERRIDE | osg::StateAttribute::PROTECTED;

/// For looks that no program or light of the scene may change.
inline constexpr osg::StateAttribute::GLModeValue keptOn = osg::StateAttribute::ON | osg::StateAttribute::PROTECTED;
inline constexpr osg::StateAttribute::GLModeValue keptOff = osg::StateAttribute::OFF | osg::StateAttribute::PROTECTED;

/// For passes that draw what is below their own way, whatever it looks like.
inline constexpr osg::StateAttribute::GLModeValue forced = osg::StateAttribute::ON | osg::StateAttribute::OVERRIDE;

/// The state set of `node` to be written: made when there is none, copied first when other nodes use it too.
osg::StateSet& writableStateSet(osg::Node& node);

/// The material of `node` to be written. A node without one starts with a copy of the first material below it, or of
/// the default material, so that changing one colour keeps the rest of the look.
osg::Material& writableMaterial(osg::Node& node);

/// How bright grounds below are in sky light, as a share of their colour.
void setGroundTone(osg::StateSet& state, float tone, osg::StateAttribute::GLModeValue mode = setByScript);

/// Blends `state` with what lies behind, far to near; or, with 1, makes it opaque again.
void setOpacity(osg::StateSet& state, float alpha);

/// For points, which are squares of whole pixels: several samples smooth nothing there, and take twice the time.
void drawWithoutSamples(osg::StateSet& state);

} // namespace hyxOSG
