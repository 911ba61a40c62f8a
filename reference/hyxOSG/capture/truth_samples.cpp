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

TruthSample TruthSamples::exact(std::size_t row, std::size_t column) const {
    TruthSample const& drawn = at(row, column);
    if (m_forms.empty())
        return drawn;
    TruthSample result = drawn;
    if (m_forms.has(drawn.identity) && !meet(row, column, drawn, result) && m_forms.isWhole(drawn.identity) &&
        !m_forms.meet(drawn.identity, direction(row, column), distanceOfDepth(1, m_projection)))
        result = behind(row, column);
    std::uint32_t tried = drawn.identity;
    lookAround(row, column, [&](TruthSample const& around, std::size_t, std::size_t) {
        if (around.identity == tried || !m_forms.has(around.identity))
            return;
        tried = around.identity;
        meet(row, column, around, result);
    });
    return result;
}

/// Takes over what the ray meets of the form that drew the pixel itself or one beside it.
bool TruthSamples::meet(std::size_t row, std::size_t column, TruthSample const& around, TruthSample& result) const {
    auto const met = m_forms.meet(around.identity, direction(row, column), distanceOfDepth(1, m_projection));
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
              flow(row, column, met->before),
              around.identity};
    return true;
}

/// What lies behind a facet that is drawn where its form is not: the plane of the farthest pixel around.
TruthSample TruthSamples::behind(std::size_t row, std::size_t column) const {
    TruthSample result = at(row, column);
    std::uint32_t const own = result.identity;
    osg::Vec2d const way = direction(row, column);
    lookAround(row, column, [&](TruthSample const& around, std::size_t y, std::size_t x) {
        if (around.identity == own || around.depth <= result.depth)
            return;
        result = around;
        osg::Vec2d const place = direction(y, x);
        auto const rise = [&around](osg::Vec2d const& through) {
            return around.normal[0] * through.x() - around.normal[1] * through.y() + around.normal[2];
        };
        if (std::isfinite(around.depth) && std::abs(rise(way)) > 0.1 * std::abs(rise(place)))
            result.depth = float(around.depth * rise(place) / rise(way));
    });
    return result;
}

/// Where the ray through a pixel's middle is one metre before the camera, y up.
osg::Vec2d TruthSamples::direction(std::size_t row, std::size_t column) const {
    double const right = (2 * double(column) + 1) / double(m_size.x) - 1;
    double const up = 1 - (2 * double(row) + 1) / double(m_size.y);
    return {(right + m_projection(2, 0)) / m_projection(0, 0), (up + m_projection(2, 1)) / m_projection(1, 1)};
}

/// In pixels, x to the right and y down.
std::array<float, 2> TruthSamples::flow(std::size_t row, std::size_t column, osg::Vec3d const& before) const {
    osg::Vec3d const came = before * m_projection; // divided by w
    return {float(double(column) + 0.5 - (came.x() + 1) / 2 * double(m_size.x)),
            float(double(row) + 0.5 - (1 - came.y()) / 2 * double(m_size.y))};
}

template <class Look>
void TruthSamples::lookAround(std::size_t row, std::size_t column, Look const& look) const {
    for (std::size_t y = row > 0 ? row - 1 : 0; y <= std::min<std::size_t>(row + 1, m_size.y - 1); ++y)
        for (std::size_t x = column > 0 ? column - 1 : 0; x <= std::min<std::size_t>(column + 1, m_size.x - 1); ++x)
            look(at(y, x), y, x);
}

} // namespace hyxOSG
