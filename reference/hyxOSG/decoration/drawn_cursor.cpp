// The shape of the drawn cursor, and its place.
#include "reference/hyxOSG/decoration/drawn_cursor.h"

#include <osg/Geometry>

namespace hyxOSG::decorator {
namespace {

// The usual arrow, its tip at the origin, as a fan of its head and a quadrilateral of its tail.
osg::Vec3 const head[] = {{0, 0, 0}, {0, -16, 0}, {3.7f, -12.4f, 0}, {11.5f, -11.5f, 0}};
osg::Vec3 const tail[] = {{3.7f, -12.4f, 0}, {6.2f, -11.5f, 0}, {8.6f, -17.6f, 0}, {6.2f, -18.5f, 0}};

// All triangles of the arrow about its middle, enlarged.
osg::ref_ptr<osg::Geometry> createArrow(osg::Vec4 const& color, float enlarged) {
    osg::Vec3 const middle(4, -9, 0);
    auto* vertices = new osg::Vec3Array;
    for (osg::Vec3 const& point : head)
        vertices->push_back(middle + (point - middle) * enlarged);
    for (osg::Vec3 const& point : tail)
        vertices->push_back(middle + (point - middle) * enlarged);
    osg::ref_ptr<osg::Geometry> arrow = new osg::Geometry;
    arrow->setVertexArray(vertices);
    auto* colors = new osg::Vec4Array;
    colors->push_back(color);
    arrow->setColorArray(colors, osg::Array::BIND_OVERALL);
    arrow->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLE_FAN, 0, 4));
    arrow->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLE_FAN, 4, 4));
    arrow->setUseDisplayList(false);
    arrow->setUseVertexBufferObjects(true);
    return arrow;
}

} // namespace

DrawnCursor::DrawnCursor() : m_transform(new osg::MatrixTransform) {
    m_transform->setName("SceneDecorator cursor");
    m_transform->addChild(createArrow(osg::Vec4(0, 0, 0, 1), 1.25f));
    m_transform->addChild(createArrow(osg::Vec4(1, 1, 1, 1), 1.0f));
    m_transform->setCullingActive(false);
    setEnabled(false);
}

void DrawnCursor::setEnabled(bool enabled) {
    m_enabled = enabled;
    m_transform->setNodeMask(enabled ? ~0u : 0u);
}

void DrawnCursor::setPosition(osg::Vec2f const& position) {
    m_position = position;
}

void DrawnCursor::layOut(float scale) {
    m_transform->setMatrix(osg::Matrix::scale(scale, scale, 1) *
                           osg::Matrix::translate(m_position.x(), m_position.y(), 0));
}

} // namespace hyxOSG::decorator
