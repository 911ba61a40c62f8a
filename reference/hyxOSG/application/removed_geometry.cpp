// Collects visuals until the next frame.
#include "reference/hyxOSG/application/removed_geometry.h"

#include "platform/hyxOSG/nodes/geometry_node.h"

#include <osg/ref_ptr>

#include <vector>

namespace hyxOSG {
namespace {

std::vector<osg::ref_ptr<GeometryNode>>& pending() {
    static std::vector<osg::ref_ptr<GeometryNode>> nodes;
    return nodes;
}

} // namespace

void RemovedGeometry::add(GeometryNode* node) {
    if (node)
        pending().push_back(node);
}

void RemovedGeometry::sweep() {
    if (pending().empty())
        return;
    for (auto const& node : pending())
        if (node->getAutoRemove())
            node->removeFromParents();
    pending().clear();
}

void RemovedGeometry::forget() {
    pending().clear();
}

} // namespace hyxOSG
