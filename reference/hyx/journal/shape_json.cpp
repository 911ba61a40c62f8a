// Turns shapes into JSON and back.
#include "reference/hyx/journal/shape_json.h"

#include "platform/hyxCollide/box.h"
#include "platform/hyxCollide/capsule.h"
#include "platform/hyxCollide/cone.h"
#include "platform/hyxCollide/cylinder.h"
#include "platform/hyxCollide/height_field.h"
#include "platform/hyxCollide/plane.h"
#include "platform/hyxCollide/sphere.h"
#include "platform/hyxCollide/trimesh.h"

#include <stdexcept>

namespace hyx {
namespace {

using namespace hyxCollide;
using nlohmann::json;

json list(Vec3 const& v) {
    return {v.x, v.y, v.z};
}

Vec3 toVec3(json const& v) {
    return {v.at(0).get<double>(), v.at(1).get<double>(), v.at(2).get<double>()};
}

template <class Round>
json describeRound(char const* kind, Round const& shape) {
    return {{"kind", kind}, {"radius", shape.getRadius()}, {"height", shape.getHeight()}};
}

template <class Round>
ref_ptr<Shape> makeRound(json const& description) {
    return new Round(description.at("radius").get<double>(), description.at("height").get<double>());
}

json describeMesh(Trimesh const& mesh) {
    json vertices = json::array();
    for (Vec3 const& vertex : mesh.getVertices())
        vertices.push_back(list(vertex));
    return {{"kind", "mesh"}, {"vertices", vertices}, {"triangles", std::vector<unsigned>(mesh.getIndices())}};
}

ref_ptr<Shape> makeMesh(json const& description) {
    Vec3Vector vertices;
    for (json const& vertex : description.at("vertices"))
        vertices.push_back(toVec3(vertex));
    UInt32Vector indices;
    for (json const& index : description.at("triangles"))
        indices.push_back(index.get<unsigned>());
    return new Trimesh(vertices, indices);
}

json describeField(HeightField const& field) {
    return {{"kind", "heights"},
            {"resolution", {field.getResolutionX(), field.getResolutionY()}},
            {"size", {field.getSizeX(), field.getSizeY()}},
            {"heights", std::vector<double>(field.getHeights())}};
}

ref_ptr<Shape> makeField(json const& description) {
    json const& resolution = description.at("resolution");
    json const& size = description.at("size");
    RealVector heights;
    for (json const& height : description.at("heights"))
        heights.push_back(height.get<double>());
    return new HeightField(resolution.at(0).get<UInt>(), resolution.at(1).get<UInt>(), size.at(0).get<double>(),
                           size.at(1).get<double>(), heights);
}

json describeBound(Shape const& shape) {
    Vec3 lower, upper;
    shape.getBound(lower, upper);
    return {{"kind", "box"}, {"halfExtents", list((upper - lower) * 0.5)}};
}

} // namespace

json describeShape(Shape const& shape) {
    switch (shape.getType()) {
    case Shape::BOX:
        return {{"kind", "box"}, {"halfExtents", list(static_cast<Box const&>(shape).getHalfExtents())}};
    case Shape::SPHERE:
        return {{"kind", "sphere"}, {"radius", static_cast<Sphere const&>(shape).getRadius()}};
    case Shape::CYLINDER:
        return describeRound("cylinder", static_cast<Cylinder const&>(shape));
    case Shape::CAPSULE:
        return describeRound("capsule", static_cast<Capsule const&>(shape));
    case Shape::CONE:
        return describeRound("cone", static_cast<Cone const&>(shape));
    case Shape::TRIMESH:
        return describeMesh(static_cast<Trimesh const&>(shape));
    case Shape::HEIGHT_FIELD:
        return describeField(static_cast<HeightField const&>(shape));
    case Shape::PLANE: {
        auto const& plane = static_cast<hyxCollide::Plane const&>(shape).getPlane();
        Vec3 const normal = plane.getNormal();
        return {{"kind", "plane"}, {"normal", list(normal)}, {"point", list(plane.getPoint())}};
    }
    default:
        return describeBound(shape);
    }
}

ref_ptr<Shape> makeShape(json const& description) {
    std::string const kind = description.at("kind").get<std::string>();
    if (kind == "box")
        return new Box(toVec3(description.at("halfExtents")));
    if (kind == "sphere")
        return new Sphere(description.at("radius").get<double>());
    if (kind == "cylinder")
        return makeRound<Cylinder>(description);
    if (kind == "capsule")
        return makeRound<Capsule>(description);
    if (kind == "cone")
        return makeRound<Cone>(description);
    if (kind == "mesh")
        return makeMesh(description);
    if (kind == "heights")
        return makeField(description);
    if (kind == "plane")
        return new hyxCollide::Plane(toVec3(description.at("normal")), toVec3(description.at("point")));
    throw std::invalid_argument("there is no shape of the kind '" + kind + "'");
}

} // namespace hyx
