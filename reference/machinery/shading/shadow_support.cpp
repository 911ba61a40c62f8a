// Asks the graphics context which shadows it can draw.
#include "reference/machinery/shading/shadow_support.h"

#include <osg/FrameBufferObject>
#include <osg/GLExtensions>
#include <osg/GraphicsContext>
#include <osg/State>

#include <algorithm>
#include <string_view>

namespace hyxOSG::decorator {
namespace {

bool drawsIntoWindow(osg::State const& state) {
    if (!state.get<osg::GLExtensions>()->isFrameBufferObjectSupported)
        return true;
    GLint target = 0;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING_EXT, &target);
    osg::GraphicsContext const* const window = state.getGraphicsContext();
    return target == static_cast<GLint>(window ? window->getDefaultFboId() : 0);
}

ShadowSupport supportOf(osg::State const& state) {
    auto const& extensions = *state.get<osg::GLExtensions>();
    unsigned int const context = state.getContextID();
    auto const has = [context](char const* name, float version) {
        return osg::isGLExtensionOrVersionSupported(context, name, version);
    };
    GLint stencilBits = 0;
    glGetIntegerv(GL_STENCIL_BITS, &stencilBits);
    ShadowSupport support;
    support.maps = extensions.isGlslSupported &&
                   (has("GL_ARB_framebuffer_object", 3.0f) || has("GL_EXT_framebuffer_object", 3.0f)) &&
                   has("GL_ARB_depth_texture", 1.4f) && has("GL_ARB_shadow", 1.4f);
    support.volumes = extensions.isGlslSupported && stencilBits >= 8 && has("GL_ARB_depth_clamp", 3.2f);
    return support;
}

} // namespace

bool processorDraws() {
    auto const* const text = reinterpret_cast<char const*>(glGetString(GL_RENDERER));
    std::string_view const renderer = text ? text : "";
    auto const names = {"llvmpipe", "softpipe", "SWR", "Software"};
    return std::any_of(names.begin(), names.end(),
                       [&](char const* name) { return renderer.find(name) != renderer.npos; });
}

SceneDecorator::ShadowMethod nearestMethod(SceneDecorator::ShadowMethod method, ShadowSupport const& support) {
    if (method == SceneDecorator::NO_SHADOWS)
        return method;
    bool const volumes = method == SceneDecorator::SHADOWVOLUME;
    if (volumes ? support.volumes : support.maps)
        return method;
    if (volumes && support.maps)
        return SceneDecorator::SHADOWMAP; // hard edges, as volumes have
    return support.volumes ? SceneDecorator::SHADOWVOLUME : SceneDecorator::NO_SHADOWS;
}

void ShadowSupportProbe::drawImplementation(osg::RenderInfo& renderInfo, osg::Drawable const* drawable) const {
    if (drawsIntoWindow(*renderInfo.getState()))
        m_support = supportOf(*renderInfo.getState());
    drawable->drawImplementation(renderInfo);
}

} // namespace hyxOSG::decorator
