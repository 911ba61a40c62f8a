// Puts pixels of round forms right.
#include "reference/hyxOSG/capture/truth_samples.h"

#include <algorithm>
#include <cmath>

namespace hyxOSG {
namespace {

/// How far a facet may lie from the round surface that it stands for, as RoundForm makes them, with some room.
double facetError(ExactForms::Surface const& exact, double metresPerPixel) {
    return (0.5 * metresPerPixel + 0.003 * exact.radius) / std::max(exact.cosine, 0.05);
}

/// Whether a pixel that a form drew is of another part of its body.
bool isOtherPart(TruthSample const& drawn, ExactForms::Surface const& exact) {
    double const along =
        drawn.normal[0] * exact.normal.x() - drawn.normal[1] * exact.normal.y() - drawn.normal[2] * exact.normal.z();
    return exact.depth > drawn.depth * (1 + 1e-4) && along < 0.97;
}

/// How fast the plane of a sample rises along directions, up to a factor of its own.
double rise(TruthSample const& sample, osg::Vec2d const& way) {
    return sample.normal[0] * way.x() - sample.normal[1] * way.y() + sample.normal[2];
}

} // namespace

double distanceOfDepth(double depth, osg::Matrixd const& projection) {
    double const place = 2 * depth - 1;
    return (place * projection(3, 3) - projection(3, 2)) / (projection(2, 2) - place * projection(2, 3)) * -1;
}

void TruthSample::write(TruthTarget::Channels const& channels, std::size_t to) const {
    if (channels.depth)
        channels.depth[to] = depth;
    if (channels.normals)
        std::copy(normal.begin(), normal.end(), channels.normals + 3 * to);
    if (channels.flow)
        std::copy(flow.begin(), flow.end(), channels.flow + 2 * to);
    if (channels.identities)
        channels.identities[to] = identity;
}

TruthSample TruthSamples::exact(TruthTarget::Place place) const {
    Pixel const pixel = nearest(place);
    TruthSample const& drawn = at(pixel.row, pixel.column);
    TruthSample result = drawn;
    result.depth = depthAt(place);
    if (m_forms.empty())
        return result;
    if (m_forms.has(drawn.identity) && !meet(place, drawn, result) && m_forms.isWhole(drawn.identity) &&
        !m_forms.meet(drawn.identity, direction(place), distanceOfDepth(1, m_projection)))
        result = behind(place);
    std::uint32_t tried = drawn.identity;
    lookAround(pixel, [&](TruthSample const& around, Pixel) {
        if (around.identity == tried || !m_forms.has(around.identity))
            return;
        tried = around.identity;
        meet(place, around, result);
    });
    return result;
}

TruthSamples::Pixel TruthSamples::nearest(TruthTarget::Place place) const {
    auto const within = [](double value, hyx::UInt size) {
        return std::size_t(std::clamp(std::round(value), 0.0, double(size - 1)));
    };
    return {within(place.row, m_size.y), within(place.column, m_size.x)};
}

/// Whether the four pixels around a place are of one surface without an edge.
bool TruthSamples::isEven(TruthTarget::Place place) const {
    std::array<float, 3> sum{};
    for (double const down : {0.0, 1.0})
        for (double const right : {0.0, 1.0}) {
            Pixel const pixel = nearest({std::floor(place.row) + down, std::floor(place.column) + right});
            for (std::size_t i = 0; i < 3; ++i)
                sum[i] += at(pixel.row, pixel.column).normal[i];
        }
    constexpr float nearlyAlike = 15.9f; // of 16
    return sum[0] * sum[0] + sum[1] * sum[1] + sum[2] * sum[2] > nearlyAlike;
}

/// Where a ray meets the plane that touches the surface in the pixel beside it.
float TruthSamples::depthAt(TruthTarget::Place place) const {
    Pixel const pixel = nearest(place);
    TruthSample const& drawn = at(pixel.row, pixel.column);
    TruthTarget::Place const middle{double(pixel.row), double(pixel.column)};
    if ((middle.row == place.row && middle.column == place.column) || !std::isfinite(drawn.depth) || !isEven(place))
        return drawn.depth;
    double const ratio = rise(drawn, direction(middle)) / rise(drawn, direction(place));
    return ratio > 0.5 && ratio < 2 ? float(drawn.depth * ratio) : drawn.depth; // else it is no neighbour
}

/// Takes over what the ray meets of the form that drew the pixel itself or one beside it.
bool TruthSamples::meet(TruthTarget::Place place, TruthSample const& around, TruthSample& result) const {
    auto const met = m_forms.meet(around.identity, direction(place), distanceOfDepth(1, m_projection));
    if (!met || met->depth < distanceOfDepth(0, m_projection))
        return false;
    // What hides the form, or was cut from it, stays as it was drawn.
    double const metresPerPixel = 2 * around.depth / (m_projection(1, 1) * static_cast<double>(m_size.y));
    if (std::abs(met->depth - around.depth) > facetError(*met, metresPerPixel))
        return false;
    bool const isDrawn = result.identity == around.identity;
    if (isDrawn ? isOtherPart(result, *met) : met->depth >= result.depth)
        return false;
    result = {float(met->depth),
              {float(met->normal.x()), float(-met->normal.y()), float(-met->normal.z())},
              flow(place, met->before),
              around.identity};
    return true;
}

/// What lies behind a facet that is drawn where its form is not: the plane of the farthest pixel around.
TruthSample TruthSamples::behind(TruthTarget::Place place) const {
    Pixel const pixel = nearest(place);
    TruthSample result = at(pixel.row, pixel.column);
    std::uint32_t const own = result.identity;
    osg::Vec2d const way = direction(place);
    lookAround(pixel, [&](TruthSample const& around, Pixel beside) {
        if (around.identity == own || around.depth <= result.depth)
            return;
        result = around;
        double const there = rise(around, direction({double(beside.row), double(beside.column)}));
        if (std::isfinite(around.depth) && std::abs(rise(around, way)) > 0.1 * std::abs(there))
            result.depth = float(around.depth * there / rise(around, way));
    });
    return result;
}

/// Where the ray through a place is one metre before the camera, y up.
osg::Vec2d TruthSamples::direction(TruthTarget::Place place) const {
    double const right = (2 * place.column + 1) / double(m_size.x) - 1;
    double const up = 1 - (2 * place.row + 1) / double(m_size.y);
    return {(right + m_projection(2, 0)) / m_projection(0, 0), (up + m_projection(2, 1)) / m_projection(1, 1)};
}

/// In pixels, x to the right and y down.
std::array<float, 2> TruthSamples::flow(TruthTarget::Place place, osg::Vec3d const& before) const {
    osg::Vec3d const came = before * m_projection; // divided by w
    return {float(place.column + 0.5 - (came.x() + 1) / 2 * double(m_size.x)),
            float(place.row + 0.5 - (1 - came.y()) / 2 * double(m_size.y))};
}

template <class Look>
void TruthSamples::lookAround(Pixel pixel, Look const& look) const {
    auto const [row, column] = pixel;
    for (std::size_t y = row > 0 ? row - 1 : 0; y <= std::min<std::size_t>(row + 1, m_size.y - 1); ++y)
        for (std::size_t x = column > 0 ? column - 1 : 0; x <= std::min<std::size_t>(column + 1, m_size.x - 1); ++x)
            look(at(y, x), {y, x});
}

} // namespace hyxOSG
