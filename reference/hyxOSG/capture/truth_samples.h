// The pixels that a truth target has drawn, and what rays put right in them.
#pragma once

#include "platform/hyxOSG/capture/truth_target.h"
#include "reference/hyxOSG/capture/exact_forms.h"

#include <array>
#include <limits>
#include <vector>

namespace hyxOSG {

/// Metres along the view of a depth of 0 to 1.
double distanceOfDepth(double depth, osg::Matrixd const& projection);

/// What is known of one pixel, in the axes of computer vision.
struct TruthSample {
    float depth = std::numeric_limits<float>::infinity();
    std::array<float, 3> normal{};
    std::array<float, 2> flow{};
    std::uint32_t identity = 0;

    void write(TruthTarget::Channels const& channels, std::size_t to) const;
};

/// All pixels as drawn. Round forms are drawn in facets, which lie a little before or behind their surface, inside or
/// outside of its outline.
class TruthSamples {
public:
    TruthSamples(hyx::Vec2u size, osg::Matrixd const& projection, ExactForms const& forms)
        : m_size(size), m_projection(projection), m_forms(forms), m_samples(size.x * size.y) {}

    TruthSample& at(std::size_t row, std::size_t column) { return m_samples[row * m_size.x + column]; }

    TruthSample const& at(std::size_t row, std::size_t column) const { return m_samples[row * m_size.x + column]; }

    /// What the ray through a place meets.
    TruthSample exact(TruthTarget::Place place) const;

private:
    struct Pixel {
        std::size_t row;
        std::size_t column;
    };

    Pixel nearest(TruthTarget::Place place) const;
    osg::Vec2d direction(TruthTarget::Place place) const;
    std::array<float, 2> flow(TruthTarget::Place place, osg::Vec3d const& before) const;
    bool isEven(TruthTarget::Place place) const;
    float depthAt(TruthTarget::Place place) const;
    bool meet(TruthTarget::Place place, TruthSample const& around, TruthSample& result) const;
    TruthSample behind(TruthTarget::Place place) const;
    template <class Look>
    void lookAround(Pixel pixel, Look const& look) const;

    hyx::Vec2u m_size;
    osg::Matrixd m_projection;
    ExactForms const& m_forms;
    std::vector<TruthSample> m_samples;
};

} // namespace hyxOSG
