// Gathers the triangles of a scene graph into a collision mesh.
#include "platform/hyxOSG/visuals/trimesh_conversion.h"

#include "platform/hyxCollide/trimesh.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/meshes/mesh_check.h"

#include <osg/Drawable>
#include <osg/NodeVisitor>
#include <osg/Transform>
#include <osg/TriangleFunctor>

#include <bit>
#include <stdexcept>
#include <unordered_map>

namespace hyxOSG {
namespace {

struct PlaceHash {
    std::size_t operator()(osg::Vec3d const& place) const {
        std::size_t hash = 0;
        for (int i = 0; i < 3; ++i) // both zeros are one place
            hash = (hash ^ std::bit_cast<std::size_t>(place[i] + 0.0)) * 0x9E3779B97F4A7C15u;
        return hash ^ hash >> 32;
    }
};

/// Gathers triangles, with corners at the same place becoming one vertex, so that a closed mesh stays closed.
struct TriangleGatherer {
    osg::Matrixd toRoot;
    hyx::Vec3Vector vertices;
    hyx::UInt32Vector indices;
    std::unordered_map<osg::Vec3d, unsigned int, PlaceHash> known;

    unsigned int indexOf(osg::Vec3d const& position) {
        auto const [place, isNew] = known.emplace(position * toRoot, static_cast<unsigned int>(vertices.size()));
        if (isNew)
            vertices.push_back(toHyx(place->first));
        return place->second;
    }

    void operator()(osg::Vec3 const& a, osg::Vec3 const& b, osg::Vec3 const& c, bool = false) {
        for (osg::Vec3 const& corner : {a, b, c})
            indices.push_back(indexOf(corner));
    }
};

class GatherTriangles : public osg::NodeVisitor {
public:
    GatherTriangles() : osg::NodeVisitor(TRAVERSE_ACTIVE_CHILDREN) {}

    void apply(osg::Drawable& drawable) override {
        osg::Geometry const* const mesh = drawable.asGeometry();
        if (std::string const fault = mesh ? meshFault(*mesh) : ""; !fault.empty())
            throw std::invalid_argument("the mesh " + fault);
        gatherer.toRoot = m_toRoot;
        drawable.accept(gatherer);
    }

    void apply(osg::Transform& transform) override {
        osg::Matrixd const outer = m_toRoot;
        transform.computeLocalToWorldMatrix(m_toRoot, this);
        traverse(transform);
        m_toRoot = outer;
    }

    osg::TriangleFunctor<TriangleGatherer> gatherer;

private:
    osg::Matrixd m_toRoot;
};

} // namespace

hyxCollide::Trimesh* createTrimesh(osg::Node* node) {
    if (!node)
        return nullptr;
    GatherTriangles visitor;
    node->accept(visitor);
    if (visitor.gatherer.indices.empty())
        return nullptr;
    return new hyxCollide::Trimesh(visitor.gatherer.vertices, visitor.gatherer.indices);
}

} // namespace hyxOSG
