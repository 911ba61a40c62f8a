// The node that shows a collision geometry, and follows it.
#pragma once

#include "platform/hyxCollide/geometry.h"

#include <osg/MatrixTransform>

namespace hyxCollide {
class Space;
} // namespace hyxCollide

namespace hyxOSG {

/// The visual of one collision geometry: a group that takes the geometry's world transform at every update traversal
/// and shows one of its render children. It can leave the scene by itself when the geometry leaves its space.
/// The geometry is not owned; when it is destroyed, getGeometry() becomes null.
class GeometryNode : public osg::MatrixTransform {
public:
    /// Which picture of the geometry a render child holds.
    enum RenderFlag {
        RENDER_DATA = 1,  ///< the detailed mesh that came with the model
        GEOMETRY_DATA = 2 ///< the collision shape itself
    };

    /// A node without a geometry.
    GeometryNode();

    /// A node that follows `geometry` (null: none). The visual itself is made by createVisual.
    explicit GeometryNode(hyxCollide::Geometry* geometry);

    /// Follows the geometry of `other`; children are shared or copied as `copyOperation` says.
    GeometryNode(GeometryNode const& other, osg::CopyOp const& copyOperation = osg::CopyOp::SHALLOW_COPY);

    /// Follow `geometry` from now on; null to stop following.
    void setGeometry(hyxCollide::Geometry* geometry);

    /// The geometry that is followed; null when none is, or when it was destroyed.
    hyxCollide::Geometry* getGeometry();
    hyxCollide::Geometry const* getGeometry() const;

    /// Leave the scene when the geometry is removed from its space or destroyed. True at first.
    void setAutoRemove(bool autoRemove);

    /// Whether the node leaves the scene together with its geometry.
    bool getAutoRemove() const;

    /// Told that `geometry` has left `space`: removes the node from its parents when auto-remove is on and `geometry`
    /// is the one that is followed.
    void removeNode(hyxCollide::Space* space, hyxCollide::Geometry* geometry);

    /// Takes the node out of every group that holds it. The node dies if nothing else holds a reference.
    void removeFromParents();

    /// Takes over the geometry's present world transform. Called by each update traversal; call it yourself to see a
    /// moved body before the next frame.
    void updateTransform();

    /// Shows the child stored under `flag` and hides the other. A flag without a child shows nothing of its own.
    /// Flags other than those of RenderFlag raise std::invalid_argument.
    void selectRenderChild(RenderFlag flag);

    /// The flag that is shown. GEOMETRY_DATA at first.
    RenderFlag getSelectedRenderChild() const;

    /// Stores `node` under `flag`, replacing the earlier one; null empties the place.
    void setRenderChild(RenderFlag flag, osg::Node* node);

    /// The node stored under `flag`, null when there is none.
    osg::Node* getRenderChild(RenderFlag flag);
    osg::Node const* getRenderChild(RenderFlag flag) const;

    /// A new node of the same class, without a geometry.
    osg::Object* cloneType() const override;

    /// A copy of the node, see the copy constructor.
    osg::Object* clone(osg::CopyOp const& copyOperation) const override;

    /// Whether `object` is a GeometryNode; false for null.
    bool isSameKindAs(osg::Object const* object) const override;

    /// "GeometryNode".
    char const* className() const override;

    /// "hyxOSG".
    char const* libraryName() const override;

    /// Visits the shown children; an update visitor first moves the node to its geometry.
    void traverse(osg::NodeVisitor& visitor) override;

    /// Called when the shape of the geometry changes. createVisual installs one that rebuilds the shape's picture.
    hyxCollide::Geometry::ShapeChangeEvent::CallbackType shapeCallback;

protected:
    ~GeometryNode() override;

private:
    void listen();

    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
