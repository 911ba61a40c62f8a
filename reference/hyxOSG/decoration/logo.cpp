// Keeps the logo in its corner at its size.
#include "reference/hyxOSG/decoration/logo.h"

#include <algorithm>
#include <cmath>

namespace hyxOSG::decorator {
namespace {

osg::ref_ptr<osg::Geometry> createLogoRectangle() {
    osg::ref_ptr<osg::Geometry> rectangle = new osg::Geometry;
    rectangle->setName("SceneDecorator logo");
    rectangle->setVertexArray(new osg::Vec3Array(4));
    auto* coordinates = new osg::Vec2Array;
    for (float t : {0.0f, 1.0f})
        for (float s : {0.0f, 1.0f})
            coordinates->push_back(osg::Vec2(s, t));
    rectangle->setTexCoordArray(0, coordinates);
    rectangle->setColorArray(new osg::Vec4Array(1), osg::Array::BIND_OVERALL);
    rectangle->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLE_STRIP, 0, 4));
    rectangle->setUseDisplayList(false);
    rectangle->setUseVertexBufferObjects(true);
    rectangle->setDataVariance(osg::Object::DYNAMIC);
    rectangle->setNodeMask(0);
    return rectangle;
}

osg::Vec2f textureSize(osg::Texture2D const& texture) {
    if (osg::Image const* image = texture.getImage())
        return osg::Vec2f(image->s(), image->t());
    return osg::Vec2f(texture.getTextureWidth(), texture.getTextureHeight());
}

} // namespace

Logo::Logo() : m_rectangle(createLogoRectangle()) {}

void Logo::setTexture(osg::Texture2D* texture, float alpha) {
    m_texture = texture;
    osg::StateSet* state = m_rectangle->getOrCreateStateSet();
    state->removeTextureAttribute(0, osg::StateAttribute::TEXTURE);
    if (!texture)
        return;
    texture->setResizeNonPowerOfTwoHint(false);
    state->setTextureAttributeAndModes(0, texture);
    auto& color = static_cast<osg::Vec4Array&>(*m_rectangle->getColorArray());
    color[0].set(1, 1, 1, std::clamp(alpha, 0.0f, 1.0f));
    color.dirty();
    fitDimension();
}

void Logo::setMaximumDimension(osg::Vec2f const& maximum) {
    m_maximum = maximum;
    if (m_texture)
        fitDimension();
}

void Logo::fitDimension() {
    osg::Vec2f const size = textureSize(*m_texture);
    if (size.x() <= 0 || size.y() <= 0)
        return;
    m_dimension = size * std::min({1.0f, m_maximum.x() / size.x(), m_maximum.y() / size.y()});
}

osg::Vec2f Logo::lowerLeft(osg::Vec2f const& window, osg::Vec2f const& size) const {
    osg::Vec2f const margin(m_position.x() * window.x(), m_position.y() * window.y());
    bool const right = m_location == SceneDecorator::UPPER_RIGHT || m_location == SceneDecorator::LOWER_RIGHT;
    bool const upper = m_location == SceneDecorator::UPPER_LEFT || m_location == SceneDecorator::UPPER_RIGHT;
    // On whole pixels, so that a picture in its own size stays sharp.
    return osg::Vec2f(std::round(right ? window.x() - margin.x() - size.x() : margin.x()),
                      std::round(upper ? window.y() - margin.y() - size.y() : margin.y()));
}

void Logo::layOut(osg::Vec2f const& window, float scale) {
    bool const seen = m_enabled && m_texture;
    m_rectangle->setNodeMask(seen ? ~0u : 0u);
    if (!seen)
        return;
    osg::Vec2f const size = m_dimension * scale;
    osg::Vec2f const low = lowerLeft(window, size);
    osg::Vec3 const corners[] = {{low.x(), low.y(), 0},
                                 {low.x() + size.x(), low.y(), 0},
                                 {low.x(), low.y() + size.y(), 0},
                                 {low.x() + size.x(), low.y() + size.y(), 0}};
    auto& vertices = static_cast<osg::Vec3Array&>(*m_rectangle->getVertexArray());
    if (std::equal(vertices.begin(), vertices.end(), corners))
        return;
    std::copy(std::begin(corners), std::end(corners), vertices.begin());
    vertices.dirty();
    m_rectangle->dirtyBound();
}

} // namespace hyxOSG::decorator
