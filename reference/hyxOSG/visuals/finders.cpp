// Searches scenes for the visuals of things.
#include "platform/hyxOSG/visuals/finders.h"

#include "platform/hyxOSG/nodes/frame_trajectory_drawable.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/nodes/particle_system_drawable.h"
#include "platform/hyxOSG/nodes/rigid_body_system_drawable.h"
#include "reference/hyxOSG/nodes/geometry_node_index.h"
#include "reference/machinery/meshes/ancestry.h"

#include <osg/Group>
#include <osg/NodeVisitor>
#include <osgText/Text>

#include <functional>

namespace hyxOSG {
namespace {

/// The first node of a class that passes a test, depth first.
template <class Wanted>
class Finder : public osg::NodeVisitor {
public:
    explicit Finder(std::function<bool(Wanted const&)> passes)
        : osg::NodeVisitor(TRAVERSE_ALL_CHILDREN), m_passes(std::move(passes)) {
        setNodeMaskOverride(~0u); // hidden nodes are found too
    }

    void apply(osg::Node& node) override {
        auto* const candidate = dynamic_cast<Wanted*>(&node);
        if (!found && candidate && m_passes(*candidate))
            found = candidate;
        if (!found)
            traverse(node);
    }

    Wanted* found = nullptr;

private:
    std::function<bool(Wanted const&)> m_passes;
};

template <class Wanted>
Wanted* findFirst(osg::Group* root, std::function<bool(Wanted const&)> passes = [](Wanted const&) { return true; }) {
    if (!root)
        return nullptr;
    Finder<Wanted> finder(std::move(passes));
    root->accept(finder);
    return finder.found;
}

} // namespace

GeometryNode* findGeometryNode(hyxCollide::Geometry const* geometry, osg::Group* root) {
    if (!geometry || !root)
        return nullptr;
    GeometryNode* found = nullptr;
    auto const [first, last] = geometryNodeIndex().equal_range(geometry);
    for (auto place = first; place != last; ++place)
        if (isAbove(root, *place->second)) {
            if (found) // the order in the tree decides between several
                return findFirst<GeometryNode>(
                    root, [geometry](GeometryNode const& node) { return node.getGeometry() == geometry; });
            found = place->second;
        }
    return found;
}

ParticleSystemDrawable* findParticleSystemDrawable(osg::Group* root) {
    return findFirst<ParticleSystemDrawable>(root);
}

RigidBodySystemDrawable* findRigidBodySystemDrawable(osg::Group* root) {
    return findFirst<RigidBodySystemDrawable>(root);
}

FrameTrajectoryDrawable* findFrameTrajectoryDrawable(osg::Group* root) {
    return findFirst<FrameTrajectoryDrawable>(root);
}

osgText::Text* findText(hyxCollide::Geometry const* geometry, osg::Group* root, std::size_t index) {
    std::size_t place = 0;
    return findFirst<osgText::Text>(findGeometryNode(geometry, root),
                                    [&place, index](osgText::Text const&) { return place++ == index; });
}

} // namespace hyxOSG
