// Many points: as a plain vertex buffer, and through the lidar renderer coloured by a legend.
#include "bench/drawn_frames/turns.h"
#include "platform/hyxOSG/renderers/lidar_output_renderer.h"
#include "platform/hyxSensor/lidar.h"

#include <cmath>
#include <random>
#include <vector>

namespace {

std::vector<hyxSensor::LidarHit> make_hits(std::size_t count) {
    std::mt19937 numbers(1);
    std::uniform_real_distribution<float> place(-5, 5);
    std::vector<hyxSensor::LidarHit> hits(count);
    for (auto& hit : hits) {
        auto const x = place(numbers);
        auto const y = place(numbers);
        auto const wave = std::sin(2 * x) * std::cos(2 * y);
        hit.position = hyx::Vec3(x, y, 0.3f * wave);
        hit.intensity = 0.5f + 0.5f * wave;
    }
    return hits;
}

// What a program of its own would do: positions, and colours where asked, in vertex buffers; no light.
osg::ref_ptr<osg::Geometry> make_plain(std::vector<hyxSensor::LidarHit> const& hits, bool colored) {
    osg::ref_ptr<osg::Vec3Array> const positions = new osg::Vec3Array;
    osg::ref_ptr<osg::Vec4ubArray> const colors = new osg::Vec4ubArray(colored ? hits.size() : 1);
    for (std::size_t i = 0; i < hits.size(); ++i) {
        hyx::Vec3 const& place = hits[i].position;
        positions->push_back(osg::Vec3f(osg::Vec3d(place.x, place.y, place.z)));
        auto const shade = static_cast<unsigned char>(255 * hits[i].intensity);
        (*colors)[colored ? i : 0].set(shade, 255 - shade, 0, 255);
    }
    return bench::make_points(positions, colors, 3);
}

} // namespace

// Four times: plain in one colour, plain with colours, the renderer, and the renderer with new hits in every frame.
extern "C" void lidar_points(int count, int rounds, double* best) {
    auto const application = bench::make_application(hyx::Vec3(0, -9, 6), hyx::Vec3(0, 0, 0));
    auto const hits = make_hits(static_cast<std::size_t>(count));
    hyx::ref_ptr<hyxSensor::Lidar> const lidar = new hyxSensor::Lidar;
    lidar->setHits(hits);
    osg::ref_ptr<hyxOSG::LidarOutputRenderer> const renderer = new hyxOSG::LidarOutputRenderer(lidar);
    renderer->setIntensityColorFunctionFromLegend({{0, {0, 0, 1, 1}}, {0.5, {0, 1, 0, 1}}, {1, {1, 0, 0, 1}}}, 1);
    bench::take_turns(*application,
                      {{make_plain(hits, false)},
                       {make_plain(hits, true)},
                       {renderer},
                       {renderer, [&](int) { lidar->setHits(hits); }}},
                      rounds, best);
}
