// Blends between the colours of a scale.
#include "platform/hyxOSG/renderers/scalar_color_map.h"

#include "reference/hyxOSG/renderers/color_presets.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace hyxOSG {
namespace {

using Colors = std::vector<osg::Vec4f>;

void requireInterval(hyx::Real minScalar, hyx::Real maxScalar) {
    if (!std::isfinite(minScalar) || !std::isfinite(maxScalar) || minScalar > maxScalar)
        throw std::invalid_argument("the interval of a colour map must be finite, with its minimum first");
}

Colors toScene(hyxRender::ColorVector const& colors) {
    Colors converted;
    for (auto const& color : colors)
        converted.emplace_back(color.r, color.g, color.b, color.a);
    return converted;
}

} // namespace

struct ScalarColorMap::Implementation {
    Colors colors;
    hyx::Real min = 0;
    hyx::Real max = 1;
    osg::ref_ptr<osgSim::ColorRange> range; // null when the map has changed since it was made

    void setInterval(hyx::Real minScalar, hyx::Real maxScalar) {
        requireInterval(minScalar, maxScalar);
        min = minScalar;
        max = maxScalar;
        range = nullptr;
    }

    void setColors(Colors next) {
        colors = next.empty() ? Colors{{1, 1, 1, 1}} : std::move(next);
        range = nullptr;
    }

    osg::Vec4f color(hyx::Real scalar, bool clamp) const;
};

osg::Vec4f ScalarColorMap::Implementation::color(hyx::Real scalar, bool clamp) const {
    if (std::isnan(scalar) || (!clamp && (scalar < min || scalar > max)))
        return {0, 0, 0, 0};
    if (scalar <= min)
        return colors.front();
    if (scalar >= max)
        return colors.back();
    // Halved first, so that the widest interval does not overflow.
    auto const fraction = (scalar / 2 - min / 2) / (max / 2 - min / 2);
    auto const at = fraction * static_cast<double>(colors.size() - 1);
    auto const index = static_cast<std::size_t>(at);
    auto const next = std::min(index + 1, colors.size() - 1);
    return colors[index] + (colors[next] - colors[index]) * static_cast<float>(at - static_cast<double>(index));
}

ScalarColorMap::ScalarColorMap() : ScalarColorMap(RAINBOW, 0, 1) {}

ScalarColorMap::ScalarColorMap(hyxRender::ColorVector const& colors, hyx::Real minScalar, hyx::Real maxScalar)
    : m_implementation(std::make_unique<Implementation>()) {
    m_implementation->setInterval(minScalar, maxScalar);
    m_implementation->setColors(toScene(colors));
}

ScalarColorMap::ScalarColorMap(ColorRangePreset preset, hyx::Real minScalar, hyx::Real maxScalar)
    : m_implementation(std::make_unique<Implementation>()) {
    m_implementation->setInterval(minScalar, maxScalar);
    m_implementation->setColors(presetColors(preset));
}

ScalarColorMap::~ScalarColorMap() = default;

void ScalarColorMap::setColorsFromPreset(ColorRangePreset preset) {
    m_implementation->setColors(presetColors(preset));
}

void ScalarColorMap::setColors(hyxRender::ColorVector const& colors) {
    m_implementation->setColors(toScene(colors));
}

hyxRender::ColorVector ScalarColorMap::getColors() const {
    hyxRender::ColorVector colors;
    for (auto const& color : m_implementation->colors)
        colors.emplace_back(color.r(), color.g(), color.b(), color.a());
    return colors;
}

void ScalarColorMap::setMinScalar(hyx::Real minScalar) {
    m_implementation->setInterval(minScalar, std::max(minScalar, m_implementation->max));
}

void ScalarColorMap::setMaxScalar(hyx::Real maxScalar) {
    m_implementation->setInterval(std::min(m_implementation->min, maxScalar), maxScalar);
}

void ScalarColorMap::setScalarInterval(hyx::Real minScalar, hyx::Real maxScalar) {
    m_implementation->setInterval(minScalar, maxScalar);
}

hyx::Real ScalarColorMap::getMinScalar() const {
    return m_implementation->min;
}

hyx::Real ScalarColorMap::getMaxScalar() const {
    return m_implementation->max;
}

hyx::Vec4f ScalarColorMap::getColor(hyx::Real scalar, bool clamp) const {
    auto const color = m_implementation->color(scalar, clamp);
    return {color.r(), color.g(), color.b(), color.a()};
}

osg::Vec4f ScalarColorMap::getColorOSG(hyx::Real scalar, bool clamp) const {
    return m_implementation->color(scalar, clamp);
}

osg::ref_ptr<osgSim::ColorRange> ScalarColorMap::getOsgColorRange() const {
    if (!m_implementation->range)
        m_implementation->range =
            new osgSim::ColorRange(static_cast<float>(m_implementation->min), static_cast<float>(m_implementation->max),
                                   m_implementation->colors);
    return m_implementation->range;
}

} // namespace hyxOSG
