// Bodies as grains feel them.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/particles/particle_system.h"
#include "platform/hyxCollide/shape.h"

#include <vector>

namespace hyx {

/// The geometries of a body, as something that grains cannot enter; the grains push the body.
class BodyObstacle : public ParticleObstacle {
public:
    explicit BodyObstacle(RigidBody* body) : m_body(body) {}

    RigidBody* getRigidBody() const { return m_body.get(); }

    bool find(Vec3 const& position, Real reach, Surface& surface) const override;

    /// Lets an impulse at a point, world, act on the body in its next step.
    void push(Vec3 const& impulse, Vec3 const& point, Real timeStep);
    /// Takes over where the geometries are, for `findAll`, which tells of each geometry that is near. Edges of boxes
    /// are rounded off to a radius in metres.
    void prepare(Real rounding = 0);
    void findAll(Vec3 const& position, Real reach, std::vector<Surface>& surfaces) const;

protected:
    ~BodyObstacle() override = default;

private:
    struct Part {
        hyxCollide::Shape const* shape;
        AffineMatrix4x4 toWorld;
        AffineMatrix4x4 toShape;
    };

    std::vector<Part> partsNow() const;
    bool find(Part const& part, Vec3 const& position, Real reach, Surface& surface) const;

    ref_ptr<RigidBody> m_body;
    std::vector<Part> m_parts;
    Real m_rounding = 0;
};

} // namespace hyx
