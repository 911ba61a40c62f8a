/// Turns shapes into JSON and back.
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

json list(const Vec3& v) { return {v.x, v.y, v.z}; }
Vec3 toVec3(const json& v) { return {v.at(0).get<double>(), v.at(1).get<double>(), v.at(2).get<double>()}; }

template <class Round>
json describeRound(const char* kind, const Round& shape) {
  return {{"kind", kind}, {"radius", shape.getRadius()}, {"height", shape.getHeight()}};
}

template <class Round>
ref_ptr<Shape> makeRound(const json& description) {
  return new Round(description.at("radius").get<double>(), description.at("height").get<double>());
}

json describeMesh(const Trimesh& mesh) {
  json vertices = json::array();
  for (const Vec3& vertex : mesh.getVertices()) vertices.push_back(list(vertex));
  return {{"kind", "mesh"}, {"vertices", vertices}, {"triangles", std::vector<unsigned>(mesh.getIndices())}};
}

ref_ptr<Shape> makeMesh(const json& description) {
  Vec3Vector vertices;
  for (const json& vertex : description.at("vertices")) vertices.push_back(toVec3(vertex));
  UInt32Vector indices;
  for (const json& index : description.at("triangles")) indices.push_back(index.get<unsigned>());
  return new Trimesh(vertices, indices);
}

json describeField(const HeightField& field) {
  return {{"kind", "heights"},
          {"resolution", {field.getResolutionX(), field.getResolutionY()}},
          {"size", {field.getSizeX(), field.getSizeY()}},
          {"heights", std::vector<double>(field.getHeights())}};
}

ref_ptr<Shape> makeField(const json& description) {
  const json& resolution = description.at("resolution");
  const json& size = description.at("size");
  RealVector heights;
  for (const json& height : description.at("heights")) heights.push_back(height.get<double>());
  return new HeightField(resolution.at(0).get<UInt>(), resolution.at(1).get<UInt>(), size.at(0).get<double>(),
                         size.at(1).get<double>(), heights);
}

json describeBound(const Shape& shape) {
  Vec3 lower, upper;
  shape.getBound(lower, upper);
  return {{"kind", "box"}, {"halfExtents", list((upper - lower) * 0.5)}};
}

}  // namespace

json describeShape(const Shape& shape) {
  switch (shape.getType()) {
    case Shape::BOX: return {{"kind", "box"}, {"halfExtents", list(static_cast<const Box&>(shape).getHalfExtents())}};
    case Shape::SPHERE: return {{"kind", "sphere"}, {"radius", static_cast<const Sphere&>(shape).getRadius()}};
    case Shape::CYLINDER: return describeRound("cylinder", static_cast<const Cylinder&>(shape));
    case Shape::CAPSULE: return describeRound("capsule", static_cast<const Capsule&>(shape));
    case Shape::CONE: return describeRound("cone", static_cast<const Cone&>(shape));
    case Shape::TRIMESH: return describeMesh(static_cast<const Trimesh&>(shape));
    case Shape::HEIGHT_FIELD: return describeField(static_cast<const HeightField&>(shape));
    case Shape::PLANE: {
      const auto& plane = static_cast<const hyxCollide::Plane&>(shape).getPlane();
      const Vec3 normal = plane.getNormal();
      return {{"kind", "plane"}, {"normal", list(normal)}, {"point", list(plane.getPoint())}};
    }
    default: return describeBound(shape);
  }
}

ref_ptr<Shape> makeShape(const json& description) {
  const std::string kind = description.at("kind").get<std::string>();
  if (kind == "box") return new Box(toVec3(description.at("halfExtents")));
  if (kind == "sphere") return new Sphere(description.at("radius").get<double>());
  if (kind == "cylinder") return makeRound<Cylinder>(description);
  if (kind == "capsule") return makeRound<Capsule>(description);
  if (kind == "cone") return makeRound<Cone>(description);
  if (kind == "mesh") return makeMesh(description);
  if (kind == "heights") return makeField(description);
  if (kind == "plane") return new hyxCollide::Plane(toVec3(description.at("normal")), toVec3(description.at("point")));
  throw std::invalid_argument("there is no shape of the kind '" + kind + "'");
}

}  // namespace hyx
