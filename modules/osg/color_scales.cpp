// The colours that renderers show numbers in.
#include "modules/osg/scene_graph_rows.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/renderers/cable_damage_renderer.h"
#include "platform/hyxOSG/renderers/lidar_output_renderer.h"
#include "platform/hyxOSG/renderers/pressure_field_renderer.h"
#include "platform/hyxOSG/renderers/scalar_color_map.h"
#include "platform/hyxOSG/renderers/terrain_voxel_renderer.h"

namespace {

template <class Renderer>
hyxOSG::ScalarColorMap* color_scale(Renderer& self) {
    return self.getColorScale().release();
}

#define COLOR_SCALE(class_) \
    FUNCTION(class_##_getColorScale, SHARED(ADAPTER(hyxOSG::class_, getColorScale, color_scale<hyxOSG::class_>, ())))

constexpr Declared color_scales_rows[] = {
    COLOR_SCALE(CableDamageRenderer),
    COLOR_SCALE(LidarOutputRenderer),
    COLOR_SCALE(PressureFieldRenderer),
    COLOR_SCALE(TerrainVoxelRenderer),
};

} // namespace

ROWS(color_scales_rows);
