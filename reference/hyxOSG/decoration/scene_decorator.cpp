// The operations of the decorator on the scene: shadows, lights, background, children.
#include "reference/hyxOSG/decoration/scene_decorator_implementation.h"
#include "reference/hyxOSG/decoration/shadow_method.h"
#include "reference/hyxOSG/decoration/texture_file.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/shading/material_colors.h"
#include "reference/machinery/shading/shading_marks.h"

#include <osg/NodeVisitor>

#include <algorithm>
#include <bit>
#include <stdexcept>

namespace hyxOSG {
namespace {

osg::Vec4 opaque(hyx::Vec3 const& color) {
    return toOsg(requireColor(hyx::Vec4f(hyx::Vec4(color.x, color.y, color.z, 1))));
}

// -1 unless exactly one light is meant.
int indexOf(SceneDecorator::Lights light) {
    auto const bits = static_cast<unsigned int>(light);
    return bits <= SceneDecorator::ALL && std::has_single_bit(bits) ? std::countr_zero(bits) : -1;
}

void requireShadowMapSize(int size) {
    if (size < 16 || size > 8192)
        throw std::invalid_argument("the shadow map size must be 16 to 8192");
}

} // namespace

SceneDecorator::SceneDecorator(int width, int height, int shadowMapSize) {
    if (width <= 0 || height <= 0)
        throw std::invalid_argument("the window's width and height must be positive");
    requireShadowMapSize(shadowMapSize);
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

void SceneDecorator::setShadowMapSize(int size) {
    requireShadowMapSize(size);
    m_implementation->shadowMapSize = static_cast<unsigned int>(size);
    m_implementation->updateParts();
}

int SceneDecorator::getShadowMapSize() const {
    return static_cast<int>(m_implementation->shadowMapSize);
}

void SceneDecorator::setShadowCasterLimit(int meshes) {
    if (meshes < 0)
        throw std::invalid_argument("setShadowCasterLimit: a number of meshes is not negative");
    m_implementation->shadowCasterLimit = static_cast<unsigned int>(meshes);
    m_implementation->updateParts();
}

int SceneDecorator::getShadowCasterLimit() const {
    return static_cast<int>(m_implementation->shadowCasterLimit);
}

void SceneDecorator::setEnableSkyLight(bool enable) {
    m_implementation->skyLight = enable;
    m_implementation->updateParts();
}

bool SceneDecorator::getEnableSkyLight() const {
    return m_implementation->skyLight;
}

void SceneDecorator::setEnableContactShade(bool enable) {
    m_implementation->contactShade = enable;
    m_implementation->updateParts();
}

bool SceneDecorator::getEnableContactShade() const {
    return m_implementation->contactShade;
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

SceneDecorator::Lights SceneDecorator::getEnabledLights() const {
    return static_cast<Lights>(m_implementation->lights.enabled());
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
    m_implementation->setBackground(toOsg(requireColor(upperLeft)), toOsg(requireColor(upperRight)),
                                    toOsg(requireColor(lowerLeft)), toOsg(requireColor(lowerRight)));
}

std::array<osg::Vec4, 4> SceneDecorator::getBackgroundColors() const {
    return m_implementation->background.colors();
}

void SceneDecorator::setBackgroundColor(hyx::Vec3 upperLeft, hyx::Vec3 upperRight, hyx::Vec3 lowerLeft,
                                        hyx::Vec3 lowerRight) {
    m_implementation->setBackground(opaque(upperLeft), opaque(upperRight), opaque(lowerLeft), opaque(lowerRight));
}

bool SceneDecorator::setBaseTexture(std::string const& file) {
    osg::ref_ptr<osg::Texture2D> const texture =
        file.empty() ? m_implementation->whiteTexture : loadScreenTexture(file);
    if (!texture)
        return false;
    texture->setWrap(osg::Texture2D::WRAP_S, osg::Texture2D::REPEAT);
    texture->setWrap(osg::Texture2D::WRAP_T, osg::Texture2D::REPEAT);
    osg::StateSet& state = *m_implementation->scene->getOrCreateStateSet();
    state.setTextureAttribute(decorator::BASE_TEXTURE_UNIT, texture);
    if (file.empty())
        state.removeTextureMode(decorator::BASE_TEXTURE_UNIT, GL_TEXTURE_2D);
    else
        state.setTextureMode(decorator::BASE_TEXTURE_UNIT, GL_TEXTURE_2D, osg::StateAttribute::ON);
    return true;
}

osg::Material* SceneDecorator::getDefaultDecoratorMaterial() {
    return &defaultMaterial();
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
    return m_implementation->fits(node) && m_implementation->shadowed->addChild(node);
}

bool SceneDecorator::insertChild(unsigned int index, osg::Node* node) {
    return m_implementation->fits(node) &&
           m_implementation->shadowed->insertChild(std::min(index, m_implementation->shadowed->getNumChildren()), node);
}

bool SceneDecorator::removeChild(osg::Node* node) {
    return node && (m_implementation->shadowed->removeChild(node) || m_implementation->unshadowed->removeChild(node));
}

bool SceneDecorator::removeChild(unsigned int index, unsigned int count) {
    return removeChildren(index, count);
}

bool SceneDecorator::replaceChild(osg::Node* oldNode, osg::Node* newNode) {
    return oldNode && m_implementation->fits(newNode) &&
           (m_implementation->shadowed->replaceChild(oldNode, newNode) ||
            m_implementation->unshadowed->replaceChild(oldNode, newNode));
}

bool SceneDecorator::setChild(unsigned int index, osg::Node* node) {
    return index < m_implementation->shadowed->getNumChildren() && m_implementation->fits(node) &&
           m_implementation->shadowed->setChild(index, node);
}

bool SceneDecorator::removeChildren(unsigned int index, unsigned int count) {
    unsigned int const present = m_implementation->shadowed->getNumChildren();
    return count > 0 && index < present &&
           m_implementation->shadowed->removeChildren(index, std::min(count, present - index));
}

void SceneDecorator::traverse(osg::NodeVisitor& visitor) {
    bool const updates = visitor.getVisitorType() == osg::NodeVisitor::UPDATE_VISITOR;
    if (updates) {
        m_implementation->layOut();
        m_implementation->followSupport();
        m_implementation->followSky();
        m_implementation->lights.declareSpots(*m_implementation->scene->getOrCreateStateSet());
    }
    osg::Group::traverse(visitor);
    if (updates && m_implementation->drawsWithProgram()) // with what the update has made
        decorator::markShading(*m_implementation->scene, m_implementation->drawnMethod != SHADOWTEXTURE);
}

osg::BoundingSphere SceneDecorator::computeBound() const {
    osg::BoundingSphere sphere = m_implementation->shadowed->getBound();
    sphere.expandBy(m_implementation->unshadowed->getBound());
    return sphere;
}

} // namespace hyxOSG
