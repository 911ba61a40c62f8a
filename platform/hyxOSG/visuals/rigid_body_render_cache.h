// Sharing one node between the visuals of equal shapes.
#pragma once

#include "platform/hyx/objects/referenced.h"

#include <osg/ref_ptr>

#include <cstddef>
#include <memory>
#include <string>

namespace osg {
class Node;
} // namespace osg

namespace hyxCollide {
class Geometry;
} // namespace hyxCollide

namespace hyxOSG {

/// Scene-graph nodes of shapes that many bodies share, so that copies of one template cost one mesh. Nodes are found by
/// the identity of the collision shape and the detail they were made with.
class RigidBodyRenderCache : public hyx::Referenced {
public:
    RigidBodyRenderCache();

    /// The node kept for the shape of `geometry`, null when there is none or `geometry` is null.
    osg::Node* find(hyxCollide::Geometry const* geometry, float detailRatio) const;

    /// Keeps `node` for the shape of `geometry`; null arguments are ignored.
    void insert(hyxCollide::Geometry const* geometry, float detailRatio, osg::Node* node);

    /// The number of nodes kept.
    std::size_t size() const;

    /// Forgets all nodes; those in a scene stay there.
    void clear();

protected:
    ~RigidBodyRenderCache() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
