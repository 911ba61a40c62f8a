// The operations that all joints share.
#include "platform/hyx/joints/constraint.h"

#include "platform/hyx/bodies/rigid_body.h"
#include "reference/hyx/values/number_checks.h"
#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/constraint_implementation.h"

#include <stdexcept>

namespace hyx {

namespace {

ConstraintRow& requireRow(std::vector<ConstraintRow*> const& rows, UInt index) {
    if (index >= rows.size())
        throw std::out_of_range("the constraint has no such row");
    return *rows[index];
}

} // namespace

Constraint::Constraint(RigidBody* body1, Frame* frame1, RigidBody* body2, Frame* frame2)
    : m_implementation(std::make_unique<Implementation>(body1, frame1, body2, frame2)) {}

Constraint::~Constraint() = default;

RigidBody* Constraint::getBodyAt(UInt index) const {
    return index < 2 ? m_implementation->bodies[index].get() : nullptr;
}

UInt Constraint::getNumBodies() const {
    return m_implementation->bodies[1] ? 2 : 1;
}

AffineMatrix4x4 Constraint::getAttachmentTransform(UInt index) const {
    return index < 2 ? m_implementation->frames[index]->getMatrix() : AffineMatrix4x4();
}

Frame* Constraint::getAttachmentFrame(UInt index) const {
    return index < 2 ? m_implementation->frames[index].get() : nullptr;
}

void Constraint::setEnable(bool enable) {
    m_implementation->enabled = enable;
}

bool Constraint::isEnabled() const {
    return m_implementation->enabled;
}

void Constraint::setCompliance(Real compliance) {
    m_implementation->compliance = requireNonNegative(compliance, "a compliance");
}

Real Constraint::getCompliance() const {
    return m_implementation->compliance;
}

void Constraint::setDamping(Real time) {
    m_implementation->damping = requireNonNegative(time, "a damping time");
}

Real Constraint::getDamping() const {
    return m_implementation->damping;
}

void Constraint::setForceRange(Real lower, Real upper, UInt row) {
    if (!(lower <= upper))
        throw std::invalid_argument("the lower bound of a force range must not be above its upper bound");
    if (row >= m_implementation->rows.size())
        throw std::out_of_range("the constraint holds no such row");
    m_implementation->rows[row]->lowerForce = lower;
    m_implementation->rows[row]->upperForce = upper;
}

UInt Constraint::getNumRows() const {
    return m_implementation->activeRows().size();
}

Constraint::RowType Constraint::getRowType(UInt row) const {
    return requireRow(m_implementation->activeRows(), row).type;
}

Vec3 Constraint::getRowAxis(UInt row) const {
    return fromBullet(requireRow(m_implementation->activeRows(), row).axis);
}

Real Constraint::getRowForce(UInt row) const {
    return requireRow(m_implementation->activeRows(), row).force;
}

bool Constraint::getLastForce(UInt index, Vec3& force, Vec3& torque) const {
    force = torque = Vec3();
    if (index > 1 || !m_implementation->world)
        return false;
    btVector3 const point = toBullet(getAttachmentTransform(index).getTranslate());
    double const side = index == 0 ? 1 : -1;
    for (ConstraintRow const* row : m_implementation->activeRows()) {
        btVector3 const push = row->axis * (row->force * side);
        if (row->type == TRANSLATIONAL) {
            force += fromBullet(push);
            torque += fromBullet((row->anchors[index] - point).cross(push));
        } else {
            torque += fromBullet(push);
        }
    }
    return true;
}

hyxSDK::Simulation* Constraint::getSimulation() const {
    return m_implementation->simulation;
}

} // namespace hyx
