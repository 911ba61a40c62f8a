// Switches off the collisions that a model does not have.
#include "reference/hyxtavlang/collision_rules.h"

namespace hyxtavlang {

void CollisionRules::add(hyxCollide::Geometry& made, hyx::RigidBody& body, tavlang::Physics3D::Geometry const& shape,
                         bool ground) {
    m_parts.push_back({&made, &body, &shape, ground});
}

void CollisionRules::separate(hyx::RigidBody const& one, hyx::RigidBody const& other) {
    m_apart.emplace(std::min(&one, &other), std::max(&one, &other));
}

void CollisionRules::join(tavlang::Physics3D::Geometry const& one, tavlang::Physics3D::Geometry const& other) {
    m_joined.emplace(std::min(&one, &other), std::max(&one, &other));
}

bool CollisionRules::collide(Part const& one, Part const& other) const {
    if (!m_params.selfCollision && !one.ground && !other.ground)
        return false;
    if (m_joined.count({std::min(one.shape, other.shape), std::max(one.shape, other.shape)}))
        return true;
    if (m_apart.count({std::min(one.body, other.body), std::max(one.body, other.body)}))
        return false;
    return (one.shape->belongsTo & other.shape->collidesWith) || (other.shape->belongsTo & one.shape->collidesWith);
}

void CollisionRules::apply() const {
    for (std::size_t i = 0; i < m_parts.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            if (m_parts[i].body != m_parts[j].body && !collide(m_parts[i], m_parts[j]))
                m_parts[i].geometry->setEnableCollisions(m_parts[j].geometry, false);
}

} // namespace hyxtavlang
