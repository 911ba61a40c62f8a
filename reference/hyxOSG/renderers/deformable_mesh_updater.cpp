#include "platform/hyxOSG/renderers/deformable_mesh_updater.h"

#include "platform/hyxCollide/trimesh.h"
#include "reference/hyxOSG/renderers/surface_mesh.h"

#include <osg/observer_ptr>

namespace hyxOSG {

struct DeformableMeshUpdater::Impl {
    hyx::ref_ptr<hyxCollide::Trimesh> mesh;
    osg::observer_ptr<osg::Group> root;
    SurfaceMesh surface{"deformable mesh"};
    hyx::Vec3Vector drawn; // the vertices at the last rewrite
    bool forceUpdate = false;

    void rewrite();
};

void DeformableMeshUpdater::Impl::rewrite() {
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
    surface.compute_normals();
    surface.publish(topology);
}

DeformableMeshUpdater::DeformableMeshUpdater(hyxCollide::Trimesh* mesh, osg::Group* root)
    : m_impl(std::make_unique<Impl>()) {
    m_impl->mesh = mesh;
    m_impl->root = root;
    if (root)
        root->addChild(m_impl->surface.node());
    update(true);
}

DeformableMeshUpdater::~DeformableMeshUpdater() {
    if (m_impl->root.valid())
        m_impl->root->removeChild(m_impl->surface.node());
}

void DeformableMeshUpdater::update(bool force) {
    if (!m_impl->mesh)
        return;
    if (force || m_impl->forceUpdate || m_impl->mesh->getVertices() != m_impl->drawn)
        m_impl->rewrite();
}

void DeformableMeshUpdater::setForceUpdate(bool forceUpdate) {
    m_impl->forceUpdate = forceUpdate;
}

bool DeformableMeshUpdater::getForceUpdate() const {
    return m_impl->forceUpdate;
}

} // namespace hyxOSG
