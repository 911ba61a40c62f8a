// Blends the colours of presets and legends.
#include "reference/hyxOSG/renderers/lidar_colors.h"

#include "reference/hyxOSG/renderers/color_presets.h"

#include <algorithm>
#include <cmath>

namespace hyxOSG {
namespace {

osg::Vec4f legendColor(LidarOutputRendererLegend const& sorted, float intensity) {
    if (sorted.empty())
        return {1, 1, 1, 1};
    auto const above = std::upper_bound(sorted.begin(), sorted.end(), intensity,
                                        [](float value, auto const& point) { return value < point.intensity; });
    if (above == sorted.begin())
        return sorted.front().color;
    if (above == sorted.end())
        return sorted.back().color;
    auto const& below = *(above - 1);
    auto const fraction = (intensity - below.intensity) / (above->intensity - below.intensity);
    return below.color + (above->color - below.color) * fraction;
}

unsigned char toByte(float component) {
    return std::isnan(component) ? 0 : static_cast<unsigned char>(std::clamp(component, 0.0f, 1.0f) * 255.0f + 0.5f);
}

} // namespace

LidarOutputRenderer::IntensityState::ColorFunc presetFunction(int preset) {
    return [&colors = presetColors(preset)](float intensity) {
        auto const at = std::clamp(intensity, 0.0f, 1.0f) * static_cast<float>(colors.size() - 1);
        auto const index = std::min(static_cast<std::size_t>(at), colors.size() - 2);
        return colors[index] + (colors[index + 1] - colors[index]) * (at - static_cast<float>(index));
    };
}

LidarOutputRenderer::IntensityState::ColorFunc legendFunction(LidarOutputRendererLegend legend, float maxIntensity) {
    std::erase_if(legend, [](auto const& point) { return !std::isfinite(point.intensity); });
    std::stable_sort(legend.begin(), legend.end(),
                     [](auto const& left, auto const& right) { return left.intensity < right.intensity; });
    for (auto& point : legend)
        point.intensity *= maxIntensity;
    return [legend = std::move(legend)](float intensity) { return legendColor(legend, intensity); };
}

std::pair<float, float> legendEnds(LidarOutputRendererLegend const& legend, float maxIntensity) {
    float low = 0, high = 1;
    for (auto const& point : legend) {
        if (!std::isfinite(point.intensity))
            continue;
        low = std::min(low, point.intensity);
        high = std::max(high, point.intensity);
    }
    return {low * maxIntensity, high * maxIntensity};
}

osg::Vec4ub colorBytes(osg::Vec4f const& color) {
    return {toByte(color.r()), toByte(color.g()), toByte(color.b()), toByte(color.a())};
}

} // namespace hyxOSG
