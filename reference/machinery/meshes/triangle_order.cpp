// Leaves the order to the scene-graph library, where it is worth it.
#include "reference/machinery/meshes/triangle_order.h"

#include <osgUtil/MeshOptimizers>

namespace hyxOSG {
namespace {

constexpr unsigned int fewestTriangles = 300; // fewer fit the caches in any order

} // namespace

void orderTriangles(osg::Geometry& mesh) {
    if (mesh.getNumPrimitiveSets() != 1)
        return;
    osg::PrimitiveSet const& elements = *mesh.getPrimitiveSet(0);
    if (elements.getMode() == GL_TRIANGLES && elements.getDrawElements() &&
        elements.getNumIndices() >= 3 * fewestTriangles)
        osgUtil::VertexCacheVisitor().optimizeVertices(mesh);
}

} // namespace hyxOSG
