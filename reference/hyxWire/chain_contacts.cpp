// Points of a chain on the surfaces of bodies: free, gripping or sliding.
#include "reference/hyxWire/chain_solver.h"

#include <algorithm>
#include <cmath>

namespace hyxWire {

using hyx::Real;
using hyx::Vec3;

namespace {

/// m/s, with which a point that lies too deep comes out.
constexpr Real fastestRise = 0.5;
/// Of one contact in a substep.
constexpr int mostChanges = 4;

Vec3 along(Vec3 const& normal, Vec3 const& vector) {
    return vector - normal * normal.dot(vector);
}

} // namespace

Vec3 ChainSolver::Body::atStart(Vec3 const& place) const {
    return center - shifted + hyx::Quat(-turned.length(), turned) * (place - center);
}

Vec3 ChainSolver::Body::directionNow(Vec3 const& directionAtStart) const {
    return hyx::Quat(turned.length(), turned) * directionAtStart;
}

void ChainSolver::findContacts(Real h) {
    for (std::size_t i = 0; i < points.size(); ++i) {
        Contact& contact = contacts[i];
        Contact const former = contact;
        if (points[i].inverseMass == 0 || !findContact(i, m_free[i], contact)) {
            contact = Contact();
            continue;
        }
        contact.gap = std::max(contact.gap, -fastestRise * h);
        if (former.body != contact.body)
            contact.state = Contact::NONE;
        if (contact.state == Contact::NONE)
            contact.strain = Vec3();
        // A surface that bends turns the strain along.
        Real const size = contact.strain.length();
        Vec3 const strain = along(contact.normal, contact.strain);
        if (strain.length2() > 0)
            contact.strain = strain.normal() * size;
    }
}

/// Relative to the surface, in a substep that leads the point to a place.
Vec3 ChainSolver::slipOf(std::size_t i, Vec3 const& place, Real h) const {
    Contact const& contact = contacts[i];
    return along(contact.normal, place - m_before[i] - bodies[contact.body].velocityAt(m_before[i]) * h);
}

// Where a chain turns by angles a and b on the two sides of a surface's tangent, friction mu at its corner brings the
// tensions to a ratio of (1 + mu tan b) / (1 - mu tan a), besides what they differ without friction. This makes it
// exp(mu (a + b)), that of a rope that bends evenly, however long the segments are.
Real ChainSolver::frictionAt(std::size_t i) const {
    if (i == 0 || i >= m_system.links.size())
        return friction;
    Vec3 const& before = m_system.links[i - 1].direction;
    Vec3 const& after = m_system.links[i].direction;
    Contact const& contact = contacts[i];
    Real ahead = std::asin(std::clamp(-contact.normal.dot(after), 0.0, 1.0));
    Real behind = std::asin(std::clamp(contact.normal.dot(before), 0.0, 1.0));
    if (contact.strain.dot(before + after) < 0)
        std::swap(ahead, behind);
    Real const ratio = std::exp(friction * (ahead + behind));
    Real const turn = std::tan(behind) + ratio * std::tan(ahead);
    return turn > 1e-6 ? (ratio - 1) / turn : friction;
}

ChainNode ChainSolver::nodeOf(std::size_t i, Real h) const {
    Point const& point = points[i];
    Contact const& contact = contacts[i];
    bool const touches = contact.state != Contact::NONE;
    int const body = touches ? contact.body : point.body;
    ChainNode node;
    node.mass = point.inverseMass > 0 ? 1 / point.inverseMass : 0;
    node.kind = point.inverseMass > 0 ? ChainNode::FREE : ChainNode::HELD;
    if (body >= 0) {
        node.column = bodies[body].column;
        node.arm = point.position - bodies[body].center;
    }
    if (touches) {
        Real const friction = frictionAt(i);
        node.kind = ChainNode::TOUCHES;
        node.normal = contact.normal;
        node.rubbing = contact.strain * -friction;
        node.gap = contact.gap;
        node.slip = slipOf(i, m_free[i], h);
        node.grip = friction * contact.load * h * h / grip;
        if (contact.state == Contact::SLIDES) {
            // Across its slip, friction turns with the direction, which is as stiff as the slip is short.
            node.free = contact.strain.normal();
            node.grip *= grip / std::max(grip, std::abs(node.free.dot(node.slip)));
        }
    } else if (node.column >= 0) {
        node.kind = ChainNode::RIDES;
    }
    return node;
}

/// Looks at what the surfaces had to do. Whether that asks for another solution.
bool ChainSolver::reviseContacts(Real h) {
    bool changed = false;
    for (std::size_t i = 0; i < contacts.size(); ++i)
        if (contacts[i].body >= 0 && m_changes[i] < mostChanges && revise(i, h)) {
            ++m_changes[i];
            changed = true;
        }
    return changed;
}

bool ChainSolver::revise(std::size_t i, Real h) {
    Contact& contact = contacts[i];
    Vec3 const place = m_free[i] + m_system.moves[i];
    if (contact.state == Contact::NONE) {
        if (contact.gap + contact.normal.dot(place - m_free[i]) >= 0)
            return false;
        contact.state = Contact::GRIPS;
        return true;
    }
    if (m_system.loadOf(i) <= 0) {
        contact.state = Contact::NONE;
        contact.strain = Vec3();
        contact.load = 0;
        return true;
    }
    Vec3 const slip = slipOf(i, place, h) - along(contact.normal, m_system.shiftUnder(i));
    if (contact.state == Contact::SLIDES) {
        // Friction never drives.
        if (slip.dot(contact.strain) >= 0)
            return false;
        contact.state = Contact::GRIPS;
        return true;
    }
    Vec3 const strain = contact.strain + slip / grip;
    if (strain.length() <= 1)
        return false;
    contact.state = Contact::SLIDES;
    contact.strain = strain.normal();
    return true;
}

void ChainSolver::settleContacts(Real h) {
    for (std::size_t i = 0; i < contacts.size(); ++i) {
        Contact& contact = contacts[i];
        if (contact.state == Contact::NONE)
            continue;
        contact.load = std::max(m_system.loadOf(i), 0.0) / (h * h);
        contact.strain += slipOf(i, points[i].position, h) / grip;
        Real const size = contact.strain.length();
        if (size > 1)
            contact.strain = contact.strain / size;
        contact.state = size > 1 ? Contact::SLIDES : Contact::GRIPS;
    }
}

} // namespace hyxWire
