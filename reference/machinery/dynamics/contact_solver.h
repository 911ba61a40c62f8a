// The contacts of a step, worked out by iteration.
#pragma once

#include "reference/machinery/dynamics/moving_body.h"

#include <span>
#include <vector>

class btManifoldPoint;
class btPersistentManifold;

namespace hyx {

/// Points of a pair of geometries that share a normal are a patch: each point carries its own load, and the patch
/// slides and turns as a whole about the centre of its pressure. So friction knows no favoured direction, and a flat
/// end that spins is braked as an even pressure over it would.
class ContactSolver {
public:
    /// Takes over all points that push, with the forces of the last step.
    void begin(std::vector<btPersistentManifold*> const& manifolds, std::vector<MovingBody>& bodies, double step);

    /// The radius of the smallest body that moves by its contacts.
    double smallestRadius() const { return m_smallestRadius; }

    /// How long the substeps of the step are.
    void setSubstep(double substep);

    bool isEmpty() const { return m_patches.empty(); }

    std::size_t numPatches() const { return m_patches.size(); }

    /// Says what the points aim at: that no surfaces overlap at the end of the substep, then that none approach.
    void aimAtPlaces(double substep);
    void aimAtSpeeds(double substep);
    /// One round over all patches; tells the greatest change of a speed.
    double sweep();
    /// The same, after a step on in the direction of the rounds since `startRounds`.
    double sweepOnwards();
    void startRounds();

    /// Whether a bounce falls into this substep, which needs all points of a body to agree.
    bool bounces() const { return m_bounces; }

    /// The share of the points under heavy loads.
    double heaviness() const { return m_numHeavy / static_cast<double>(m_points.size()); }

    /// Follows the surfaces through the substep.
    void advance(double substep);
    void finishSubstep();
    /// Writes the forces of the step into the points.
    void finish();

    /// Patches whose bodies joints hold together are those for which `linked` says so: they stop each other, but
    /// where they overlap they are not pushed apart against their joints.
    template <class Linked>
    void findLinked(Linked const& linked) {
        for (Patch& patch : m_patches)
            patch.linked = linked(*patch.first, *patch.second);
    }

    /// Calls `visit` with the bodies of each patch.
    template <class Visit>
    void forPairs(Visit const& visit) const {
        for (Patch const& patch : m_patches)
            visit(*patch.first, *patch.second);
    }

private:
    struct Point {
        btManifoldPoint* source;
        btVector3 cross[2];
        btVector3 response[2];
        double stiffness;
        double gap;
        double restitution;
        double springStiffness;
        double springDamping;
        double slop;
        /// What the present half aims at.
        double target = 0;
        double softness = 0;
        double share = 0;
        bool bounces = false;
        double bounceSpeed = 0;
        /// Of this substep, of its first half, of half of the last one, and of the step.
        double impulse = 0;
        double base = 0;
        double half = 0;
        double sum = 0;
    };

    struct Friction {
        double lateral[2] = {0, 0};
        double torsion = 0;
    };

    struct Patch {
        MovingBody* first;
        MovingBody* second;
        bool linked = false;
        btVector3 normal;
        btVector3 tangents[2];
        int start;
        int count;
        /// The radius of the smaller body.
        double size;
        double friction;
        double rolling;
        /// Of loose ground, which gives by a length of shear before it resists: for each m/s of slip, how often it has
        /// sheared by that length when it leaves the patch. 0 for firm ground.
        double shear;
        /// Of the patch's centre, and the mean distance of its pressure from there.
        btVector3 arms[2];
        double reach;
        btVector3 lateralCross[2][2];
        btVector3 lateralResponse[2][2];
        btVector3 torsionResponse[2];
        btVector3 rollingResponse[2][2];
        double lateralInverse[2][2];
        double torsionMass;
        /// That of the way in which it is pushed most easily.
        double slipMass;
        double rollingMass[2];
        double load = 0;
        Friction now;
        Friction half;
        Friction sum;
        double roll[2] = {0, 0};
    };

    void addManifold(btPersistentManifold& manifold, MovingBody& first, MovingBody& second, double step);
    void finishPatch(Patch& patch, btPersistentManifold const& manifold, double step);
    void addFriction(Patch& patch, double step);
    static void addShear(Patch& patch, double shearLength, std::span<btVector3 const> places);
    void aimPoint(Patch const& patch, Point& point, double substep);
    bool aimBounce(Patch const& patch, Point& point, double substep);
    void applyHalves();
    void roll(Patch& patch, int tangent, double change);
    void goOnwards();
    /// Calls `visit` with each impulse and the speed squared over impulse squared that it stands for.
    template <class Visit>
    void forImpulses(Visit const& visit);
    double sweepPoints(Patch& patch);
    void sweepFriction(Patch& patch);
    static Friction slipping(Patch const& patch, double sliding0, double sliding1, double most);
    static double mobilized(Patch const& patch, Friction const& holding, double sliding0, double sliding1, double most);
    void sweepRolling(Patch& patch);
    double speedOf(Patch const& patch, Point const& point) const;
    static double speedAt(Patch const& patch, Point const& point);
    static double slidingAt(Patch const& patch, int tangent);
    static void pushAt(Patch const& patch, Point const& point, double impulse);
    static void rubAt(Patch& patch, double lateral0, double lateral1, double torsion);

    std::vector<Point> m_points;
    std::vector<Patch> m_patches;
    double m_step = 1;
    double m_smallestRadius = 0;
    bool m_bounces = false;
    int m_numHeavy = 0;
    /// By impulse: the change of the last round, the direction so far, what goes on in it, and the square of the
    /// change.
    std::vector<double> m_change;
    std::vector<double> m_direction;
    std::vector<double> m_onwards;
    double m_squared = 0;
};

} // namespace hyx
