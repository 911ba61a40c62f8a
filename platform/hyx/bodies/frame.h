// Coordinate systems that stand in one another.
#pragma once

#include "platform/hyx/objects/object.h"
#include "platform/hyx/values/affine_matrix4x4.h"

namespace hyx {

/// A coordinate system, given relative to a parent frame or to the world.
class Frame : public Object {
public:
    Frame() = default;
    /// At the place `local` relative to `parent`; null stands for the world.
    explicit Frame(AffineMatrix4x4 const& local, Frame* parent = nullptr);

    /// Null stands for the world. Throws std::invalid_argument when this frame would come to be above itself.
    void setParent(Frame* parent);

    Frame* getParent() const { return m_parent.get(); }

    /// From the frame to its parent.
    void setLocalMatrix(AffineMatrix4x4 const& local) { m_local = local; }

    AffineMatrix4x4 const& getLocalMatrix() const { return m_local; }

    /// Where the frame is in its parent, metres.
    void setLocalTranslate(Vec3 const& translation) { m_local.setTranslate(translation); }

    Vec3 getLocalTranslate() const { return m_local.getTranslate(); }

    /// How the frame is turned in its parent.
    void setLocalRotate(Quat const& rotation) { m_local.setRotate(rotation); }

    Quat getLocalRotate() const { return m_local.getRotate(); }

    /// From this frame to the world.
    AffineMatrix4x4 getMatrix() const;

    /// Where the frame is in the world, metres.
    Vec3 getTranslate() const { return getMatrix().getTranslate(); }

    /// How the frame is turned in the world.
    Quat getRotate() const { return getMatrix().getRotate(); }

    /// A point of the frame, metres, in the world.
    Vec3 transformPointToWorld(Vec3 const& point) const { return getMatrix().transformPoint(point); }

    /// A point of the world, metres, in the frame.
    Vec3 transformPointToLocal(Vec3 const& point) const { return getMatrix().inverse().transformPoint(point); }

protected:
    ~Frame() override;

    /// Where the frame is in the world, if it knows without its parents; false otherwise.
    virtual bool findPlace(AffineMatrix4x4& place) const;

private:
    AffineMatrix4x4 m_local;
    ref_ptr<Frame> m_parent;
    int m_numChildren = 0;
};

} // namespace hyx
