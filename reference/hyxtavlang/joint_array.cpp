// Positions, velocities, efforts and targets of all joints of a model.
#include "platform/hyxtavlang/joint_array.h"

#include "platform/hyx/bodies/rigid_body.h"
#include "reference/hyxtavlang/joint_array_implementation.h"

#include <cmath>
#include <stdexcept>

namespace hyxtavlang {
namespace {

using hyx::AffineMatrix4x4;

AffineMatrix4x4 placeOf(hyx::RigidBody const* body) {
    return body ? body->getTransform() : AffineMatrix4x4();
}

/// The child's place in its parent when the joint has gone `way` from the start.
AffineMatrix4x4 moved(Link const& link, bool slides, double way) {
    if (slides)
        return link.rest * AffineMatrix4x4::translate(link.axis * way);
    return link.rest * AffineMatrix4x4::translate(link.anchor * -1.0) *
           AffineMatrix4x4::rotate(hyx::Quat(way, link.axis)) * AffineMatrix4x4::translate(link.anchor);
}

} // namespace

JointArray::JointArray(std::unique_ptr<Implementation> implementation) : m_implementation(std::move(implementation)) {}

JointArray::~JointArray() = default;

unsigned JointArray::getNumJoints() const {
    return static_cast<unsigned>(m_implementation->names.size());
}

std::vector<std::string> JointArray::getNames() const {
    return m_implementation->names;
}

namespace {

template <class Read>
hyx::RealVector collect(std::vector<JointDrive> const& drives, Read read) {
    hyx::RealVector values;
    for (JointDrive const& drive : drives)
        values.push_back(read(drive));
    return values;
}

void check(hyx::RealVector const& values, std::vector<JointDrive> const& drives, bool orNone = false) {
    if (values.size() != drives.size())
        throw std::invalid_argument("expected " + std::to_string(drives.size()) + " numbers, one for each joint, not " +
                                    std::to_string(values.size()));
    for (double value : values)
        if (!std::isfinite(value) && !(orNone && std::isnan(value)))
            throw std::invalid_argument("the numbers must be finite");
}

} // namespace

hyx::RealVector JointArray::getPositions() const {
    return collect(m_implementation->drives->drives, [](JointDrive const& drive) { return drive.position(); });
}

void JointArray::setPositions(hyx::RealVector const& positions) {
    auto const& drives = m_implementation->drives->drives;
    check(positions, drives);
    std::vector<AffineMatrix4x4> places;
    for (Link const& link : m_implementation->links) {
        if (link.drive < 0) {
            places.push_back(placeOf(link.child.get()) * placeOf(link.parent.get()).inverse());
            continue;
        }
        JointDrive const& drive = drives[link.drive];
        places.push_back(moved(link, drive.slides, positions[link.drive] - drive.start));
    }
    for (std::size_t i = 0; i < places.size(); ++i) {
        Link const& link = m_implementation->links[i];
        link.child->setTransform(places[i] * placeOf(link.parent.get()));
    }
}

hyx::RealVector JointArray::getVelocities() const {
    return collect(m_implementation->drives->drives,
                   [](JointDrive const& drive) { return drive.joint->getCurrentSpeed(); });
}

void JointArray::setVelocities(hyx::RealVector const& velocities) {
    auto const& drives = m_implementation->drives->drives;
    check(velocities, drives);
    for (Link const& link : m_implementation->links) {
        if (link.drive < 0)
            continue;
        JointDrive const& drive = drives[link.drive];
        AffineMatrix4x4 const frame = drive.joint->getAttachmentTransform(0);
        hyx::Vec3 const change = frame.transformVector(hyx::Vec3(0, 0, 1)) * velocities[link.drive];
        hyx::Vec3 const center = link.child->getWorldCenterOfMass();
        hyx::Vec3 spin, velocity;
        if (link.parent) {
            spin = link.parent->getAngularVelocity();
            velocity = link.parent->getPointVelocity(center);
        }
        if (!drive.slides)
            spin += change;
        velocity += drive.slides ? change : change.cross(center - frame.getTranslate());
        link.child->setVelocity(velocity);
        link.child->setAngularVelocity(spin);
    }
}

hyx::RealVector JointArray::getEfforts() const {
    return collect(m_implementation->drives->drives, [](JointDrive const& drive) { return drive.getEffort(); });
}

void JointArray::setEfforts(hyx::RealVector const& efforts) {
    auto& drives = m_implementation->drives->drives;
    check(efforts, drives);
    for (std::size_t i = 0; i < drives.size(); ++i)
        drives[i].setEffort(efforts[i]);
}

hyx::RealVector JointArray::getTargets() const {
    return collect(m_implementation->drives->drives, [](JointDrive const& drive) { return drive.getTarget(); });
}

void JointArray::setTargets(hyx::RealVector const& targets) {
    auto& drives = m_implementation->drives->drives;
    check(targets, drives, true);
    for (std::size_t i = 0; i < drives.size(); ++i)
        drives[i].setTarget(targets[i]);
}

namespace {

hyx::RangeReal rangeOf(JointDrive const& drive) {
    hyx::Range1D const& range = *drive.joint->getRange1D();
    return range.isEnabled() ? range.getRange() : hyx::RangeReal();
}

} // namespace

hyx::RealVector JointArray::getLowerLimits() const {
    return collect(m_implementation->drives->drives,
                   [](JointDrive const& drive) { return rangeOf(drive).lower() + drive.start; });
}

hyx::RealVector JointArray::getUpperLimits() const {
    return collect(m_implementation->drives->drives,
                   [](JointDrive const& drive) { return rangeOf(drive).upper() + drive.start; });
}

} // namespace hyxtavlang
