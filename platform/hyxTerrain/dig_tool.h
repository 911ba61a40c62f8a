// Blades and buckets that cut into terrain.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/objects/object.h"
#include "platform/hyx/objects/referenced.h"
#include "platform/hyx/values/vec3.h"

namespace hyxTerrain {

/// The blade of a body that digs: a straight cutting edge and, above it, the top edge of the plate that pushes the
/// soil. All points are in metres in the frame of the body.
class DigTool : public hyx::Object {
public:
    /// A blade on `body` from its cutting edge (`edgeBegin` to `edgeEnd`) up to its `top` (above the middle of the
    /// edge). Throws `std::invalid_argument` for null or an edge without length.
    DigTool(hyx::RigidBody* body, hyx::Vec3 const& edgeBegin, hyx::Vec3 const& edgeEnd, hyx::Vec3 const& top);

    hyx::RigidBody* getRigidBody() const;
    /// The ends of the cutting edge and the top of the plate in metres, world.
    hyx::Vec3 getWorldEdgeBegin() const;
    hyx::Vec3 getWorldEdgeEnd() const;
    hyx::Vec3 getWorldTop() const;
    /// The velocity in m/s of the middle of the edge.
    hyx::Vec3 getWorldVelocity() const;

    /// A disabled tool passes through the soil.
    void setEnable(bool enable);
    bool getEnable() const;
    /// The mass in kg dug so far.
    hyx::Real getDugMass() const;
    /// The force in newtons that the soil put on the body in the last step of the terrain.
    hyx::Vec3 getSoilForce() const;
    /// Tells what one step dug and how the soil answered, and pushes the body with that force. Called by the terrain.
    void addDug(hyx::Real mass, hyx::Vec3 const& force);

protected:
    ~DigTool() override = default;

private:
    hyx::ref_ptr<hyx::RigidBody> m_body;
    hyx::Vec3 m_edgeBegin;
    hyx::Vec3 m_edgeEnd;
    hyx::Vec3 m_top;
    hyx::Real m_dugMass = 0;
    hyx::Vec3 m_soilForce;
    bool m_enable = true;
};

} // namespace hyxTerrain
