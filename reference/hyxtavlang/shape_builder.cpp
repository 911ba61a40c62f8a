// Turns shapes of a model tree into collision shapes and nodes.
#include "reference/hyxtavlang/shape_builder.h"

#include "platform/hyxCollide/box.h"
#include "platform/hyxCollide/capsule.h"
#include "platform/hyxCollide/cylinder.h"
#include "platform/hyxCollide/height_field.h"
#include "platform/hyxCollide/plane.h"
#include "platform/hyxCollide/sphere.h"
#include "platform/hyxCollide/trimesh.h"
#include "platform/hyxOSG/visuals/read_file.h"
#include "platform/hyxOSG/visuals/trimesh_conversion.h"
#include "reference/hyxtavlang/model_reader.h"

#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Material>
#include <osg/MatrixTransform>
#include <osg/NodeVisitor>
#include <osg/ShapeDrawable>
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

osg::ref_ptr<osg::Geode> makeDrawable(osg::ref_ptr<osg::Shape> const& shape) {
    osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(new osg::ShapeDrawable(shape));
    return geode;
}

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

osg::ref_ptr<osg::Node> nodeOf(shapes::Mesh const& mesh) {
    if (mesh.file.empty())
        return scaled(trianglesOf(mesh), mesh.scale);
    osg::ref_ptr<osg::Node> node = hyxOSG::readNodeFile(mesh.file);
    if (!node)
        throw ModelError("the mesh '" + mesh.file + "' cannot be read");
    return scaled(node, mesh.scale);
}

osg::ref_ptr<osg::Node> nodeOf(shapes::HeightField const& field) {
    osg::ref_ptr<osg::HeightField> shape = new osg::HeightField;
    shape->allocate(field.columns, field.rows);
    shape->setXInterval(static_cast<float>(2 * field.halfSizes[0] / (field.columns - 1)));
    shape->setYInterval(static_cast<float>(2 * field.halfSizes[1] / (field.rows - 1)));
    shape->setOrigin(osg::Vec3(-field.halfSizes[0], -field.halfSizes[1], 0));
    for (unsigned row = 0; row < field.rows; ++row)
        for (unsigned column = 0; column < field.columns; ++column)
            shape->setHeight(column, row, static_cast<float>(field.heights[row * field.columns + column]));
    return makeDrawable(shape);
}

osg::ref_ptr<osg::Node> nodeOf(shapes::Plane const& plane) {
    constexpr double far = 50; // metres that are seen of a plane without end
    auto const half = [&](int axis) {
        return static_cast<float>(plane.halfSizes[axis] > 0 ? plane.halfSizes[axis] : far);
    };
    osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(osg::createTexturedQuadGeometry(osg::Vec3(-half(0), -half(1), 0), osg::Vec3(2 * half(0), 0, 0),
                                                       osg::Vec3(0, 2 * half(1), 0)));
    return geode;
}

osg::ref_ptr<osg::Node> makeNode(Geometry const& geometry) {
    if (auto const* box = dynamic_cast<shapes::Box const*>(&geometry))
        return makeDrawable(
            new osg::Box(osg::Vec3(), 2 * box->halfExtents.x, 2 * box->halfExtents.y, 2 * box->halfExtents.z));
    if (auto const* sphere = dynamic_cast<shapes::Sphere const*>(&geometry))
        return makeDrawable(new osg::Sphere(osg::Vec3(), sphere->radius));
    if (auto const* ellipsoid = dynamic_cast<shapes::Ellipsoid const*>(&geometry))
        return scaled(makeDrawable(new osg::Sphere(osg::Vec3(), 1)), ellipsoid->radii);
    if (auto const* cylinder = dynamic_cast<shapes::Cylinder const*>(&geometry))
        return makeDrawable(new osg::Cylinder(osg::Vec3(), cylinder->radius, cylinder->height));
    if (auto const* capsule = dynamic_cast<shapes::Capsule const*>(&geometry))
        return makeDrawable(new osg::Capsule(osg::Vec3(), capsule->radius, capsule->height));
    if (auto const* plane = dynamic_cast<shapes::Plane const*>(&geometry))
        return nodeOf(*plane);
    if (auto const* field = dynamic_cast<shapes::HeightField const*>(&geometry))
        return nodeOf(*field);
    return nodeOf(dynamic_cast<shapes::Mesh const&>(geometry));
}

hyx::ref_ptr<hyxCollide::Shape> trimesh(osg::ref_ptr<osg::Node> const& node, std::string const& file) {
    hyx::ref_ptr<hyxCollide::Shape> const shape = hyxOSG::createTrimesh(node);
    if (!shape)
        throw ModelError("the mesh '" + file + "' has no triangles");
    return shape;
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

/// The model's colour takes the place of the mesh's own look.
void paint(osg::Node& node, tavlang::Visuals::Material const& look) {
    LookRemover remover;
    node.accept(remover);
    osg::ref_ptr<osg::Material> material = new osg::Material;
    osg::Vec4 const value(look.color[0], look.color[1], look.color[2], look.color[3]);
    material->setAmbient(osg::Material::FRONT_AND_BACK, value);
    material->setDiffuse(osg::Material::FRONT_AND_BACK, value);
    node.getOrCreateStateSet()->setAttributeAndModes(material);
    node.getStateSet()->setMode(GL_NORMALIZE, osg::StateAttribute::ON);
    if (look.color[3] < 1) {
        node.getStateSet()->setMode(GL_BLEND, osg::StateAttribute::ON);
        node.getStateSet()->setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
    }
    if (look.texture.empty())
        return;
    if (osg::ref_ptr<osg::Image> const image = osgDB::readRefImageFile(look.texture)) {
        osg::ref_ptr<osg::Texture2D> texture = new osg::Texture2D(image);
        texture->setWrap(osg::Texture::WRAP_S, osg::Texture::REPEAT);
        texture->setWrap(osg::Texture::WRAP_T, osg::Texture::REPEAT);
        node.getStateSet()->setTextureAttributeAndModes(0, texture);
    }
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
    if (dynamic_cast<shapes::Plane const*>(&geometry))
        return {new hyxCollide::Plane, {}};
    if (auto const* field = dynamic_cast<shapes::HeightField const*>(&geometry))
        return {new hyxCollide::HeightField(field->columns, field->rows, 2 * field->halfSizes[0],
                                            2 * field->halfSizes[1],
                                            hyx::RealVector(field->heights.begin(), field->heights.end())),
                {}};
    auto const* mesh = dynamic_cast<shapes::Mesh const*>(&geometry);
    return {trimesh(makeNode(geometry), mesh ? mesh->file : ""), {}};
}

osg::ref_ptr<osg::Node> makeVisual(tavlang::Visuals::Visual const& visual) {
    osg::ref_ptr<osg::MatrixTransform> placed =
        new osg::MatrixTransform(osg::Matrixd(visual.geometry->transform.ptr()));
    placed->setName(visual.name);
    placed->addChild(makeNode(*visual.geometry));
    if (visual.material)
        paint(*placed, *visual.material);
    return placed;
}

} // namespace hyxtavlang
