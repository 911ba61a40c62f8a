// Loading scenes and models from files.
#pragma once

#include "platform/hyx/values/types.h"

#include <osgDB/Options>

#include <string>

namespace osg {
class Group;
class Node;
} // namespace osg

namespace hyxSDK {
class Assembly;
class Simulation;
} // namespace hyxSDK

namespace hyxOSG {
class RigidBodyRenderCache;

/// Reads a scene file (.json, see docs/scene_files.md, or a model in .urdf, .xml, .mjcf, .sdf or .world) into
/// `simulation`, as an assembly of the name that the file gives, and makes the visuals of what was read under `root`
/// (null: no visuals). `parent`: the assembly goes into this one instead of straight into the simulation; null: none.
/// `detailRatio` and `evenIfSensor` as in createVisual, for what looks like its collision shapes. `selection`: what to
/// take from the file, a mask of 1 = bodies, 2 = constraints, 4 = materials. `cache`: shares nodes between bodies of
/// one shape, may be null. False, with the reason in the notification stream and nothing added,
/// when the file is missing, damaged or of an unknown kind, or `simulation` is null.
bool readFile(std::string const& file, hyxSDK::Simulation* simulation, osg::Group* root,
              hyxSDK::Assembly* parent = nullptr, double detailRatio = 1.0, bool evenIfSensor = false,
              hyx::UInt selection = 7, RigidBodyRenderCache* cache = nullptr);

/// Loads a model file as a node: everything the scene-graph library has a reader for, and through further readers
/// PLY, glTF, FBX, BLEND and more. Null, with the reason in the notification stream, when it cannot be read.
/// Lights in the file are left out: a model does not change the light of a scene. `useCache`: a second read of the same
/// file gives the same node. The cache holds the node; without it nothing does until the caller puts it into a scene.
osg::Node* readNodeFile(std::string const& file, bool useCache = true);

/// The same with reader options: search paths and a plugin option string. Null options are the default ones.
osg::Node* readNodeFile(std::string const& file, osgDB::Options const* options, bool useCache = true);

} // namespace hyxOSG
