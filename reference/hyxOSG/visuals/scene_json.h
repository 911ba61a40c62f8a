// Scenes as JSON text.
#pragma once

#include "platform/hyx/bodies/material.h"
#include "platform/hyx/values/vec4f.h"
#include "platform/hyxSDK/assembly.h"

#include <map>
#include <string>
#include <vector>

namespace hyxOSG {

/// What to take from a scene file, a mask.
enum SceneSelection : hyx::UInt { SCENE_BODIES = 1, SCENE_CONSTRAINTS = 2, SCENE_MATERIALS = 4 };

/// What a scene file describes, not yet in a simulation.
struct SceneContent {
    hyx::Vector<hyx::ref_ptr<hyx::Material>> materials;
    hyx::RigidBodyPtrVector bodies;
    hyx::ConstraintPtrVector constraints;
    std::map<hyxCollide::Geometry const*, hyx::Vec4f> colors; ///< of the geometries that the file gives one
    bool hasGravity = false;
    hyx::Vec3 gravity;
};

/// Reads a scene; docs/scene_files.md tells what may stand in it.
/// \param folder where mesh files with relative names are
/// \throws std::runtime_error, naming the place in the file, for anything that is not so
SceneContent readSceneJson(std::string const& text, std::string const& folder);

} // namespace hyxOSG
