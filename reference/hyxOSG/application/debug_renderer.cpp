// Shows debug lines and names in the scene graph.
#include "reference/hyxOSG/application/debug_renderer.h"

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyxOSG/application/debug_lines.h"
#include "reference/machinery/text/fonts.h"
#include "reference/machinery/text/lettering.h"

#include <osg/Geode>
#include <osg/Geometry>

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

} // namespace

struct DebugRenderer::Drawing {
    osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    LineDrawing lines{*geode}, forces{*geode};
    std::vector<osg::ref_ptr<Lettering>> names; ///< one a body, in their order

    Drawing() {
        constexpr int behindAll = 100;
        // Forces act inside the bodies.
        osg::StateSet* state = forces.geometry->getOrCreateStateSet();
        state->setMode(GL_DEPTH_TEST, osg::StateAttribute::OFF);
        state->setRenderBinDetails(behindAll, "RenderBin");
    }

    void updateLines(hyxSDK::Simulation& simulation) const {
        DebugLines(*lines.points, *lines.colors).draw(simulation);
        lines.changed();
        DebugLines(*forces.points, *forces.colors).drawForces(simulation);
        forces.changed();
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
            geode->removeDrawable(names.back());
        while (names.size() < count) {
            constexpr float pixels = 16;
            osg::ref_ptr<Lettering> text = new Lettering;
            text->setFont(findFont(usualFont));
            text->setCharacterSizeMode(osgText::TextBase::SCREEN_COORDS);
            text->setCharacterSize(pixels);
            text->setAxisAlignment(osgText::TextBase::SCREEN);
            geode->addDrawable(text);
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
        m_root->removeChild(m_drawing->geode);
        m_drawing.reset();
        return;
    }
    m_drawing = std::make_unique<Drawing>();
    m_root->addChild(m_drawing->geode);
}

void DebugRenderer::update(hyxSDK::Simulation& simulation) {
    if (!m_enabled)
        return;
    m_drawing->updateLines(simulation);
    m_drawing->updateNames(simulation, m_text);
}

} // namespace hyxOSG
