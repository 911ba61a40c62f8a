// Checks the numbers of materials, and mixes two where no contact material is given.
#include "platform/hyx/bodies/material.h"

#include "platform/hyx/bodies/contact_material.h"
#include "reference/hyx/values/number_checks.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace hyx {

namespace {

Material const& orDefault(Material const* material) {
    static Material const& standard = *new Material;
    return material ? *material : standard;
}

} // namespace

void Material::setDensity(Real density) {
    m_density = requirePositive(density, "a density");
}

void Material::setFriction(Real friction) {
    m_friction = requireNonNegative(friction, "a friction coefficient");
}

void Material::setRestitution(Real restitution) {
    m_restitution = requireShare(restitution, "a restitution");
}

void Material::setRollingResistance(Real length) {
    m_rollingResistance = requireNonNegative(length, "a rolling resistance");
}

ContactMaterial::ContactMaterial(Material* first, Material* second)
    : m_first(first),
      m_second(second),
      m_friction(combinedFriction(first, second)),
      m_restitution(combinedRestitution(first, second)),
      m_rollingResistance(combinedRollingResistance(first, second)),
      m_stiffness(std::numeric_limits<Real>::infinity()),
      m_damping(0) {
    if (!first || !second)
        throw std::invalid_argument("a contact material needs two materials");
}

ContactMaterial::~ContactMaterial() = default;

void ContactMaterial::setFriction(Real friction) {
    m_friction = requireNonNegative(friction, "a friction coefficient");
}

void ContactMaterial::setRestitution(Real restitution) {
    m_restitution = requireShare(restitution, "a restitution");
}

void ContactMaterial::setRollingResistance(Real length) {
    m_rollingResistance = requireNonNegative(length, "a rolling resistance");
}

void ContactMaterial::setStiffness(Real stiffness) {
    if (!(stiffness > 0))
        throw std::invalid_argument("a contact stiffness must be positive");
    m_stiffness = stiffness;
}

void ContactMaterial::setDamping(Real damping) {
    m_damping = requireNonNegative(damping, "a contact damping");
}

Real ContactMaterial::combinedFriction(Material const* first, Material const* second) {
    return std::sqrt(orDefault(first).getFriction() * orDefault(second).getFriction());
}

Real ContactMaterial::combinedRestitution(Material const* first, Material const* second) {
    return std::max(orDefault(first).getRestitution(), orDefault(second).getRestitution());
}

Real ContactMaterial::combinedRollingResistance(Material const* first, Material const* second) {
    return std::max(orDefault(first).getRollingResistance(), orDefault(second).getRollingResistance());
}

} // namespace hyx
