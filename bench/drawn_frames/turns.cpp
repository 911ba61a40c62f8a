// Takes the frames of all cases in turn, so that a busy machine slows each of them alike.
#include "bench/drawn_frames/turns.h"

#include <osg/Point>
#include <osg/Program>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace bench {

hyx::ref_ptr<hyxOSG::ExampleApplication> make_application(hyx::Vec3 const& eye, hyx::Vec3 const& center) {
    hyx::ref_ptr<hyxOSG::ExampleApplication> const application = new hyxOSG::ExampleApplication;
    application->initViewer(640, 480, true);
    application->setAutoStepping(false);
    application->setCameraHome(eye, center);
    return application;
}

osg::ref_ptr<osg::Geometry> make_buffered_geometry() {
    osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    geometry->setUseDisplayList(false);
    geometry->setUseVertexBufferObjects(true);
    geometry->setDataVariance(osg::Object::DYNAMIC);
    return geometry;
}

osg::ref_ptr<osg::Geometry> make_points(osg::Vec3Array* positions, osg::Vec4ubArray* colors, float size) {
    osg::ref_ptr<osg::Geometry> geometry = make_buffered_geometry();
    colors->setNormalize(true);
    geometry->setVertexArray(positions);
    geometry->setColorArray(colors, colors->size() == 1 ? osg::Array::BIND_OVERALL : osg::Array::BIND_PER_VERTEX);
    geometry->addPrimitiveSet(new osg::DrawArrays(GL_POINTS, 0, static_cast<GLsizei>(positions->size())));
    osg::StateSet* const state = geometry->getOrCreateStateSet();
    state->setAttributeAndModes(new osg::Point(size));
    state->setAttributeAndModes(new osg::Program, osg::StateAttribute::ON | osg::StateAttribute::PROTECTED);
    state->setMode(GL_LIGHTING, osg::StateAttribute::OFF | osg::StateAttribute::PROTECTED);
    return geometry;
}

void take_turns(hyxOSG::ExampleApplication& application, std::vector<Case> const& cases, int rounds, double* best) {
    constexpr int frames = 4;
    using Clock = std::chrono::steady_clock;
    std::fill(best, best + cases.size(), HUGE_VAL);
    for (int round = 0; round < rounds; ++round)
        for (std::size_t i = 0; i < cases.size(); ++i) {
            application.getSceneRoot()->addChild(cases[i].node);
            application.step(); // the frame that uploads, and waits for what the case before has drawn
            application.step();
            double total = 0;
            for (int frame = 0; frame < frames; ++frame) {
                cases[i].change(round * frames + frame);
                auto const start = Clock::now();
                application.step();
                total += std::chrono::duration<double, std::milli>(Clock::now() - start).count();
            }
            best[i] = std::min(best[i], total / frames);
            application.getSceneRoot()->removeChild(cases[i].node);
        }
}

} // namespace bench
