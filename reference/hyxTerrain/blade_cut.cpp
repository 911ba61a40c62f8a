// Finds the columns under a blade, and the force that cutting takes.
#include "reference/hyxTerrain/blade_cut.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace hyxTerrain {

using hyx::Real;
using hyx::Vec3;

namespace {

constexpr int edgeSamples = 16;
/// m/s from which a blade meets all of the soil's resistance.
constexpr Real fullSpeed = 0.1;

} // namespace

std::vector<Cut> findCuts(Columns const& columns, DigTool const& tool, Vec3 const& terrainPosition, Real timeStep) {
    Vec3 const a = tool.getWorldEdgeBegin() - terrainPosition, b = tool.getWorldEdgeEnd() - terrainPosition;
    Vec3 const plate = tool.getWorldTop() - terrainPosition - (a + b) * 0.5;
    Vec3 const path = tool.getWorldVelocity() * timeStep;
    Real const size = columns.elementSize;
    Vec3 const edge(b.x - a.x, b.y - a.y, 0);
    if (edge.length2() < 1e-12)
        return {};
    Vec3 const across = Vec3(-edge.y, edge.x, 0).normal();
    // From behind the edge to ahead of it: where the plate leans to, and where it goes.
    Real const lean = plate.dot(across), travel = path.dot(across);
    Real const back = std::min({0.0, lean, travel}) - 0.5 * size, front = std::max({0.0, lean, travel}) + 0.5 * size;
    std::vector<Cut> cuts;
    Real const reach = std::max(-back, front);
    auto const place = [size](Real value, hyx::UInt count) {
        return static_cast<long>(std::clamp<Real>(std::round(value / size), -1, count));
    };
    long const x0 = std::max(place(std::min(a.x, b.x) - reach, columns.nx), 0l),
               y0 = std::max(place(std::min(a.y, b.y) - reach, columns.ny), 0l);
    long const x1 = std::min<long>(place(std::max(a.x, b.x) + reach, columns.nx), columns.nx - 1);
    long const y1 = std::min<long>(place(std::max(a.y, b.y) + reach, columns.ny), columns.ny - 1);
    for (long y = y0; y <= y1; ++y)
        for (long x = x0; x <= x1; ++x) {
            Vec3 const offset = Vec3(x * size, y * size, 0) - Vec3(a.x, a.y, 0);
            Real const along = offset.dot(edge) / edge.length2(), distance = offset.dot(across);
            if (along < 0 || along > 1 || distance < back || distance > front)
                continue;
            // The plate rises from the edge to its top, so it cuts less deep where it leans to.
            Real const up = lean != 0 ? std::clamp(distance / lean, 0.0, 1.0) : 0;
            std::size_t const c = columns.index(x, y);
            Real const height = std::max(a.z + (b.z - a.z) * along + plate.z * up, columns.rock);
            if (columns.height(c) > height + 1e-6 * size)
                cuts.push_back({c, height});
        }
    return cuts;
}

Vec3 soilForce(Columns const& columns, DigTool const& tool, Vec3 const& terrainPosition, Vec3 const& velocity,
               Real gravity) {
    Vec3 const a = tool.getWorldEdgeBegin() - terrainPosition, edge = tool.getWorldEdgeEnd() - tool.getWorldEdgeBegin();
    Vec3 const level(velocity.x, velocity.y, 0);
    if (level.length() < 1e-3)
        return Vec3();
    Vec3 const ahead = level.normal();
    Real const size = columns.elementSize;
    Real const width = std::abs(edge.x * ahead.y - edge.y * ahead.x) / edgeSamples;
    Real force = 0;
    for (int i = 0; i < edgeSamples; ++i) {
        Vec3 const point = a + edge * ((i + 0.5) / edgeSamples);
        Real depth = 0, passive = 0, wedge = 0;
        // The wedge that breaks loose is longer than the slope down to the edge. Nearer elements have been cut already.
        for (Real away = 1.5 * size; away - 1.5 * size <= wedge; away += std::max(size, 0.25 * wedge)) {
            std::size_t c = 0;
            if (!columns.find(point + ahead * away, c))
                break;
            Columns::Column const& column = columns.column(c);
            SoilMaterial const& soil =
                columns.materials[column.count > 0 ? column.layers[column.count - 1].material : 0];
            Real const slope = std::tan(std::numbers::pi / 4 + 0.5 * std::min(soil.reposeAngle, 1.2));
            if (Real const here = columns.height(c) - std::max(point.z, columns.rock); here > depth) {
                depth = here;
                passive = soil.density * slope * slope;
            }
            wedge = depth * slope;
        }
        force += 0.5 * gravity * passive * depth * depth * width;
    }
    // It comes up with the speed, so that a blade at rest is not pushed back.
    return ahead * -(force * std::min(level.length() / fullSpeed, 1.0));
}

} // namespace hyxTerrain
