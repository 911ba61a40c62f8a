// Bodies that joints connect, and the exact solution of their joints.
#pragma once

#include "reference/machinery/bullet/constraint_implementation.h"
#include "reference/machinery/dynamics/block_matrix.h"
#include "reference/machinery/dynamics/moving_body.h"

#include <utility>
#include <vector>

namespace hyx {

/// All rows of the joints are solved together, so that neither the length of a chain nor the ratio of its masses
/// counts. Rows with bounds are let go when they come to one, and taken up again when they would leave it.
class Mechanism {
public:
    /// The joints that connect to each other by bodies that can move.
    explicit Mechanism(std::vector<Constraint::Implementation*> joints);

    std::vector<Constraint::Implementation*> const& joints() const { return m_joints; }

    /// Once the joints know their moving bodies.
    void begin();
    /// The greatest spin of a body; its turn bounds the substep.
    double greatestSpin() const;
    /// Whether some of it swings by its own weight or springs.
    bool swings() const;

    /// Before a substep: bodies turn by their own inertia again.
    void loosen();
    void aimAtPlaces(double substep, double step);
    void aimAtSpeeds(double substep, double step);
    /// Gives the bodies the velocities that the joints allow.
    void solve();
    /// The same in the first half of a substep, for which it looks how stiff the joints make their bodies.
    void solvePlaces(double substep);
    /// Corrects the velocities until the bodies, put where these lead in the substep, satisfy the joints there.
    void correctPlaces(double substep);
    void finishHalf();

    /// Takes the joints as they work now, after `aimAtSpeeds`: a bounded row that does not reach what it aims at pushes
    /// as hard as it can already, and does not hold.
    void holdAsNow();
    /// Takes from any velocities of the bodies what the rows that hold do not allow.
    void letFollow();

    std::vector<MovingBody*> const& bodies() const { return m_bodies; }

    /// Whether one of the bodies touches something.
    bool touches = false;

private:
    void collectRows();
    void startRow(ConstraintRow& row, Constraint::Implementation const& joint);
    bool stiffen(double substep);
    void startAgain(double substep);
    void factor();
    void couple(int first, int second, BlockMatrix::Coupling const& coupling);
    /// Solves for what the rows still lack; whether bounds were met on the way.
    bool push();
    bool keepBounds();
    bool letGo();
    double speedOf(ConstraintRow const& row, Constraint::Implementation const& joint) const;
    double missPlaces(double substep);
    double lack(ConstraintRow const& row, Constraint::Implementation const& joint) const;
    void apply(ConstraintRow& row, Constraint::Implementation const& joint, double impulse);

    struct Row {
        ConstraintRow* row;
        Constraint::Implementation* joint;
    };

    std::vector<Constraint::Implementation*> m_joints;
    std::vector<std::pair<int, int>> m_pairs;
    std::vector<MovingBody*> m_bodies;
    BlockMatrix m_matrix;
    /// The working rows, joint after joint.
    std::vector<Row> m_rows;
    std::vector<int> m_firstRows;
    std::vector<int> m_sizes;
    std::vector<double> m_values;
    std::vector<MovingBody> m_saved;
    /// Before the places were corrected.
    std::vector<MovingBody> m_before;
    std::vector<double> m_impulses;
    bool m_outdated = true;
};

} // namespace hyx
