// Silhouette lines around nodes.

#include "platform/hyxOSG/visuals/render_state.h"
#include "reference/machinery/meshes/stencil_buffer.h"
#include "reference/machinery/shading/node_state.h"

#include <osg/Camera>
#include <osg/CullFace>
#include <osg/LineWidth>
#include <osg/Material>
#include <osg/PolygonMode>
#include <osg/PolygonOffset>
#include <osg/Program>
#include <osg/Stencil>
#include <osgUtil/CullVisitor>

#include <cmath>
#include <stdexcept>

namespace hyxOSG {
namespace {

constexpr int outlineBin = 5; // after the opaque bin, before the transparent one

/// Marks in the stencil buffer what the node covers.
osg::ref_ptr<osg::StateSet> coverageState() {
    osg::ref_ptr<osg::StateSet> const state = new osg::StateSet;
    osg::ref_ptr<osg::Stencil> const stencil = new osg::Stencil;
    stencil->setFunction(osg::Stencil::ALWAYS, 1, ~0u);
    stencil->setOperation(osg::Stencil::KEEP, osg::Stencil::KEEP, osg::Stencil::REPLACE);
    state->setAttributeAndModes(stencil, setByScript);
    return state;
}

/// Draws wide edges where the node does not cover the picture, which leaves a line around its silhouette.
osg::ref_ptr<osg::StateSet> lineState(osg::Vec4 const& color, float width) {
    osg::ref_ptr<osg::StateSet> const state = new osg::StateSet;
    osg::ref_ptr<osg::Stencil> const stencil = new osg::Stencil;
    stencil->setFunction(osg::Stencil::NOTEQUAL, 1, ~0u);
    stencil->setOperation(osg::Stencil::KEEP, osg::Stencil::KEEP, osg::Stencil::KEEP);
    osg::ref_ptr<osg::Material> const material = new osg::Material;
    material->setColorMode(osg::Material::OFF);
    material->setDiffuse(osg::Material::FRONT_AND_BACK, osg::Vec4(0, 0, 0, color.a()));
    material->setAmbient(osg::Material::FRONT_AND_BACK, osg::Vec4(0, 0, 0, color.a()));
    material->setSpecular(osg::Material::FRONT_AND_BACK, osg::Vec4(0, 0, 0, color.a()));
    material->setEmission(osg::Material::FRONT_AND_BACK, color);
    osg::StateAttribute::GLModeValue const off = setByScript & ~osg::StateAttribute::ON;
    state->setAttributeAndModes(stencil, setByScript);
    state->setAttributeAndModes(material, setByScript);
    state->setAttributeAndModes(new osg::LineWidth(2 * width), setByScript); // half of it is covered by the node
    state->setAttributeAndModes(new osg::PolygonMode(osg::PolygonMode::FRONT_AND_BACK, osg::PolygonMode::LINE),
                                setByScript);
    state->setAttributeAndModes(new osg::Program, setByScript); // an empty program: fixed function
    state->setMode(GL_LIGHTING, setByScript);
    state->setMode(GL_CULL_FACE, off);
    for (unsigned int unit = 0; unit < 8; ++unit)
        for (GLenum const mode : {GL_TEXTURE_2D, GL_TEXTURE_CUBE_MAP})
            state->setTextureMode(unit, mode, off);
    state->setRenderBinDetails(outlineBin, "RenderBin", osg::StateSet::OVERRIDE_RENDERBIN_DETAILS);
    return state;
}

/// Draws the node twice, and once where there is no stencil buffer, as in shadow maps.
class OutlineCallback : public osg::NodeCallback {
public:
    OutlineCallback(osg::Vec4 const& color, float width)
        : m_coverage(coverageState()), m_lines(lineState(color, width)) {}

    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override {
        auto* const cull = visitor->asCullVisitor();
        osg::Camera const* const camera = cull ? cull->getCurrentCamera() : nullptr;
        if (!camera || !hasStencil(*camera)) {
            traverse(node, visitor);
            return;
        }
        for (osg::StateSet* const pass : {m_coverage.get(), m_lines.get()}) {
            cull->pushStateSet(pass);
            traverse(node, visitor);
            cull->popStateSet();
        }
    }

private:
    osg::ref_ptr<osg::StateSet> m_coverage, m_lines;
};

OutlineCallback* outlineOf(osg::Node& node) {
    for (osg::Callback* callback = node.getCullCallback(); callback; callback = callback->getNestedCallback())
        if (auto* const outline = dynamic_cast<OutlineCallback*>(callback))
            return outline;
    return nullptr;
}

} // namespace

bool setEnableOutline(osg::Node* node, bool enable, hyxRender::Color const& color, float width) {
    if (!(width > 0) || !std::isfinite(width))
        throw std::invalid_argument("the width of an outline must be a positive number of pixels");
    if (!node)
        return false;
    if (OutlineCallback* const present = outlineOf(*node))
        node->removeCullCallback(present);
    if (enable)
        node->addCullCallback(new OutlineCallback({color.r, color.g, color.b, color.a}, width));
    return true;
}

bool getEnableOutline(osg::Node* node) {
    return node && outlineOf(*node);
}

} // namespace hyxOSG
