// Contact points as rows of numbers.
#include "reference/hyx/journal/contact_rows.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>

namespace hyx {
namespace {

using hyxCollide::ContactPoint;
using hyxCollide::Geometry;
using hyxCollide::LocalGeometryContact;

constexpr double nowhere = -1;

/// The places of a geometry's body, and of the geometry in it.
void addPlace(std::vector<double>& numbers, Geometry const* geometry,
              std::map<RigidBody const*, size_t> const& places) {
    auto const found = geometry ? places.find(geometry->getRigidBody()) : places.end();
    if (found == places.end()) {
        numbers.insert(numbers.end(), {nowhere, nowhere});
        return;
    }
    auto const& geometries = found->first->getGeometries();
    auto const place = std::ranges::find(geometries, geometry, [](auto const& other) { return other.get(); });
    numbers.insert(numbers.end(), {double(found->second), double(place - geometries.begin())});
}

bool isPlace(double number, double end) {
    return number == nowhere || (number >= 0 && number < end && number == std::floor(number));
}

Geometry* geometryAt(double const* place, RigidBodyPtrVector const& bodies) {
    if (place[0] == nowhere)
        return nullptr;
    auto const& geometries = bodies[size_t(place[0])]->getGeometries();
    bool const there = place[1] >= 0 && place[1] < double(geometries.size());
    return there ? geometries[size_t(place[1])].get() : nullptr;
}

} // namespace

std::vector<std::string> const& contactColumns() {
    static std::vector<std::string> const columns = {"body1", "geometry1", "body2", "geometry2", "x",  "y",  "z",
                                                     "nx",    "ny",        "nz",    "fx",        "fy", "fz", "depth"};
    return columns;
}

void addContacts(std::vector<double>& numbers, hyxCollide::LocalGeometryContactVector const& contacts,
                 RigidBodyPtrVector const& bodies) {
    std::map<RigidBody const*, size_t> places;
    for (size_t place = 0; place < bodies.size(); ++place)
        places.emplace(bodies[place].get(), place);
    size_t const count = numbers.size();
    numbers.push_back(0);
    for (LocalGeometryContact const& contact : contacts) {
        std::vector<double> sides;
        for (UInt side : {0, 1})
            addPlace(sides, contact.getGeometry(side), places);
        if (sides[0] == nowhere && sides[2] == nowhere)
            continue;
        for (ContactPoint const& point : contact.points()) {
            Vec3 const force = point.getForce();
            numbers.insert(numbers.end(), sides.begin(), sides.end());
            for (Vec3 const& vector : {point.point, point.normal, force})
                numbers.insert(numbers.end(), {vector.x, vector.y, vector.z});
            numbers.push_back(point.depth);
            ++numbers[count];
        }
    }
}

void requireContacts(std::span<double const> numbers, size_t numBodies) {
    constexpr double mostGeometries = 1e9;
    for (size_t i = 0; i < numbers.size(); i += contactColumns().size())
        for (size_t side : {0, 2})
            if (!isPlace(numbers[i + side], double(numBodies)) || !isPlace(numbers[i + side + 1], mostGeometries))
                throw std::runtime_error("the journal is damaged: its contacts are of bodies that it lacks");
}

hyxCollide::LocalGeometryContactVector contactsOf(std::span<double const> numbers, RigidBodyPtrVector const& bodies) {
    hyxCollide::LocalGeometryContactVector contacts;
    for (size_t place = 0; place < numbers.size(); place += contactColumns().size()) {
        double const* n = &numbers[place];
        Geometry *first = geometryAt(n, bodies), *second = geometryAt(n + 2, bodies);
        if (contacts.empty() || contacts.back().getGeometry(0) != first || contacts.back().getGeometry(1) != second)
            contacts.push_back(LocalGeometryContact(first, second));
        ContactPoint point;
        point.point = Vec3(n[4], n[5], n[6]);
        point.normal = Vec3(n[7], n[8], n[9]);
        Vec3 const force(n[10], n[11], n[12]);
        point.normalForce = std::max(0.0, force.dot(point.normal));
        point.tangentialForce = force - point.normal * point.normalForce;
        point.depth = n[13];
        contacts.back().points().push_back(point);
    }
    return contacts;
}

} // namespace hyx
