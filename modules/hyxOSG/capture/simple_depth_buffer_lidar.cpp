// The lidar that reads the depth buffer.
#include "platform/hyxOSG/capture/simple_depth_buffer_lidar.h"

#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared simple_depth_buffer_lidar_rows[] = {
    FUNCTION(new_SimpleDepthBufferLidar, NEW(hyxOSG::SimpleDepthBufferLidar, (hyx::UInt, hyx::UInt, bool), true)),
    FUNCTION(SimpleDepthBufferLidar_getScan, METHOD(hyxOSG::SimpleDepthBufferLidar, getScan, ())),
    REGISTER(hyxOSG::SimpleDepthBufferLidar, SimpleDepthBufferLidar),
    INIT(SimpleDepthBufferLidar),
};

} // namespace

ROWS(simple_depth_buffer_lidar_rows);
