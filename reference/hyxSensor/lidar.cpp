// Takes over how a scanner scans.
#include "reference/hyx/values/number_checks.h"
#include "reference/hyxSensor/lidar_implementation.h"

#include <cmath>
#include <numbers>
#include <stdexcept>

namespace hyxSensor {

using hyx::Real;

namespace {

constexpr std::uint64_t mostRays = 1 << 24; // 1 GB of hits

} // namespace

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
    m_implementation->fan.setResolution(rings, raysPerRing);
    m_implementation->turn.reset();
}

hyx::UInt Lidar::getNumRings() const {
    return m_implementation->fan.elevations.size();
}

hyx::UInt Lidar::getNumRaysPerRing() const {
    return m_implementation->fan.columns;
}

void Lidar::setFieldOfView(Real horizontal, Real vertical) {
    if (!(horizontal >= 0 && horizontal <= 2 * std::numbers::pi + 1e-9 && vertical >= 0 &&
          vertical <= std::numbers::pi + 1e-9))
        throw std::invalid_argument(
            "the field of view of a lidar is from 0 to 2 pi across and from 0 to pi up and down");
    m_implementation->fan.setFieldOfView(horizontal, vertical);
}

Real Lidar::getHorizontalFieldOfView() const {
    return m_implementation->fan.horizontal;
}

Real Lidar::getVerticalFieldOfView() const {
    return m_implementation->fan.vertical;
}

void Lidar::setRange(hyx::RangeReal range) {
    if (!(range.lower() >= 0 && range.upper() > range.lower()) || std::isinf(range.upper()))
        throw std::invalid_argument("the range of a lidar must be finite, not empty and not below 0");
    m_implementation->beam.range = range;
}

hyx::RangeReal Lidar::getRange() const {
    return m_implementation->beam.range;
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

void Lidar::setRingElevations(hyx::RealVector const& elevations) {
    for (Real const elevation : elevations)
        hyx::requireArgument(std::abs(elevation) <= std::numbers::pi / 2 + 1e-9,
                             "the elevation of a ring is within a quarter turn of the horizon");
    if (elevations.size() * m_implementation->fan.columns > mostRays)
        throw std::invalid_argument("a lidar has at most 16777216 rays");
    m_implementation->fan.setElevations(elevations);
    m_implementation->turn.reset();
}

hyx::RealVector Lidar::getRingElevations() const {
    return m_implementation->fan.elevations;
}

void Lidar::setRolling(bool enable) {
    m_implementation->rolling = enable;
    m_implementation->turn.reset();
}

bool Lidar::getRolling() const {
    return m_implementation->rolling;
}

void Lidar::setMaxReturns(hyx::UInt number) {
    hyx::requireArgument(number >= 1 && number <= 8, "a pulse of a lidar has 1 to 8 returns");
    m_implementation->beam.maxReturns = number;
}

hyx::UInt Lidar::getMaxReturns() const {
    return m_implementation->beam.maxReturns;
}

void Lidar::setBeamDivergence(Real angle) {
    hyx::requireArgument(angle >= 0 && angle < 0.5, "the divergence of a beam is from 0 to 0.5 radians");
    m_implementation->beam.divergence = angle;
}

Real Lidar::getBeamDivergence() const {
    return m_implementation->beam.divergence;
}

void Lidar::setReturnSeparation(Real metres) {
    m_implementation->beam.separation = hyx::requireNonNegative(metres, "the separation of returns");
}

Real Lidar::getReturnSeparation() const {
    return m_implementation->beam.separation;
}

void Lidar::setReflectivity(hyx::Material* material, Real share) {
    m_implementation->beam.reflectivities[material] = hyx::requireNonNegative(share, "the reflectivity of a material");
}

Real Lidar::getReflectivity(hyx::Material* material) const {
    return m_implementation->beam.reflectivity(material);
}

void Lidar::setTransparency(hyx::Material* material, Real share) {
    m_implementation->beam.transparencies[material] = hyx::requireShare(share, "the transparency of a material");
}

Real Lidar::getTransparency(hyx::Material* material) const {
    return m_implementation->beam.transparency(material);
}

void Lidar::setDropout(Real share) {
    m_implementation->dropout = hyx::requireShare(share, "the dropout of a lidar");
}

Real Lidar::getDropout() const {
    return m_implementation->dropout;
}

void Lidar::setLeastIntensity(Real intensity) {
    m_implementation->leastIntensity = hyx::requireNonNegative(intensity, "the least intensity of a lidar");
}

Real Lidar::getLeastIntensity() const {
    return m_implementation->leastIntensity;
}

void Lidar::setScanRate(Real perSecond) {
    m_implementation->rate = hyx::requireNonNegative(perSecond, "the scan rate of a lidar");
    m_implementation->turn.reset();
}

Real Lidar::getScanRate() const {
    return m_implementation->rate;
}

void Lidar::setEnable(bool enable) {
    m_implementation->enable = enable;
    m_implementation->turn.reset();
}

bool Lidar::getEnable() const {
    return m_implementation->enable;
}

} // namespace hyxSensor
