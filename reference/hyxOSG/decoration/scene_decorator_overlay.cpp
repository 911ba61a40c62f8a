// The operations of the decorator on what lies over the scene: logo, text rows, head-up display, cursor.
#include "reference/hyxOSG/decoration/scene_decorator_implementation.h"
#include "reference/hyxOSG/decoration/texture_file.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/text/fonts.h"

#include <cmath>
#include <stdexcept>

namespace hyxOSG {
namespace {

void requirePositive(float value, char const* what) {
    if (!(value > 0) || !std::isfinite(value))
        throw std::invalid_argument(std::string(what) + " must be positive and finite");
}

} // namespace

void SceneDecorator::setEnableLogo(bool enable) {
    m_implementation->logo.setEnabled(enable);
}

bool SceneDecorator::getEnableLogo() const {
    return m_implementation->logo.enabled();
}

bool SceneDecorator::setLogoFile(std::string const& file, float alpha) {
    osg::ref_ptr<osg::Texture2D> const texture = loadScreenTexture(file);
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
    if (!std::isfinite(x) || !std::isfinite(y))
        throw std::invalid_argument("the logo's position must be finite");
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

void SceneDecorator::setText(int row, hyx::String const& text, hyx::Vec4f const& color) {
    if (row < 0 || row > decorator::TextRows::maximumRow)
        throw std::invalid_argument("a text row must be 0 to 999");
    m_implementation->rows.setText(row, text, toOsg(requireColor(color)));
}

void SceneDecorator::clearText() {
    m_implementation->rows.clear();
}

std::string SceneDecorator::getFontName() const {
    return m_implementation->rows.fontName();
}

void SceneDecorator::setFontName(std::string const& name) {
    wantedFont(name);
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

} // namespace hyxOSG
