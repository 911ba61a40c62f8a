// What all joints have in common: bodies, attachment frames, strength and softness, the forces they take.
#pragma once

#include "platform/hyx/bodies/frame.h"
#include "platform/hyx/objects/object.h"
#include "platform/hyx/values/affine_matrix4x4.h"
#include "platform/hyx/values/vector.h"

#include <memory>

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyx {

class RigidBody;

/// Holds two bodies (or one body and the world) together in some directions and leaves the others free. Each direction
/// is one row, whose force can be read. Both bodies have an attachment frame; in joints with an axis it is the frames'
/// Z axis. Angles, distances, speeds and forces are those of the first body relative to the second: a motor with a
/// positive speed turns the first body about the axis in the sense of the right hand.
class Constraint : public Object {
public:
    /// What one row holds.
    enum RowType { TRANSLATIONAL, ROTATIONAL };

    /// 0 or 1; null where that side is the world, and for any other index.
    RigidBody* getBodyAt(UInt index) const;
    /// The sides that a body is on: 2, or 1 at the world.
    UInt getNumBodies() const;
    /// The attachment frame of side 0 or 1, in world coordinates.
    AffineMatrix4x4 getAttachmentTransform(UInt index) const;
    /// The attachment frame of side 0 or 1; its parent is the body's frame, or null for the world. Null for any other
    /// index.
    Frame* getAttachmentFrame(UInt index) const;

    /// Whether the constraint acts. On at the start.
    void setEnable(bool enable);
    bool isEnabled() const;

    /// Metres per newton (radians per newton metre) of all rows; 0, the start, is rigid. Throws std::invalid_argument
    /// when negative or not finite.
    void setCompliance(Real compliance);
    Real getCompliance() const;
    /// The time in seconds in which an error of a compliant row dies out; 1 time step where never set.
    void setDamping(Real time);
    Real getDamping() const;
    /// The bounds of the force of one row, in newtons or newton metres; infinite at the start. Throws std::out_of_range
    /// for a row that is not there.
    void setForceRange(Real lower, Real upper, UInt row);

    /// The rows at work: those of the joint itself, then those of its active motor, range and lock.
    UInt getNumRows() const;
    /// Whether a row holds a way or a turn.
    RowType getRowType(UInt row) const;
    /// The world direction along or about which a row acts.
    Vec3 getRowAxis(UInt row) const;
    /// The force (newtons) or torque (newton metres) of a row in the last step, positive when it moves the first body,
    /// or turns it, in the direction of the row's axis.
    Real getRowForce(UInt row) const;

    /// The whole force and torque that this constraint put on the body of side `index` in the last step, in world
    /// coordinates, the torque about the attachment point. Zero where not in a simulation.
    bool getLastForce(UInt index, Vec3& force, Vec3& torque) const;

    /// The simulation that the constraint is in; null for none.
    hyxSDK::Simulation* getSimulation() const;

    struct Implementation;

    Implementation& implementation() const { return *m_implementation; }

protected:
    /// `frame1` and `frame2` are relative to the bodies (to the world for a null body); null frames are the bodies'
    /// own, and beside a null second body where the first frame is now. Throws std::invalid_argument when the first
    /// body is null or both are the same.
    Constraint(RigidBody* body1, Frame* frame1, RigidBody* body2, Frame* frame2);
    ~Constraint() override;

private:
    std::unique_ptr<Implementation> m_implementation;
};

using ConstraintPtrVector = Vector<ref_ptr<Constraint>>;

} // namespace hyx
