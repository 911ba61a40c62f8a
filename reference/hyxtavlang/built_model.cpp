// Loads models and shows what they became.
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/visuals/grid_axes.h"
#include "platform/hyxSDK/simulation.h"
#include "platform/osg/attachment.h"
#include "reference/hyxtavlang/model_builder.h"
#include "reference/hyxtavlang/shape_builder.h"
#include "reference/hyxtavlang/tree_parts.h"

#include <osg/MatrixTransform>
#include <osg/NodeCallback>

#include <map>

namespace hyxtavlang {
namespace {

class BodyCallback : public osg::NodeCallback {
public:
    explicit BodyCallback(hyx::RigidBody* body) : m_body(body) {}

    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override {
        static_cast<osg::MatrixTransform*>(node)->setMatrix(osg::Matrixd(m_body->getTransform().ptr()));
        traverse(node, visitor);
    }

private:
    hyx::ref_ptr<hyx::RigidBody> m_body;
};

/// A visual that is not the look of a collision shape.
osg::ref_ptr<osg::Node> following(BuiltModel::Visual const& visual) {
    osg::ref_ptr<osg::MatrixTransform> const made =
        new osg::MatrixTransform(osg::Matrixd(visual.body->getTransform().ptr()));
    made->addChild(visual.node);
    made->addUpdateCallback(new BodyCallback(visual.body.get()));
    return made;
}

/// Pictures have no more lights.
void remarkLights(tavlang::Physics3D::System& tree, std::string const& path) {
    std::size_t count = 0;
    for (auto const& light : partsOf<tavlang::Visuals::Light>(tree))
        if (++count == mostLights + 1)
            tree.annotations.push_back(std::make_shared<tavlang::Annotation>(
                "the light '" + light->name + "' and those after it do not shine: a picture has " +
                    std::to_string(mostLights),
                path, light->line));
}

} // namespace

BuiltModel loadModel(std::string const& path, std::string const& modelName, OptParams const& params) {
    BuiltModel model;
    LoadResult& result = model.result;
    try {
        ModelTree const tree = readModel(path, params);
        remarkLights(*tree, path);
        result.model = ModelNode(tree);
        result.modelName = tree->name;
        if (!modelName.empty() && modelName != tree->name)
            throw ModelError("the file '" + path + "' holds the model '" + tree->name + "', not '" + modelName + "'");
        buildModel(tree, params, model);
    } catch (ModelError const& error) {
        result.errors = error.lines;
    } catch (PartError const& error) {
        result.errors.push_back(path + ":" + std::to_string(error.line) + ": " + error.what());
    } catch (std::exception const& error) {
        result.errors.push_back(path + ": " + error.what());
    }
    if (!result.errors.empty())
        model.visuals.clear();
    return model;
}

void BuiltModel::enter(hyxSDK::Simulation& simulation, hyxSDK::Assembly* parent, hyx::UInt selection) const {
    if (gravity)
        simulation.setGravity(*gravity);
    if (selection & MATERIALS)
        for (auto const& material : materials)
            simulation.add(material.get());
    for (auto const& contactMaterial : contactMaterials)
        simulation.add(contactMaterial.get());
    hyxSDK::Assembly& assembly = *result.getAssembly();
    if (!(selection & CONSTRAINTS))
        for (auto const& constraint : hyx::ConstraintPtrVector(assembly.getConstraints()))
            assembly.remove(constraint.get());
    if (!(selection & BODIES))
        for (auto const& body : hyx::RigidBodyPtrVector(assembly.getRigidBodies()))
            assembly.remove(body.get());
    if (parent)
        parent->add(&assembly);
    else
        simulation.add(&assembly);
}

void BuiltModel::createVisuals(osg::Group& root, bool frames, hyxOSG::ShapeLook const& shapes) const {
    osg::ref_ptr<osg::Group> group = new osg::Group;
    group->setName(result.modelName);
    std::map<hyx::RigidBody const*, osg::ref_ptr<osg::Group>> ofBodies;
    for (Visual const& visual : visuals) {
        osg::ref_ptr<osg::Group>& ofBody = ofBodies[visual.body.get()];
        if (!ofBody) {
            ofBody = new osg::Group;
            ofBody->setName(visual.body->getName());
            group->addChild(ofBody);
        }
        if (visual.geometry) {
            osg::Node* const node = hyxOSG::createGeometryVisual(*visual.geometry, *ofBody, shapes, visual.node);
            if (visual.look)
                paint(*node, *visual.look);
        } else {
            ofBody->addChild(following(visual));
        }
    }
    constexpr float thickness = 0.5f, length = 0.25f;
    if (frames)
        for (auto const& body : result.assembly->getRigidBodies())
            hyxOSG::createAxes(body.get(), static_cast<hyx::Frame*>(nullptr), group.get(), thickness, length);
    osg::attach(root, *group);
    shine(*group, lights);
}

} // namespace hyxtavlang
