// Draws the background before anything else.
#include "reference/hyxOSG/decoration/background.h"

#include "reference/hyxOSG/decoration/screen_layer.h"

#include <osg/State>
#include <osg/Viewport>

#include <algorithm>

namespace hyxOSG::decorator {
namespace {

constexpr int firstBin = -100;

/// The corners' colours, mixed between them. One colour is cleared to, which software does at a fraction of the price.
class BackgroundRectangle : public osg::Geometry {
public:
    void drawImplementation(osg::RenderInfo& info) const override {
        auto const& colors = static_cast<osg::Vec4Array const&>(*getColorArray());
        osg::Viewport const* const viewport = info.getState()->getCurrentViewport();
        if (viewport && std::all_of(colors.begin(), colors.end(), [&](auto& color) { return color == colors[0]; }))
            clear(*info.getState(), *viewport, colors[0]);
        else
            osg::Geometry::drawImplementation(info);
    }

private:
    static void clear(osg::State& state, osg::Viewport const& viewport, osg::Vec4 const& color) {
        state.applyMode(GL_SCISSOR_TEST, true);
        glScissor(GLint(viewport.x()), GLint(viewport.y()), GLsizei(viewport.width()), GLsizei(viewport.height()));
        glClearColor(color.r(), color.g(), color.b(), color.a()); // all who clear set it
        glClear(GL_COLOR_BUFFER_BIT);
    }
};

osg::ref_ptr<osg::Geometry> createBackgroundRectangle() {
    osg::ref_ptr<osg::Geometry> rectangle = new BackgroundRectangle;
    auto* vertices = new osg::Vec3Array;
    for (float y : {0.0f, 1.0f})
        for (float x : {0.0f, 1.0f})
            vertices->push_back(osg::Vec3(x, y, 0));
    rectangle->setVertexArray(vertices);
    rectangle->setColorArray(new osg::Vec4Array(4), osg::Array::BIND_PER_VERTEX);
    rectangle->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLE_STRIP, 0, 4));
    rectangle->setUseDisplayList(false);
    rectangle->setUseVertexBufferObjects(true);
    rectangle->setDataVariance(osg::Object::DYNAMIC);
    rectangle->setCullingActive(false);
    return rectangle;
}

} // namespace

Background::Background() : m_camera(createScreenLayer(firstBin)), m_rectangle(createBackgroundRectangle()) {
    m_camera->setName("SceneDecorator background");
    m_camera->setProjectionMatrixAsOrtho2D(0, 1, 0, 1);
    m_camera->addChild(m_rectangle);
}

void Background::setColors(osg::Vec4 const& upperLeft, osg::Vec4 const& upperRight, osg::Vec4 const& lowerLeft,
                           osg::Vec4 const& lowerRight) {
    auto& colors = static_cast<osg::Vec4Array&>(*m_rectangle->getColorArray());
    colors[0] = lowerLeft;
    colors[1] = lowerRight;
    colors[2] = upperLeft;
    colors[3] = upperRight;
    colors.dirty();
}

std::array<osg::Vec4, 4> Background::colors() const {
    auto const& colors = static_cast<osg::Vec4Array const&>(*m_rectangle->getColorArray());
    return {colors[2], colors[3], colors[0], colors[1]};
}

} // namespace hyxOSG::decorator
