// Walks what a plane cuts, and keeps the faces.
#include "reference/hyxOSG/decoration/cut_faces.h"

#include "platform/hyxOSG/decoration/clip_plane.h"
#include "reference/machinery/meshes/closed_mesh.h"
#include "reference/machinery/meshes/plane_section.h"

#include <osg/Transform>

namespace hyxOSG {
namespace {

/// The plane in the coordinates in which `matrix` begins.
osg::Plane before(osg::Matrixd const& matrix, osg::Plane const& plane) {
    osg::Vec4d const whole(plane[0], plane[1], plane[2], plane[3]);
    osg::Vec4d const row = matrix * whole; // points stand before a matrix, planes behind it
    return osg::Plane(row.x(), row.y(), row.z(), row.w());
}

unsigned int revisionOf(osg::Geometry const& mesh) {
    return mesh.getVertexArray() ? mesh.getVertexArray()->getModifiedCount() : 0;
}

} // namespace

class CutFaces::Collector : public osg::NodeVisitor {
public:
    Collector(CutFaces& faces, osg::Plane const& plane, osgUtil::CullVisitor& culling)
        : osg::NodeVisitor(TRAVERSE_ACTIVE_CHILDREN),
          m_faces(faces),
          m_plane(plane),
          m_culling(culling),
          m_frame(culling.getFrameStamp() ? culling.getFrameStamp()->getFrameNumber() : 0) {
        setTraversalMask(culling.getTraversalMask());
        setNodeMaskOverride(culling.getNodeMaskOverride());
    }

    void apply(osg::Node& node) override {
        auto* const cut = dynamic_cast<ClipPlane*>(&node);
        osg::StateSet* const within = cut && cut->getEnable() ? cut->lastCut() : nullptr;
        if (cut && cut->getEnable() && !within)
            return;
        for (osg::StateSet* state : {node.getStateSet(), within})
            if (state)
                m_culling.pushStateSet(state);
        if (osg::Drawable* const drawable = node.asDrawable())
            add(*drawable);
        else
            traverse(node);
        for (osg::StateSet* state : {node.getStateSet(), within})
            if (state)
                m_culling.popStateSet();
    }

    void apply(osg::Drawable& drawable) override { apply(static_cast<osg::Node&>(drawable)); }

    void apply(osg::Transform& transform) override {
        if (transform.getReferenceFrame() != osg::Transform::RELATIVE_RF)
            return;
        osg::Matrixd const former = m_matrix;
        osg::ref_ptr<osg::RefMatrix> const view = new osg::RefMatrix(*m_culling.getModelViewMatrix());
        transform.computeLocalToWorldMatrix(m_matrix, this);
        transform.computeLocalToWorldMatrix(*view, &m_culling);
        m_culling.pushModelViewMatrix(view, transform.getReferenceFrame());
        apply(static_cast<osg::Node&>(transform));
        m_culling.popModelViewMatrix();
        m_matrix = former;
    }

    void apply(osg::Camera&) override {} // draws a picture of its own

private:
    void add(osg::Drawable& drawable) {
        osg::Geometry* const body = drawable.asGeometry();
        if (!body)
            return;
        osg::Geometry* const face = m_faces.faceOf(*body, getNodePath(), before(m_matrix, m_plane), m_frame);
        if (!face)
            return;
        osg::RefMatrix& view = *m_culling.getModelViewMatrix();
        osg::BoundingBox const& box = face->getBoundingBox();
        m_culling.updateCalculatedNearFar(view, *face, false);
        m_culling.addDrawableAndDepth(face, &view, static_cast<float>(-(osg::Vec3d(box.center()) * view).z()));
    }

    CutFaces& m_faces;
    osg::Plane m_plane;
    osgUtil::CullVisitor& m_culling;
    unsigned int m_frame;
    osg::Matrixd m_matrix; ///< from the present node to the group
};

void CutFaces::cull(osg::Group& group, osg::Plane const& plane, osgUtil::CullVisitor& culling) {
    Collector collector(*this, plane, culling);
    if (group.getStateSet())
        culling.pushStateSet(group.getStateSet());
    for (unsigned int i = 0; i < group.getNumChildren(); ++i)
        group.getChild(i)->accept(collector);
    if (group.getStateSet())
        culling.popStateSet();
    unsigned int const frame = culling.getFrameStamp() ? culling.getFrameStamp()->getFrameNumber() : 0;
    std::erase_if(m_faces, [frame](auto const& entry) { return entry.second.lastFrame + 60 < frame; });
}

osg::Geometry* CutFaces::faceOf(osg::Geometry& body, osg::NodePath const& path, osg::Plane const& plane,
                                unsigned int frame) {
    Face& face = m_faces[path];
    face.lastFrame = frame;
    unsigned int const revision = revisionOf(body);
    bool const same = face.body.valid() && face.body == &body && face.revision == revision;
    if (same && face.plane == plane)
        return face.mesh;
    if (!same)
        face.closed = isClosedOutwards(body);
    face.body = &body;
    face.revision = revision;
    face.plane = plane;
    face.mesh = face.closed ? sectionOf(body, plane) : nullptr;
    return face.mesh;
}

} // namespace hyxOSG
