// The operations of the decorator, handed to the parts that do the work.
#include "platform/hyxOSG/decoration/scene_decorator.h"

#include "reference/hyxOSG/decoration/background.h"
#include "reference/hyxOSG/decoration/decorator_lights.h"
#include "reference/hyxOSG/decoration/drawn_cursor.h"
#include "reference/hyxOSG/decoration/logo.h"
#include "reference/hyxOSG/decoration/screen_layer.h"
#include "reference/hyxOSG/decoration/shadow_method.h"
#include "reference/hyxOSG/decoration/shadow_volume.h"
#include "reference/hyxOSG/decoration/text_rows.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/meshes/notices.h"
#include "reference/machinery/shading/shading_marks.h"
#include "reference/machinery/shading/shadow_support.h"

#include <osg/LightModel>
#include <osg/NodeVisitor>
#include <osgDB/ReadFile>
#include <osgShadow/ShadowedScene>

#include <algorithm>
#include <bit>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace hyxOSG {
namespace {

constexpr int overlayBin = 1000;

osg::Vec4 opaque(hyx::Vec3 const& color) {
    return osg::Vec4(osg::Vec3(toOsg(color)), 1);
}

void requirePositive(float value, char const* what) {
    if (!(value > 0) || !std::isfinite(value))
        throw std::invalid_argument(std::string(what) + " must be positive and finite");
}

// -1 unless exactly one light is meant.
int indexOf(SceneDecorator::Lights light) {
    auto const bits = static_cast<unsigned int>(light);
    return bits <= SceneDecorator::ALL && std::has_single_bit(bits) ? std::countr_zero(bits) : -1;
}

osg::ref_ptr<osg::Texture2D> loadTexture(std::string const& file) {
    osg::ref_ptr<osg::Image> const image = osgDB::readRefImageFile(file);
    if (!image || !image->valid())
        return nullptr;
    osg::ref_ptr<osg::Texture2D> texture = new osg::Texture2D(image);
    texture->setResizeNonPowerOfTwoHint(false);
    texture->setWrap(osg::Texture2D::WRAP_S, osg::Texture2D::CLAMP_TO_EDGE);
    texture->setWrap(osg::Texture2D::WRAP_T, osg::Texture2D::CLAMP_TO_EDGE);
    return texture;
}

// Programs read unit 0 on every surface, also where no texture is set.
osg::ref_ptr<osg::Texture2D> createWhiteTexture() {
    osg::ref_ptr<osg::Image> image = new osg::Image;
    image->allocateImage(1, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE);
    image->setColor(osg::Vec4(1, 1, 1, 1), 0, 0);
    osg::ref_ptr<osg::Texture2D> texture = new osg::Texture2D(image);
    texture->setFilter(osg::Texture2D::MIN_FILTER, osg::Texture2D::NEAREST);
    texture->setFilter(osg::Texture2D::MAG_FILTER, osg::Texture2D::NEAREST);
    return texture;
}

osg::ref_ptr<osg::LightModel> createLightModel() {
    osg::ref_ptr<osg::LightModel> model = new osg::LightModel;
    model->setAmbientIntensity(osg::Vec4(0.3f, 0.3f, 0.3f, 1));
    model->setColorControl(osg::LightModel::SEPARATE_SPECULAR_COLOR);
    return model;
}

} // namespace

/// The decorator's subtree: background, lit scene (lights, shadowed and non-shadowed part) and overlay.
struct SceneDecorator::Implementation {
    Implementation(int width, int height, int mapSize)
        : window(width, height), shadowMapSize(static_cast<unsigned int>(mapSize)) {
        scene->setName("SceneDecorator scene");
        shadowed->setName("SceneDecorator shadowed scene");
        unshadowed->setName("SceneDecorator non-shadowed scene");
        hud->setName("SceneDecorator head-up display");
        overlay->setName("SceneDecorator overlay");
        osg::StateSet* state = scene->getOrCreateStateSet();
        state->setMode(GL_LIGHTING, osg::StateAttribute::ON);
        state->setAttribute(SceneDecorator::getDefaultDecoratorMaterial());
        state->setAttribute(createLightModel());
        state->setTextureAttributeAndModes(decorator::BASE_TEXTURE_UNIT, whiteTexture);
        scene->addChild(lights.node());
        scene->addChild(decorator::createEyePositionGenerator());
        scene->addChild(lit);
        lit->addChild(shadowed);
        lit->addChild(aside);
        aside->addChild(unshadowed);
        overlay->getOrCreateStateSet()->setMode(GL_BLEND, osg::StateAttribute::ON);
        for (osg::Node* node : {logo.node(), rows.node(), static_cast<osg::Node*>(hud.get()), cursor.node()})
            overlay->addChild(node);
        hud->setDataVariance(osg::Object::DYNAMIC);
        background.setDrawCallback(shadowSupport);
        updateLights();
        updateParts();
    }

    decorator::ShadingOptions shading() const {
        decorator::ShadingOptions options;
        options.lights = lights.enabled();
        options.shadowLight = lights.shadowLight();
        options.perPixelHighlights = shaderState && perPixelHighlights;
        return options;
    }

    /// Turns parts on and off and puts the program and the shadow technique in.
    void updateParts() {
        background.node()->setNodeMask(enabled ? ExampleApplication::DECORATOR_MASK : 0u);
        overlay->setNodeMask(enabled ? ExampleApplication::HUD_MASK : 0u);
        lit->setStateSet(shaderState ? decorator::createShadingState(shading()) : osg::ref_ptr<osg::StateSet>());
        bool const shadows = enabled && shadowsEnabled;
        drawnMethod = shadows ? decorator::nearestMethod(method, shadowSupport->support()) : NO_SHADOWS;
        if (shadows)
            warnOfReplacement();
        aside->setStateSet(drawnMethod == SHADOWVOLUME ? decorator::ShadowVolume::leaveOutState()
                                                       : osg::ref_ptr<osg::StateSet>());
        shadowed->setShadowTechnique(decorator::createShadowTechnique(drawnMethod, shading(), shadowMapSize,
                                                                      lights.light(lights.shadowLight())));
    }

    /// Follows what the window's driver has turned out to do.
    void followSupport() {
        if (enabled && shadowsEnabled && drawnMethod != decorator::nearestMethod(method, shadowSupport->support()))
            updateParts();
    }

    /// Once for each method in a row.
    void warnOfReplacement() {
        if (drawnMethod == method || std::exchange(replacedMethod, method) == method)
            return;
        warn("the graphics driver cannot do shadow method " + std::to_string(static_cast<int>(method)) +
             (drawnMethod == NO_SHADOWS
                  ? "; there are no shadows"
                  : "; method " + std::to_string(static_cast<int>(drawnMethod)) + " stands in for it"));
    }

    void updateLights() { lights.applyModes(*scene->getOrCreateStateSet()); }

    void layOut() {
        overlay->setProjectionMatrixAsOrtho(0, window.x(), 0, window.y(), -1000, 1000);
        logo.layOut(window, pixelScale);
        rows.layOut(window, pixelScale);
        cursor.layOut(pixelScale);
    }

    osg::Vec2f window;
    unsigned int shadowMapSize;
    bool enabled = true;
    bool shadowsEnabled = false;
    ShadowMethod method = SOFT_SHADOWMAP;
    ShadowMethod drawnMethod = NO_SHADOWS;
    ShadowMethod replacedMethod = NO_SHADOWS; ///< the one warned of last
    bool shaderState = false;
    bool perPixelHighlights = true;
    float pixelScale = 1;

    osg::ref_ptr<decorator::ShadowSupportProbe> shadowSupport = new decorator::ShadowSupportProbe;
    decorator::Background background;
    decorator::DecoratorLights lights;
    decorator::Logo logo;
    decorator::TextRows rows;
    decorator::DrawnCursor cursor;
    osg::ref_ptr<osg::Group> scene = new osg::Group;
    osg::ref_ptr<osgShadow::ShadowedScene> shadowed = new osgShadow::ShadowedScene;
    // State that comes and goes lies on groups of its own, out of the way of what a script sets.
    osg::ref_ptr<osg::Group> lit = new osg::Group;
    osg::ref_ptr<osg::Group> aside = new osg::Group;
    osg::ref_ptr<osg::Group> unshadowed = new osg::Group;
    osg::ref_ptr<osg::Camera> overlay = decorator::createScreenLayer(overlayBin);
    osg::ref_ptr<osg::MatrixTransform> hud = new osg::MatrixTransform;
    osg::ref_ptr<osg::Texture2D> whiteTexture = createWhiteTexture();
};

SceneDecorator::SceneDecorator(int width, int height, int shadowMapSize) {
    if (width <= 0 || height <= 0)
        throw std::invalid_argument("the window's width and height must be positive");
    if (shadowMapSize < 16 || shadowMapSize > 8192)
        throw std::invalid_argument("the shadow map size must be 16 to 8192");
    m_implementation = std::make_unique<Implementation>(width, height, shadowMapSize);
    setName("SceneDecorator");
    // By pointer: the forms for holders would call this class's own addChild.
    osg::Group::addChild(m_implementation->background.node());
    osg::Group::addChild(m_implementation->scene.get());
    osg::Group::addChild(m_implementation->overlay.get());
    // Layout is done in the update traversal, which passes by groups without need for it.
    setNumChildrenRequiringUpdateTraversal(getNumChildrenRequiringUpdateTraversal() + 1);
    setBackgroundColor(hyx::Vec3(0.55, 0.66, 0.80), hyx::Vec3(0.87, 0.89, 0.92));
}

SceneDecorator::~SceneDecorator() = default;

void SceneDecorator::setEnable(bool enable) {
    m_implementation->enabled = enable;
    m_implementation->updateParts();
}

bool SceneDecorator::getEnable() const {
    return m_implementation->enabled;
}

bool SceneDecorator::isEnabled() const {
    return m_implementation->enabled;
}

void SceneDecorator::setEnableShadows(bool enable) {
    m_implementation->shadowsEnabled = enable;
    m_implementation->updateParts();
}

bool SceneDecorator::getEnableShadows() const {
    return m_implementation->shadowsEnabled;
}

void SceneDecorator::setShadowMethod(ShadowMethod method) {
    decorator::requireShadowMethod(method);
    m_implementation->method = method;
    m_implementation->updateParts();
}

SceneDecorator::ShadowMethod SceneDecorator::getShadowMethod() const {
    return m_implementation->method;
}

void SceneDecorator::setEnableShaderState(bool enable, bool perPixelHighlights) {
    m_implementation->shaderState = enable;
    m_implementation->perPixelHighlights = perPixelHighlights;
    m_implementation->updateParts();
}

bool SceneDecorator::getEnableShaderState() const {
    return m_implementation->shaderState;
}

void SceneDecorator::setEnableLights(Lights mask) {
    m_implementation->lights.setEnabled(static_cast<unsigned int>(mask));
    m_implementation->updateLights();
    m_implementation->updateParts();
}

int SceneDecorator::lightToIndex(Lights light) {
    int const index = indexOf(light);
    if (index < 0)
        throw std::invalid_argument("no single light has the value " + std::to_string(static_cast<int>(light)) +
                                    "; use LIGHT0, LIGHT1 or LIGHT2");
    return index;
}

void SceneDecorator::setEnableCalculateLightPositions(Lights light, bool enable) {
    m_implementation->lights.setComputed(static_cast<unsigned int>(light), enable);
}

bool SceneDecorator::getEnableCalculateLightPositions(Lights light) const {
    return m_implementation->lights.isComputed(lightToIndex(light));
}

bool SceneDecorator::setShadowLightSource(Lights light) {
    int const index = indexOf(light);
    if (index < 0)
        return false;
    m_implementation->lights.setShadowLight(index);
    m_implementation->updateParts();
    return true;
}

osg::LightSource* SceneDecorator::getShadowLightSource() {
    return m_implementation->lights.light(m_implementation->lights.shadowLight());
}

osg::LightSource* SceneDecorator::getOSGLight(Lights light) {
    int const index = indexOf(light);
    return index < 0 ? nullptr : m_implementation->lights.light(index);
}

LightSource SceneDecorator::getLightSource(Lights light) {
    return LightSource(m_implementation->lights.light(lightToIndex(light)));
}

void SceneDecorator::calculateLightPositions() {
    calculateLightPositions(computeBound());
}

void SceneDecorator::calculateLightPositions(osg::Node* node) {
    if (node)
        calculateLightPositions(node->getBound());
}

void SceneDecorator::calculateLightPositions(osg::BoundingBox const& box) {
    calculateLightPositions(box.valid() ? osg::BoundingSphere(box) : osg::BoundingSphere());
}

void SceneDecorator::calculateLightPositions(osg::BoundingSphere const& sphere) {
    m_implementation->lights.place(sphere);
}

void SceneDecorator::setBackgroundColor(hyx::Vec4f const& color) {
    setBackgroundColor(color, color);
}

void SceneDecorator::setBackgroundColor(hyx::Vec3 color) {
    setBackgroundColor(color, color);
}

void SceneDecorator::setBackgroundColor(hyx::Vec4f const& upper, hyx::Vec4f const& lower) {
    setBackgroundColor(upper, upper, lower, lower);
}

void SceneDecorator::setBackgroundColor(hyx::Vec3 upper, hyx::Vec3 lower) {
    setBackgroundColor(upper, upper, lower, lower);
}

void SceneDecorator::setBackgroundColor(hyx::Vec4f const& upperLeft, hyx::Vec4f const& upperRight,
                                        hyx::Vec4f const& lowerLeft, hyx::Vec4f const& lowerRight) {
    m_implementation->background.setColors(toOsg(upperLeft), toOsg(upperRight), toOsg(lowerLeft), toOsg(lowerRight));
}

void SceneDecorator::setBackgroundColor(hyx::Vec3 upperLeft, hyx::Vec3 upperRight, hyx::Vec3 lowerLeft,
                                        hyx::Vec3 lowerRight) {
    m_implementation->background.setColors(opaque(upperLeft), opaque(upperRight), opaque(lowerLeft),
                                           opaque(lowerRight));
}

bool SceneDecorator::setBaseTexture(std::string const& file) {
    osg::ref_ptr<osg::Texture2D> const texture = file.empty() ? m_implementation->whiteTexture : loadTexture(file);
    if (!texture)
        return false;
    texture->setWrap(osg::Texture2D::WRAP_S, osg::Texture2D::REPEAT);
    texture->setWrap(osg::Texture2D::WRAP_T, osg::Texture2D::REPEAT);
    m_implementation->scene->getOrCreateStateSet()->setTextureAttributeAndModes(decorator::BASE_TEXTURE_UNIT, texture);
    return true;
}

void SceneDecorator::setEnableLogo(bool enable) {
    m_implementation->logo.setEnabled(enable);
}

bool SceneDecorator::getEnableLogo() const {
    return m_implementation->logo.enabled();
}

bool SceneDecorator::setLogoFile(std::string const& file, float alpha) {
    osg::ref_ptr<osg::Texture2D> const texture = loadTexture(file);
    if (texture)
        setLogo(texture, alpha);
    return texture.valid();
}

void SceneDecorator::setLogo(osg::Texture2D* texture, float alpha) {
    m_implementation->logo.setTexture(texture, alpha);
}

osg::Texture2D* SceneDecorator::getLogo() {
    return m_implementation->logo.texture();
}

void SceneDecorator::setLogoLocation(LogoLocation location) {
    if (location < UPPER_LEFT || location > FREE)
        throw std::invalid_argument("no logo location has the value " + std::to_string(static_cast<int>(location)) +
                                    "; use one of 1 to 5");
    m_implementation->logo.setLocation(location);
}

SceneDecorator::LogoLocation SceneDecorator::getLogoLocation() const {
    return m_implementation->logo.location();
}

void SceneDecorator::setLogoPosition(float x, float y) {
    m_implementation->logo.setPosition(osg::Vec2f(x, y));
}

osg::Vec2f& SceneDecorator::getLogoDimension() {
    return m_implementation->logo.dimension();
}

osg::Vec2f SceneDecorator::getMaximumLogoDimension() const {
    return m_implementation->logo.maximumDimension();
}

void SceneDecorator::setMaximumLogoDimension(float width, float height) {
    requirePositive(width, "the maximum width of the logo");
    requirePositive(height, "the maximum height of the logo");
    m_implementation->logo.setMaximumDimension(osg::Vec2f(width, height));
}

osg::Vec2f SceneDecorator::getDefaultLogoPosition() {
    return decorator::Logo::defaultPosition();
}

osg::Material* SceneDecorator::getDefaultDecoratorMaterial() {
    static osg::ref_ptr<osg::Material> const material = [] {
        osg::ref_ptr<osg::Material> made = new osg::Material;
        made->setAmbient(osg::Material::FRONT_AND_BACK, osg::Vec4(0.8f, 0.8f, 0.8f, 1));
        made->setDiffuse(osg::Material::FRONT_AND_BACK, osg::Vec4(0.8f, 0.8f, 0.8f, 1));
        made->setSpecular(osg::Material::FRONT_AND_BACK, osg::Vec4(0.2f, 0.2f, 0.2f, 1));
        made->setShininess(osg::Material::FRONT_AND_BACK, 32);
        return made;
    }();
    return material;
}

void SceneDecorator::setText(int row, hyx::String const& text, hyx::Vec4f const& color) {
    if (row < 0 || row > decorator::TextRows::maximumRow)
        throw std::invalid_argument("a text row must be 0 to 999");
    m_implementation->rows.setText(row, text, toOsg(color));
}

void SceneDecorator::clearText() {
    m_implementation->rows.clear();
}

std::string SceneDecorator::getFontName() const {
    return m_implementation->rows.fontName();
}

void SceneDecorator::setFontName(std::string const& name) {
    m_implementation->rows.setFontName(name);
}

float SceneDecorator::getFontSize() const {
    return m_implementation->rows.fontSize();
}

void SceneDecorator::setFontSize(float size) {
    requirePositive(size, "the font size");
    m_implementation->rows.setFontSize(size);
}

void SceneDecorator::updateWindowSize(int width, int height) {
    if (width > 0 && height > 0)
        m_implementation->window.set(static_cast<float>(width), static_cast<float>(height));
}

void SceneDecorator::setScreenPixelScale(float scale) {
    requirePositive(scale, "the pixel scale");
    m_implementation->pixelScale = scale;
}

osg::MatrixTransform* SceneDecorator::getHud() {
    return m_implementation->hud;
}

void SceneDecorator::resetHUD() {
    m_implementation->rows.clear();
    m_implementation->hud->removeChildren(0, m_implementation->hud->getNumChildren());
    m_implementation->hud->setMatrix(osg::Matrix::identity());
}

void SceneDecorator::setEnableRenderedCursor(bool enable) {
    m_implementation->cursor.setEnabled(enable);
}

bool SceneDecorator::getEnableRenderedCursor() const {
    return m_implementation->cursor.enabled();
}

void SceneDecorator::updateCursorPosition(float x, float y) {
    m_implementation->cursor.setPosition(osg::Vec2f(x, y));
}

osg::StateSet* SceneDecorator::getDecoratorStateSet() {
    return m_implementation->scene->getOrCreateStateSet();
}

osg::Group* SceneDecorator::getShadowedScene() {
    return m_implementation->shadowed;
}

osg::Group* SceneDecorator::getNonShadowedScene() {
    return m_implementation->unshadowed;
}

bool SceneDecorator::addChild(osg::Node* node) {
    return node && m_implementation->shadowed->addChild(node);
}

bool SceneDecorator::insertChild(unsigned int index, osg::Node* node) {
    return node &&
           m_implementation->shadowed->insertChild(std::min(index, m_implementation->shadowed->getNumChildren()), node);
}

bool SceneDecorator::removeChild(osg::Node* node) {
    return node && (m_implementation->shadowed->removeChild(node) || m_implementation->unshadowed->removeChild(node));
}

bool SceneDecorator::removeChild(unsigned int index, unsigned int count) {
    return removeChildren(index, count);
}

bool SceneDecorator::replaceChild(osg::Node* oldNode, osg::Node* newNode) {
    return oldNode && newNode &&
           (m_implementation->shadowed->replaceChild(oldNode, newNode) ||
            m_implementation->unshadowed->replaceChild(oldNode, newNode));
}

bool SceneDecorator::setChild(unsigned int index, osg::Node* node) {
    return node && index < m_implementation->shadowed->getNumChildren() &&
           m_implementation->shadowed->setChild(index, node);
}

bool SceneDecorator::removeChildren(unsigned int index, unsigned int count) {
    unsigned int const present = m_implementation->shadowed->getNumChildren();
    return count > 0 && index < present &&
           m_implementation->shadowed->removeChildren(index, std::min(count, present - index));
}

void SceneDecorator::traverse(osg::NodeVisitor& visitor) {
    if (visitor.getVisitorType() == osg::NodeVisitor::UPDATE_VISITOR) {
        m_implementation->layOut();
        m_implementation->followSupport();
        if (m_implementation->shaderState)
            decorator::markShading(*m_implementation->scene);
    }
    osg::Group::traverse(visitor);
}

osg::BoundingSphere SceneDecorator::computeBound() const {
    osg::BoundingSphere sphere = m_implementation->shadowed->getBound();
    sphere.expandBy(m_implementation->unshadowed->getBound());
    return sphere;
}

} // namespace hyxOSG
