// Shapes of MJCF files and what they weigh.
#include "platform/hyxCollide/shape.h"
#include "reference/hyxtavlang/mjcf_context.h"
#include "reference/hyxtavlang/shape_builder.h"
#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/shape_mass.h"

#include <osg/Math>

#include <array>

namespace hyxtavlang {
namespace {

namespace model3d = tavlang::Physics3D;
namespace shapes = tavlang::Physics3D::Geometries;

/// Volume and moments about the centre, along the shape's axes, for a density of one.
struct Spread {
    double volume = 0;
    std::array<double, 6> inertia{}; ///< xx, yy, zz, xy, xz, yz
    hyx::Vec3 center;
};

Spread along(double volume, double across, double about) {
    return {volume, {volume * across, volume * across, volume * about, 0, 0, 0}, {}};
}

Spread spreadOf(shapes::Capsule const& capsule) {
    double const r = capsule.radius, h = capsule.height;
    double const cylinder = osg::PI * r * r * h, ball = 4.0 / 3 * osg::PI * r * r * r;
    double const across = cylinder * (3 * r * r + h * h) / 12 + ball * (2 * r * r / 5 + h * (3 * r + 2 * h) / 8);
    double const about = cylinder * r * r / 2 + ball * 2 * r * r / 5;
    return {cylinder + ball, {across, across, about, 0, 0, 0}, {}};
}

Spread spreadOf(hyx::Vec3 const& half, double volume, double share) {
    double const x = half.x * half.x, y = half.y * half.y, z = half.z * half.z, m = volume * share;
    return {volume, {m * (y + z), m * (x + z), m * (x + y), 0, 0, 0}, {}};
}

Spread spreadOf(shapes::Mesh const& mesh) {
    BuiltShape const built = makeShape(mesh);
    hyxCollide::ShapeMass const mass = hyxCollide::massOf(*built.shape);
    btMatrix3x3 const& i = mass.inertia;
    return {mass.volume, {i[0][0], i[1][1], i[2][2], i[0][1], i[0][2], i[1][2]}, hyx::fromBullet(mass.center)};
}

Spread spreadOf(model3d::Geometry const& geometry) {
    if (auto const* box = dynamic_cast<shapes::Box const*>(&geometry))
        return spreadOf(box->halfExtents, 8 * box->halfExtents.x * box->halfExtents.y * box->halfExtents.z, 1.0 / 3);
    if (auto const* sphere = dynamic_cast<shapes::Sphere const*>(&geometry)) {
        double const r = sphere->radius;
        return along(4.0 / 3 * osg::PI * r * r * r, 0.4 * r * r, 0.4 * r * r);
    }
    if (auto const* ellipsoid = dynamic_cast<shapes::Ellipsoid const*>(&geometry)) {
        hyx::Vec3 const& r = ellipsoid->radii;
        return spreadOf(r, 4.0 / 3 * osg::PI * r.x * r.y * r.z, 1.0 / 5);
    }
    if (auto const* cylinder = dynamic_cast<shapes::Cylinder const*>(&geometry)) {
        double const r = cylinder->radius, h = cylinder->height;
        return along(osg::PI * r * r * h, (3 * r * r + h * h) / 12, r * r / 2);
    }
    if (auto const* capsule = dynamic_cast<shapes::Capsule const*>(&geometry))
        return spreadOf(*capsule);
    if (auto const* mesh = dynamic_cast<shapes::Mesh const*>(&geometry))
        return spreadOf(*mesh);
    return {};
}

model3d::Body weigh(model3d::Geometry const& geometry, double mass, double density) {
    Spread const spread = spreadOf(geometry);
    model3d::Body body;
    body.hasMass = true;
    body.transform = geometry.transform;
    body.centerOfMass = spread.center;
    body.mass = mass >= 0 ? mass : spread.volume * density;
    for (std::size_t i = 0; i < spread.inertia.size(); ++i)
        body.inertia[i] = spread.volume > 0 ? spread.inertia[i] * body.mass / spread.volume : 0;
    return body;
}

/// The sizes that a kind of shape has, each above 0.
std::vector<double> sizesOf(MjcfEntry const& entry, std::size_t count, bool hasEnds, double halfLength) {
    std::vector<double> sizes = entry.numbers("size", 1, 3);
    if (hasEnds && !sizes.empty())
        sizes = {sizes[0], count == 3 ? sizes[0] : halfLength, halfLength};
    if (sizes.size() < count)
        entry.fail("needs " + std::to_string(count) + " numbers as \"size\"");
    for (std::size_t i = 0; i < count; ++i)
        if (!(sizes[i] > 0))
            entry.fail("needs numbers above 0 as \"size\"");
    return sizes;
}

std::shared_ptr<model3d::Geometry> makeMesh(MjcfContext& context, MjcfEntry const& geom) {
    auto const found = context.meshes.find(geom.text("mesh"));
    if (found == context.meshes.end())
        geom.fail("names the mesh \"" + geom.text("mesh") + "\", which is not there");
    MjcfEntry const& asset = found->second;
    auto const mesh = std::make_shared<shapes::Mesh>();
    mesh->scale = asset.vector("scale", hyx::Vec3(1, 1, 1));
    if (asset.has("file")) {
        mesh->file = context.find(asset, context.compiler.meshFolder, asset.text("file"));
    } else {
        std::vector<double> const vertices = asset.list("vertex");
        for (std::size_t i = 0; i + 2 < vertices.size(); i += 3)
            mesh->vertices.emplace_back(vertices[i], vertices[i + 1], vertices[i + 2]);
        for (double index : asset.list("face")) {
            if (!(index >= 0 && index < static_cast<double>(mesh->vertices.size())))
                asset.fail("names a vertex in \"face\" that is not there");
            mesh->triangles.push_back(static_cast<std::uint32_t>(index));
        }
        if (mesh->triangles.empty() || mesh->triangles.size() % 3 != 0)
            asset.fail("needs a \"file\", or \"vertex\" and \"face\" in threes");
    }
    context.remarkRest(asset);
    return mesh;
}

std::shared_ptr<model3d::Geometry> makeRound(std::string const& type, std::vector<double> const& sizes) {
    if (type == "capsule") {
        auto const capsule = std::make_shared<shapes::Capsule>();
        capsule->radius = sizes[0];
        capsule->height = 2 * sizes[1];
        return capsule;
    }
    auto const cylinder = std::make_shared<shapes::Cylinder>();
    cylinder->radius = sizes[0];
    cylinder->height = 2 * sizes[1];
    return cylinder;
}

std::shared_ptr<model3d::Geometry> makePlane(MjcfEntry const& entry) {
    auto const plane = std::make_shared<shapes::Plane>();
    std::vector<double> const sizes = entry.numbers("size", 1, 3);
    for (std::size_t i = 0; i < 2 && i < sizes.size(); ++i)
        plane->halfSizes[i] = sizes[i];
    return plane;
}

std::shared_ptr<model3d::Geometry> makeHeightField(MjcfContext& context, MjcfEntry const& entry) {
    auto const found = context.heightFields.find(entry.text("hfield"));
    if (found == context.heightFields.end())
        entry.fail("names the height field \"" + entry.text("hfield") + "\", which is not there");
    return std::make_shared<shapes::HeightField>(*found->second);
}

std::shared_ptr<model3d::Geometry> makeShapeOf(MjcfContext& context, MjcfEntry const& entry, std::string const& type,
                                               bool hasEnds, double halfLength) {
    if (type == "plane")
        return makePlane(entry);
    if (type == "hfield")
        return makeHeightField(context, entry);
    if (type == "mesh")
        return makeMesh(context, entry);
    if (type == "capsule" || type == "cylinder")
        return makeRound(type, sizesOf(entry, 2, hasEnds, halfLength));
    if (type == "sphere") {
        auto const sphere = std::make_shared<shapes::Sphere>();
        sphere->radius = sizesOf(entry, 1, false, 0)[0];
        return sphere;
    }
    std::vector<double> const sizes =
        type == "box" || type == "ellipsoid" ? sizesOf(entry, 3, hasEnds, halfLength) : std::vector<double>();
    if (type == "box") {
        auto const box = std::make_shared<shapes::Box>();
        box->halfExtents = hyx::Vec3(sizes[0], sizes[1], sizes[2]);
        return box;
    }
    if (type == "ellipsoid") {
        auto const ellipsoid = std::make_shared<shapes::Ellipsoid>();
        ellipsoid->radii = hyx::Vec3(sizes[0], sizes[1], sizes[2]);
        return ellipsoid;
    }
    return nullptr;
}

std::uint32_t bitsOf(MjcfEntry const& entry, char const* key) {
    double const value = entry.number(key, 1);
    if (!(value >= 0 && value <= 0x7fffffff))
        entry.fail(std::string("expected bits from 0 in \"") + key + "\"");
    return static_cast<std::uint32_t>(value);
}

} // namespace

hyx::AffineMatrix4x4 placeBetweenEnds(MjcfEntry const& entry, double& halfLength) {
    std::vector<double> const ends = entry.numbers("fromto", 6, 6);
    hyx::Vec3 const first(ends[0], ends[1], ends[2]), second(ends[3], ends[4], ends[5]);
    hyx::Vec3 const way = first - second;
    constexpr double least = 1e-10;
    if (!(way.length() > least))
        entry.fail("has two ends in one place in \"fromto\"");
    halfLength = way.length() / 2;
    return hyx::AffineMatrix4x4(turnFromZ(way), (first + second) * 0.5);
}

MjcfShape readMjcfShape(MjcfContext& context, MjcfEntry const& entry, hyx::AffineMatrix4x4 const& local) {
    std::string const type = entry.text("type", entry.has("mesh") ? "mesh" : "sphere");
    bool const hasEnds = entry.has("fromto") && type != "sphere" && type != "plane" && type != "mesh";
    double halfLength = 0;
    hyx::AffineMatrix4x4 const place =
        hasEnds ? placeBetweenEnds(entry, halfLength) : entry.place(context.compiler.angles);
    MjcfShape shape;
    shape.geometry = makeShapeOf(context, entry, type, hasEnds, halfLength);
    if (!shape.geometry) {
        context.remark("<geom> of the type " + type, entry.file(), entry.line());
        return shape;
    }
    model3d::Geometry& geometry = *shape.geometry;
    geometry.name = entry.name();
    geometry.line = entry.line();
    geometry.transform = place * local;
    geometry.belongsTo = bitsOf(entry, "contype");
    geometry.collidesWith = bitsOf(entry, "conaffinity");
    shape.group = static_cast<int>(entry.number("group", 0));
    constexpr double standard = 1;
    std::vector<double> const friction = entry.numbers("friction", 1, 3);
    geometry.material = std::make_shared<model3d::Material>();
    geometry.material->friction = friction.empty() ? standard : friction[0];
    geometry.material->density = entry.number("density", 1000);
    if (!(geometry.material->friction >= 0))
        entry.fail("expected a number from 0 in \"friction\"");
    double const mass = entry.number("mass", -1), density = geometry.material->density;
    shape.weigh = [kept = shape.geometry, mass, density] { return weigh(*kept, mass, density); };
    return shape;
}

} // namespace hyxtavlang
