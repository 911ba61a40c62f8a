// Checks what lights are set to, and hands it to the scene graph.
#include "platform/hyxOSG/decoration/light_source.h"

#include "reference/machinery/meshes/conversions.h"

#include <cmath>
#include <stdexcept>

namespace hyxOSG {
namespace {

hyx::Vec4f toColor(osg::Vec4 const& color) {
    return hyx::Vec4f(color.r(), color.g(), color.b(), color.a());
}

// Negated, so that NaN fails, too.
void requireRange(float value, float low, float high, char const* message) {
    if (!(value >= low && value <= high) || !std::isfinite(value))
        throw std::invalid_argument(message);
}

void requireFactor(float factor) {
    requireRange(factor, 0, HUGE_VALF, "an attenuation factor must be finite and not negative");
}

void requireDirected(double x, double y, double z, double w, char const* what) {
    if (!std::isfinite(x + y + z + w) || (x == 0 && y == 0 && z == 0 && w == 0))
        throw std::invalid_argument(std::string(what) + " must be finite and not all zero");
}

} // namespace

LightSource::LightSource(osg::LightSource* lightSource) : m_lightSource(lightSource) {}

LightSource::LightSource(LightSource const& other) = default;
LightSource& LightSource::operator=(LightSource const& other) = default;
LightSource::~LightSource() = default;

osg::Light* LightSource::light() const {
    return m_lightSource ? m_lightSource->getLight() : nullptr;
}

osg::Light const& LightSource::readable() const {
    static osg::ref_ptr<osg::Light> const standard = new osg::Light;
    osg::Light const* present = light();
    return present ? *present : *standard;
}

int LightSource::getLightNum() const {
    return light() ? light()->getLightNum() : -1;
}

void LightSource::setAmbient(hyx::Vec4f const& color) {
    if (osg::Light* target = light())
        target->setAmbient(toOsg(requireColor(color)));
}

void LightSource::setDiffuse(hyx::Vec4f const& color) {
    if (osg::Light* target = light())
        target->setDiffuse(toOsg(requireColor(color)));
}

void LightSource::setSpecular(hyx::Vec4f const& color) {
    if (osg::Light* target = light())
        target->setSpecular(toOsg(requireColor(color)));
}

hyx::Vec4f LightSource::getAmbient() const {
    return toColor(readable().getAmbient());
}

hyx::Vec4f LightSource::getDiffuse() const {
    return toColor(readable().getDiffuse());
}

hyx::Vec4f LightSource::getSpecular() const {
    return toColor(readable().getSpecular());
}

void LightSource::setPosition(hyx::Vec4 const& position) {
    requireDirected(position.x, position.y, position.z, position.w, "the light's position");
    if (osg::Light* target = light()) {
        target->setPosition(toOsg(position));
        m_lightSource->dirtyBound();
    }
}

hyx::Vec4 LightSource::getPosition() const {
    osg::Vec4 const& position = readable().getPosition();
    return hyx::Vec4(position.x(), position.y(), position.z(), position.w());
}

void LightSource::setDirection(hyx::Vec3 const& direction) {
    requireDirected(direction.x, direction.y, direction.z, 0, "the light's direction");
    if (osg::Light* target = light())
        target->setDirection(toOsg(direction));
}

hyx::Vec3 LightSource::getDirection() const {
    return toHyx(readable().getDirection());
}

void LightSource::setConstantAttenuation(float factor) {
    requireFactor(factor);
    if (osg::Light* target = light())
        target->setConstantAttenuation(factor);
}

void LightSource::setLinearAttenuation(float factor) {
    requireFactor(factor);
    if (osg::Light* target = light())
        target->setLinearAttenuation(factor);
}

void LightSource::setQuadraticAttenuation(float factor) {
    requireFactor(factor);
    if (osg::Light* target = light())
        target->setQuadraticAttenuation(factor);
}

void LightSource::setSpotExponent(float exponent) {
    requireRange(exponent, 0, 128, "a spot exponent must be 0 to 128");
    if (osg::Light* target = light())
        target->setSpotExponent(exponent);
}

void LightSource::setSpotCutoff(float degrees) {
    if (degrees != 180)
        requireRange(degrees, 0, 90, "a spot cutoff must be 0 to 90 degrees, or 180");
    if (osg::Light* target = light())
        target->setSpotCutoff(degrees);
}

float LightSource::getConstantAttenuation() const {
    return readable().getConstantAttenuation();
}

float LightSource::getLinearAttenuation() const {
    return readable().getLinearAttenuation();
}

float LightSource::getQuadraticAttenuation() const {
    return readable().getQuadraticAttenuation();
}

float LightSource::getSpotExponent() const {
    return readable().getSpotExponent();
}

float LightSource::getSpotCutoff() const {
    return readable().getSpotCutoff();
}

} // namespace hyxOSG
