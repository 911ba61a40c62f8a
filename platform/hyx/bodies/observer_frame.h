// Frames without mass from which the motion of a body is read.
#pragma once

#include "platform/hyx/bodies/frame.h"

namespace hyx {

class RigidBody;

/// A massless frame that rides on a body (or stands in the world) and reports its motion.
class ObserverFrame : public Frame {
public:
    ObserverFrame();
    /// At `local` relative to `body`; null stands for the world.
    explicit ObserverFrame(RigidBody* body, AffineMatrix4x4 const& local = AffineMatrix4x4());
    ObserverFrame(Name const& name, RigidBody* body, AffineMatrix4x4 const& local = AffineMatrix4x4());

    /// Moves this frame to another body; its local transform stays. Null lets it stand in the world.
    void attachTo(RigidBody* body);
    /// The body that the frame follows; null for none.
    RigidBody* getRigidBody() const;

    /// In the world, metres.
    Vec3 getPosition() const { return getTranslate(); }

    /// In the world.
    Quat getRotation() const { return getRotate(); }

    /// The velocity of this frame's origin in the world, m/s.
    Vec3 getVelocity() const;
    /// rad/s in the world.
    Vec3 getAngularVelocity() const;

protected:
    ~ObserverFrame() override;
    bool findPlace(AffineMatrix4x4& place) const override;

private:
    ref_ptr<RigidBody> m_body;
};

} // namespace hyx
