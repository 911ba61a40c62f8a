// Many bodies drawn at once.
#pragma once

#include <osg/Drawable>

#include <memory>

namespace hyx {
class RigidBody;
} // namespace hyx

namespace hyxOSG {

/// Draws many bodies made of spheres as one drawable instead of a node each. Bodies are referenced while they are
/// drawn.
class RigidBodySystemDrawable : public osg::Drawable {
public:
    RigidBodySystemDrawable();
    RigidBodySystemDrawable(RigidBodySystemDrawable const& other,
                            osg::CopyOp const& copyOperation = osg::CopyOp::SHALLOW_COPY);

    META_Node(hyxOSG, RigidBodySystemDrawable)

        /// Draw `body` too. False for null, for a body that is drawn already and for one with other geometries than
        /// spheres.
        bool add(hyx::RigidBody* body);

    /// Stop drawing `body`. False when it is not drawn.
    bool remove(hyx::RigidBody* body);

    /// The number of bodies drawn.
    std::size_t getNumBodies() const;

    /// Reads the bodies' positions again; called once a frame by the update traversal.
    void update();

    void drawImplementation(osg::RenderInfo& renderInfo) const override;
    osg::BoundingBox computeBoundingBox() const override;
    void releaseGLObjects(osg::State* state = nullptr) const override;

protected:
    ~RigidBodySystemDrawable() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
