// Shoots a scanner's rays, with noise that repeats from run to run.
#include "platform/hyxSensor/lidar.h"

#include "platform/hyx/bodies/frame.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxCollide/space.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyx/values/number_checks.h"

#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>
#include <stdexcept>

namespace hyxSensor {

using hyx::Real;
using hyx::Vec3;

namespace {

constexpr std::uint64_t mostRays = 1 << 24; // 1 GB of hits

} // namespace

struct Lidar::Implementation {
    hyx::ref_ptr<hyx::Frame> frame;
    hyx::ref_ptr<hyx::RigidBody> ignored;
    hyx::UInt rings = 16;
    hyx::UInt raysPerRing = 360;
    Real horizontal = 2 * std::numbers::pi;
    Real vertical = 0.5;
    hyx::RangeReal range = hyx::RangeReal(0.1, 100);
    Real noise = 0;
    Real rate = 10;
    Real due = 0;
    bool enable = true;
    std::mt19937_64 generator;
    std::vector<LidarHit> hits;
    hyx::UInt revision = 0;

    Vec3 rayDirection(hyx::UInt ring, hyx::UInt ray) const;
    void cast(hyxCollide::Space const& space, hyx::AffineMatrix4x4 const& pose, hyx::UInt ring, hyx::UInt ray);
    Real randomNormal();
};

Lidar::Lidar(hyx::Frame* frame) : m_implementation(std::make_unique<Implementation>()) {
    m_implementation->frame = frame;
}

Lidar::~Lidar() = default;

void Lidar::setFrame(hyx::Frame* frame) {
    m_implementation->frame = frame;
}

hyx::Frame* Lidar::getFrame() const {
    return m_implementation->frame.get();
}

void Lidar::setIgnoredBody(hyx::RigidBody* body) {
    m_implementation->ignored = body;
}

hyx::RigidBody* Lidar::getIgnoredBody() const {
    return m_implementation->ignored.get();
}

void Lidar::setResolution(hyx::UInt rings, hyx::UInt raysPerRing) {
    if (rings == 0 || raysPerRing == 0)
        throw std::invalid_argument("a lidar needs at least one ring and one ray in it");
    if (std::uint64_t(rings) * raysPerRing > mostRays)
        throw std::invalid_argument("a lidar has at most 16777216 rays");
    m_implementation->rings = rings;
    m_implementation->raysPerRing = raysPerRing;
}

hyx::UInt Lidar::getNumRings() const {
    return m_implementation->rings;
}

hyx::UInt Lidar::getNumRaysPerRing() const {
    return m_implementation->raysPerRing;
}

void Lidar::setFieldOfView(Real horizontal, Real vertical) {
    if (!(horizontal >= 0 && horizontal <= 2 * std::numbers::pi + 1e-9 && vertical >= 0 &&
          vertical <= std::numbers::pi + 1e-9))
        throw std::invalid_argument(
            "the field of view of a lidar is from 0 to 2 pi across and from 0 to pi up and down");
    m_implementation->horizontal = horizontal;
    m_implementation->vertical = vertical;
}

Real Lidar::getHorizontalFieldOfView() const {
    return m_implementation->horizontal;
}

Real Lidar::getVerticalFieldOfView() const {
    return m_implementation->vertical;
}

void Lidar::setRange(hyx::RangeReal range) {
    if (!(range.lower() >= 0 && range.upper() > range.lower()) || std::isinf(range.upper()))
        throw std::invalid_argument("the range of a lidar must be finite, not empty and not below 0");
    m_implementation->range = range;
}

hyx::RangeReal Lidar::getRange() const {
    return m_implementation->range;
}

void Lidar::setDistanceNoise(Real standardDeviation) {
    m_implementation->noise = hyx::requireNonNegative(standardDeviation, "the noise of a lidar");
}

Real Lidar::getDistanceNoise() const {
    return m_implementation->noise;
}

void Lidar::setSeed(hyx::UInt seed) {
    m_implementation->generator.seed(seed);
}

void Lidar::setScanRate(Real perSecond) {
    m_implementation->rate = hyx::requireNonNegative(perSecond, "the scan rate of a lidar");
}

Real Lidar::getScanRate() const {
    return m_implementation->rate;
}

void Lidar::setEnable(bool enable) {
    m_implementation->enable = enable;
}

bool Lidar::getEnable() const {
    return m_implementation->enable;
}

hyx::UInt Lidar::scan() {
    m_implementation->hits.clear();
    ++m_implementation->revision;
    if (!getSimulation())
        return 0;
    hyxCollide::Space const& space = *getSimulation()->getSpace();
    hyx::AffineMatrix4x4 const pose =
        m_implementation->frame ? m_implementation->frame->getMatrix() : hyx::AffineMatrix4x4();
    for (hyx::UInt ring = 0; ring < m_implementation->rings; ++ring)
        for (hyx::UInt ray = 0; ray < m_implementation->raysPerRing; ++ray)
            m_implementation->cast(space, pose, ring, ray);
    return m_implementation->hits.size();
}

void Lidar::step(Real timeStep) {
    hyx::requirePositive(timeStep, "the time step of a lidar");
    if (!m_implementation->enable)
        return;
    m_implementation->due += timeStep * m_implementation->rate;
    if (m_implementation->rate > 0 && m_implementation->due < 1 - 1e-9)
        return;
    m_implementation->due = std::max(0.0, m_implementation->due - std::floor(m_implementation->due + 1e-9));
    scan();
}

void Lidar::postStep(hyx::TimeStamp, Real timeStep) {
    step(timeStep);
}

void Lidar::setHits(std::vector<LidarHit> hits) {
    m_implementation->hits = std::move(hits);
    ++m_implementation->revision;
}

std::vector<LidarHit> const& Lidar::getHits() const {
    return m_implementation->hits;
}

hyx::UInt Lidar::getRevision() const {
    return m_implementation->revision;
}

std::vector<hyx::UInt> Lidar::getRingCounts() const {
    std::vector<hyx::UInt> counts(m_implementation->rings, 0);
    for (LidarHit const& hit : m_implementation->hits)
        if (hit.ring < counts.size())
            ++counts[hit.ring];
    return counts;
}

// A full circle does not shoot its last ray over its first one.
Vec3 Lidar::Implementation::rayDirection(hyx::UInt ring, hyx::UInt ray) const {
    bool const full = horizontal > 2 * std::numbers::pi - 1e-9;
    Real const steps = static_cast<Real>(full ? raysPerRing : raysPerRing - 1);
    Real const azimuth = raysPerRing > 1 ? horizontal * (ray / steps - 0.5) : 0;
    Real const elevation = rings > 1 ? vertical * (ring / static_cast<Real>(rings - 1) - 0.5) : 0;
    return Vec3(std::cos(elevation) * std::cos(azimuth), std::cos(elevation) * std::sin(azimuth), std::sin(elevation));
}

void Lidar::Implementation::cast(hyxCollide::Space const& space, hyx::AffineMatrix4x4 const& pose, hyx::UInt ring,
                                 hyx::UInt ray) {
    Vec3 const from = pose.getTranslate();
    Vec3 const direction = pose.transformVector(rayDirection(ring, ray)).normal();
    hyxCollide::RayHit const met = space.castRay(from, from + direction * range.upper(), ignored.get());
    if (!met.isValid() || met.distance < range.lower())
        return;
    Real const measured = range.clamp(noise > 0 ? met.distance + noise * randomNormal() : met.distance);
    LidarHit hit;
    hit.position = hyx::Vec3f(from + direction * measured);
    hit.distance = static_cast<float>(measured);
    // The light comes back from a disc that grows with the distance; half of it is left at a fifth of the range.
    Real const fading = 1 / (1 + met.distance * 5 / range.upper());
    hit.intensity = static_cast<float>(std::abs(met.normal.dot(direction)) * fading);
    hit.ring = static_cast<unsigned int>(ring);
    hits.push_back(hit);
}

// Box and Muller's; the distributions of the standard library differ from one library to the next.
Real Lidar::Implementation::randomNormal() {
    Real const u = (static_cast<Real>(generator() >> 11) + 1) * 0x1p-53;
    Real const v = static_cast<Real>(generator() >> 11) * 0x1p-53;
    return std::sqrt(-2 * std::log(u)) * std::cos(2 * std::numbers::pi * v);
}

} // namespace hyxSensor
