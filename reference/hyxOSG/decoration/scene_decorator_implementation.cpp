// Puts the parts of a decorator together, and keeps them as they were set.
#include "reference/hyxOSG/decoration/scene_decorator_implementation.h"

#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxOSG/decoration/sky_box.h"
#include "platform/osg/attachment.h"
#include "reference/hyxOSG/decoration/screen_layer.h"
#include "reference/hyxOSG/decoration/shadow_method.h"
#include "reference/hyxOSG/decoration/shadow_volume.h"
#include "reference/machinery/meshes/notices.h"
#include "reference/machinery/shading/material_colors.h"

#include <algorithm>
#include <utility>

namespace hyxOSG {
namespace {

constexpr int overlayBin = 1000;

// Programs read unit 0 on every surface, also where no texture is set. Without a program the unit stays switched off:
// to look up white costs as much as to light.
osg::ref_ptr<osg::Texture2D> createWhiteTexture() {
    osg::ref_ptr<osg::Image> image = new osg::Image;
    image->allocateImage(1, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE);
    image->setColor(osg::Vec4(1, 1, 1, 1), 0, 0);
    osg::ref_ptr<osg::Texture2D> texture = new osg::Texture2D(image);
    texture->setFilter(osg::Texture2D::MIN_FILTER, osg::Texture2D::NEAREST);
    texture->setFilter(osg::Texture2D::MAG_FILTER, osg::Texture2D::NEAREST);
    return texture;
}

} // namespace

SceneDecorator::Implementation::Implementation(int width, int height, int mapSize)
    : window(width, height),
      shadowMapSize(static_cast<unsigned int>(mapSize)),
      overlay(decorator::createScreenLayer(overlayBin)),
      whiteTexture(createWhiteTexture()) {
    scene->setName("SceneDecorator scene");
    shadowed->setName("SceneDecorator shadowed scene");
    unshadowed->setName("SceneDecorator non-shadowed scene");
    hud->setName("SceneDecorator head-up display");
    overlay->setName("SceneDecorator overlay");
    osg::StateSet* state = scene->getOrCreateStateSet();
    state->setMode(GL_LIGHTING, osg::StateAttribute::ON);
    state->setMode(GL_NORMALIZE, osg::StateAttribute::ON); // models below scaling transforms
    state->setAttribute(SceneDecorator::getDefaultDecoratorMaterial());
    state->setAttribute(createLightModel(false));
    state->setTextureAttribute(decorator::BASE_TEXTURE_UNIT, whiteTexture);
    scene->addChild(lights.node());
    scene->addChild(lit);
    lit->addChild(shadowed);
    lit->addChild(aside);
    aside->addChild(unshadowed);
    scene->addChild(contacts);
    overlay->getOrCreateStateSet()->setMode(GL_BLEND, osg::StateAttribute::ON);
    for (osg::Node* node : {logo.node(), rows.node(), static_cast<osg::Node*>(hud.get()), cursor.node()})
        overlay->addChild(node);
    hud->setDataVariance(osg::Object::DYNAMIC);
    background.setDrawCallback(shadowSupport);
    updateLights();
    updateParts();
}

decorator::ShadingOptions SceneDecorator::Implementation::shading() const {
    decorator::ShadingOptions options;
    options.shadowLight = lights.shadowLight();
    options.highlights = perPixelHighlights;
    options.skyLight = skyLight;
    return options;
}

bool SceneDecorator::Implementation::fits(osg::Node const* node) const {
    if (node)
        osg::requireAttachable(*shadowed, *node);
    return node;
}

void SceneDecorator::Implementation::updateParts() {
    background.node()->setNodeMask(enabled ? unsigned(ExampleApplication::DECORATOR_MASK) : 0u);
    contacts->setNodeMask(enabled && contactShade ? unsigned(ExampleApplication::DECORATOR_MASK) : 0u);
    overlay->setNodeMask(enabled ? unsigned(ExampleApplication::HUD_MASK) : 0u);
    lit->setStateSet(shaderState ? decorator::createShadingState(shading()) : osg::ref_ptr<osg::StateSet>());
    bool const shadows = enabled && shadowsEnabled;
    drawnMethod = shadows ? decorator::nearestMethod(method, shadowSupport->support()) : NO_SHADOWS;
    if (shadows)
        warnOfReplacement();
    aside->setStateSet(drawnMethod == SHADOWVOLUME ? decorator::ShadowVolume::leaveOutState()
                                                   : osg::ref_ptr<osg::StateSet>());
    shadowed->setShadowTechnique(decorator::createShadowTechnique(
        drawnMethod, shading(), {shadowMapSize, shadowCasterLimit}, lights.light(lights.shadowLight())));
}

void SceneDecorator::Implementation::followSupport() {
    if (enabled && shadowsEnabled && drawnMethod != decorator::nearestMethod(method, shadowSupport->support()))
        updateParts();
}

void SceneDecorator::Implementation::warnOfReplacement() {
    if (drawnMethod == method || std::exchange(replacedMethod, method) == method)
        return;
    warn("the graphics driver cannot do shadow method " + std::to_string(static_cast<int>(method)) +
         (drawnMethod == NO_SHADOWS
              ? "; there are no shadows"
              : "; method " + std::to_string(static_cast<int>(drawnMethod)) + " stands in for it"));
}

void SceneDecorator::Implementation::setBackground(osg::Vec4 const& upperLeft, osg::Vec4 const& upperRight,
                                                   osg::Vec4 const& lowerLeft, osg::Vec4 const& lowerRight) {
    background.setColors(upperLeft, upperRight, lowerLeft, lowerRight);
    followSky();
}

void SceneDecorator::Implementation::followSky() {
    if (SkyBox const* const box = SkyBox::find(*scene))
        return setSkyLight(box->getLight().upper, box->getLight().lower);
    auto const& [upperLeft, upperRight, lowerLeft, lowerRight] = background.colors();
    // The ground gives back a part of the light of the horizon. A background of one colour has no ground.
    bool const even = upperLeft == upperRight && upperLeft == lowerLeft && upperLeft == lowerRight;
    float const groundShare = even ? 1.0f : 0.62f;
    osg::Vec4 const sky = (upperLeft + upperRight + lowerLeft + lowerRight) * 0.25f;
    osg::Vec4 const ground = (lowerLeft + lowerRight) * (0.5f * groundShare);
    setSkyLight(osg::Vec3(sky.r(), sky.g(), sky.b()), osg::Vec3(ground.r(), ground.g(), ground.b()));
}

void SceneDecorator::Implementation::setSkyLight(osg::Vec3 const& sky, osg::Vec3 const& ground) {
    osg::StateSet& state = *scene->getOrCreateStateSet();
    state.getOrCreateUniform("hyx_skyColor", osg::Uniform::FLOAT_VEC3)->set(sky);
    state.getOrCreateUniform("hyx_groundColor", osg::Uniform::FLOAT_VEC3)->set(ground);
    // Beside lamps a dark background, as of a studio, leaves the ambient light that there is without sky light.
    constexpr float enough = 0.625f;
    float const luminance = 0.2126f * sky.x() + 0.7152f * sky.y() + 0.0722f * sky.z();
    state.getOrCreateUniform("hyx_skyLack", osg::Uniform::FLOAT)->set(std::max(0.0f, enough - luminance));
}

void SceneDecorator::Implementation::layOut() {
    overlay->setProjectionMatrixAsOrtho(0, window.x(), 0, window.y(), -1000, 1000);
    logo.layOut(window, pixelScale);
    rows.layOut(window, pixelScale);
    cursor.layOut(pixelScale);
}

} // namespace hyxOSG
