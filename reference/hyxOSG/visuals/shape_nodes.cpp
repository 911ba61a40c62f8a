// Makes the node for each kind of shape.
#include "reference/hyxOSG/visuals/shape_nodes.h"

#include "platform/hyxCollide/box.h"
#include "platform/hyxCollide/capsule.h"
#include "platform/hyxCollide/compound.h"
#include "platform/hyxCollide/cone.h"
#include "platform/hyxCollide/cylinder.h"
#include "platform/hyxCollide/height_field.h"
#include "platform/hyxCollide/plane.h"
#include "platform/hyxCollide/sphere.h"
#include "platform/hyxCollide/trimesh.h"
#include "platform/hyxOSG/application/example_application.h"
#include "reference/machinery/meshes/closed_mesh.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/meshes/endless_geode.h"
#include "reference/machinery/meshes/facing_elements.h"
#include "reference/machinery/meshes/round_form.h"
#include "reference/machinery/meshes/shape_meshes.h"
#include "reference/machinery/meshes/surface_meshes.h"
#include "reference/machinery/shading/material_colors.h"
#include "reference/machinery/shading/surface_program.h"

#include <osg/CullFace>
#include <osg/Geode>
#include <osg/MatrixTransform>
#include <osg/observer_ptr>

#include <cmath>
#include <functional>
#include <map>
#include <tuple>

namespace hyxOSG {
namespace {

/// The state of all shapes: normals survive scaling, and faces of closed shapes that look away are not drawn.
osg::ref_ptr<osg::StateSet> shapeState(bool closed) {
    static std::map<bool, osg::observer_ptr<osg::StateSet>> states;
    osg::ref_ptr<osg::StateSet> state;
    if (states[closed].lock(state))
        return state;
    state = new osg::StateSet;
    state->setMode(GL_NORMALIZE, osg::StateAttribute::ON);
    if (closed)
        state->setAttributeAndModes(new osg::CullFace(osg::CullFace::BACK));
    else
        state->setAttribute(createLightModel(true));
    states[closed] = state;
    return state;
}

osg::ref_ptr<osg::Geode> geodeOf(osg::Geometry* mesh, bool closed) {
    osg::ref_ptr<osg::Geode> const geode = new osg::Geode;
    if (mesh)
        geode->addDrawable(mesh);
    geode->setStateSet(shapeState(closed));
    return geode;
}

/// What tells meshes apart that a transform alone does not make equal. The number is the shape's one proportion, if
/// any.
using FormKey = std::tuple<hyxCollide::Shape::Type, unsigned int, long>;

/// The mesh of a form, shared by all nodes that show it at the moment.
osg::ref_ptr<osg::Geode> sharedForm(FormKey const& key,
                                    std::function<osg::ref_ptr<osg::Geometry>(unsigned int)> const& make) {
    static std::map<FormKey, osg::observer_ptr<osg::Geode>> forms;
    osg::ref_ptr<osg::Geode> form;
    if (forms[key].lock(form))
        return form;
    auto const [type, segments, proportion] = key;
    if (segments > 0) {
        form = new RoundForm(segments, make);
        form->setStateSet(shapeState(true));
    } else {
        form = geodeOf(make(0), true);
    }
    forms[key] = form;
    return form;
}

osg::ref_ptr<osg::Node> scaled(osg::Node* form, double x, double y, double z) {
    osg::ref_ptr<osg::MatrixTransform> const transform = new osg::MatrixTransform(osg::Matrix::scale(x, y, z));
    transform->addChild(form);
    return transform;
}

osg::ref_ptr<osg::Node> capsuleNode(hyxCollide::Capsule const& capsule, unsigned int segments) {
    double const halfLength = 0.5 * capsule.getHeight() / capsule.getRadius();
    // The proportion is kept to a thousandth, finer than one can see.
    long const proportion = std::lround(1000 * halfLength);
    auto const form = sharedForm({capsule.getType(), segments, proportion}, [proportion](unsigned int n) {
        return unitCapsuleMesh(n, 0.001f * static_cast<float>(proportion));
    });
    return scaled(form, capsule.getRadius(), capsule.getRadius(), capsule.getRadius());
}

osg::ref_ptr<osg::Node> planeNode(hyxCollide::Plane const& plane) {
    static osg::observer_ptr<EndlessGeode> shared;
    osg::ref_ptr<EndlessGeode> square;
    if (!shared.lock(square)) {
        square = new EndlessGeode;
        square->addDrawable(unitSquareMesh(1));
        square->setStateSet(new osg::StateSet(*shapeState(false)));
        declareFading(*square->getStateSet());
        square->setNodeMask(~ExampleApplication::CASTS_SHADOWS_MASK); // a ground that casts shadows darkens itself
        shared = square;
    }
    osg::Vec3d const normal = toOsg(plane.getNormal());
    osg::ref_ptr<osg::MatrixTransform> const transform = new osg::MatrixTransform(
        osg::Matrix::scale(planeHalfSide, planeHalfSide, 1) * osg::Matrix::rotate(osg::Vec3d(0, 0, 1), normal) *
        osg::Matrix::translate(toOsg(plane.getPlane().getPoint())));
    transform->addChild(square);
    return transform;
}

osg::ref_ptr<osg::Node> compoundNode(hyxCollide::Compound const& compound, float detailRatio) {
    osg::ref_ptr<osg::Group> const group = new osg::Group;
    for (hyx::UInt part = 0; part < compound.getNumShapes(); ++part) {
        osg::ref_ptr<osg::MatrixTransform> const place =
            new osg::MatrixTransform(toOsg(compound.getLocalTransform(part)));
        place->addChild(createShapeNode(*compound.getShape(part), detailRatio));
        group->addChild(place);
    }
    return group;
}

/// A ball as large as the sphere that it stands for, on average.
osg::ref_ptr<osg::Geometry> evenSphereMesh(unsigned int segments) {
    osg::ref_ptr<osg::Geometry> const mesh = unitSphereMesh(segments);
    for (osg::Vec3& place : static_cast<osg::Vec3Array&>(*mesh->getVertexArray()))
        place *= float(evenSphereScale(segments));
    mesh->dirtyBound();
    return mesh;
}

/// What is drawn of a mesh. It keeps the mesh, whose place in memory no other one can take meanwhile.
struct DrawnMesh : public osg::Referenced {
    explicit DrawnMesh(hyxCollide::Trimesh const& mesh) : mesh(&mesh), revision(mesh.getRevision()) {}

    ~DrawnMesh() override {
        if (auto const found = all().find(mesh); found != all().end() && found->second.second == this)
            all().erase(found);
    }

    /// The nodes of all meshes that are drawn. It outlives them: some end with the process.
    static std::map<hyxCollide::Trimesh const*, std::pair<osg::Geode*, DrawnMesh const*>>& all() {
        static auto& drawn = *new std::map<hyxCollide::Trimesh const*, std::pair<osg::Geode*, DrawnMesh const*>>;
        return drawn;
    }

    hyx::ref_ptr<hyxCollide::Trimesh const> mesh;
    hyx::UInt revision;
};

/// A mesh is shared by the geometries of one shape as long as the shape does not change.
osg::ref_ptr<osg::Node> meshNode(hyxCollide::Trimesh const& mesh) {
    osg::ref_ptr<osg::Geode> geode;
    auto const found = DrawnMesh::all().find(&mesh);
    if (found != DrawnMesh::all().end() && found->second.second->revision == mesh.getRevision()) {
        geode = found->second.first;
    } else {
        osg::ref_ptr<osg::Geometry> const surface = trimeshSurface(mesh);
        bool const closed = isClosedOutwards(*surface);
        if (closed)
            drawFacingPatches(*surface);
        geode = geodeOf(surface, closed);
        osg::ref_ptr<DrawnMesh> const drawn = new DrawnMesh(mesh);
        geode->setUserData(drawn);
        DrawnMesh::all()[&mesh] = {geode, drawn};
    }
    osg::ref_ptr<osg::Group> const node = new osg::Group;
    node->addChild(geode);
    return node;
}

} // namespace

osg::ref_ptr<osg::Node> createShapeNode(hyxCollide::Shape const& shape, float detailRatio) {
    unsigned int const segments = segmentsForDetail(detailRatio);
    auto const type = shape.getType();
    switch (type) {
    case hyxCollide::Shape::BOX: {
        hyx::Vec3 const half = static_cast<hyxCollide::Box const&>(shape).getHalfExtents();
        return scaled(sharedForm({type, 0, 0}, [](unsigned int) { return unitBoxMesh(); }), half.x, half.y, half.z);
    }
    case hyxCollide::Shape::SPHERE: {
        double const radius = static_cast<hyxCollide::Sphere const&>(shape).getRadius();
        return scaled(sharedForm({type, segments, 0}, evenSphereMesh), radius, radius, radius);
    }
    case hyxCollide::Shape::CYLINDER: {
        auto const& cylinder = static_cast<hyxCollide::Cylinder const&>(shape);
        return scaled(sharedForm({type, segments, 0}, [](unsigned int n) { return unitConeMesh(n, 1); }),
                      cylinder.getRadius(), 0.5 * cylinder.getHeight(), cylinder.getRadius());
    }
    case hyxCollide::Shape::CONE: {
        auto const& cone = static_cast<hyxCollide::Cone const&>(shape);
        return scaled(sharedForm({type, segments, 0}, [](unsigned int n) { return unitConeMesh(n, 0); }),
                      cone.getRadius(), 0.5 * cone.getHeight(), cone.getRadius());
    }
    case hyxCollide::Shape::CAPSULE:
        return capsuleNode(static_cast<hyxCollide::Capsule const&>(shape), segments);
    case hyxCollide::Shape::PLANE:
        return planeNode(static_cast<hyxCollide::Plane const&>(shape));
    case hyxCollide::Shape::TRIMESH:
        return meshNode(static_cast<hyxCollide::Trimesh const&>(shape));
    case hyxCollide::Shape::HEIGHT_FIELD:
        return geodeOf(heightFieldSurface(static_cast<hyxCollide::HeightField const&>(shape)), false);
    case hyxCollide::Shape::COMPOUND:
        return compoundNode(static_cast<hyxCollide::Compound const&>(shape), detailRatio);
    }
    return new osg::Group;
}

} // namespace hyxOSG
