// The pressure that contacts spread over the surface of a body.
#pragma once

#include "platform/hyx/objects/process.h"
#include "platform/hyx/objects/referenced.h"
#include "platform/hyx/values/types.h"
#include "platform/hyxCollide/geometry.h"
#include "platform/hyxCollide/local_geometry_contact.h"
#include "platform/hyxModel/triangle_data.h"

#include <vector>

namespace hyx {
class RigidBody;
} // namespace hyx

namespace hyxModel {

/// How the force between one body and what it touches is spread over the body's surface.
/// The surface behaves as an elastic foundation: pressure grows with the penetration of each point, and the whole is
/// scaled so that its resultant is the contact force that the simulation found.
class PressureField : public hyx::Process {
public:
    /// The field on the boxes of `body`, whose faces are cut into squares of about `resolution` metres.
    /// Throws `std::invalid_argument` for null, a body without a box, or a resolution that is not above 0.
    PressureField(hyx::RigidBody* body, hyx::Real resolution);

    /// The body whose surface bears the pressure.
    hyx::RigidBody* getRigidBody() const;
    /// The depth in metres over which the foundation is taken to be soft, 0.01 at first: larger spreads the force
    /// wider.
    void setFoundationDepth(hyx::Real depth);
    hyx::Real getFoundationDepth() const;

    /// Takes the contacts of the last step of the body's simulation; without any the field is empty.
    void update();
    /// Updates the field.
    void postStep(hyx::TimeStamp time, hyx::Real timeStep) override;
    /// The triangles under pressure, in the body's frame.
    std::vector<TriangleData> const& getTriangles() const;
    /// The resultant of all pressures in newtons.
    hyx::Real getForce() const;

protected:
    ~PressureField() override = default;

private:
    void addFaces(hyxCollide::Geometry const& box, hyx::Real resolution);
    void addContact(hyxCollide::LocalGeometryContact const& contact);

    hyx::ref_ptr<hyx::RigidBody> m_body;
    hyx::Real m_depth = 0.01;
    std::vector<TriangleData> m_surface;
    std::vector<TriangleData> m_loaded;
};

} // namespace hyxModel
