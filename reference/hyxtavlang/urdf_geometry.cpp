// Turns boxes, spheres, cylinders and meshes of a robot description into shapes and nodes.
#include "reference/hyxtavlang/urdf_geometry.h"

#include "platform/hyxCollide/box.h"
#include "platform/hyxCollide/cylinder.h"
#include "platform/hyxCollide/sphere.h"
#include "platform/hyxCollide/trimesh.h"
#include "platform/hyxOSG/visuals/read_file.h"
#include "platform/hyxOSG/visuals/trimesh_conversion.h"
#include "reference/hyxtavlang/resource_paths.h"

#include <osg/Geode>
#include <osg/Material>
#include <osg/MatrixTransform>
#include <osg/NodeVisitor>
#include <osg/ShapeDrawable>

#include <stdexcept>

namespace hyxtavlang {
namespace {

/// Collision cylinders stand along Y, those of robot descriptions along Z.
hyx::AffineMatrix4x4 const alongZ(hyx::Quat(hyx::Vec3(0, 1, 0), hyx::Vec3(0, 0, 1)));

osg::ref_ptr<osg::Node> readMesh(urdf::Mesh const& mesh, UrdfFiles const& files) {
    std::string const file = findResource(mesh.filename, files.modelPath, files.searchPaths);
    if (file.empty())
        throw std::runtime_error("the mesh '" + mesh.filename + "' was not found");
    osg::ref_ptr<osg::Node> node = hyxOSG::readNodeFile(file);
    if (!node)
        throw std::runtime_error("the mesh '" + file + "' cannot be read");
    osg::ref_ptr<osg::MatrixTransform> scaled =
        new osg::MatrixTransform(osg::Matrix::scale(mesh.scale.x, mesh.scale.y, mesh.scale.z));
    scaled->addChild(node);
    scaled->getOrCreateStateSet()->setMode(GL_NORMALIZE, osg::StateAttribute::ON);
    return scaled;
}

osg::ref_ptr<osg::Node> makeDrawable(osg::Shape* shape) {
    osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(new osg::ShapeDrawable(shape));
    return geode;
}

osg::ref_ptr<osg::Node> makeNode(urdf::Geometry const& geometry, UrdfFiles const& files) {
    switch (geometry.type) {
    case urdf::Geometry::BOX: {
        auto const& size = static_cast<urdf::Box const&>(geometry).dim;
        return makeDrawable(new osg::Box(osg::Vec3(), size.x, size.y, size.z));
    }
    case urdf::Geometry::SPHERE:
        return makeDrawable(new osg::Sphere(osg::Vec3(), static_cast<urdf::Sphere const&>(geometry).radius));
    case urdf::Geometry::CYLINDER: {
        auto const& cylinder = static_cast<urdf::Cylinder const&>(geometry);
        return makeDrawable(new osg::Cylinder(osg::Vec3(), cylinder.radius, cylinder.length));
    }
    default:
        return readMesh(static_cast<urdf::Mesh const&>(geometry), files);
    }
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

/// The description's colour takes the place of the mesh's own look.
void paint(osg::Node& node, urdf::Color const& color) {
    LookRemover remover;
    node.accept(remover);
    osg::ref_ptr<osg::Material> material = new osg::Material;
    osg::Vec4 const value(color.r, color.g, color.b, color.a);
    material->setAmbient(osg::Material::FRONT_AND_BACK, value);
    material->setDiffuse(osg::Material::FRONT_AND_BACK, value);
    node.getOrCreateStateSet()->setAttributeAndModes(material);
    node.getStateSet()->setMode(GL_NORMALIZE, osg::StateAttribute::ON);
    if (color.a < 1) {
        node.getStateSet()->setMode(GL_BLEND, osg::StateAttribute::ON);
        node.getStateSet()->setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
    }
}

} // namespace

hyx::AffineMatrix4x4 toMatrix(urdf::Pose const& pose) {
    return hyx::AffineMatrix4x4(hyx::Quat(pose.rotation.x, pose.rotation.y, pose.rotation.z, pose.rotation.w),
                                hyx::Vec3(pose.position.x, pose.position.y, pose.position.z));
}

hyx::ref_ptr<hyxCollide::Geometry> makeCollision(urdf::Geometry const& geometry, hyx::AffineMatrix4x4 const& place,
                                                 UrdfFiles const& files) {
    hyx::ref_ptr<hyxCollide::Shape> shape;
    hyx::AffineMatrix4x4 local = place;
    switch (geometry.type) {
    case urdf::Geometry::BOX: {
        auto const& size = static_cast<urdf::Box const&>(geometry).dim;
        shape = new hyxCollide::Box(size.x / 2, size.y / 2, size.z / 2);
        break;
    }
    case urdf::Geometry::SPHERE:
        shape = new hyxCollide::Sphere(static_cast<urdf::Sphere const&>(geometry).radius);
        break;
    case urdf::Geometry::CYLINDER: {
        auto const& cylinder = static_cast<urdf::Cylinder const&>(geometry);
        shape = new hyxCollide::Cylinder(cylinder.radius, cylinder.length);
        local = alongZ * place;
        break;
    }
    default: {
        osg::ref_ptr<osg::Node> const mesh = readMesh(static_cast<urdf::Mesh const&>(geometry), files);
        shape = hyxOSG::createTrimesh(mesh);
        if (!shape)
            throw std::runtime_error("the mesh '" + static_cast<urdf::Mesh const&>(geometry).filename +
                                     "' has no triangles");
    }
    }
    hyx::ref_ptr<hyxCollide::Geometry> made = new hyxCollide::Geometry(shape.get());
    made->setLocalTransform(local);
    return made;
}

osg::ref_ptr<osg::Node> makeVisual(urdf::Visual const& visual, hyx::AffineMatrix4x4 const& place,
                                   UrdfFiles const& files) {
    osg::ref_ptr<osg::MatrixTransform> placed = new osg::MatrixTransform(osg::Matrixd(place.ptr()));
    placed->addChild(makeNode(*visual.geometry, files));
    bool const named = visual.material && !(visual.material->color.a == 1 && visual.material->color.r == 0 &&
                                            visual.material->color.g == 0 && visual.material->color.b == 0);
    if (named)
        paint(*placed, visual.material->color);
    return placed;
}

} // namespace hyxtavlang
