// Smooth shading of meshes.

#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/visuals/render_state.h"
#include "reference/machinery/meshes/crease_normals.h"
#include "reference/machinery/meshes/mesh_builder.h"
#include "reference/machinery/meshes/mesh_check.h"

#include <osg/Geometry>
#include <osg/Group>

#include <stdexcept>

namespace hyxOSG {
namespace {

constexpr unsigned int copyMesh = osg::CopyOp::DEEP_COPY_ARRAYS | osg::CopyOp::DEEP_COPY_PRIMITIVES;

/// A child that other places of the scene show too is copied, so that only this place changes.
osg::ref_ptr<osg::Node> ownChild(osg::Group& parent, unsigned int place) {
    osg::Node* const child = parent.getChild(place);
    bool const shared = child->getNumParents() > 1;
    if (!shared || dynamic_cast<GeometryNode*>(child))
        return child;
    bool const isMesh = child->asGeometry();
    osg::ref_ptr<osg::Node> const copy =
        osg::clone(child, isMesh ? osg::CopyOp(copyMesh) : osg::CopyOp(osg::CopyOp::SHALLOW_COPY));
    parent.setChild(place, copy);
    return copy;
}

bool hasTriangles(osg::Geometry const& mesh) {
    for (unsigned int i = 0; i < mesh.getNumPrimitiveSets(); ++i)
        if (mesh.getPrimitiveSet(i)->getMode() >= GL_TRIANGLES)
            return dynamic_cast<osg::Vec3Array const*>(mesh.getVertexArray()) != nullptr;
    return false;
}

std::size_t smooth(osg::Node& node, double creaseAngle) {
    if (osg::Geometry* const mesh = node.asGeometry()) {
        if (!hasTriangles(*mesh))
            return 0;
        mesh->setNormalArray(nullptr);
        if (std::string const fault = meshFault(*mesh); !fault.empty())
            throw std::invalid_argument("the mesh " + fault);
        setCreaseNormals(*mesh, creaseAngle);
        useVertexBuffers(*mesh);
        return 1;
    }
    std::size_t changed = 0;
    if (osg::Group* const group = node.asGroup())
        for (unsigned int place = 0; place < group->getNumChildren(); ++place)
            changed += smooth(*ownChild(*group, place), creaseAngle);
    return changed;
}

} // namespace

std::size_t smoothNormals(osg::Node* node, float creaseAngle) {
    if (!(creaseAngle >= 0 && creaseAngle <= static_cast<float>(osg::PI) + 1e-6f))
        throw std::invalid_argument("the crease angle must lie between 0 and pi radians");
    return node ? smooth(*node, creaseAngle) : 0;
}

} // namespace hyxOSG
