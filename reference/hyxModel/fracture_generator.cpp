// Scatters seeds around the blow, and cuts a box into their cells.
#include "platform/hyxModel/fracture_generator.h"

#include "platform/hyxCollide/box.h"
#include "platform/hyxCollide/geometry.h"
#include "platform/hyxCollide/space.h"
#include "platform/hyxCollide/trimesh.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyx/values/number_checks.h"
#include "reference/hyxModel/convex_cell.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <stdexcept>

namespace hyxModel {

using hyx::Real;
using hyx::Vec3;

namespace {

hyxCollide::Geometry* requireBox(hyx::RigidBody* body) {
    if (!body)
        throw std::invalid_argument("only a body can break, not null");
    if (body->getGeometries().empty() || body->getGeometries().front()->getShape()->getType() != hyxCollide::Shape::BOX)
        throw std::invalid_argument("only a body whose first geometry is a box can break");
    return body->getGeometries().front().get();
}

Real placeIn01(std::mt19937_64& generator) {
    return static_cast<Real>(generator() >> 11) * 0x1p-53;
}

} // namespace

std::vector<hyx::UInt> FractureCell::getTriangles() const {
    std::vector<hyx::UInt> triangles;
    for (auto const& face : faces)
        for (std::size_t i = 1; i + 1 < face.size(); ++i)
            triangles.insert(triangles.end(), {face[0], face[i], face[i + 1]});
    return triangles;
}

FractureGenerator::FractureGenerator() : m_breakingForce(std::numeric_limits<Real>::infinity()) {}

void FractureGenerator::setNumFragments(hyx::UInt count) {
    if (count < 2)
        throw std::invalid_argument("a body breaks into at least two pieces");
    m_count = count;
}

hyx::UInt FractureGenerator::getNumFragments() const {
    return m_count;
}

void FractureGenerator::setSeed(hyx::UInt seed) {
    m_seed = seed;
}

void FractureGenerator::setBreakingForce(Real force) {
    if (!(force > 0))
        throw std::invalid_argument("the breaking force must be above 0");
    m_breakingForce = force;
}

Real FractureGenerator::getBreakingForce() const {
    return m_breakingForce;
}

std::vector<FractureCell> FractureGenerator::createCells(Vec3 const& half, std::vector<Vec3> const& seeds) {
    hyx::requirePositive(half, "the half extents of a box to be cut");
    std::vector<FractureCell> cells;
    for (std::size_t i = 0; i < seeds.size(); ++i) {
        ConvexCell cell(half);
        for (std::size_t j = 0; j < seeds.size() && !cell.isEmpty(); ++j) {
            Vec3 const apart = seeds[j] - seeds[i];
            if (Real const distance = apart.length(); distance > 0)
                cell.cut(apart / distance, apart.dot(seeds[i] + seeds[j]) * 0.5 / distance);
        }
        if (FractureCell const finished = cell.getCell(); finished.volume > 0)
            cells.push_back(finished);
    }
    return cells;
}

void FractureGenerator::add(hyx::RigidBody* body) {
    requireBox(body);
    if (std::find(m_watched.begin(), m_watched.end(), body) == m_watched.end())
        m_watched.push_back(body);
}

bool FractureGenerator::remove(hyx::RigidBody* body) {
    return std::erase_if(m_watched, [body](auto const& other) { return other.get() == body; }) > 0;
}

std::vector<hyx::ref_ptr<hyx::RigidBody>> FractureGenerator::fracture(hyx::RigidBody* body, Vec3 const& point) {
    hyx::ref_ptr<hyx::RigidBody> const whole = body;
    hyx::ref_ptr<hyxCollide::Geometry> const geometry = requireBox(body);
    Vec3 const half = static_cast<hyxCollide::Box const&>(*geometry->getShape()).getHalfExtents();
    hyx::AffineMatrix4x4 const transform = geometry->getTransform();
    hyxSDK::Simulation* const simulation = body->getSimulation();
    Real const density = body->getMass() / (8 * half.x * half.y * half.z);
    std::vector<FractureCell> const cells =
        createCells(half, seedsAround(half, transform.inverse().transformPoint(point)));
    remove(body);
    if (simulation)
        simulation->remove(body);

    std::vector<hyx::ref_ptr<hyx::RigidBody>> fragments;
    for (FractureCell const& cell : cells) {
        hyx::Vec3Vector vertices;
        vertices.assign(cell.vertices.begin(), cell.vertices.end());
        hyx::UInt32Vector indices;
        for (hyx::UInt corner : cell.getTriangles())
            indices.push_back(static_cast<unsigned int>(corner));
        hyx::ref_ptr<hyxCollide::Geometry> const piece =
            new hyxCollide::Geometry(new hyxCollide::Trimesh(vertices, indices));
        piece->setMaterial(geometry->getMaterial());
        hyx::ref_ptr<hyx::RigidBody> const fragment = new hyx::RigidBody(piece.get());
        fragment->setMass(density * cell.volume);
        fragment->setRotation(transform.getRotate());
        fragment->setPosition(transform.transformPoint(cell.centroid));
        fragment->setVelocity(whole->getPointVelocity(fragment->getPosition()));
        fragment->setAngularVelocity(whole->getAngularVelocity());
        if (simulation)
            simulation->add(fragment.get());
        fragments.push_back(fragment);
        m_fragments.push_back(fragment);
        for (FragmentCallback const& callback : m_callbacks)
            callback(whole.get(), fragment.get());
    }
    return fragments;
}

void FractureGenerator::step() {
    struct Break {
        hyx::ref_ptr<hyx::RigidBody> body;
        Vec3 point;
    };

    std::vector<Break> breaks;
    for (auto const& body : m_watched) {
        if (!body->getSimulation())
            continue;
        Real strongest = m_breakingForce;
        Break found;
        for (auto const& geometry : body->getGeometries())
            for (auto const& contact : body->getSimulation()->getSpace()->getGeometryContacts(geometry.get()))
                for (auto const& point : contact.points())
                    if (point.normalForce > strongest) {
                        strongest = point.normalForce;
                        found = {body, point.point};
                    }
        if (found.body)
            breaks.push_back(found);
    }
    for (Break const& found : breaks)
        fracture(found.body.get(), found.point);
}

void FractureGenerator::postStep(hyx::TimeStamp, Real) {
    step();
}

std::vector<hyx::ref_ptr<hyx::RigidBody>> const& FractureGenerator::getFragments() const {
    return m_fragments;
}

void FractureGenerator::addFragmentCallback(FragmentCallback callback) {
    m_callbacks.push_back(std::move(callback));
}

// Half of the seeds are drawn towards the point, so that the pieces are small where the blow was.
std::vector<Vec3> FractureGenerator::seedsAround(Vec3 const& half, Vec3 const& point) {
    std::mt19937_64 generator(m_seed++);
    std::vector<Vec3> seeds;
    for (hyx::UInt i = 0; i < m_count; ++i) {
        Vec3 place;
        for (std::size_t axis = 0; axis < 3; ++axis)
            place[axis] = (2 * placeIn01(generator) - 1) * half[axis];
        Vec3 const blow(std::clamp(point.x, -half.x, half.x), std::clamp(point.y, -half.y, half.y),
                        std::clamp(point.z, -half.z, half.z));
        seeds.push_back(i % 2 == 0 ? place : blow + (place - blow) * 0.4);
    }
    return seeds;
}

} // namespace hyxModel
