// Sizes, volumes and bounds of the simple shapes.
#include "platform/hyxCollide/box.h"
#include "platform/hyxCollide/capsule.h"
#include "platform/hyxCollide/cone.h"
#include "platform/hyxCollide/cylinder.h"
#include "platform/hyxCollide/plane.h"
#include "platform/hyxCollide/sphere.h"
#include "reference/hyx/values/number_checks.h"

#include <numbers>

namespace hyxCollide {

using hyx::requirePositive;

namespace {

void boundAbout(hyx::Vec3 const& half, hyx::Vec3& lower, hyx::Vec3& upper) {
    lower = -half;
    upper = half;
}

} // namespace

Box::Box(hyx::Vec3 const& halfExtents) : m_halfExtents(requirePositive(halfExtents, "the half extents of a box")) {}

Box::Box(hyx::Real halfX, hyx::Real halfY, hyx::Real halfZ) : Box(hyx::Vec3(halfX, halfY, halfZ)) {}

void Box::setHalfExtents(hyx::Vec3 const& halfExtents) {
    m_halfExtents = requirePositive(halfExtents, "the half extents of a box");
    changed();
}

hyx::Real Box::getVolume() const {
    return 8 * m_halfExtents.x * m_halfExtents.y * m_halfExtents.z;
}

void Box::getBound(hyx::Vec3& lower, hyx::Vec3& upper) const {
    boundAbout(m_halfExtents, lower, upper);
}

Sphere::Sphere(hyx::Real radius) : m_radius(requirePositive(radius, "the radius of a sphere")) {}

void Sphere::setRadius(hyx::Real radius) {
    m_radius = requirePositive(radius, "the radius of a sphere");
    changed();
}

hyx::Real Sphere::getVolume() const {
    return 4.0 / 3 * std::numbers::pi * m_radius * m_radius * m_radius;
}

void Sphere::getBound(hyx::Vec3& lower, hyx::Vec3& upper) const {
    boundAbout(hyx::Vec3(m_radius), lower, upper);
}

Cylinder::Cylinder(hyx::Real radius, hyx::Real height)
    : m_radius(requirePositive(radius, "the radius of a cylinder")),
      m_height(requirePositive(height, "the height of a cylinder")) {}

void Cylinder::setRadius(hyx::Real radius) {
    m_radius = requirePositive(radius, "the radius of a cylinder");
    changed();
}

void Cylinder::setHeight(hyx::Real height) {
    m_height = requirePositive(height, "the height of a cylinder");
    changed();
}

hyx::Real Cylinder::getVolume() const {
    return std::numbers::pi * m_radius * m_radius * m_height;
}

void Cylinder::getBound(hyx::Vec3& lower, hyx::Vec3& upper) const {
    boundAbout(hyx::Vec3(m_radius, m_height / 2, m_radius), lower, upper);
}

Capsule::Capsule(hyx::Real radius, hyx::Real height)
    : m_radius(requirePositive(radius, "the radius of a capsule")),
      m_height(requirePositive(height, "the height of a capsule")) {}

void Capsule::setRadius(hyx::Real radius) {
    m_radius = requirePositive(radius, "the radius of a capsule");
    changed();
}

void Capsule::setHeight(hyx::Real height) {
    m_height = requirePositive(height, "the height of a capsule");
    changed();
}

hyx::Real Capsule::getVolume() const {
    return std::numbers::pi * m_radius * m_radius * (m_height + 4.0 / 3 * m_radius);
}

void Capsule::getBound(hyx::Vec3& lower, hyx::Vec3& upper) const {
    boundAbout(hyx::Vec3(m_radius, m_height / 2 + m_radius, m_radius), lower, upper);
}

Cone::Cone(hyx::Real radius, hyx::Real height)
    : m_radius(requirePositive(radius, "the radius of a cone")),
      m_height(requirePositive(height, "the height of a cone")) {}

void Cone::setRadius(hyx::Real radius) {
    m_radius = requirePositive(radius, "the radius of a cone");
    changed();
}

void Cone::setHeight(hyx::Real height) {
    m_height = requirePositive(height, "the height of a cone");
    changed();
}

hyx::Real Cone::getVolume() const {
    return std::numbers::pi * m_radius * m_radius * m_height / 3;
}

void Cone::getBound(hyx::Vec3& lower, hyx::Vec3& upper) const {
    boundAbout(hyx::Vec3(m_radius, m_height / 2, m_radius), lower, upper);
}

void Plane::setPlane(hyx::Plane const& plane) {
    m_plane = plane;
    changed();
}

void Plane::getBound(hyx::Vec3& lower, hyx::Vec3& upper) const {
    boundAbout(hyx::Vec3(1e6), lower, upper);
}

} // namespace hyxCollide
