// Which nodes show a geometry, so that they are found without a walk through the scene.
#pragma once

#include <unordered_map>

namespace hyxCollide {
class Geometry;
} // namespace hyxCollide

namespace hyxOSG {

class GeometryNode;

using GeometryNodeIndex = std::unordered_multimap<hyxCollide::Geometry const*, GeometryNode*>;

/// All geometry nodes alive, by the geometry they follow. Kept by the nodes themselves; never destroyed, because nodes
/// may end later than this file's statics.
GeometryNodeIndex& geometryNodeIndex();

} // namespace hyxOSG
