// Draws letters into colours and depths.
#include "reference/machinery/text/lettering.h"

#include <osg/GLExtensions>
#include <osg/RenderInfo>
#include <osg/VertexArrayState>

#include <cmath>

namespace hyxOSG {
namespace {

void apply(osg::State& state, osg::Matrix const& modelView) {
    state.applyModelViewMatrix(modelView);
    if (state.getUseModelViewAndProjectionUniforms())
        state.applyModelViewAndProjectionUniformsIfRequired();
}

/// How far the origin is from the next whole pixel.
osg::Vec3d toNextPixel(osg::State const& state, osg::Matrix const& modelView) {
    osg::Viewport const* const viewport = state.getCurrentViewport();
    if (!viewport)
        return {};
    osg::Matrix const window = modelView * state.getProjectionMatrix() * viewport->computeWindowMatrix();
    osg::Vec3d const origin = osg::Vec3d() * window;
    return {std::round(origin.x()) - origin.x(), std::round(origin.y()) - origin.y(), 0};
}

} // namespace

void Lettering::drawImplementation(osg::RenderInfo& info) const {
    if (_color.a() == 0)
        return;
    osg::State& state = *info.getState();
    osg::Matrix const outer = state.getModelViewMatrix();
    osg::Matrix modelView;
    computeMatrix(modelView, &state);
    modelView.postMult(outer);
    if (getCharacterSizeMode() == SCREEN_COORDS) // a unit is a pixel, and upright
        modelView.preMultTranslate(toNextPixel(state, modelView));
    apply(state, modelView);
    osg::VertexArrayState& arrays = *state.getCurrentVertexArrayState();
    bool const buffered = state.useVertexBufferObject(_supportsVertexBufferObjects && _useVertexBufferObjects);
    if (!buffered || !state.useVertexArrayObject(_useVertexArrayObject) || arrays.getRequiresSetArrays()) {
        arrays.lazyDisablingOfVertexAttributes();
        arrays.setVertexArray(state, _coords.get());
        arrays.setTexCoordArray(state, 0, _texcoords.get());
        arrays.applyDisablingOfVertexAttributes(state);
    }
    drawInBothBuffers(state);
    if (buffered && !state.useVertexArrayObject(_useVertexArrayObject)) {
        arrays.unbindVertexBufferObject();
        arrays.unbindElementBufferObject();
    }
    apply(state, outer);
}

// Colours first, then depths: letters lie in one plane with what is behind them.
void Lettering::drawInBothBuffers(osg::State& state) const {
    glDepthMask(GL_FALSE);
    drawAll(state);
    if (state.getLastAppliedMode(GL_DEPTH_TEST)) {
        glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
        glDepthMask(GL_TRUE);
        drawAll(state);
        glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
        state.haveAppliedAttribute(osg::StateAttribute::COLORMASK);
    }
    state.haveAppliedAttribute(osg::StateAttribute::DEPTH);
}

void Lettering::drawAll(osg::State& state) const {
    drawDecoration(state);
    if (!(_drawMode & TEXT))
        return;
    drawQuads(state, m_backdrop,
              osg::Vec4(osg::Vec3(_backdropColor.r(), _backdropColor.g(), _backdropColor.b()),
                        _backdropColor.a() * _color.a()));
    drawQuads(state, m_letters, _color);
}

void Lettering::drawQuads(osg::State& state, Quads const& quads, osg::Vec4 const& color) const {
    if (quads.empty())
        return;
    state.getCurrentVertexArrayState()->disableColorArray(state);
    state.Color(color.r(), color.g(), color.b(), color.a());
    bool const buffered = state.useVertexBufferObject(_supportsVertexBufferObjects && _useVertexBufferObjects);
    for (auto const& [page, primitives] : quads) {
        state.applyTextureAttribute(0, page.get());
        primitives->draw(state, buffered);
    }
}

void Lettering::drawDecoration(osg::State& state) const {
    bool const buffered = state.useVertexBufferObject(_supportsVertexBufferObjects && _useVertexBufferObjects);
    for (auto const& primitives : _decorationPrimitives) {
        state.getCurrentVertexArrayState()->disableColorArray(state);
        osg::Vec4 const color = primitives->getMode() == GL_TRIANGLES ? _textBBColor : osg::Vec4(1, 1, 1, 1);
        state.Color(color.r(), color.g(), color.b(), color.a());
        primitives->draw(state, buffered);
    }
}

} // namespace hyxOSG
