// Cuts curves into stations as fine as they bend.
#include "reference/hyxOSG/renderers/tube_drawing.h"

#include <algorithm>
#include <cmath>

namespace hyxOSG {

using hyx::Vec3;

namespace {

/// What one part of a spline is cut into at most, so that a curve through far places does not fill the memory.
constexpr double mostPieces = 2000;

double valueAt(hyx::RealVector const& values, double parameter) {
    if (values.empty())
        return 0;
    auto const index = std::min(static_cast<std::size_t>(parameter), values.size() - 1);
    double const next = values[std::min(index + 1, values.size() - 1)];
    double const value = values[index] + (next - values[index]) * (parameter - static_cast<double>(index));
    return std::isnan(value) ? 0 : std::clamp(value, 0.0, 1.0);
}

} // namespace

std::vector<TubeStation> sampleTube(hyxUtil::Spline const& spline, double perMetre, hyx::RealVector const& values) {
    std::vector<TubeStation> stations;
    Vec3 direction(0, 0, 1);
    hyx::Quat rotation;
    auto const add = [&](double parameter) {
        Vec3 const position = spline.evaluate(parameter);
        if (!stations.empty() && (position - stations.back().position).length2() == 0)
            return;
        Vec3 const tangent = spline.getTangent(parameter);
        rotation = rotation * hyx::Quat(direction, tangent);
        direction = tangent;
        stations.push_back({position, rotation, valueAt(values, parameter)});
    };
    for (hyx::Index part = 0; part + 1 < spline.getNumPoints(); ++part) {
        double const length = (spline.getPoint(part + 1) - spline.getPoint(part)).length();
        double const pieces = std::clamp(std::ceil(length * perMetre), 1.0, mostPieces);
        for (double i = part == 0 ? 0 : 1; i <= pieces; ++i)
            add(static_cast<double>(part) + i / pieces);
    }
    if (stations.size() < 2)
        stations.clear();
    return stations;
}

osg::Vec4f shiftToRed(osg::Vec4f const& color, double value) {
    auto const share = static_cast<float>(value);
    return osg::Vec4f(color.r() + (1 - color.r()) * share, color.g() * (1 - share), color.b() * (1 - share), color.a());
}

} // namespace hyxOSG
