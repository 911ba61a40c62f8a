// What joints are made of.
#pragma once

#include "platform/hyx/joints/constraint.h"
#include "platform/hyx/joints/lock1d.h"
#include "platform/hyx/joints/motor1d.h"
#include "platform/hyx/joints/range1d.h"
#include "reference/machinery/bullet/constraint_row.h"

#include <LinearMath/btTransform.h>

#include <memory>
#include <vector>

namespace hyx {

struct Give;
struct SubstepHalf;

class PhysicsWorld;
struct MovingBody;

/// What a joint does is described by the directions of the first attachment frame that it holds, and by those it leaves
/// to a motor, a range and a lock.
struct Constraint::Implementation {
    enum Free { ALONG_Z, ABOUT_Z, ALONG_LINE };

    /// What can act on a free direction, a row each. The last two are made when they are first asked for.
    enum Part { MOTOR, RANGE, LOCK, FRICTION, VISCOSITY, NUM_PARTS };

    /// A free direction, its optional rows, and how far it has gone.
    struct FreeDirection {
        Free kind;
        Motor1D* motor;
        Range1D* range;
        Lock1D* lock;
        std::unique_ptr<ConstraintRow> rows[NUM_PARTS];
        /// Of FRICTION, the greatest force; of VISCOSITY, the force per speed.
        Real resistance[2] = {0, 0};
        /// Full turns so far and the angle seen last, for counting on.
        Real turns = 0;
        Real lastAngle = 0;
        /// At the start of a substep and where the bodies were put last.
        Real startPosition = 0;
        Real position = 0;
    };

    Implementation(RigidBody* body1, Frame* frame1, RigidBody* body2, Frame* frame2);
    ~Implementation();

    /// Called once, by the joint's constructor.
    void hold(std::vector<int> const& translations, std::vector<int> const& rotations);
    void leave(Free kind, Motor1D* motor, Range1D* range, Lock1D* lock);

    /// Gives the only free direction a greatest force of dry friction, or a force per speed.
    void resist(Part part, Real amount);

    Real resistance(Part part) const { return free.front().resistance[part - FRICTION]; }

    /// Takes over where the bodies and the attachment frames are at the start of a step.
    void begin(MovingBody& first, MovingBody& second);
    /// Says what all rows aim at, over a substep that starts where the bodies are now: places at its end in its first
    /// half, speeds in its second half. Springs know the whole step.
    void aimAtPlaces(Real substep, Real step);
    void aimAtSpeeds(Real substep, Real step);
    /// Finds the values of all working rows where the bodies are now, `time` after the substep's start.
    void measure(Real time);
    void finishHalf();
    /// Finds how the bodies answer to a row, by the inertia that they have now.
    void respond(ConstraintRow& row) const;
    /// Whether it leaves its bodies a way to swing: one that is neither driven nor held rigidly.
    bool swings() const;
    /// Tells the forces of a step.
    void collect(Real timeStep);
    /// No row works until the next step.
    void rest();
    bool canWork() const;

    Real position(FreeDirection& direction);
    Real speed(FreeDirection const& direction) const;
    std::vector<ConstraintRow*> activeRows() const;

    ref_ptr<RigidBody> bodies[2];
    ref_ptr<Frame> frames[2];
    std::vector<std::unique_ptr<ConstraintRow>> rows;
    /// Those of `rows` and of the free directions.
    std::vector<ConstraintRow*> allRows;
    /// The axis of the first frame that each of `rows` holds.
    std::vector<int> rowAxes;
    std::vector<FreeDirection> free;
    bool enabled = true;
    Real compliance = 0;
    Real damping = 0;
    hyxSDK::Simulation* simulation = nullptr;
    PhysicsWorld* world = nullptr;
    /// During a step, of a joint that takes part in it.
    bool works = false;
    MovingBody* moving[2] = {nullptr, nullptr};
    /// The attachment frames, seen from the moving bodies.
    btTransform places[2];
    int numRotations = 0;

private:
    struct Pose;
    Pose pose() const;
    Pose movingPose() const;
    std::unique_ptr<ConstraintRow> makeRow(RowType type);
    void start(ConstraintRow& row, Give const& give, Real substep, Real lowerForce, Real upperForce);
    void aimHeld(Pose const& pose, SubstepHalf const& half);
    void aimFree(FreeDirection& direction, Pose const& pose, SubstepHalf const& half);
    void aimRange(FreeDirection& direction, ConstraintRow& row, SubstepHalf const& half);
    void aimResistance(FreeDirection& direction, Pose const& pose, SubstepHalf const& half);
    /// The row of a part of a free direction, placed where the bodies are.
    ConstraintRow& along(FreeDirection const& direction, Part part, Pose const& pose) const;
    void linearize(ConstraintRow& row) const;
};

} // namespace hyx
