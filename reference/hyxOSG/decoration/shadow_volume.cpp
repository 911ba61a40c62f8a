// Counts shadow volumes in the stencil buffer, and darkens what is inside.
#include "reference/hyxOSG/decoration/shadow_volume.h"

#include "reference/hyxOSG/decoration/volume_mesh.h"
#include "reference/machinery/meshes/round_form.h"
#include "reference/machinery/meshes/stencil_buffer.h"
#include "reference/machinery/shading/node_state.h"
#include "reference/machinery/shading/shading_marks.h"

#include <osg/BlendFunc>
#include <osg/ColorMask>
#include <osg/Depth>
#include <osg/PolygonOffset>
#include <osg/Program>
#include <osg/Stencil>
#include <osg/StencilTwoSided>
#include <osg/Transform>
#include <osgShadow/ShadowedScene>
#include <osgUtil/CullVisitor>

#include <algorithm>

namespace hyxOSG::decorator {
namespace {

constexpr unsigned int countBits = 0x7f;
constexpr unsigned int leftOutBit = 0x80;
constexpr float shadowBrightness = 0.45f;

// After the scene's own bins, in this order.
enum Bin { STARTING_BIN = 59, COUNTING_BIN = 60, LEAVING_OUT_BIN = 61, DARKENING_BIN = 62 };

osg::ref_ptr<osg::Program> createPullingProgram() {
    osg::ref_ptr<osg::Program> program = new osg::Program;
    program->addShader(new osg::Shader(osg::Shader::VERTEX, R"(
#version 120
uniform vec4 hyx_shadowLight; // in eye coordinates
void main()
{
    vec3 middle = (gl_ModelViewMatrix * vec4(gl_MultiTexCoord0.xyz, 1.0)).xyz;
    if (dot(gl_NormalMatrix * gl_Normal, hyx_shadowLight.xyz - middle * hyx_shadowLight.w) <= 0.0)
        gl_Position = vec4(0.0, 0.0, 0.0, 1.0);
    else if (gl_Vertex.w > 0.5)
        gl_Position = gl_ModelViewProjectionMatrix * vec4(gl_Vertex.xyz, 1.0);
    else {
        vec3 place = (gl_ModelViewMatrix * vec4(gl_Vertex.xyz, 1.0)).xyz;
        gl_Position = gl_ProjectionMatrix * vec4(place * hyx_shadowLight.w - hyx_shadowLight.xyz, 0.0);
    }
})"));
    program->addShader(
        new osg::Shader(osg::Shader::FRAGMENT, "#version 120\nvoid main() { gl_FragColor = vec4(0.0); }"));
    return program;
}

osg::ref_ptr<osg::StateSet> createCountingState() {
    osg::ref_ptr<osg::StateSet> state = new osg::StateSet;
    auto* stencil = new osg::StencilTwoSided;
    for (auto face : {osg::StencilTwoSided::FRONT, osg::StencilTwoSided::BACK}) {
        stencil->setFunction(face, osg::StencilTwoSided::ALWAYS, 0, ~0u);
        stencil->setWriteMask(face, countBits);
    }
    stencil->setOperation(osg::StencilTwoSided::FRONT, osg::StencilTwoSided::KEEP, osg::StencilTwoSided::DECR_WRAP,
                          osg::StencilTwoSided::KEEP);
    stencil->setOperation(osg::StencilTwoSided::BACK, osg::StencilTwoSided::KEEP, osg::StencilTwoSided::INCR_WRAP,
                          osg::StencilTwoSided::KEEP);
    state->setAttributeAndModes(stencil, forced);
    state->setMode(GL_STENCIL_TEST, forced);
    state->setAttributeAndModes(createPullingProgram(), forced);
    state->setAttribute(new osg::ColorMask(false, false, false, false), forced);
    // The near caps lie on the surfaces and must count as behind them.
    state->setAttributeAndModes(new osg::Depth(osg::Depth::LESS, 0, 1, false), forced);
    state->setAttributeAndModes(new osg::PolygonOffset(0.5f, 2.0f), forced);
    state->setMode(GL_DEPTH_CLAMP, forced);
    state->setMode(GL_CULL_FACE, osg::StateAttribute::OFF | osg::StateAttribute::OVERRIDE);
    state->setRenderBinDetails(COUNTING_BIN, "RenderBin", osg::StateSet::OVERRIDE_RENDERBIN_DETAILS);
    return state;
}

// A rectangle over the whole view that touches only pixels whose stencil value passes.
osg::ref_ptr<osg::Geometry> createCover(osg::Stencil* stencil, bool darkens, int bin) {
    osg::ref_ptr<osg::Geometry> cover = new osg::Geometry;
    auto* corners = new osg::Vec3Array;
    for (float y : {-1.0f, 1.0f})
        for (float x : {-1.0f, 1.0f})
            corners->push_back(osg::Vec3(x, y, 0));
    cover->setVertexArray(corners);
    cover->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLE_STRIP, 0, 4));
    cover->setUseDisplayList(false);
    cover->setUseVertexBufferObjects(true);
    cover->setCullingActive(false);
    auto* program = new osg::Program;
    program->addShader(new osg::Shader(osg::Shader::VERTEX,
                                       "#version 120\nvoid main() { gl_Position = vec4(gl_Vertex.xy, 0.0, 1.0); }"));
    program->addShader(new osg::Shader(osg::Shader::FRAGMENT, "#version 120\nvoid main() { gl_FragColor = vec4(vec3(" +
                                                                  std::to_string(shadowBrightness) + "), 1.0); }"));
    osg::StateSet* state = cover->getOrCreateStateSet();
    state->setAttributeAndModes(program, forced);
    state->setAttributeAndModes(stencil, forced);
    state->setAttributeAndModes(new osg::Depth(osg::Depth::ALWAYS, 0, 1, false), forced);
    state->setAttribute(new osg::ColorMask(darkens, darkens, darkens, false), forced);
    state->setAttributeAndModes(new osg::BlendFunc(GL_ZERO, GL_SRC_COLOR), forced);
    state->setRenderBinDetails(bin, "RenderBin", osg::StateSet::OVERRIDE_RENDERBIN_DETAILS);
    return cover;
}

// Passes where one of the bits is set, and clears the written ones.
osg::Stencil* clearingStencil(unsigned int bits, unsigned int written) {
    auto* stencil = new osg::Stencil;
    stencil->setFunction(osg::Stencil::NOTEQUAL, 0, bits);
    stencil->setOperation(osg::Stencil::KEEP, osg::Stencil::ZERO, osg::Stencil::ZERO);
    stencil->setWriteMask(written);
    return stencil;
}

unsigned int revisionOf(osg::Drawable const& drawable) {
    osg::Geometry const* geometry = drawable.asGeometry();
    osg::Array const* vertices = geometry ? geometry->getVertexArray() : nullptr;
    return vertices ? vertices->getModifiedCount() : 0;
}

} // namespace

/// Draws the volumes of all casters below a node.
class ShadowVolume::Casters : public osg::NodeVisitor {
public:
    Casters(ShadowVolume& technique, osgUtil::CullVisitor& cull)
        : osg::NodeVisitor(osg::NodeVisitor::TRAVERSE_ACTIVE_CHILDREN), m_technique(technique), m_cull(cull) {
        setTraversalMask(ExampleApplication::CASTS_SHADOWS_MASK);
    }

    void apply(osg::Transform& transform) override {
        osg::ref_ptr<osg::RefMatrix> const matrix = new osg::RefMatrix(*m_cull.getModelViewMatrix());
        transform.computeLocalToWorldMatrix(*matrix, this);
        m_cull.pushModelViewMatrix(matrix, transform.getReferenceFrame());
        traverse(transform);
        m_cull.popModelViewMatrix();
    }

    void apply(osg::Drawable& drawable) override {
        if (osg::Geometry* mesh = m_technique.meshOf(drawable))
            m_cull.addDrawable(mesh, m_cull.getModelViewMatrix());
    }

private:
    ShadowVolume& m_technique;
    osgUtil::CullVisitor& m_cull;
};

ShadowVolume::ShadowVolume(osg::LightSource* light)
    : m_light(light),
      m_counting(createCountingState()),
      m_starting(createCover(clearingStencil(countBits, countBits), false, STARTING_BIN)),
      m_leavingOut(createCover(clearingStencil(leftOutBit, ~0u), false, LEAVING_OUT_BIN)),
      m_darkening(createCover(clearingStencil(countBits, ~0u), true, DARKENING_BIN)) {}

ShadowVolume::~ShadowVolume() = default;

osg::ref_ptr<osg::StateSet> ShadowVolume::leaveOutState() {
    osg::ref_ptr<osg::StateSet> state = new osg::StateSet;
    auto* stencil = new osg::Stencil;
    stencil->setFunction(osg::Stencil::ALWAYS, leftOutBit, ~0u);
    stencil->setOperation(osg::Stencil::KEEP, osg::Stencil::KEEP, osg::Stencil::REPLACE);
    state->setAttributeAndModes(stencil);
    return state;
}

void ShadowVolume::init() {
    _dirty = false;
}

void ShadowVolume::update(osg::NodeVisitor& visitor) {
    forgetUnused();
    _shadowedScene->osg::Group::traverse(visitor);
}

void ShadowVolume::cull(osgUtil::CullVisitor& visitor) {
    {
        AskedDetail const detail; // a coarser picture of a shape would lie in the shadow of the mesh
        _shadowedScene->osg::Group::traverse(visitor);
    }
    osg::ref_ptr<osg::LightSource> light;
    // Without a stencil buffer every pixel would count as shadowed.
    if (!m_light.lock(light) || !light->getLight() || !hasStencil(*visitor.getCurrentCamera()))
        return;
    osg::Vec4d position = light->getLight()->getPosition();
    if (light->getReferenceFrame() != osg::LightSource::ABSOLUTE_RF)
        position = position * *visitor.getModelViewMatrix();

    osg::ref_ptr<osg::StateSet> const lit = new osg::StateSet;
    lit->addUniform(new osg::Uniform("hyx_shadowLight", osg::Vec4f(position)));
    visitor.pushStateSet(m_counting);
    visitor.pushStateSet(lit);
    Casters casters(*this, visitor);
    for (unsigned int i = 0; i < _shadowedScene->getNumChildren(); ++i)
        _shadowedScene->getChild(i)->accept(casters);
    visitor.popStateSet();
    visitor.popStateSet();
    for (osg::Geometry* cover : {m_starting.get(), m_leavingOut.get(), m_darkening.get()})
        cover->accept(visitor);
}

osg::Geometry* ShadowVolume::meshOf(osg::Drawable& drawable) {
    Mesh& entry = m_meshes[&drawable];
    unsigned int const revision = revisionOf(drawable);
    if (!entry.source.valid() || entry.source != &drawable || entry.revision != revision) {
        entry.source = &drawable;
        entry.revision = revision;
        entry.mesh = createVolumeMesh(drawable);
    }
    return entry.mesh;
}

void ShadowVolume::forgetUnused() {
    std::erase_if(m_meshes, [](auto const& entry) { return !entry.second.source.valid(); });
}

void ShadowVolume::cleanSceneGraph() {
    m_meshes.clear();
}

void ShadowVolume::resizeGLObjectBuffers(unsigned int maxSize) {
    for (auto const& [drawable, entry] : m_meshes)
        if (entry.mesh)
            entry.mesh->resizeGLObjectBuffers(maxSize);
    for (osg::Geometry* cover : {m_starting.get(), m_leavingOut.get(), m_darkening.get()})
        cover->resizeGLObjectBuffers(maxSize);
    m_counting->resizeGLObjectBuffers(maxSize);
}

void ShadowVolume::releaseGLObjects(osg::State* state) const {
    for (auto const& [drawable, entry] : m_meshes)
        if (entry.mesh)
            entry.mesh->releaseGLObjects(state);
    for (osg::Geometry const* cover : {m_starting.get(), m_leavingOut.get(), m_darkening.get()})
        cover->releaseGLObjects(state);
    m_counting->releaseGLObjects(state);
}

} // namespace hyxOSG::decorator
