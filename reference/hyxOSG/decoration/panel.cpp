#include "platform/hyxOSG/decoration/panel.h"

#include "reference/machinery/meshes/conversions.h"

#include <osg/Geometry>
#include <osg/MatrixTransform>
#include <osg/observer_ptr>

#include <cmath>
#include <stdexcept>

namespace hyxOSG {
namespace {

// A unit square that its transform brings to size.
osg::ref_ptr<osg::Geometry> createSquare() {
    osg::ref_ptr<osg::Geometry> square = new osg::Geometry;
    auto* vertices = new osg::Vec3Array;
    for (float y : {0.0f, 1.0f})
        for (float x : {0.0f, 1.0f})
            vertices->push_back(osg::Vec3(x, y, 0));
    square->setVertexArray(vertices);
    square->setColorArray(new osg::Vec4Array(1), osg::Array::BIND_OVERALL);
    square->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLE_STRIP, 0, 4));
    square->setUseDisplayList(false);
    square->setUseVertexBufferObjects(true);
    square->setDataVariance(osg::Object::DYNAMIC);
    osg::StateSet* state = square->getOrCreateStateSet();
    state->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
    state->setMode(GL_BLEND, osg::StateAttribute::ON);
    return square;
}

} // namespace

struct Panel::Impl {
    void const* key = nullptr;
    hyx::Vec2 position;
    hyx::Vec2 size{100, 20};
    hyx::Vec4 color{0.3, 0.3, 0.3, 0.5};
    osg::ref_ptr<osg::Geometry> square = createSquare();
    osg::ref_ptr<osg::MatrixTransform> transform = new osg::MatrixTransform;
    osg::observer_ptr<osg::Group> hud;
};

Panel::Panel(osg::Group* hud, void const* key) : m_impl(std::make_unique<Impl>()) {
    m_impl->key = key;
    m_impl->hud = hud;
    m_impl->transform->addChild(m_impl->square);
    if (hud)
        hud->addChild(m_impl->transform);
    update();
}

Panel::~Panel() {
    osg::ref_ptr<osg::Group> hud;
    if (m_impl->hud.lock(hud))
        hud->removeChild(m_impl->transform);
}

void Panel::setPosition(hyx::Vec2 const& position) {
    if (!std::isfinite(position.x + position.y))
        throw std::invalid_argument("the panel's position must be finite");
    m_impl->position = position;
}

hyx::Vec2 Panel::getPosition() const {
    return m_impl->position;
}

void Panel::setSize(hyx::Vec2 const& size) {
    if (!(size.x >= 0) || !(size.y >= 0) || !std::isfinite(size.x + size.y))
        throw std::invalid_argument("the panel's size must be finite and not negative");
    m_impl->size = size;
}

hyx::Vec2 Panel::getSize() const {
    return m_impl->size;
}

void Panel::setColor(hyx::Vec4 const& color) {
    m_impl->color = color;
}

hyx::Vec4 Panel::getColor() const {
    return m_impl->color;
}

void Panel::uninitialize(osg::Group* hud) {
    if (hud && m_impl->hud == hud && hud->removeChild(m_impl->transform))
        m_impl->hud = nullptr;
}

bool Panel::isValid() const {
    osg::ref_ptr<osg::Group> hud;
    return m_impl->hud.lock(hud) && hud->containsNode(m_impl->transform);
}

void Panel::update() {
    m_impl->transform->setMatrix(osg::Matrix::scale(m_impl->size.x, m_impl->size.y, 1) *
                                 osg::Matrix::translate(m_impl->position.x, m_impl->position.y, 0));
    auto& color = static_cast<osg::Vec4Array&>(*m_impl->square->getColorArray());
    color[0] = toOsg(m_impl->color);
    color.dirty();
}

bool Panel::match(void const* key) const {
    return m_impl->key == key;
}

} // namespace hyxOSG
