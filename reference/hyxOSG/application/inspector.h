// What the remote page sees of a simulation, and changes in it.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"

#include <nlohmann/json_fwd.hpp>

#include <optional>

namespace hyxOSG {

class ExampleApplication;

/// What pages look into. Bodies go by their place among the simulation's bodies, since names
/// may be missing or double.
class Inspector {
public:
    explicit Inspector(ExampleApplication* application) : m_application(application) {}

    /// Follows `select` (`body`: its place or null), `visible` (`body`, `on`) and `joint` (`joint`: its place,
    /// `position`, or null to let go). Whether it was one of them.
    bool follow(nlohmann::json const& message);

    /// The names of all bodies, with whether they are drawn: for the tree. Empty while nothing has come or gone since.
    nlohmann::json tree();

    /// Pose, velocities, mass and the forces of contacts and joints of the selected body, and all joints with
    /// positions, speeds and ranges.
    nlohmann::json details();

    /// The tree is new for a page that has come.
    void forgetTree() { m_revision.reset(); }

private:
    void drive(nlohmann::json const& message);
    void show(nlohmann::json const& message);
    hyx::RigidBody* bodyAt(nlohmann::json const& place) const;

    ExampleApplication* m_application;
    std::optional<hyx::UInt> m_revision; ///< of the structure that the pages know
};

} // namespace hyxOSG
