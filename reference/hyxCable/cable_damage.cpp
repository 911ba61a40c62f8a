// Counts stress cycles, and sums the harm that they do.
#include "platform/hyxCable/cable_damage.h"

#include "reference/hyx/values/number_checks.h"
#include "reference/machinery/files/state_keepers.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>

namespace hyxCable {

using hyx::Real;

namespace {

void requireSegment(hyx::Index segment, hyx::UInt count) {
    if (segment >= count)
        throw std::out_of_range("there is no such segment in the cable");
}

} // namespace

CableDamage::CableDamage(Cable* cable, DamageProperties const& properties) : m_cable(cable), m_properties(properties) {
    if (!cable)
        throw std::invalid_argument("cable damage needs a cable");
    for (Real weight : {properties.tensionWeight, properties.bendWeight, properties.twistWeight})
        hyx::requireNonNegative(weight, "a weight of cable damage");
    hyx::requirePositive(properties.referenceStress, "the reference stress of cable damage");
    hyx::requirePositive(properties.exponent, "the exponent of cable damage");
    hyx::keepState(this, [this](hyx::StateBytes& bytes) {
        hyx::UInt count = m_history.size();
        bytes(count, m_revision);
        m_history.resize(std::min(count, m_cable->getNumSegments()));
        for (History& history : m_history)
            bytes(history.stress, history.damage, history.turningPoints);
    });
}

CableDamage::~CableDamage() {
    hyx::forgetState(this);
}

Cable* CableDamage::getCable() const {
    return m_cable.get();
}

DamageProperties const& CableDamage::getProperties() const {
    return m_properties;
}

void CableDamage::update() {
    m_history.resize(m_cable->getNumSegments());
    for (std::size_t i = 0; i < m_history.size(); ++i) {
        m_history[i].stress = stressOf(m_cable->getLoad(i));
        count(m_history[i], m_history[i].stress);
    }
    ++m_revision;
}

void CableDamage::postStep(hyx::TimeStamp, Real) {
    update();
}

void CableDamage::reset() {
    m_history.clear();
    ++m_revision;
}

hyx::UInt CableDamage::getNumSegments() const {
    return m_cable->getNumSegments();
}

hyx::UInt CableDamage::getRevision() const {
    return m_revision;
}

Real CableDamage::getStress(hyx::Index segment) const {
    requireSegment(segment, getNumSegments());
    return segment < m_history.size() ? m_history[segment].stress : 0;
}

Real CableDamage::getCurrentDamage(hyx::Index segment) const {
    return cycleDamage(getStress(segment));
}

Real CableDamage::getAccumulatedDamage(hyx::Index segment) const {
    requireSegment(segment, getNumSegments());
    if (segment >= m_history.size())
        return 0;
    History const& history = m_history[segment];
    Real damage = history.damage;
    for (std::size_t i = 1; i < history.turningPoints.size(); ++i)
        damage += 0.5 * cycleDamage(std::abs(history.turningPoints[i] - history.turningPoints[i - 1]));
    return damage;
}

Real CableDamage::getMaximumAccumulatedDamage() const {
    Real largest = 0;
    for (std::size_t i = 0; i < m_history.size(); ++i)
        largest = std::max(largest, getAccumulatedDamage(i));
    return largest;
}

// Stress in the outermost fibre of a round section. Twist shears, which counts as sqrt(3) times the pull that does the
// same harm.
Real CableDamage::stressOf(SegmentLoad const& load) const {
    Real const radius = m_cable->getRadius();
    CableProperties const& elastic = m_cable->getProperties();
    Real const pull = std::abs(load.tension) / (std::numbers::pi * radius * radius);
    Real const bend = elastic.youngModulus * radius * load.curvature;
    Real const shear = elastic.shearModulus * radius * std::abs(load.twist);
    Real const normal = m_properties.tensionWeight * pull + m_properties.bendWeight * bend;
    return std::hypot(normal, std::numbers::sqrt3 * m_properties.twistWeight * shear);
}

Real CableDamage::cycleDamage(Real range) const {
    return std::pow(range / m_properties.referenceStress, m_properties.exponent);
}

// Rain-flow counting on the stack of turning points: an inner range that is no larger than its neighbours is a full
// cycle and leaves.
void CableDamage::count(History& history, Real stress) const {
    std::vector<Real>& points = history.turningPoints;
    if (!points.empty() && points.back() == stress)
        return;
    bool const goesOn =
        points.size() >= 2 && (points.back() - points[points.size() - 2]) * (stress - points.back()) > 0;
    if (goesOn)
        points.back() = stress;
    else
        points.push_back(stress);
    while (points.size() >= 4) {
        std::size_t const n = points.size();
        Real const inner = std::abs(points[n - 2] - points[n - 3]);
        if (inner > std::abs(points[n - 1] - points[n - 2]) || inner > std::abs(points[n - 3] - points[n - 4]))
            break;
        history.damage += cycleDamage(inner);
        points.erase(points.end() - 3, points.end() - 1);
    }
}

} // namespace hyxCable
