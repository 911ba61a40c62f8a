// Samples colour rules into tables that a texture can hold.
#include "reference/hyxOSG/renderers/lidar_color_table.h"

#include <algorithm>
#include <cmath>

namespace hyxOSG {
namespace {

constexpr std::size_t boundedSamples = 4096;
constexpr std::size_t callbackSamples = 256;
// Beyond this the table no longer widens: the samples would lie too far apart to mean anything.
constexpr float widest = 1e30f;

float toByteRange(float component) {
    return std::isnan(component) ? 0.0f : std::clamp(component, 0.0f, 1.0f) * 255.0f;
}

float powerOfTwoAbove(float value) {
    return value <= 1.0f ? 1.0f : std::exp2(std::ceil(std::log2(std::min(value, widest))));
}

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

} // namespace

LidarColorTable LidarColorTable::ofBounded(ColorFunc function, float low, float high) {
    return {std::move(function), {low, high}, boundedSamples, false};
}

LidarColorTable LidarColorTable::ofLegend(LidarOutputRendererLegend legend, float maxIntensity) {
    std::erase_if(legend, [](auto const& point) { return !std::isfinite(point.intensity); });
    std::stable_sort(legend.begin(), legend.end(),
                     [](auto const& left, auto const& right) { return left.intensity < right.intensity; });
    for (auto& point : legend)
        point.intensity *= maxIntensity;
    auto const low = legend.empty() ? 0.0f : legend.front().intensity;
    auto const high = legend.empty() ? 0.0f : legend.back().intensity;
    auto const span = high > low ? Span{low, high} : Span{low, low + maxIntensity};
    auto function = [legend = std::move(legend)](float intensity) { return legendColor(legend, intensity); };
    return ofBounded(std::move(function), span.low, span.high);
}

LidarColorTable LidarColorTable::ofAny(ColorFunc function) {
    return {std::move(function), {0.0f, 1.0f}, callbackSamples, true};
}

LidarColorTable::LidarColorTable(ColorFunc function, Span span, std::size_t sampleCount, bool widens)
    : m_function(std::move(function)), m_span(span), m_sampleCount(sampleCount), m_widens(widens) {}

LidarColorTable::Span LidarColorTable::widened(float lowest, float highest) const {
    if (!m_widens)
        return m_span;
    auto span = m_span;
    if (highest > span.high)
        span.high = powerOfTwoAbove(highest);
    if (lowest < span.low)
        span.low = -powerOfTwoAbove(-lowest);
    return span;
}

bool LidarColorTable::cover(float lowest, float highest) {
    auto const span = widened(lowest, highest);
    if (!m_samples.empty() && span.low == m_span.low && span.high == m_span.high)
        return false;
    sample(span);
    return true;
}

void LidarColorTable::sample(Span span) {
    std::vector<osg::Vec4f> samples;
    samples.reserve(m_sampleCount + 1);
    auto const step = (span.high - span.low) / static_cast<float>(m_sampleCount - 1);
    for (std::size_t i = 0; i < m_sampleCount; ++i) {
        auto const color = m_function(span.low + step * static_cast<float>(i));
        samples.emplace_back(toByteRange(color.r()), toByteRange(color.g()), toByteRange(color.b()),
                             toByteRange(color.a()));
    }
    samples.push_back(samples.back());
    m_translucent = std::any_of(samples.begin(), samples.end(), [](auto const& color) { return color.a() < 255.0f; });
    m_samples = std::move(samples);
    m_span = span;
}

osg::Vec4ub LidarColorTable::color(float intensity) const {
    if (std::isnan(intensity))
        intensity = 0.0f;
    auto const last = static_cast<float>(m_sampleCount - 1);
    auto const at = std::clamp((intensity - m_span.low) / (m_span.high - m_span.low) * last, 0.0f, last);
    auto const index = static_cast<std::size_t>(at);
    auto const mixed = m_samples[index] + (m_samples[index + 1] - m_samples[index]) * (at - static_cast<float>(index));
    auto const byte = [](float channel) { return static_cast<unsigned char>(channel + 0.5f); };
    return {byte(mixed.r()), byte(mixed.g()), byte(mixed.b()), byte(mixed.a())};
}

} // namespace hyxOSG
