// Writes the vertices of a changed collision mesh into its visual.
#include "platform/hyxOSG/renderers/deformable_mesh_updater.h"

#include "platform/hyxCollide/trimesh.h"
#include "platform/osg/attachment.h"
#include "reference/hyxOSG/renderers/surface_mesh.h"

#include <osg/observer_ptr>

namespace hyxOSG {

struct DeformableMeshUpdater::Implementation {
    hyx::ref_ptr<hyxCollide::Trimesh> mesh;
    osg::observer_ptr<osg::Group> root;
    SurfaceMesh surface{"deformable mesh"};
    hyx::Vec3Vector drawn; // the vertices at the last rewrite
    bool forceUpdate = false;

    void rewrite();
};

void DeformableMeshUpdater::Implementation::rewrite() {
    drawn = mesh->getVertices();
    auto& positions = surface.positions();
    positions.resize(drawn.size());
    std::transform(drawn.begin(), drawn.end(), positions.begin(),
                   [](auto const& v) { return osg::Vec3d(v.x, v.y, v.z); });
    auto const& indices = mesh->getIndices();
    auto& triangles = surface.triangles();
    auto const topology = !std::equal(indices.begin(), indices.end(), triangles.begin(), triangles.end());
    if (topology)
        triangles.assign(indices.begin(), indices.end());
    surface.computeNormals();
    surface.publish(topology);
}

DeformableMeshUpdater::DeformableMeshUpdater(hyxCollide::Trimesh* mesh, osg::Group* root)
    : m_implementation(std::make_unique<Implementation>()) {
    m_implementation->mesh = mesh;
    m_implementation->root = root;
    if (root)
        osg::attach(*root, *m_implementation->surface.node());
    update(true);
}

DeformableMeshUpdater::~DeformableMeshUpdater() {
    if (m_implementation->root.valid())
        m_implementation->root->removeChild(m_implementation->surface.node());
}

void DeformableMeshUpdater::update(bool force) {
    if (!m_implementation->mesh)
        return;
    if (force || m_implementation->forceUpdate || m_implementation->mesh->getVertices() != m_implementation->drawn)
        m_implementation->rewrite();
}

void DeformableMeshUpdater::setForceUpdate(bool forceUpdate) {
    m_implementation->forceUpdate = forceUpdate;
}

bool DeformableMeshUpdater::getForceUpdate() const {
    return m_implementation->forceUpdate;
}

} // namespace hyxOSG
