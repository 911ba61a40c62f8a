// Places cutting planes, and numbers them for each picture.
#include "platform/hyxOSG/decoration/clip_plane.h"

#include "reference/hyxOSG/decoration/cut_faces.h"
#include "reference/machinery/viewing/drawing_failure.h"

#include <osg/GraphicsContext>
#include <osg/State>
#include <osg/StateSet>
#include <osgUtil/CullVisitor>

#include <cmath>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>

namespace hyxOSG {
namespace {

constexpr unsigned int leastCuts = 6; // what the graphics library guarantees

/// How many cuts the current driver can do at a time.
unsigned int mostCuts(osgUtil::CullVisitor& visitor) {
    osg::GraphicsContext* const context = visitor.getState() ? visitor.getState()->getGraphicsContext() : nullptr;
    GLint most = leastCuts;
    if (context && context->isCurrent())
        glGetIntegerv(GL_MAX_CLIP_PLANES, &most);
    return static_cast<unsigned int>(most);
}

/// A number that no cut of the picture being gathered has so far; none is left when the driver can do no more.
std::optional<unsigned int> freeNumber(osgUtil::CullVisitor& visitor) {
    std::set<unsigned int> taken;
    for (auto const& [attribute, matrix] :
         visitor.getCurrentRenderBin()->getStage()->getPositionalStateContainer()->getAttrMatrixList())
        if (auto const* const cut = dynamic_cast<osg::ClipPlane const*>(attribute.get()))
            taken.insert(cut->getClipPlaneNum());
    unsigned int number = 0;
    while (taken.contains(number))
        ++number;
    unsigned int const most = mostCuts(visitor);
    if (number < most)
        return number;
    DrawingFailure::note("the graphics driver can do no more than " + std::to_string(most) +
                         " cuts in one picture: disable or remove a ClipPlane");
    return std::nullopt;
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

ClipPlane::ClipPlane(hyx::Vec3 const& position, hyx::Vec3 const& normal) : m_faces(std::make_unique<CutFaces>()) {
    place(position, normal);
    setEnable(true);
}

ClipPlane::ClipPlane(hyx::Plane const& plane) : ClipPlane(nearestToOrigin(plane), plane.getNormal()) {}

ClipPlane::ClipPlane(double a, double b, double c, double d) : ClipPlane(hyx::Plane(a, b, c, d)) {}

ClipPlane::~ClipPlane() {
    showParticles();
}

void ClipPlane::place(hyx::Vec3 const& position, hyx::Vec3 const& normal) {
    if (!finite(position))
        throw std::invalid_argument("the plane's position must be finite");
    m_normal = unit(normal);
    m_position = position;
}

// A number belongs to a cut for one picture only: each view, shadow map and render target counts its own.
void ClipPlane::accept(osg::NodeVisitor& visitor) {
    osgUtil::CullVisitor* const culling = m_enabled ? visitor.asCullVisitor() : nullptr;
    if (!culling) {
        osg::ClipNode::accept(visitor);
        return;
    }
    m_lastCut = nullptr;
    if (!visitor.validNodeMask(*this) || culling->isCulled(*this))
        return;
    std::optional<unsigned int> const number = freeNumber(*culling);
    if (!number)
        return;
    osg::ref_ptr<osg::StateSet> const state = new osg::StateSet;
    osg::ref_ptr<osg::ClipPlane> const cut = new osg::ClipPlane(*number);
    cut->setClipPlane(m_normal.x, m_normal.y, m_normal.z, -m_normal.dot(m_position));
    state->setAssociatedModes(cut, osg::StateAttribute::ON);
    culling->addPositionedAttribute(culling->getModelViewMatrix(), cut);
    m_lastCut = state;
    culling->pushStateSet(state);
    osg::ClipNode::accept(visitor);
    culling->popStateSet();
    m_faces->cull(*this, osg::Plane(m_normal.x, m_normal.y, m_normal.z, -m_normal.dot(m_position)), *culling);
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
    // What is cut open shows its inside.
    if (enable)
        getOrCreateStateSet()->setMode(GL_CULL_FACE, osg::StateAttribute::OFF | osg::StateAttribute::OVERRIDE);
    else if (osg::StateSet* const state = getStateSet())
        state->removeMode(GL_CULL_FACE);
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
