// Draws a triangle mesh whose vertices move.
#pragma once

#include "platform/hyx/objects/referenced.h"

#include <osg/Group>

#include <memory>

namespace hyxCollide {
class Trimesh;
} // namespace hyxCollide

namespace hyxOSG {

/// Draws a mesh and follows its vertices, in place: positions and normals are rewritten, nothing is allocated unless
/// the number of triangles changes.
class DeformableMeshUpdater : public hyx::Referenced {
public:
    /// \param mesh the mesh to draw; kept alive. Null: nothing is drawn.
    /// \param root the group that the drawing is put under. Null: nothing is drawn.
    DeformableMeshUpdater(hyxCollide::Trimesh* mesh, osg::Group* root);

    /// Brings the drawing up to date with the mesh.
    /// \param force rewrite it even if no vertex has moved
    void update(bool force = false);

    /// Whether every update() rewrites the drawing even if no vertex has moved. Default false.
    void setForceUpdate(bool forceUpdate);
    /// Whether every update() rewrites the drawing even if no vertex has moved.
    bool getForceUpdate() const;

protected:
    ~DeformableMeshUpdater() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
