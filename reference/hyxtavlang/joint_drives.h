// What drives the joints of a loaded model in each step.
#pragma once

#include "platform/hyx/joints/constraint1dof.h"
#include "platform/hyxSDK/event_listener.h"
#include "platform/hyxtavlang/model_joints.h"

#include <limits>
#include <vector>

namespace hyxtavlang {

/// A joint with what acts on it beside its limits: an effort, a spring, and a drive that holds a target.
class JointDrive {
public:
    JointDrive(hyx::ref_ptr<hyx::Constraint1DOF> constraint, tavlang::Robotics::Joints::SingleAxisJoint const& joint);

    /// Adds an actuator's part: of a position actuator the gain, of all the damping and the bounds of the force.
    void add(tavlang::Control::Actuator const& actuator);

    /// Not a number lets go.
    void setTarget(double target);

    double getTarget() const { return m_target; }

    void setEffort(double effort);
    /// The effort that was set, and what motor and drive gave in the last step.
    double getEffort() const;
    /// Puts the effort on the bodies for the next step.
    void apply() const;

    double position() const { return joint->getAngle() + start; }

    hyx::ref_ptr<hyx::Constraint1DOF> joint;
    bool slides = false;
    double start = 0;

private:
    void hold();

    double m_target = std::numeric_limits<double>::quiet_NaN();
    double m_effort = 0;
    double m_stiffness;
    double m_rest;
    double m_gain = 0; ///< of the drive; 0 is stiff
    double m_lowerEffort;
    double m_upperEffort;
};

/// All drives of a model; what keeps them in a simulation is that it is a listener there.
class JointDrives : public hyxSDK::EventListener {
public:
    JointDrives() { setMask(PRE_STEP); }

    void pre(hyx::TimeStamp) override {
        for (JointDrive const& drive : drives)
            drive.apply();
    }

    std::vector<JointDrive> drives;

protected:
    ~JointDrives() override = default;
};

} // namespace hyxtavlang
