// Spreads contact forces over the triangles that are near the other surface.
#include "platform/hyxModel/pressure_field.h"

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxCollide/box.h"
#include "platform/hyxCollide/space.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyx/values/number_checks.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace hyxModel {

using hyx::Real;
using hyx::Vec3;

namespace {

constexpr hyx::UInt mostPiecesAlong = 200; ///< along one side of a face

hyx::UInt pieces(Real length, Real resolution) {
    return std::clamp<hyx::UInt>(static_cast<hyx::UInt>(std::ceil(length / resolution)), 1, mostPiecesAlong);
}

} // namespace

PressureField::PressureField(hyx::RigidBody* body, Real resolution) : m_body(body) {
    if (!body)
        throw std::invalid_argument("a pressure field needs a body");
    hyx::requirePositive(resolution, "the resolution of a pressure field");
    for (auto const& geometry : body->getGeometries())
        if (geometry->getShape()->getType() == hyxCollide::Shape::BOX)
            addFaces(*geometry, resolution);
    if (m_surface.empty())
        throw std::invalid_argument("a pressure field needs a body with a box");
}

hyx::RigidBody* PressureField::getRigidBody() const {
    return m_body.get();
}

void PressureField::setFoundationDepth(Real depth) {
    m_depth = hyx::requirePositive(depth, "the depth of a foundation");
}

Real PressureField::getFoundationDepth() const {
    return m_depth;
}

std::vector<TriangleData> const& PressureField::getTriangles() const {
    return m_loaded;
}

Real PressureField::getForce() const {
    Real force = 0;
    for (TriangleData const& triangle : m_loaded)
        force += triangle.getForce();
    return force;
}

void PressureField::postStep(hyx::TimeStamp, Real) {
    update();
}

void PressureField::update() {
    m_loaded.clear();
    if (!m_body->getSimulation())
        return;
    for (auto const& geometry : m_body->getGeometries())
        for (auto const& contact : m_body->getSimulation()->getSpace()->getGeometryContacts(geometry.get()))
            addContact(contact);
}

// The other surface is taken as the plane that fits the points of the contact; a side of the body presses on it where
// it is nearer than the foundation is deep.
void PressureField::addContact(hyxCollide::LocalGeometryContact const& contact) {
    bool const second = contact.getRigidBody(1) == m_body.get();
    hyx::AffineMatrix4x4 const toBody = m_body->getTransform().inverse();
    Vec3 normal, middle;
    Real force = 0;
    for (auto const& point : contact.points()) {
        normal += point.normal * (second ? 1 : -1);
        middle += point.point;
        force += point.normalForce;
    }
    if (!(force > 0) || normal.length2() == 0)
        return;
    normal = toBody.transformVector(normal.normal());
    middle = toBody.transformPoint(middle / static_cast<Real>(contact.getNumPoints()));

    std::vector<TriangleData> pressed;
    Real lowest = std::numeric_limits<Real>::infinity();
    for (TriangleData const& triangle : m_surface)
        for (Vec3 const& corner : triangle.vertices)
            lowest = std::min(lowest, normal.dot(corner - middle));
    Real total = 0;
    for (TriangleData triangle : m_surface) {
        if (triangle.normal.dot(normal) > -0.5)
            continue;
        for (int i = 0; i < 3; ++i)
            triangle.pressures[i] = std::max(0.0, 1 - (normal.dot(triangle.vertices[i] - middle) - lowest) / m_depth);
        if (Real const part = triangle.getForce(); part > 0) {
            total += part;
            pressed.push_back(triangle);
        }
    }
    for (TriangleData& triangle : pressed) {
        for (Real& pressure : triangle.pressures)
            pressure *= force / total;
        m_loaded.push_back(triangle);
    }
}

void PressureField::addFaces(hyxCollide::Geometry const& geometry, Real resolution) {
    Vec3 const half = static_cast<hyxCollide::Box const&>(*geometry.getShape()).getHalfExtents();
    hyx::AffineMatrix4x4 const& local = geometry.getLocalTransform();
    for (int axis = 0; axis < 3; ++axis)
        for (int side = -1; side <= 1; side += 2) {
            Vec3 normal, u, v;
            normal[axis] = side;
            // Turning (u, v) with the side keeps the corners counter-clockwise seen from outside.
            int const first = (axis + (side > 0 ? 1 : 2)) % 3, other = (axis + (side > 0 ? 2 : 1)) % 3;
            hyx::UInt const nu = pieces(2 * half[first], resolution), nv = pieces(2 * half[other], resolution);
            u[first] = 2 * half[first] / nu;
            v[other] = 2 * half[other] / nv;
            Vec3 const corner = normal * half[axis] - (u * static_cast<Real>(nu) + v * static_cast<Real>(nv)) * 0.5;
            for (hyx::UInt i = 0; i < nu; ++i)
                for (hyx::UInt j = 0; j < nv; ++j) {
                    Vec3 const at = corner + u * static_cast<Real>(i) + v * static_cast<Real>(j);
                    Vec3 const square[] = {at, at + u, at + u + v, at + v};
                    for (int part = 0; part < 2; ++part) {
                        TriangleData triangle;
                        triangle.normal = local.transformVector(normal);
                        triangle.vertices[0] = local.transformPoint(square[0]);
                        triangle.vertices[1] = local.transformPoint(square[1 + part]);
                        triangle.vertices[2] = local.transformPoint(square[2 + part]);
                        m_surface.push_back(triangle);
                    }
                }
        }
}

} // namespace hyxModel
