// Frame times of different ways to draw the same thing.
#pragma once

#include "platform/hyxOSG/application/example_application.h"

#include <osg/Geometry>

#include <functional>
#include <vector>

namespace bench {

/// One way to draw.
struct Case {
    osg::ref_ptr<osg::Node> node;                       ///< shown in this case only
    std::function<void(int frame)> change = [](int) {}; ///< before each frame; its own time does not count
};

/// A window without simulation, looked into from `eye`.
hyx::ref_ptr<hyxOSG::ExampleApplication> make_application(hyx::Vec3 const& eye, hyx::Vec3 const& center);

/// Vertex buffers without display list.
osg::ref_ptr<osg::Geometry> make_buffered_geometry();

/// Points of `size` pixels without light, in the colours that are given, one for all or one each.
osg::ref_ptr<osg::Geometry> make_points(osg::Vec3Array* positions, osg::Vec4ubArray* colors, float size);

/// Stores the milliseconds of a frame of each case in `best`, the shortest of all rounds. The cases take turns, so that
/// a busy machine troubles them alike.
void take_turns(hyxOSG::ExampleApplication& application, std::vector<Case> const& cases, int rounds, double* best);

} // namespace bench
