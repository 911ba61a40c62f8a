// Keeps a panel's rectangle where and as large as it was set.
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

struct Panel::Implementation {
    void const* key = nullptr;
    hyx::Vec2 position;
    hyx::Vec2 size{100, 20};
    hyx::Vec4 color{0.3, 0.3, 0.3, 0.5};
    osg::ref_ptr<osg::Geometry> square = createSquare();
    osg::ref_ptr<osg::MatrixTransform> transform = new osg::MatrixTransform;
    osg::observer_ptr<osg::Group> hud;
};

Panel::Panel(osg::Group* hud, void const* key) : m_implementation(std::make_unique<Implementation>()) {
    m_implementation->key = key;
    m_implementation->hud = hud;
    m_implementation->transform->addChild(m_implementation->square);
    if (hud)
        hud->addChild(m_implementation->transform);
    update();
}

Panel::~Panel() {
    osg::ref_ptr<osg::Group> hud;
    if (m_implementation->hud.lock(hud))
        hud->removeChild(m_implementation->transform);
}

void Panel::setPosition(hyx::Vec2 const& position) {
    if (!std::isfinite(position.x + position.y))
        throw std::invalid_argument("the panel's position must be finite");
    m_implementation->position = position;
}

hyx::Vec2 Panel::getPosition() const {
    return m_implementation->position;
}

void Panel::setSize(hyx::Vec2 const& size) {
    if (!(size.x >= 0) || !(size.y >= 0) || !std::isfinite(size.x + size.y))
        throw std::invalid_argument("the panel's size must be finite and not negative");
    m_implementation->size = size;
}

hyx::Vec2 Panel::getSize() const {
    return m_implementation->size;
}

void Panel::setColor(hyx::Vec4 const& color) {
    m_implementation->color = color;
}

hyx::Vec4 Panel::getColor() const {
    return m_implementation->color;
}

void Panel::setShown(bool shown) {
    m_implementation->transform->setNodeMask(shown ? ~0u : 0u);
}

void Panel::uninitialize(osg::Group* hud) {
    if (hud && m_implementation->hud == hud && hud->removeChild(m_implementation->transform))
        m_implementation->hud = nullptr;
}

bool Panel::isValid() const {
    osg::ref_ptr<osg::Group> hud;
    return m_implementation->hud.lock(hud) && hud->containsNode(m_implementation->transform);
}

void Panel::update() {
    m_implementation->transform->setMatrix(
        osg::Matrix::scale(m_implementation->size.x, m_implementation->size.y, 1) *
        osg::Matrix::translate(m_implementation->position.x, m_implementation->position.y, 0));
    auto& color = static_cast<osg::Vec4Array&>(*m_implementation->square->getColorArray());
    color[0] = toOsg(m_implementation->color);
    color.dirty();
}

bool Panel::match(void const* key) const {
    return m_implementation->key == key;
}

} // namespace hyxOSG
