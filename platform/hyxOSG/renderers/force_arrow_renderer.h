// Arrows that show the forces on bodies and in constraints.
#pragma once

#include "platform/hyx/values/vec3.h"
#include "platform/hyxRender/color.h"
#include "platform/hyxSDK/event_listener.h"

#include <memory>

namespace hyx {
class Constraint1DOF;
class RigidBody;
} // namespace hyx

namespace osg {
class Group;
} // namespace osg

namespace hyxOSG {

/// Draws one arrow for every body and constraint that was added. Add the renderer to the simulation as a listener:
/// after each step the arrows follow, and they appear in the scene that the application shows for that simulation.
///
/// An arrow starts at its attachment point, points along the force and is `scale` metres long per newton (per newton
/// metre, for the torque of a constraint that turns). Bodies and constraints are kept alive while they have arrows.
class ForceArrowRenderer : public hyxSDK::EventListener {
public:
    /// Which of a constraint's forces are summed; a bit mask.
    enum ConstraintForceStatistics {
        MOTOR1D = 1,
        RANGE1D = 2,
        LOCK1D = 4,
        ALL = MOTOR1D | RANGE1D | LOCK1D,
        DEFAULT = MOTOR1D,
    };

    /// No arrows yet.
    ForceArrowRenderer();

    /// Shows the force that acted on a body during the last step, its weight left out: contacts, constraints and what
    /// was added. A body at rest shows what carries it, a falling one nothing.
    /// \param body the body
    /// \param attachment where the arrow starts, in the body's frame, metres
    /// \param color of the arrow; default red
    /// \return false when the body is null or has an arrow already
    bool add(hyx::RigidBody* body, hyx::Vec3 const& attachment,
             hyxRender::Color const& color = hyxRender::Color::Red());

    /// Shows the forces of a constraint on its second body, along its free axis.
    /// \param constraint the constraint
    /// \param attachment where the arrow starts, in the constraint's first attachment frame, metres
    /// \param color of the arrow
    /// \param statistics which forces are summed; bits of ConstraintForceStatistics
    /// \return false when the constraint is null or has an arrow already
    /// \throws std::invalid_argument when the mask holds other bits than ALL
    bool add(hyx::Constraint1DOF* constraint, hyx::Vec3 const& attachment, hyxRender::Color const& color,
             int statistics = DEFAULT);

    /// Takes the arrow of a body away; nothing happens when there is none.
    void remove(hyx::RigidBody* body);
    /// Takes the arrow of a constraint away; nothing happens when there is none.
    void remove(hyx::Constraint1DOF* constraint);

    /// Colours the arrow of a body; nothing happens when there is none.
    void setColor(hyx::RigidBody* body, hyxRender::Color const& color);
    /// Colours the arrow of a constraint; nothing happens when there is none.
    void setColor(hyx::Constraint1DOF* constraint, hyxRender::Color const& color);

    /// Share of the arrow shown before that is kept at each step, 0 (no smoothing, the default) to below 1.
    /// \throws std::invalid_argument outside that range
    void setSmoothFactor(hyx::Real smoothFactor);
    /// Share of the arrow shown before that is kept at each step.
    hyx::Real getSmoothFactor() const;

    /// Height of the tip, metres. Default 0.2.
    /// \throws std::invalid_argument for a negative value or one that is not finite
    void setConeHeight(hyx::Real coneHeight);
    /// Height of the tip, metres.
    hyx::Real getConeHeight() const;

    /// Radius of the shaft, metres; the tip is twice as wide. Default 0.04.
    /// \throws std::invalid_argument unless positive and finite
    void setArrowRadius(hyx::Real arrowRadius);
    /// Radius of the shaft, metres.
    hyx::Real getArrowRadius() const;

    /// Length in metres per newton. Default 0.01.
    /// \throws std::invalid_argument for a value that is not finite
    void setScale(hyx::Real scale);
    /// Length in metres per newton.
    hyx::Real getScale() const;

    /// The node that holds the arrows, for scenes without an application; owned by the renderer.
    osg::Group* getNode() const;

    void addNotification() override;
    void removeNotification() override;
    void last(hyx::TimeStamp time) override;

protected:
    ~ForceArrowRenderer() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
