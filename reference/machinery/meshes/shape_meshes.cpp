// Makes meshes of unit size that nodes scale to shapes.
#include "reference/machinery/meshes/shape_meshes.h"

#include "reference/machinery/meshes/mesh_builder.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace hyxOSG {
namespace {

using Profile = std::vector<MeshBuilder::ProfilePoint>;

/// A quarter circle of radius 1 from angle `from` to `to` above the equator (in quarter turns), moved by `lift` in y.
void addArc(Profile& profile, float from, float to, float lift, unsigned int steps) {
    for (unsigned int step = 0; step <= steps; ++step) {
        float const quarter = from + (to - from) * static_cast<float>(step) / static_cast<float>(steps);
        float const angle = quarter * static_cast<float>(osg::PI_2);
        // The poles have radius exactly 0, so that no sliver triangles are made there.
        float const radius = std::abs(quarter) == 1.0f ? 0.0f : std::cos(angle);
        float const normalRadial = std::max(std::cos(angle), 1e-6f);
        profile.push_back({radius, lift + std::sin(angle), normalRadial, std::sin(angle)});
    }
}

/// The straight wall between two radii, at y = 1 and -1.
Profile wall(float topRadius, float bottomRadius, bool outwards) {
    float const slope = bottomRadius - topRadius, length = std::hypot(2.0f, slope);
    float const radial = (outwards ? 2 : -2) / length, along = (outwards ? slope : -slope) / length;
    Profile profile{{topRadius, 1, radial, along}, {bottomRadius, -1, radial, along}};
    if (!outwards)
        std::reverse(profile.begin(), profile.end());
    return profile;
}

/// The flat ring between two radii, facing up at y = 1 or down at y = -1.
Profile ring(float inner, float outer, float y) {
    Profile profile{{inner, y, 0, y}, {outer, y, 0, y}};
    if (y < 0)
        std::reverse(profile.begin(), profile.end());
    return profile;
}

unsigned int sphereRows(unsigned int segments) {
    return std::max(4u, segments / 2);
}

} // namespace

unsigned int segmentsForDetail(float detailRatio) {
    constexpr float mostDetail = 1000;
    if (!(detailRatio > 0 && detailRatio <= mostDetail))
        throw std::invalid_argument("the detail ratio must be a positive number of at most 1000");
    return static_cast<unsigned int>(std::lround(std::clamp(24 * detailRatio, 6.0f, 256.0f)));
}

osg::ref_ptr<osg::Geometry> unitBoxMesh() {
    MeshBuilder mesh;
    mesh.addQuad({1, -1, -1}, {1, 1, -1}, {1, 1, 1}, {1, -1, 1});
    mesh.addQuad({-1, 1, -1}, {-1, -1, -1}, {-1, -1, 1}, {-1, 1, 1});
    mesh.addQuad({1, 1, -1}, {-1, 1, -1}, {-1, 1, 1}, {1, 1, 1});
    mesh.addQuad({-1, -1, -1}, {1, -1, -1}, {1, -1, 1}, {-1, -1, 1});
    mesh.addQuad({-1, -1, 1}, {1, -1, 1}, {1, 1, 1}, {-1, 1, 1});
    mesh.addQuad({-1, 1, -1}, {1, 1, -1}, {1, -1, -1}, {-1, -1, -1});
    return mesh.build();
}

osg::ref_ptr<osg::Geometry> unitSphereMesh(unsigned int segments) {
    Profile profile;
    addArc(profile, 1, -1, 0, sphereRows(segments));
    MeshBuilder mesh;
    mesh.addRevolution(profile, segments);
    return mesh.build();
}

double evenSphereScale(unsigned int segments) {
    double const middle = std::cos(osg::PI / segments) * std::cos(osg::PI_2 / sphereRows(segments));
    return 2 / (1 + middle);
}

osg::ref_ptr<osg::Geometry> unitConeMesh(unsigned int segments, float topRatio) {
    MeshBuilder mesh;
    mesh.addRevolution(wall(topRatio, 1, true), segments);
    mesh.addRevolution(ring(0, 1, -1), segments);
    if (topRatio > 0)
        mesh.addRevolution(ring(0, topRatio, 1), segments);
    return mesh.build();
}

osg::ref_ptr<osg::Geometry> unitTubeMesh(unsigned int segments, float topRatio, float wallRatio) {
    float const bottomHole = std::max(0.0f, 1 - wallRatio), topHole = std::max(0.0f, topRatio - wallRatio);
    MeshBuilder mesh;
    mesh.addRevolution(wall(topRatio, 1, true), segments);
    mesh.addRevolution(wall(topHole, bottomHole, false), segments);
    mesh.addRevolution(ring(bottomHole, 1, -1), segments);
    mesh.addRevolution(ring(topHole, topRatio, 1), segments);
    return mesh.build();
}

osg::ref_ptr<osg::Geometry> unitCapsuleMesh(unsigned int segments, float halfLength) {
    unsigned int const steps = std::max(2u, segments / 4);
    Profile profile;
    addArc(profile, 1, 0, halfLength, steps);
    addArc(profile, 0, -1, -halfLength, steps);
    MeshBuilder mesh;
    mesh.addRevolution(profile, segments);
    return mesh.build();
}

osg::ref_ptr<osg::Geometry> unitSquareMesh(float tiles) {
    MeshBuilder mesh;
    mesh.addQuad({-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0});
    osg::ref_ptr<osg::Geometry> const square = mesh.build();
    for (osg::Vec2& texcoord : *static_cast<osg::Vec2Array*>(square->getTexCoordArray(0)))
        texcoord *= tiles;
    return square;
}

} // namespace hyxOSG
