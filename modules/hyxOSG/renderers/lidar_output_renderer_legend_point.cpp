// Rows of the legend's points.
#include "platform/hyxOSG/renderers/lidar_output_renderer_legend_point.h"

#include "binding/vocabulary/rows.h"
#include "binding/vocabulary/sequences.h"

namespace {

constexpr Declared lidar_output_renderer_legend_point_rows[] = {
    FUNCTION(LidarOutputRendererLegendPoint_intensity_get, GET(hyxOSG::LidarOutputRendererLegendPoint, intensity)),
    FUNCTION(LidarOutputRendererLegendPoint_intensity_set,
             SET(hyxOSG::LidarOutputRendererLegendPoint, intensity, (float))),
    // Writing to the colour writes to the point, so the point has to stay.
    FUNCTION(LidarOutputRendererLegendPoint_color_get,
             FINISHED(::vocabulary::keep_element_part, GET_BORROWED(hyxOSG::LidarOutputRendererLegendPoint, color))),
    FUNCTION(LidarOutputRendererLegendPoint_color_set,
             SET(hyxOSG::LidarOutputRendererLegendPoint, color, (osg::Vec4 const&))),
    FUNCTION(new_LidarOutputRendererLegendPoint, NEW(hyxOSG::LidarOutputRendererLegendPoint, ()),
             NEW(hyxOSG::LidarOutputRendererLegendPoint, (float, osg::Vec4))),
    FUNCTION(delete_LidarOutputRendererLegendPoint, DELETE(hyxOSG::LidarOutputRendererLegendPoint)),
    REGISTER(hyxOSG::LidarOutputRendererLegendPoint, LidarOutputRendererLegendPoint),
    INIT(LidarOutputRendererLegendPoint),
};

} // namespace

ROWS(lidar_output_renderer_legend_point_rows);
