#pragma once
#include <osg/Drawable>

#include <memory>

namespace hyx {
class RigidBody;
}

namespace hyxOSG {

/// Draws many small bodies as one drawable instead of a node each: the spheres of the added bodies become impostors.
/// Bodies are referenced while they are drawn.
class RigidBodySystemDrawable : public osg::Drawable {
public:
    RigidBodySystemDrawable();
    RigidBodySystemDrawable(RigidBodySystemDrawable const & other,
                            osg::CopyOp const & copyOperation = osg::CopyOp::SHALLOW_COPY);

    META_Node(hyxOSG, RigidBodySystemDrawable)

    /// Draw `body` too. False for null and for a body that is drawn already or has no sphere geometry.
    bool add(hyx::RigidBody * body);

    /// Stop drawing `body`. False when it is not drawn.
    bool remove(hyx::RigidBody * body);

    /// The number of bodies drawn.
    std::size_t getNumBodies() const;

    /// Reads the bodies' positions again; called once a frame by the update traversal.
    void update();

    void drawImplementation(osg::RenderInfo & renderInfo) const override;
    osg::BoundingBox computeBoundingBox() const override;
    void releaseGLObjects(osg::State * state = nullptr) const override;

protected:
    ~RigidBodySystemDrawable() override;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace hyxOSG
