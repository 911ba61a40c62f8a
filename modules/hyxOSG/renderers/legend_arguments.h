// Legends, and positions in them, as arguments.
#pragma once

#include "binding/vocabulary/sequences.h"
#include "platform/hyxOSG/renderers/lidar_output_renderer_legend_point.h"

namespace swig {

template <>
struct traits<hyxOSG::LidarOutputRendererLegendPoint> {
    static constexpr char type_name[] = "hyxOSG::LidarOutputRendererLegendPoint";
};

template <>
struct traits<hyxOSG::LidarOutputRendererLegend> {
    static constexpr char type_name[] = "std::vector<hyxOSG::LidarOutputRendererLegendPoint,"
                                        "std::allocator< hyxOSG::LidarOutputRendererLegendPoint > >";
};

} // namespace swig

namespace vocabulary {

template <>
inline constexpr Conversion const* sequence_conversion<hyxOSG::LidarOutputRendererLegend> =
    &sequence_argument<hyxOSG::LidarOutputRendererLegend>;
template <>
inline constexpr Conversion const* sequence_conversion<hyxOSG::LidarOutputRendererLegend::iterator> =
    &iterator_argument<hyxOSG::LidarOutputRendererLegend>;

} // namespace vocabulary
