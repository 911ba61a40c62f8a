// Shapes, surfaces and looks of SDF files.
#include "platform/hyxtavlang/model_looks.h"
#include "reference/hyxtavlang/sdf_context.h"

namespace hyxtavlang {
namespace {

namespace model3d = tavlang::Physics3D;
namespace shapes = tavlang::Physics3D::Geometries;
using ShapePtr = std::shared_ptr<model3d::Geometry>;

ShapePtr makePlane(sdf::Plane const& plane) {
    auto const made = std::make_shared<shapes::Plane>();
    made->halfSizes[0] = plane.Size().X() / 2;
    made->halfSizes[1] = plane.Size().Y() / 2;
    made->transform =
        hyx::AffineMatrix4x4(hyx::Quat(hyx::Vec3(0, 0, 1), SdfContext::vector(plane.Normal())), hyx::Vec3());
    return made;
}

ShapePtr makeMesh(SdfContext& context, sdf::Mesh const& mesh) {
    auto const made = std::make_shared<shapes::Mesh>();
    made->file = context.resource(mesh.Uri(), mesh.FilePath(), mesh.Element());
    made->scale = SdfContext::vector(mesh.Scale());
    if (!mesh.Submesh().empty())
        context.remark("<submesh> of <mesh>", mesh.Element());
    return made;
}

template <class Round>
ShapePtr makeRound(double radius, double height) {
    auto const made = std::make_shared<Round>();
    made->radius = radius;
    made->height = height;
    return made;
}

/// Null for shapes that are not carried over.
ShapePtr makeShape(SdfContext& context, sdf::Geometry const& geometry) {
    if (auto const* box = geometry.BoxShape()) {
        auto const made = std::make_shared<shapes::Box>();
        made->halfExtents = SdfContext::vector(box->Size()) * 0.5;
        return made;
    }
    if (auto const* sphere = geometry.SphereShape()) {
        auto const made = std::make_shared<shapes::Sphere>();
        made->radius = sphere->Radius();
        return made;
    }
    if (auto const* ellipsoid = geometry.EllipsoidShape()) {
        auto const made = std::make_shared<shapes::Ellipsoid>();
        made->radii = SdfContext::vector(ellipsoid->Radii());
        return made;
    }
    if (auto const* cylinder = geometry.CylinderShape())
        return makeRound<shapes::Cylinder>(cylinder->Radius(), cylinder->Length());
    if (auto const* capsule = geometry.CapsuleShape())
        return makeRound<shapes::Capsule>(capsule->Radius(), capsule->Length());
    if (auto const* plane = geometry.PlaneShape())
        return makePlane(*plane);
    if (auto const* mesh = geometry.MeshShape())
        return makeMesh(context, *mesh);
    if (geometry.Type() != sdf::GeometryType::EMPTY)
        context.remark("a shape that is none of box, sphere, ellipsoid, cylinder, capsule, plane and mesh",
                       geometry.Element());
    return nullptr;
}

} // namespace

void readSdfCollision(SdfContext& context, sdf::Collision const& collision, model3d::Body& body) {
    ShapePtr const made = collision.Geom() ? makeShape(context, *collision.Geom()) : nullptr;
    if (!made)
        return;
    made->name = collision.Name();
    made->line = SdfContext::lineOf(collision.Element());
    made->transform = made->transform * context.place(collision.SemanticPose());
    if (collision.Surface() && collision.Surface()->Contact())
        made->belongsTo = made->collidesWith = collision.Surface()->Contact()->CollideBitmask();
    made->material = std::make_shared<model3d::Material>();
    made->material->friction = SdfContext::number(collision.Element(), {"surface", "friction", "ode", "mu"}, 1);
    made->material->restitution =
        SdfContext::number(collision.Element(), {"surface", "bounce", "restitution_coefficient"}, 0);
    body.children.push_back(made);
}

void readSdfVisual(SdfContext& context, sdf::Visual const& visual, model3d::Body& body) {
    auto const made = std::make_shared<tavlang::Visuals::Visual>();
    made->geometry = visual.Geom() ? makeShape(context, *visual.Geom()) : nullptr;
    if (!made->geometry)
        return;
    made->name = visual.Name();
    made->line = SdfContext::lineOf(visual.Element());
    made->geometry->transform = made->geometry->transform * context.place(visual.SemanticPose());
    if (sdf::Material const* const material = visual.Material()) {
        made->material = std::make_shared<tavlang::Visuals::Material>();
        made->material->color = SdfContext::color(material->Diffuse());
        made->material->color[3] *= 1 - visual.Transparency();
        if (!material->ScriptName().empty())
            context.remark("<script> of <material>", material->Element());
        auto const* const metal =
            material->PbrMaterial() ? material->PbrMaterial()->Workflow(sdf::PbrWorkflowType::METAL) : nullptr;
        if (metal && !metal->AlbedoMap().empty())
            made->material->texture = context.resource(metal->AlbedoMap(), material->FilePath(), material->Element());
    }
    body.children.push_back(made);
}

} // namespace hyxtavlang
