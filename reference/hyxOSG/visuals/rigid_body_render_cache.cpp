// Remembers meshes by shape and detail.
#include "platform/hyxOSG/visuals/rigid_body_render_cache.h"

#include "platform/hyxCollide/geometry.h"
#include "platform/hyxCollide/shape.h"

#include <osg/Node>

#include <map>
#include <utility>

namespace hyxOSG {

struct RigidBodyRenderCache::Implementation {
    struct Entry {
        hyx::ref_ptr<hyxCollide::Shape> shape; // kept, so that no other shape takes its address
        hyx::UInt revision;
        osg::ref_ptr<osg::Node> node;
    };

    std::map<std::pair<hyxCollide::Shape const*, float>, Entry> nodes;
};

RigidBodyRenderCache::RigidBodyRenderCache() : m_implementation(std::make_unique<Implementation>()) {}

RigidBodyRenderCache::~RigidBodyRenderCache() = default;

osg::Node* RigidBodyRenderCache::find(hyxCollide::Geometry const* geometry, float detailRatio) const {
    if (!geometry)
        return nullptr;
    auto const place = m_implementation->nodes.find({geometry->getShape(), detailRatio});
    bool const current =
        place != m_implementation->nodes.end() && place->second.revision == place->first.first->getRevision();
    return current ? place->second.node.get() : nullptr;
}

void RigidBodyRenderCache::insert(hyxCollide::Geometry const* geometry, float detailRatio, osg::Node* node) {
    if (geometry && node)
        m_implementation->nodes[{geometry->getShape(), detailRatio}] = {geometry->getShape(),
                                                                        geometry->getShape()->getRevision(), node};
}

std::size_t RigidBodyRenderCache::size() const {
    return m_implementation->nodes.size();
}

void RigidBodyRenderCache::clear() {
    m_implementation->nodes.clear();
}

} // namespace hyxOSG
