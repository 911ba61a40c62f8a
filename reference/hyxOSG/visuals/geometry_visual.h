// The visual of one collision geometry with all that may be chosen about it.
#pragma once

namespace osg {
class Group;
class Node;
} // namespace osg

namespace hyxCollide {
class Geometry;
} // namespace hyxCollide

namespace hyxOSG {

class GeometryNode;
class RigidBodyRenderCache;

/// How visuals are made; checked once for all that are made with it.
struct ShapeLook {
    /// \param cache shares the nodes of shapes; null for none
    /// \throws std::invalid_argument for a detail ratio that is not positive and finite
    ShapeLook(float detailRatio, bool evenIfSensor, RigidBodyRenderCache* cache = nullptr);

    float detailRatio;
    bool evenIfSensor;
    RigidBodyRenderCache* cache;
};

/// Like createVisual for a geometry.
/// \param own what is seen of it, in its own coordinates; null is its shape
GeometryNode* createGeometryVisual(hyxCollide::Geometry const& geometry, osg::Group& root, ShapeLook const& look,
                                   osg::Node* own = nullptr);

} // namespace hyxOSG
