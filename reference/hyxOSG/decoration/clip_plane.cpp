// Places cutting planes, and shares out their numbers.
#include "platform/hyxOSG/decoration/clip_plane.h"

#include <osg/StateSet>

#include <array>
#include <cmath>
#include <stdexcept>

namespace hyxOSG {
namespace {

// The graphics library guarantees six cuts at a time. A plane takes the number that the fewest planes have.
class PlaneNumbers {
public:
    unsigned int take() {
        unsigned int best = 0;
        for (unsigned int number = 1; number < m_users.size(); ++number)
            if (m_users[number] < m_users[best])
                best = number;
        ++m_users[best];
        return best;
    }

    void giveBack(unsigned int number) { --m_users[number]; }

private:
    std::array<int, 6> m_users{};
};

PlaneNumbers& planeNumbers() {
    static PlaneNumbers numbers;
    return numbers;
}

bool finite(hyx::Vec3 const& vector) {
    return std::isfinite(vector.x + vector.y + vector.z);
}

hyx::Vec3 unit(hyx::Vec3 const& normal) {
    double const length = std::sqrt(normal.dot(normal));
    if (!finite(normal) || !(length > 0))
        throw std::invalid_argument("the plane's normal must be finite and have a length");
    return normal * (1 / length);
}

hyx::Vec3 nearestToOrigin(hyx::Plane const& plane) {
    return plane.getNormal() * -plane.getD();
}

} // namespace

ClipPlane::ClipPlane(hyx::Vec3 const& position, hyx::Vec3 const& normal) : m_clip(new osg::ClipPlane) {
    place(position, normal);
    m_clip->setClipPlaneNum(planeNumbers().take());
    addClipPlane(m_clip);
}

ClipPlane::ClipPlane(hyx::Plane const& plane) : ClipPlane(nearestToOrigin(plane), plane.getNormal()) {}

ClipPlane::ClipPlane(double a, double b, double c, double d) : ClipPlane(hyx::Plane(a, b, c, d)) {}

ClipPlane::~ClipPlane() {
    showParticles();
    planeNumbers().giveBack(m_clip->getClipPlaneNum());
}

void ClipPlane::place(hyx::Vec3 const& position, hyx::Vec3 const& normal) {
    if (!finite(position))
        throw std::invalid_argument("the plane's position must be finite");
    m_normal = unit(normal);
    m_position = position;
    m_clip->setClipPlane(m_normal.x, m_normal.y, m_normal.z, -m_normal.dot(m_position));
}

void ClipPlane::setClipPlane(hyx::Plane const& plane) {
    place(nearestToOrigin(plane), plane.getNormal());
}

void ClipPlane::setPosition(hyx::Vec3 const& position) {
    place(position, m_normal);
}

void ClipPlane::setNormal(hyx::Vec3 const& normal) {
    place(m_position, normal);
}

void ClipPlane::setEnable(bool enable) {
    m_enabled = enable;
    setLocalStateSetModes(enable ? osg::StateAttribute::ON : osg::StateAttribute::OFF);
}

bool ClipPlane::getEnable() const {
    return m_enabled;
}

hyx::Plane ClipPlane::getPlane() const {
    return hyx::Plane(m_normal, m_position);
}

hyx::Vec3 ClipPlane::getPosition() const {
    return m_position;
}

hyx::Vec3 ClipPlane::getNormal() const {
    return m_normal;
}

void ClipPlane::setParticleSystemToClip(hyx::ParticleSystem* particles) {
    showParticles();
    m_particles = particles;
}

void ClipPlane::clipAgainstParticleSystem() {
    if (!m_particles)
        return;
    showParticles();
    if (!m_enabled)
        return;
    hyx::Plane const plane = getPlane();
    for (hyx::Particle& particle : m_particles->getParticles()) {
        if (plane.distance(particle.position) >= 0)
            continue;
        m_hidden.emplace(particle.id, particle.color.w);
        particle.color.w = 0;
    }
}

void ClipPlane::showParticles() {
    if (m_particles && !m_hidden.empty())
        for (hyx::Particle& particle : m_particles->getParticles())
            if (auto const hidden = m_hidden.find(particle.id); hidden != m_hidden.end())
                particle.color.w = hidden->second;
    m_hidden.clear();
}

} // namespace hyxOSG
