// Colours of intensities, sampled once so that a million points cost a million look-ups and not as many calls.
#pragma once

#include "platform/hyxOSG/renderers/lidar_output_renderer.h"

#include <osg/Vec4ub>

#include <optional>
#include <vector>

namespace hyxOSG {

class LidarColorTable {
public:
    using ColorFunc = LidarOutputRenderer::IntensityState::ColorFunc;

    // A function that is cheap to call and constant outside of `low` to `high`.
    static LidarColorTable ofBounded(ColorFunc function, float low, float high);
    // Linear between neighbouring legend points, the end colours beyond them; white without points.
    static LidarColorTable ofLegend(LidarOutputRendererLegend legend, float maxIntensity);
    // Any function, under the bound that LidarOutputRenderer::setIntensityColorFunction states.
    static LidarColorTable ofAny(ColorFunc function);

    // Makes the table cover these intensities. Returns whether it was sampled anew; passes on what the function
    // throws and is then as it was before.
    bool cover(float lowest, float highest);

    // The colour of an intensity; what is not a number counts as 0. Only after the first cover().
    osg::Vec4ub color(float intensity) const;

    // Whether any colour lets the background through.
    bool translucent() const { return m_translucent; }

private:
    struct Span {
        float low;
        float high;
    };

    LidarColorTable(ColorFunc function, Span span, std::size_t sampleCount, bool widens);
    Span widened(float lowest, float highest) const;
    void sample(Span span);

    ColorFunc m_function;
    Span m_span;
    std::size_t m_sampleCount;
    bool m_widens;
    bool m_translucent = false;
    std::vector<osg::Vec4f> m_samples; // of 0 to 255 a channel; one more than counted, so that the last can be mixed
};

} // namespace hyxOSG
