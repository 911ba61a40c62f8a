// Sources from which rigid bodies come.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/particles/emitter.h"

#include <functional>
#include <vector>

namespace hyx {

/// Makes rigid bodies at a rate and adds them to the simulation that the emitter is in; elsewhere it makes nothing.
class RigidBodyEmitter : public Emitter {
public:
    /// Makes the body of one emission; the result is taken over.
    using Template = std::function<RigidBody*()>;
    /// Told of each new body after it was added to the simulation.
    using EmitCallback = std::function<void(RigidBody*)>;

    /// An emitter of spheres with a radius of 0.1 metres.
    RigidBodyEmitter();

    /// Bodies to come are spheres of this radius in metres. Throws `std::invalid_argument` unless above 0.
    void setSphereTemplate(Real radius);
    /// Bodies to come are boxes with these half sides in metres. Throws `std::invalid_argument` unless all are above 0.
    void setBoxTemplate(Vec3 const& halfExtents);
    /// Bodies to come are made by `make`.
    void setTemplate(Template make);

    /// Adds someone who is told of each new body.
    void addEmitCallback(EmitCallback callback);

    /// All bodies made so far.
    std::vector<ref_ptr<RigidBody>> const& getBodies() const;

protected:
    ~RigidBodyEmitter() override = default;
    bool emit(Vec3 const& position, Vec3 const& velocity) override;
    UInt mostAtOnce() const override;

private:
    Template m_make;
    std::vector<EmitCallback> m_callbacks;
    std::vector<ref_ptr<RigidBody>> m_bodies;
};

} // namespace hyx
