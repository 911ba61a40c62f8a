// Rows of the callback that colours laser points.
#include "platform/hyxOSG/renderers/lidar_output_renderer_color_function_callback.h"

#include "binding/vocabulary/rows.h"
#include "modules/hyxOSG/renderers/lidar_color_director.h"

namespace {

constexpr Declared lidar_output_renderer_color_function_callback_rows[] = {
    FUNCTION(new_LidarOutputRendererColorFunctionCallback,
             NEW_DIRECTOR(hyxOSG::LidarOutputRendererColorFunctionCallback,
                          SwigDirector_LidarOutputRendererColorFunctionCallback, ())),
    FUNCTION(LidarOutputRendererColorFunctionCallback_getLidarPointColor,
             VIRTUAL(hyxOSG::LidarOutputRendererColorFunctionCallback, getLidarPointColor, (float))),
    FUNCTION(LidarOutputRendererColorFunctionCallback_getColorFunction,
             METHOD(hyxOSG::LidarOutputRendererColorFunctionCallback, getColorFunction, ())),
    FUNCTION(delete_LidarOutputRendererColorFunctionCallback, DELETE(hyxOSG::LidarOutputRendererColorFunctionCallback)),
    FUNCTION(disown_LidarOutputRendererColorFunctionCallback, DISOWN(hyxOSG::LidarOutputRendererColorFunctionCallback)),
    REGISTER(hyxOSG::LidarOutputRendererColorFunctionCallback, LidarOutputRendererColorFunctionCallback),
    INIT(LidarOutputRendererColorFunctionCallback),
};

} // namespace

ROWS(lidar_output_renderer_color_function_callback_rows);
