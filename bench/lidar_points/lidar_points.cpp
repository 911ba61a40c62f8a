// Milliseconds a frame for many points: as a plain vertex buffer, and through the lidar renderer coloured by a legend.
#include "platform/hyxOSG/example_application.h"
#include "platform/hyxOSG/lidar_output_renderer.h"
#include "platform/hyxSensor/lidar.h"

#include <osg/Geometry>
#include <osg/Point>
#include <osg/Program>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <random>
#include <vector>

namespace {

std::vector<hyxSensor::LidarHit> make_hits(std::size_t count)
{
    std::mt19937 numbers(1);
    std::uniform_real_distribution<float> place(-5, 5);
    std::vector<hyxSensor::LidarHit> hits(count);
    for (auto & hit : hits) {
        auto const x = place(numbers);
        auto const y = place(numbers);
        auto const wave = std::sin(2 * x) * std::cos(2 * y);
        hit.position = hyx::Vec3f(x, y, 0.3f * wave);
        hit.intensity = 0.5f + 0.5f * wave;
    }
    return hits;
}

// What a program of its own would do: positions, and colours where asked, in vertex buffers; no light.
osg::ref_ptr<osg::Geometry> make_plain(std::vector<hyxSensor::LidarHit> const & hits, bool colored)
{
    osg::ref_ptr<osg::Vec3Array> const positions = new osg::Vec3Array;
    osg::ref_ptr<osg::Vec4ubArray> const colors = new osg::Vec4ubArray(colored ? hits.size() : 1);
    colors->setNormalize(true);
    for (std::size_t i = 0; i < hits.size(); ++i) {
        positions->push_back({hits[i].position.x, hits[i].position.y, hits[i].position.z});
        auto const shade = static_cast<unsigned char>(255 * hits[i].intensity);
        (*colors)[colored ? i : 0].set(shade, 255 - shade, 0, 255);
    }
    osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    geometry->setUseDisplayList(false);
    geometry->setUseVertexBufferObjects(true);
    geometry->setVertexArray(positions);
    geometry->setColorArray(colors, colored ? osg::Array::BIND_PER_VERTEX : osg::Array::BIND_OVERALL);
    geometry->addPrimitiveSet(new osg::DrawArrays(GL_POINTS, 0, static_cast<GLsizei>(hits.size())));
    auto * const state = geometry->getOrCreateStateSet();
    state->setAttributeAndModes(new osg::Point(3));
    state->setAttributeAndModes(new osg::Program, osg::StateAttribute::ON | osg::StateAttribute::PROTECTED);
    state->setMode(GL_LIGHTING, osg::StateAttribute::OFF | osg::StateAttribute::PROTECTED);
    return geometry;
}

}

// Stores four times in `best`, the shortest of all rounds: plain in one colour, plain with colours, the renderer, and
// the renderer with new hits in every frame. The cases take turns, so that a busy machine troubles them alike.
extern "C" void measure(int count, int rounds, double * best)
{
    auto const hits = make_hits(static_cast<std::size_t>(count));
    hyx::ref_ptr<hyxOSG::ExampleApplication> const application = new hyxOSG::ExampleApplication;
    application->initViewer(640, 480, true);
    application->setAutoStepping(false);
    application->setCameraHome(hyx::Vec3(0, -9, 6), hyx::Vec3(0, 0, 0));

    hyx::ref_ptr<hyxSensor::Lidar> const lidar = new hyxSensor::Lidar;
    lidar->setHits(hits);
    osg::ref_ptr<hyxOSG::LidarOutputRenderer> const renderer = new hyxOSG::LidarOutputRenderer(lidar);
    renderer->setIntensityColorFunctionFromLegend({{0, {0, 0, 1, 1}}, {0.5, {0, 1, 0, 1}}, {1, {1, 0, 0, 1}}}, 1);
    osg::ref_ptr<osg::Node> const cases[] = {make_plain(hits, false), make_plain(hits, true), renderer, renderer};

    std::fill(best, best + 4, HUGE_VAL);
    for (int round = 0; round < rounds; ++round)
        for (int i = 0; i < 4; ++i) {
            application->getSceneRoot()->addChild(cases[i]);
            application->step(); // the frame that uploads, and waits for what the case before has drawn
            application->step();
            auto const start = std::chrono::steady_clock::now();
            for (int frame = 0; frame < 3; ++frame) {
                if (i == 3)
                    lidar->setHits(hits);
                application->step();
            }
            std::chrono::duration<double, std::milli> const taken = std::chrono::steady_clock::now() - start;
            best[i] = std::min(best[i], taken.count() / 3);
            application->getSceneRoot()->removeChild(cases[i]);
        }
}
