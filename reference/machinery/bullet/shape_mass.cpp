// Volumes, centres and moments of all shapes.
#include "reference/machinery/bullet/shape_mass.h"

#include "platform/hyxCollide/box.h"
#include "platform/hyxCollide/capsule.h"
#include "platform/hyxCollide/compound.h"
#include "platform/hyxCollide/cone.h"
#include "platform/hyxCollide/cylinder.h"
#include "platform/hyxCollide/sphere.h"
#include "platform/hyxCollide/trimesh.h"
#include "reference/machinery/bullet/bullet_values.h"

#include <numbers>

namespace hyxCollide {

namespace {

using hyx::toBullet;

btMatrix3x3 diagonal(double x, double y, double z) {
    return btMatrix3x3(x, 0, 0, 0, y, 0, 0, 0, z);
}

btMatrix3x3 outerProduct(btVector3 const& a, btVector3 const& b) {
    return btMatrix3x3(a.x() * b.x(), a.x() * b.y(), a.x() * b.z(), a.y() * b.x(), a.y() * b.y(), a.y() * b.z(),
                       a.z() * b.x(), a.z() * b.y(), a.z() * b.z());
}

/// What a mass at a distance adds to the moments.
btMatrix3x3 offsetInertia(btVector3 const& offset, double mass) {
    return diagonal(offset.length2(), offset.length2(), offset.length2()) * mass - outerProduct(offset, offset) * mass;
}

ShapeMass boxMass(Box const& box) {
    hyx::Vec3 const h = box.getHalfExtents();
    double const volume = box.getVolume();
    return {volume, btVector3(0, 0, 0),
            diagonal(h.y * h.y + h.z * h.z, h.x * h.x + h.z * h.z, h.x * h.x + h.y * h.y) * (volume / 3)};
}

ShapeMass sphereMass(Sphere const& sphere) {
    double const volume = sphere.getVolume();
    double const moment = 0.4 * volume * sphere.getRadius() * sphere.getRadius();
    return {volume, btVector3(0, 0, 0), diagonal(moment, moment, moment)};
}

ShapeMass cylinderMass(double radius, double height) {
    double const volume = std::numbers::pi * radius * radius * height;
    double const across = volume * (3 * radius * radius + height * height) / 12;
    return {volume, btVector3(0, 0, 0), diagonal(across, volume * radius * radius / 2, across)};
}

ShapeMass capsuleMass(Capsule const& capsule) {
    double const r = capsule.getRadius();
    double const h = capsule.getHeight();
    ShapeMass mass = cylinderMass(r, h);
    double const ball = 4.0 / 3 * std::numbers::pi * r * r * r;
    // Two half balls, whose centres of mass lie 3/8 r beyond the cylinder's ends.
    double const across = ball * (0.4 * r * r + h * h / 4 + 3.0 / 8 * h * r);
    mass.volume += ball;
    mass.inertia += diagonal(across, 0.4 * ball * r * r, across);
    return mass;
}

ShapeMass coneMass(Cone const& cone) {
    double const r = cone.getRadius();
    double const h = cone.getHeight();
    double const volume = cone.getVolume();
    double const across = volume * (3.0 / 20 * r * r + 3.0 / 80 * h * h);
    return {volume, btVector3(0, -h / 4, 0), diagonal(across, 0.3 * volume * r * r, across)};
}

/// Sums the tetrahedra between the origin and every triangle, those facing inwards counting as negative.
ShapeMass meshMass(Trimesh const& mesh) {
    if (!mesh.isClosed())
        return {};
    double volume = 0;
    btVector3 moment(0, 0, 0);
    btMatrix3x3 second = diagonal(0, 0, 0);
    auto const& indices = mesh.getIndices();
    for (std::size_t i = 0; i < indices.size(); i += 3) {
        btVector3 const a = toBullet(mesh.getVertices()[indices[i]]);
        btVector3 const b = toBullet(mesh.getVertices()[indices[i + 1]]);
        btVector3 const c = toBullet(mesh.getVertices()[indices[i + 2]]);
        double const part = a.dot(b.cross(c)) / 6;
        btVector3 const sum = a + b + c;
        volume += part;
        moment += sum * (part / 4);
        second += (outerProduct(a, a) + outerProduct(b, b) + outerProduct(c, c) + outerProduct(sum, sum)) * (part / 20);
    }
    if (!(volume > 0))
        return {};
    btVector3 const center = moment / volume;
    double const trace = second[0][0] + second[1][1] + second[2][2];
    btMatrix3x3 const aboutOrigin = diagonal(trace, trace, trace) - second;
    return {volume, center, aboutOrigin - offsetInertia(center, volume)};
}

ShapeMass compoundMass(Compound const& compound) {
    ShapeMass mass;
    for (hyx::UInt i = 0; i < compound.getNumShapes(); ++i)
        mass.add(massOf(*compound.getShape(i)), toBullet(compound.getLocalTransform(i)), 1);
    return mass;
}

} // namespace

void ShapeMass::add(ShapeMass const& other, btTransform const& place, double density) {
    double const added = other.volume * density;
    if (!(added > 0))
        return;
    btVector3 const otherCenter = place * other.center;
    btMatrix3x3 const turned = place.getBasis() * other.inertia * place.getBasis().transpose() * density;
    double const total = volume + added;
    btVector3 const common = (center * volume + otherCenter * added) / total;
    inertia = inertia + offsetInertia(center - common, volume) + turned + offsetInertia(otherCenter - common, added);
    center = common;
    volume = total;
}

ShapeMass massOf(Shape const& shape) {
    switch (shape.getType()) {
    case Shape::BOX:
        return boxMass(static_cast<Box const&>(shape));
    case Shape::SPHERE:
        return sphereMass(static_cast<Sphere const&>(shape));
    case Shape::CYLINDER:
        return cylinderMass(static_cast<Cylinder const&>(shape).getRadius(),
                            static_cast<Cylinder const&>(shape).getHeight());
    case Shape::CAPSULE:
        return capsuleMass(static_cast<Capsule const&>(shape));
    case Shape::CONE:
        return coneMass(static_cast<Cone const&>(shape));
    case Shape::TRIMESH:
        return meshMass(static_cast<Trimesh const&>(shape));
    case Shape::COMPOUND:
        return compoundMass(static_cast<Compound const&>(shape));
    default:
        return {};
    }
}

} // namespace hyxCollide
