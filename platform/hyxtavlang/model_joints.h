// Joints of a model and what drives them.
#pragma once

#include "platform/hyxtavlang/model_bodies.h"

#include <array>
#include <limits>
#include <optional>

namespace tavlang {

namespace Robotics {

namespace Joints {

/// Connects two bodies as they stand at the start. A body that several joints connect to one parent turns and slides in
/// all of their directions, the first the nearest to the parent.
class Joint : public Physics::System {
public:
    std::string getType() const override { return "Robotics.Joints.Joint"; }

    Core::Properties getProperties() const override;

    std::shared_ptr<Physics3D::Body> parent; ///< null is the world
    std::shared_ptr<Physics3D::Body> child;
    hyx::Vec3 anchor;        ///< in the child
    hyx::Vec3 axis{0, 0, 1}; ///< in the child, of length one
    bool closesLoop = false; ///< connects bodies that other joints hold already
};

/// A joint with one free direction: radians and newton metres, or metres and newtons.
class SingleAxisJoint : public Joint {
public:
    std::string getType() const override { return "Robotics.Joints.SingleAxisJoint"; }

    Core::Properties getProperties() const override;

    bool hasRange = false;
    double lower = 0;
    double upper = 0;
    double start = 0; ///< what counts as the position at the start
    double maximumEffort = std::numeric_limits<double>::infinity();
    double maximumSpeed = std::numeric_limits<double>::infinity();
    double friction = 0;  ///< dry, as a greatest force
    double damping = 0;   ///< force per speed
    double stiffness = 0; ///< force per way from the rest position
    double restPosition = 0;
    std::optional<double> speed; ///< that its motor holds from the start; none: it is off
};

class HingeJoint : public SingleAxisJoint {
public:
    std::string getType() const override { return "Robotics.Joints.HingeJoint"; }
};

/// A hinge with a drive that holds an angle.
class PositionHingeJoint : public HingeJoint {
public:
    std::string getType() const override { return "Robotics.Joints.PositionHingeJoint"; }

    Core::Properties getProperties() const override;

    double gain = 0; ///< Nm/rad of the drive
};

class PrismaticJoint : public SingleAxisJoint {
public:
    std::string getType() const override { return "Robotics.Joints.PrismaticJoint"; }
};

class BallJoint : public Joint {
public:
    std::string getType() const override { return "Robotics.Joints.BallJoint"; }
};

/// Slides in the plane across the axis, and turns about the axis.
class PlanarJoint : public Joint {
public:
    std::string getType() const override { return "Robotics.Joints.PlanarJoint"; }
};

/// Holds nothing; tells that the child moves freely.
class FreeJoint : public Joint {
public:
    std::string getType() const override { return "Robotics.Joints.FreeJoint"; }
};

/// Makes one body of two.
class LockJoint : public Joint {
public:
    std::string getType() const override { return "Robotics.Joints.LockJoint"; }
};

} // namespace Joints

/// A joint that follows another one, at `multiplier` times its position plus `offset`, and a curve where there is one.
class Mimic : public Core::Object {
public:
    std::string getType() const override { return "Robotics.Mimic"; }

    Core::Properties getProperties() const override;

    std::shared_ptr<Joints::SingleAxisJoint> follower;
    std::shared_ptr<Joints::SingleAxisJoint> leader; ///< null: stands at the offset
    double multiplier = 1;
    double offset = 0;
    /// Factors of the second, third and fourth power of the leader's way from its start, which are added.
    std::array<double, 3> curve{};
};

} // namespace Robotics

namespace Control {

/// What drives a joint by one number, the control. The effort on the joint is `gear` times the force of the drive.
class Actuator : public Core::Object {
public:
    std::string getType() const override { return "Control.Actuator"; }

    Core::Properties getProperties() const override;

    std::shared_ptr<Robotics::Joints::SingleAxisJoint> joint;
    double gear = 1;
    double lowerControl = -std::numeric_limits<double>::infinity();
    double upperControl = std::numeric_limits<double>::infinity();
    double lowerForce = -std::numeric_limits<double>::infinity();
    double upperForce = std::numeric_limits<double>::infinity();
    double gain = 1; ///< of the control in the force
};

/// Its force is `gain` times the control.
class ForceActuator : public Actuator {
public:
    std::string getType() const override { return "Control.ForceActuator"; }
};

/// Its force is `gain` times what the joint lacks to the control, less `damping` times the joint's speed.
class PositionActuator : public Actuator {
public:
    std::string getType() const override { return "Control.PositionActuator"; }

    Core::Properties getProperties() const override;

    double damping = 0;
};

/// Its force is `gain` times what the joint's speed lacks to the control.
class VelocityActuator : public Actuator {
public:
    std::string getType() const override { return "Control.VelocityActuator"; }
};

} // namespace Control

} // namespace tavlang
