// One step of all bodies, in substeps.
#pragma once

#include "reference/machinery/bullet/body_response.h"
#include "reference/machinery/bullet/islands.h"
#include "reference/machinery/dynamics/contact_solver.h"

#include <memory>
#include <vector>

class btDiscreteDynamicsWorld;

namespace hyx {

/// Each substep has two halves of forces around one motion: the first half's velocities lead to where joints and
/// contacts are satisfied, the second half's are then allowed by them. This keeps the energy of swinging and spinning
/// bodies, and free flight is exact.
class StepSolver {
public:
    /// How far the rounds of contacts go.
    enum Effort { USUAL, MORE, ALL };

    Effort effort = USUAL;
    /// The rounds of contacts in a step.
    int numIterations = 10;

    /// Throws std::runtime_error, before anything has moved, when a body's state would not be finite.
    void step(btDiscreteDynamicsWorld& world, std::vector<btPersistentManifold*> const& manifolds,
              std::vector<Constraint::Implementation*> const& constraints, double step);
    /// How bodies would answer to pushes in the next step of this length; one that sleeps or stands still does not.
    BodyResponse respond(btDiscreteDynamicsWorld& world, std::vector<Constraint::Implementation*> const& constraints,
                         std::vector<btRigidBody const*> const& bodies, double step);

private:
    void takeBodies(btDiscreteDynamicsWorld& world);
    void takeMechanisms(std::vector<Constraint::Implementation*> const& constraints);
    void buildMechanisms(std::vector<Constraint::Implementation*> const& working);
    void step(Island const& island, double step);
    void findTouching(Island const& island);
    int numSubsteps(Island const& island, double step) const;
    void substep(Island const& island, double substep, double step, int numSubsteps);
    void solve(Island const& island, bool atPlaces, double substep, int numSweeps);
    static void requireFinite(Island const& island);
    void giveBack();

    std::vector<MovingBody> m_bodies;
    /// By body.
    std::vector<char> m_touching;
    std::vector<Mechanism const*> m_mechanismOf;
    /// Of one island after the other.
    ContactSolver m_contacts;
    std::vector<std::unique_ptr<Mechanism>> m_mechanisms;
    /// Of the mechanisms: each constraint with its bodies that move by forces.
    std::vector<void const*> m_structure;
    std::vector<void const*> m_newStructure;
};

} // namespace hyx
