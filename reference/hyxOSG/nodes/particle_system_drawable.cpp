// Shows the grains of a system as they are at each frame.
#include "platform/hyxOSG/nodes/particle_system_drawable.h"

#include "platform/hyx/particles/particle_system.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/meshes/sphere_impostors.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace hyxOSG {
namespace {

ParticleSystemDrawable::ParticleRenderingMode allowedMode = ParticleSystemDrawable::TRIANGLES;

template <class Mode>
Mode checked(Mode mode, Mode last, char const* what) {
    if (static_cast<int>(mode) < 0 || mode > last)
        throw std::invalid_argument(std::string(what) + " mode " + std::to_string(static_cast<int>(mode)) +
                                    " does not exist, use 0 to " + std::to_string(static_cast<int>(last)));
    return mode;
}

/// Reads the particles at every update traversal.
struct ReadParticles : osg::DrawableUpdateCallback {
    void update(osg::NodeVisitor*, osg::Drawable* drawable) override {
        static_cast<ParticleSystemDrawable*>(drawable)->update();
    }
};

} // namespace

struct ParticleSystemDrawable::Implementation {
    hyx::ref_ptr<hyx::ParticleSystem> system;
    ParticleRenderingMode renderingMode = QUAD_SPRITES;
    ParticleShaderMode shaderMode = ROTATION_SPRITES;
    bool enabled = true;
    SphereImpostors impostors;
};

ParticleSystemDrawable::ParticleSystemDrawable() : ParticleSystemDrawable(nullptr) {}

ParticleSystemDrawable::ParticleSystemDrawable(hyx::ParticleSystem* particleSystem, ParticleRenderingMode renderingMode,
                                               ParticleShaderMode shaderMode)
    : m_implementation(std::make_unique<Implementation>()) {
    m_implementation->system = particleSystem;
    m_implementation->renderingMode = checked(renderingMode, TRIANGLES, "rendering");
    setSupportsDisplayList(false);
    setUseVertexBufferObjects(true);
    setDataVariance(osg::Object::DYNAMIC);
    setStateSet(m_implementation->impostors.state());
    setParticleShaderMode(shaderMode);
    setUpdateCallback(new ReadParticles);
    update();
}

ParticleSystemDrawable::ParticleSystemDrawable(ParticleSystemDrawable const& other, osg::CopyOp const&)
    : ParticleSystemDrawable(other.m_implementation->system, other.m_implementation->renderingMode,
                             other.m_implementation->shaderMode) {
    setName(other.getName());
    setNodeMask(other.getNodeMask());
    m_implementation->enabled = other.m_implementation->enabled;
}

ParticleSystemDrawable::~ParticleSystemDrawable() = default;

ParticleSystemDrawable::ParticleShaderMode ParticleSystemDrawable::getParticleShaderMode() const {
    return m_implementation->shaderMode;
}

void ParticleSystemDrawable::setParticleShaderMode(ParticleShaderMode shaderMode) {
    m_implementation->shaderMode = checked(shaderMode, ALPHA_SPRITES, "shader");
    m_implementation->impostors.setShaderMode(shaderMode);
}

ParticleSystemDrawable::ParticleRenderingMode ParticleSystemDrawable::getParticleRenderingMode() const {
    return std::min(m_implementation->renderingMode, allowedMode);
}

void ParticleSystemDrawable::setEnable(bool enable) {
    m_implementation->enabled = enable;
}

bool ParticleSystemDrawable::getEnable() const {
    return m_implementation->enabled;
}

hyx::ParticleSystem* ParticleSystemDrawable::getParticleSystem() const {
    return m_implementation->system;
}

void ParticleSystemDrawable::setAllowedRenderMode(ParticleRenderingMode renderingMode) {
    allowedMode = checked(renderingMode, TRIANGLES, "rendering");
}

ParticleSystemDrawable::ParticleRenderingMode ParticleSystemDrawable::getAllowedRenderMode() {
    return allowedMode;
}

osg::Object* ParticleSystemDrawable::cloneType() const {
    return new ParticleSystemDrawable;
}

osg::Object* ParticleSystemDrawable::clone(osg::CopyOp const& copyOperation) const {
    return new ParticleSystemDrawable(*this, copyOperation);
}

bool ParticleSystemDrawable::isSameKindAs(osg::Object const* object) const {
    return dynamic_cast<ParticleSystemDrawable const*>(object);
}

char const* ParticleSystemDrawable::libraryName() const {
    return "hyxOSG";
}

char const* ParticleSystemDrawable::className() const {
    return "ParticleSystemDrawable";
}

void ParticleSystemDrawable::drawImplementation(osg::RenderInfo& renderInfo) const {
    if (m_implementation->enabled)
        m_implementation->impostors.draw(renderInfo, getParticleRenderingMode());
}

osg::BoundingBox ParticleSystemDrawable::computeBoundingBox() const {
    return m_implementation->impostors.bounds();
}

void ParticleSystemDrawable::update() {
    bool const shown = m_implementation->enabled && m_implementation->system && m_implementation->system->getEnable();
    SphereImpostors& impostors = m_implementation->impostors;
    impostors.begin(shown ? m_implementation->system->getNumParticles() : 0);
    if (shown)
        for (hyx::Particle const& particle :
             static_cast<hyx::ParticleSystem const&>(*m_implementation->system).getParticles())
            impostors.add(toOsg(particle.position), static_cast<float>(particle.radius), toOsg(particle.color),
                          toOsg(particle.rotation));
    impostors.end();
    dirtyBound();
}

void ParticleSystemDrawable::releaseGLObjects(osg::State* state) const {
    osg::Drawable::releaseGLObjects(state);
    m_implementation->impostors.releaseGLObjects(state);
}

} // namespace hyxOSG
