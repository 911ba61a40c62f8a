// Where the edge of a blade is, and how it moves.
#include "platform/hyxTerrain/dig_tool.h"

#include <stdexcept>

namespace hyxTerrain {

using hyx::Vec3;

DigTool::DigTool(hyx::RigidBody* body, Vec3 const& edgeBegin, Vec3 const& edgeEnd, Vec3 const& top)
    : m_body(body), m_edgeBegin(edgeBegin), m_edgeEnd(edgeEnd), m_top(top) {
    if (!body)
        throw std::invalid_argument("a dig tool needs a body");
    if (!((edgeEnd - edgeBegin).length2() > 0))
        throw std::invalid_argument("the cutting edge of a dig tool needs two different ends");
}

hyx::RigidBody* DigTool::getRigidBody() const {
    return m_body.get();
}

Vec3 DigTool::getWorldEdgeBegin() const {
    return m_body->getTransform().transformPoint(m_edgeBegin);
}

Vec3 DigTool::getWorldEdgeEnd() const {
    return m_body->getTransform().transformPoint(m_edgeEnd);
}

Vec3 DigTool::getWorldTop() const {
    return m_body->getTransform().transformPoint(m_top);
}

Vec3 DigTool::getWorldVelocity() const {
    return m_body->getPointVelocity((getWorldEdgeBegin() + getWorldEdgeEnd()) * 0.5);
}

void DigTool::setEnable(bool enable) {
    m_enable = enable;
}

bool DigTool::getEnable() const {
    return m_enable;
}

hyx::Real DigTool::getDugMass() const {
    return m_dugMass;
}

Vec3 DigTool::getSoilForce() const {
    return m_soilForce;
}

void DigTool::addDug(hyx::Real mass, Vec3 const& force) {
    m_dugMass += mass;
    m_soilForce = force;
    m_body->addForceAtPosition(force, (getWorldEdgeBegin() + getWorldEdgeEnd()) * 0.5);
}

} // namespace hyxTerrain
