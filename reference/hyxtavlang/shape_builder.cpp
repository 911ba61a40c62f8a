// Turns shapes of a model tree into collision shapes and nodes.
#include "reference/hyxtavlang/shape_builder.h"

#include "platform/hyxCollide/box.h"
#include "platform/hyxCollide/capsule.h"
#include "platform/hyxCollide/cone.h"
#include "platform/hyxCollide/cylinder.h"
#include "platform/hyxCollide/height_field.h"
#include "platform/hyxCollide/plane.h"
#include "platform/hyxCollide/sphere.h"
#include "platform/hyxCollide/trimesh.h"
#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxOSG/visuals/read_file.h"
#include "platform/hyxOSG/visuals/trimesh_conversion.h"
#include "reference/hyxOSG/visuals/shape_nodes.h"
#include "reference/hyxtavlang/model_reader.h"
#include "reference/machinery/meshes/notices.h"
#include "reference/machinery/shading/material_colors.h"
#include "reference/machinery/shading/node_state.h"

#include <osg/Geode>
#include <osg/Geometry>
#include <osg/MatrixTransform>
#include <osg/NodeVisitor>
#include <osg/Texture2D>
#include <osgDB/ReadFile>
#include <osgUtil/SmoothingVisitor>

#include <algorithm>
#include <cmath>

namespace hyxtavlang {
namespace {

using tavlang::Physics3D::Geometry;
namespace shapes = tavlang::Physics3D::Geometries;

/// Collision shapes that are round stand along Y, those of the tree along Z.
hyx::AffineMatrix4x4 const alongZ(hyx::Quat(hyx::Vec3(0, 1, 0), hyx::Vec3(0, 0, 1)));

osg::ref_ptr<osg::Node> scaled(osg::ref_ptr<osg::Node> const& node, hyx::Vec3 const& scale) {
    osg::ref_ptr<osg::MatrixTransform> transform =
        new osg::MatrixTransform(osg::Matrix::scale(scale.x, scale.y, scale.z));
    transform->addChild(node);
    transform->getOrCreateStateSet()->setMode(GL_NORMALIZE, osg::StateAttribute::ON);
    return transform;
}

osg::ref_ptr<osg::Node> trianglesOf(shapes::Mesh const& mesh) {
    osg::ref_ptr<osg::Vec3Array> vertices = new osg::Vec3Array;
    for (hyx::Vec3 const& vertex : mesh.vertices)
        vertices->push_back(osg::Vec3(vertex.x, vertex.y, vertex.z));
    osg::ref_ptr<osg::Geometry> drawable = new osg::Geometry;
    drawable->setVertexArray(vertices);
    drawable->addPrimitiveSet(new osg::DrawElementsUInt(GL_TRIANGLES, mesh.triangles.begin(), mesh.triangles.end()));
    osgUtil::SmoothingVisitor::smooth(*drawable, osg::PI / 6);
    osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(drawable);
    return geode;
}

/// Takes away the look that a mesh brings: its textures, materials and blending.
class LookRemover : public osg::NodeVisitor {
public:
    LookRemover() : osg::NodeVisitor(TRAVERSE_ALL_CHILDREN) {}

    void apply(osg::Node& node) override {
        node.setStateSet(nullptr);
        traverse(node);
    }
};

osg::ref_ptr<osg::Node> nodeOf(shapes::Mesh const& mesh, bool plain) {
    if (mesh.file.empty())
        return scaled(trianglesOf(mesh), mesh.scale);
    osg::ref_ptr<osg::Node> node = hyxOSG::readNodeFile(mesh.file);
    if (!node)
        throw ModelError("the mesh '" + mesh.file + "' cannot be read");
    if (plain) { // of a copy: all that show the file share its node
        node = osg::clone(node.get(), osg::CopyOp::DEEP_COPY_NODES | osg::CopyOp::DEEP_COPY_DRAWABLES);
        LookRemover remover;
        node->accept(remover);
    }
    return scaled(node, mesh.scale);
}

osg::ref_ptr<osg::Node> nodeOf(shapes::Plane const& plane) {
    auto const half = [&](int axis) {
        return static_cast<float>(plane.halfSizes[axis] > 0 ? plane.halfSizes[axis] : hyxOSG::planeHalfSide);
    };
    osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(osg::createTexturedQuadGeometry(osg::Vec3(-half(0), -half(1), 0), osg::Vec3(2 * half(0), 0, 0),
                                                       osg::Vec3(0, 2 * half(1), 0)));
    geode->setNodeMask(~hyxOSG::ExampleApplication::CASTS_SHADOWS_MASK); // a ground that casts shadows darkens itself
    return geode;
}

osg::ref_ptr<osg::Node> nodeOf(shapes::Ellipsoid const& ellipsoid) {
    hyx::ref_ptr<hyxCollide::Sphere> const unit = new hyxCollide::Sphere(1);
    return scaled(hyxOSG::createShapeNode(*unit, 1), ellipsoid.radii);
}

osg::ref_ptr<osg::Node> makeNode(Geometry const& geometry, bool plain) {
    if (osg::ref_ptr<osg::Node> const own = makeOwnNode(geometry, plain))
        return own;
    BuiltShape const built = makeShape(geometry);
    osg::ref_ptr<osg::MatrixTransform> const turned = new osg::MatrixTransform(osg::Matrixd(built.turn.ptr()));
    turned->addChild(hyxOSG::createShapeNode(*built.shape, 1));
    return turned;
}

hyx::ref_ptr<hyxCollide::Shape> trimesh(osg::ref_ptr<osg::Node> const& node, std::string const& file) {
    hyx::ref_ptr<hyxCollide::Shape> const shape = hyxOSG::createTrimesh(node);
    if (!shape)
        throw ModelError("the mesh '" + file + "' has no triangles");
    return shape;
}

} // namespace

BuiltShape makeShape(Geometry const& geometry) {
    if (auto const* box = dynamic_cast<shapes::Box const*>(&geometry))
        return {new hyxCollide::Box(box->halfExtents.x, box->halfExtents.y, box->halfExtents.z), {}};
    if (auto const* sphere = dynamic_cast<shapes::Sphere const*>(&geometry))
        return {new hyxCollide::Sphere(sphere->radius), {}};
    if (auto const* cylinder = dynamic_cast<shapes::Cylinder const*>(&geometry))
        return {new hyxCollide::Cylinder(cylinder->radius, cylinder->height), alongZ};
    if (auto const* capsule = dynamic_cast<shapes::Capsule const*>(&geometry))
        return {new hyxCollide::Capsule(capsule->radius, capsule->height), alongZ};
    if (auto const* cone = dynamic_cast<shapes::Cone const*>(&geometry))
        return {new hyxCollide::Cone(cone->radius, cone->height), alongZ};
    if (dynamic_cast<shapes::Plane const*>(&geometry))
        return {new hyxCollide::Plane, {}};
    if (auto const* field = dynamic_cast<shapes::HeightField const*>(&geometry))
        return {new hyxCollide::HeightField(field->columns, field->rows, 2 * field->halfSizes[0],
                                            2 * field->halfSizes[1],
                                            hyx::RealVector(field->heights.begin(), field->heights.end())),
                {}};
    auto const* mesh = dynamic_cast<shapes::Mesh const*>(&geometry);
    return {trimesh(makeNode(geometry, true), mesh ? mesh->file : ""), {}};
}

osg::ref_ptr<osg::Node> makeOwnNode(Geometry const& geometry, bool plain) {
    if (auto const* mesh = dynamic_cast<shapes::Mesh const*>(&geometry))
        return nodeOf(*mesh, plain);
    if (auto const* ellipsoid = dynamic_cast<shapes::Ellipsoid const*>(&geometry))
        return nodeOf(*ellipsoid);
    auto const* plane = dynamic_cast<shapes::Plane const*>(&geometry);
    return plane && (plane->halfSizes[0] > 0 || plane->halfSizes[1] > 0) ? nodeOf(*plane) : nullptr;
}

void paint(osg::Node& node, tavlang::Visuals::Material const& look) {
    osg::ref_ptr<osg::Material> const material = hyxOSG::copyOf(hyxOSG::defaultMaterial());
    hyxOSG::setDiffuse(*material, osg::Vec4(look.color[0], look.color[1], look.color[2], look.color[3]));
    osg::StateSet& state = *node.getOrCreateStateSet();
    state.setAttributeAndModes(material);
    hyxOSG::setOpacity(state, look.color[3]);
    if (look.texture.empty())
        return;
    osg::ref_ptr<osg::Image> const image = osgDB::readRefImageFile(look.texture);
    if (!image)
        return hyxOSG::warn("the texture '" + look.texture + "' cannot be read");
    osg::ref_ptr<osg::Texture2D> texture = new osg::Texture2D(image);
    texture->setWrap(osg::Texture::WRAP_S, osg::Texture::REPEAT);
    texture->setWrap(osg::Texture::WRAP_T, osg::Texture::REPEAT);
    state.setTextureAttributeAndModes(0, texture);
}

osg::ref_ptr<osg::Node> makeVisual(tavlang::Visuals::Visual const& visual) {
    osg::ref_ptr<osg::MatrixTransform> placed =
        new osg::MatrixTransform(osg::Matrixd(visual.geometry->transform.ptr()));
    placed->setName(visual.name);
    placed->addChild(makeNode(*visual.geometry, visual.material != nullptr));
    if (visual.material)
        paint(*placed, *visual.material);
    return placed;
}

} // namespace hyxtavlang
