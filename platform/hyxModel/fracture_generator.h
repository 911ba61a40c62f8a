// Breaking bodies into pieces.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/objects/process.h"
#include "platform/hyx/objects/referenced.h"
#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec3.h"

#include <functional>
#include <vector>

namespace hyxModel {

/// A convex piece of a broken solid.
struct FractureCell {
    std::vector<hyx::Vec3> vertices;           ///< metres, relative to the centroid
    std::vector<std::vector<hyx::UInt>> faces; ///< corners counter-clockwise seen from outside
    hyx::Vec3 centroid;                        ///< metres, in the frame of the solid
    hyx::Real volume = 0;                      ///< cubic metres

    /// The faces cut into triangles, three corners each.
    std::vector<hyx::UInt> getTriangles() const;
};

/// Breaks boxes into Voronoi cells, which together have the body's volume and mass.
class FractureGenerator : public hyx::Process {
public:
    /// Told of the body that broke and of each new piece, after the piece was added to the simulation.
    using FragmentCallback = std::function<void(hyx::RigidBody* whole, hyx::RigidBody* fragment)>;

    FractureGenerator();

    /// The number of pieces a body breaks into, 12 at first. Throws `std::invalid_argument` below 2.
    void setNumFragments(hyx::UInt count);
    hyx::UInt getNumFragments() const;
    /// Starts the generator of the cells' places anew.
    void setSeed(hyx::UInt seed);
    /// The contact force in newtons above which a watched body breaks; infinite at first.
    void setBreakingForce(hyx::Real force);
    hyx::Real getBreakingForce() const;

    /// Cuts a box (half sides in metres) into Voronoi cells around `seeds`; a seed outside the box may have no cell.
    static std::vector<FractureCell> createCells(hyx::Vec3 const& halfExtents, std::vector<hyx::Vec3> const& seeds);

    /// Watches `body`: `step` breaks it when a contact exceeds the breaking force. Throws `std::invalid_argument` for
    /// null or a body whose first geometry is not a box.
    void add(hyx::RigidBody* body);
    /// Stops watching; false when the body was not watched.
    bool remove(hyx::RigidBody* body);
    /// Breaks `body` now, with the pieces smaller near `point` (metres, world). The body leaves its simulation and the
    /// pieces take its place, with its velocity and material. Returns the pieces; throws as `add` does.
    std::vector<hyx::ref_ptr<hyx::RigidBody>> fracture(hyx::RigidBody* body, hyx::Vec3 const& point);
    /// Breaks the watched bodies whose contacts were too strong in the last step.
    void step();
    void postStep(hyx::TimeStamp time, hyx::Real timeStep) override;

    /// All pieces made so far.
    std::vector<hyx::ref_ptr<hyx::RigidBody>> const& getFragments() const;
    /// Adds someone who is told of each piece, as a rule to draw it.
    void addFragmentCallback(FragmentCallback callback);

protected:
    ~FractureGenerator() override = default;

private:
    std::vector<hyx::Vec3> seedsAround(hyx::Vec3 const& halfExtents, hyx::Vec3 const& point);

    hyx::UInt m_count = 12;
    hyx::UInt m_seed = 1;
    hyx::Real m_breakingForce;
    std::vector<hyx::ref_ptr<hyx::RigidBody>> m_watched;
    std::vector<hyx::ref_ptr<hyx::RigidBody>> m_fragments;
    std::vector<FragmentCallback> m_callbacks;
};

} // namespace hyxModel
