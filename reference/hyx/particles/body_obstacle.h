// Bodies as grains feel them.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/particles/particle_system.h"

namespace hyx {

/// The geometries of a body, as something that grains cannot enter. The body feels nothing of the grains.
class BodyObstacle : public ParticleObstacle {
public:
    explicit BodyObstacle(RigidBody* body) : m_body(body) {}

    RigidBody* getRigidBody() const { return m_body.get(); }

    bool find(Vec3 const& position, Real reach, Surface& surface) const override;

protected:
    ~BodyObstacle() override = default;

private:
    ref_ptr<RigidBody> m_body;
};

} // namespace hyx
