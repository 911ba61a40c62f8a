// Shows debug lines and names in the scene graph.
#include "reference/hyxOSG/application/debug_renderer.h"

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyxOSG/application/debug_lines.h"
#include "reference/machinery/text/fonts.h"
#include "reference/machinery/text/lettering.h"

#include <osg/Geode>
#include <osg/Geometry>
#include <osg/LineWidth>

#include <vector>

namespace hyxOSG {

namespace {

/// Lines in one geometry, filled anew in each frame.
struct LineDrawing {
    osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    osg::ref_ptr<osg::Vec3Array> points = new osg::Vec3Array;
    osg::ref_ptr<osg::Vec4Array> colors = new osg::Vec4Array(osg::Array::BIND_PER_VERTEX);
    osg::ref_ptr<osg::DrawArrays> primitives = new osg::DrawArrays(GL_LINES, 0, 0);

    explicit LineDrawing(osg::Geode& geode) {
        geometry->setUseDisplayList(false);
        geometry->setUseVertexBufferObjects(true);
        geometry->setVertexArray(points);
        geometry->setColorArray(colors);
        geometry->addPrimitiveSet(primitives);
        geometry->setDataVariance(osg::Object::DYNAMIC);
        geode.addDrawable(geometry);
    }

    void changed() const {
        primitives->setCount(int(points->size()));
        points->dirty();
        colors->dirty();
        primitives->dirty();
        geometry->dirtyBound();
    }
};

/// What lies inside the bodies is seen through them.
void showThrough(osg::StateSet& state, int bin) {
    state.setMode(GL_DEPTH_TEST, osg::StateAttribute::OFF);
    // Texts would go to the bin of what is seen through.
    state.setRenderBinDetails(bin, "RenderBin", osg::StateSet::OVERRIDE_RENDERBIN_DETAILS);
}

} // namespace

struct DebugRenderer::Drawing {
    osg::ref_ptr<osg::Group> node = new osg::Group;
    osg::ref_ptr<osg::Geode> lineGeode = new osg::Geode, nameGeode = new osg::Geode;
    LineDrawing shapes{*lineGeode}, inner{*lineGeode};
    std::vector<osg::ref_ptr<Lettering>> names; ///< one a body, in their order

    Drawing() {
        constexpr int afterAll = 100;
        showThrough(*inner.geometry->getOrCreateStateSet(), afterAll);
        inner.geometry->getStateSet()->setAttributeAndModes(new osg::LineWidth(2));
        showThrough(*nameGeode->getOrCreateStateSet(), afterAll + 1);
        node->addChild(lineGeode);
        node->addChild(nameGeode);
    }

    void updateLines(hyxSDK::Simulation& simulation) const {
        DebugLines(*shapes.points, *shapes.colors).drawShapes(simulation);
        shapes.changed();
        DebugLines(*inner.points, *inner.colors).drawInside(simulation);
        inner.changed();
    }

    void updateNames(hyxSDK::Simulation const& simulation, bool shown) {
        auto const& bodies = simulation.getRigidBodies();
        setNumNames(shown ? bodies.size() : 0);
        for (size_t i = 0; i < names.size(); ++i) {
            hyx::Vec3 const place = bodies[i]->getPosition();
            std::string const name =
                bodies[i]->getName().empty() ? "#" + std::to_string(i) : std::string(bodies[i]->getName());
            names[i]->setPosition(osg::Vec3(place.x, place.y, place.z));
            if (names[i]->written() != name)
                names[i]->write(name);
        }
    }

    void setNumNames(size_t count) {
        for (; names.size() > count; names.pop_back())
            nameGeode->removeDrawable(names.back());
        while (names.size() < count) {
            constexpr float pixels = 16;
            osg::ref_ptr<Lettering> text = new Lettering;
            text->setTypeface(findFont(usualFont));
            text->setCharacterSizeMode(osgText::TextBase::SCREEN_COORDS);
            text->setCharacterSize(pixels);
            text->setAxisAlignment(osgText::TextBase::SCREEN);
            text->setAlignment(osgText::TextBase::CENTER_CENTER);
            text->setBackdropType(osgText::Text::OUTLINE); // to be read before any colour
            text->setBackdropColor(osg::Vec4(0, 0, 0, 1));
            nameGeode->addDrawable(text);
            names.push_back(text);
        }
    }
};

DebugRenderer::DebugRenderer(osg::Group* root) : m_root(root) {}

DebugRenderer::~DebugRenderer() = default;

void DebugRenderer::setEnable(bool enable) {
    if (enable == m_enabled)
        return;
    m_enabled = enable;
    if (!enable) {
        m_root->removeChild(m_drawing->node);
        m_drawing.reset();
        return;
    }
    m_drawing = std::make_unique<Drawing>();
    m_root->addChild(m_drawing->node);
}

void DebugRenderer::update(hyxSDK::Simulation& simulation) {
    if (!m_enabled)
        return;
    m_drawing->updateLines(simulation);
    m_drawing->updateNames(simulation, m_text);
}

} // namespace hyxOSG
