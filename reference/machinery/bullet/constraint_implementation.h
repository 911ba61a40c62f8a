// What stands behind a joint: its row in Bullet and the motor, range and lock on it.
#pragma once

#include "platform/hyx/joints/constraint.h"
#include "platform/hyx/joints/lock1d.h"
#include "platform/hyx/joints/motor1d.h"
#include "platform/hyx/joints/range1d.h"
#include "reference/machinery/bullet/constraint_row.h"

#include <memory>
#include <vector>

namespace hyx {

class PhysicsWorld;

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
    };

    Implementation(RigidBody* body1, Frame* frame1, RigidBody* body2, Frame* frame2);
    ~Implementation();

    /// Called once, by the joint's constructor.
    void hold(std::vector<int> const& translations, std::vector<int> const& rotations);
    void leave(Free kind, Motor1D* motor, Range1D* range, Lock1D* lock);

    /// Gives the only free direction a greatest force of dry friction, or a force per speed.
    void resist(Part part, Real amount);

    Real resistance(Part part) const { return free.front().resistance[part - FRICTION]; }

    /// Works out all rows from where the bodies are now.
    void prepare(Real timeStep);
    /// Reads the forces that the solver found.
    void collect(Real timeStep);
    /// No row works until `prepare` finds otherwise.
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
    /// Whether the rows are in the bullet world, which the world looks after.
    bool inWorld = false;

private:
    struct Pose;
    Pose pose() const;
    btRigidBody& side(int index) const;
    std::unique_ptr<ConstraintRow> makeRow(RowType type);
    void aim(ConstraintRow& row, FreeDirection const& direction, Pose const& pose) const;
    void prepareHeld(Pose const& pose, Real timeStep);
    void prepareFree(FreeDirection& direction, Pose const& pose, Real timeStep);
    void prepareRange(FreeDirection& direction, Real now, ConstraintRow& row, Real timeStep);
    void prepareResistance(FreeDirection& direction, Pose const& pose, Real timeStep);
};

} // namespace hyx
