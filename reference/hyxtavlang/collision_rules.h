// Which shapes of a model collide with each other.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxtavlang/model_shapes.h"
#include "platform/hyxtavlang/opt_params.h"

#include <set>
#include <utility>
#include <vector>

namespace hyxtavlang {

/// Gathers the shapes of a model with their bodies, and what the model says of them.
class CollisionRules {
public:
    explicit CollisionRules(OptParams const& params) : m_params(params) {}

    /// `ground`: belongs to what the model stands on, which its parts collide with in any case.
    void add(hyxCollide::Geometry& made, hyx::RigidBody& body, tavlang::Physics3D::Geometry const& shape, bool ground);
    /// The shapes of the two bodies never collide.
    void separate(hyx::RigidBody const& one, hyx::RigidBody const& other);
    /// Two shapes collide in any case, if shapes of the model collide at all.
    void join(tavlang::Physics3D::Geometry const& one, tavlang::Physics3D::Geometry const& other);
    /// Switches the collisions of all pairs off that do not collide. The shapes of a body never do.
    void apply() const;

private:
    struct Part {
        hyxCollide::Geometry* geometry;
        hyx::RigidBody const* body;
        tavlang::Physics3D::Geometry const* shape;
        bool ground;
    };

    bool collide(Part const& one, Part const& other) const;

    OptParams const& m_params;
    std::vector<Part> m_parts;
    std::set<std::pair<hyx::RigidBody const*, hyx::RigidBody const*>> m_apart;
    std::set<std::pair<tavlang::Physics3D::Geometry const*, tavlang::Physics3D::Geometry const*>> m_joined;
};

} // namespace hyxtavlang
