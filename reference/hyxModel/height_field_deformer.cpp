// Presses ground in where contacts push harder than it bears.
#include "platform/hyxModel/height_field_deformer.h"

#include "platform/hyxCollide/space.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyx/values/number_checks.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>

namespace hyxModel {

using hyx::Real;
using hyx::UInt;
using hyx::Vec3;

namespace {

/// Seconds in which ground goes most of the way to where a load takes it.
constexpr Real yieldTime = 0.1;

} // namespace

HeightFieldDeformer::HeightFieldDeformer(hyxCollide::Geometry* geometry) : m_geometry(geometry) {
    if (!geometry || geometry->getShape()->getType() != hyxCollide::Shape::HEIGHT_FIELD)
        throw std::invalid_argument("a height field deformer needs a geometry with a height field");
    m_field = static_cast<hyxCollide::HeightField*>(geometry->getShape());
    m_firstHeights = m_field->getHeights();
}

hyxCollide::Geometry* HeightFieldDeformer::getGeometry() const {
    return m_geometry.get();
}

hyxCollide::HeightField* HeightFieldDeformer::getHeightField() const {
    return m_field.get();
}

void HeightFieldDeformer::setStiffness(Real stiffness) {
    m_stiffness = hyx::requirePositive(stiffness, "the stiffness of a height field");
}

Real HeightFieldDeformer::getStiffness() const {
    return m_stiffness;
}

void HeightFieldDeformer::setMaximumSinkage(Real depth) {
    m_maximumSinkage = hyx::requireNonNegative(depth, "the sinkage of a height field");
}

Real HeightFieldDeformer::getMaximumSinkage() const {
    return m_maximumSinkage;
}

void HeightFieldDeformer::setContactRadius(Real radius) {
    m_radius = hyx::requirePositive(radius, "the contact radius of a height field");
}

Real HeightFieldDeformer::getContactRadius() const {
    return m_radius;
}

UInt HeightFieldDeformer::getRevision() const {
    return m_revision;
}

Real HeightFieldDeformer::press(Vec3 const& point, Real force) {
    if (!(force > 0) || std::isinf(force))
        return 0;
    Vec3 const local = m_geometry->getTransform().inverse().transformPoint(point);
    Real const added = pressLocal(local, force);
    if (added > 0) {
        ++m_revision;
        m_field->heightsChanged();
    }
    return added;
}

// The ground sinks by the same depth under the whole contact, less towards its rim, and only as far as this load
// reaches: it does not rise again, nor does the same load sink deeper.
Real HeightFieldDeformer::pressLocal(Vec3 const& local, Real force, Real share) {
    UInt const nx = m_field->getResolutionX(), ny = m_field->getResolutionY();
    Real const dx = m_field->getSizeX() / (nx - 1), dy = m_field->getSizeY() / (ny - 1);
    Real const sinkage = std::min(force / (m_stiffness * std::numbers::pi * m_radius * m_radius), m_maximumSinkage);
    Real const reach = std::max({m_radius, 0.75 * dx, 0.75 * dy});
    auto const knot = [](Real place, Real step, UInt count) {
        return static_cast<UInt>(std::clamp<Real>(place / step, 0, static_cast<Real>(count - 1)));
    };
    Real const x = local.x + 0.5 * m_field->getSizeX(), y = local.y + 0.5 * m_field->getSizeY();
    Real added = 0;
    Real* heights = m_field->heightsForWriting();
    for (UInt j = knot(y - reach, dy, ny); j <= knot(y + reach + dy, dy, ny); ++j)
        for (UInt i = knot(x - reach, dx, nx); i <= knot(x + reach + dx, dx, nx); ++i) {
            Real const away = std::hypot(i * dx - x, j * dy - y) / reach;
            if (away >= 1)
                continue;
            Real const target = m_firstHeights[j * nx + i] - sinkage * (1 - away * away * away * away);
            Real& height = heights[j * nx + i];
            Real const down = std::max(height - target, 0.0) * share;
            added = std::max(added, down);
            height -= down;
        }
    return added;
}

void HeightFieldDeformer::update() {
    if (!m_geometry->getSimulation())
        return;
    hyx::AffineMatrix4x4 const toLocal = m_geometry->getTransform().inverse();
    Real added = 0;
    for (auto const& contact : m_geometry->getSimulation()->getSpace()->getGeometryContacts(m_geometry.get()))
        for (auto const& point : contact.points())
            if (point.normalForce > 0)
                added = std::max(added, pressLocal(toLocal.transformPoint(point.point), point.normalForce, m_share));
    if (added > 0) {
        ++m_revision;
        m_field->heightsChanged();
    }
}

// Ground yields in its time: if it dropped at once, what stands on it would fall and strike it.
void HeightFieldDeformer::postStep(hyx::TimeStamp, Real timeStep) {
    m_share = 1 - std::exp(-timeStep / yieldTime);
    update();
    m_share = 1;
}

void HeightFieldDeformer::reset() {
    std::copy(m_firstHeights.begin(), m_firstHeights.end(), m_field->heightsForWriting());
    m_field->heightsChanged();
    ++m_revision;
}

Real HeightFieldDeformer::getSinkage(UInt xIndex, UInt yIndex) const {
    return m_firstHeights.at(yIndex * m_field->getResolutionX() + xIndex) - m_field->getHeight(xIndex, yIndex);
}

} // namespace hyxModel
