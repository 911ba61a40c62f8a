// Loads models and shows what they became.
#include "platform/hyxOSG/visuals/grid_axes.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyxtavlang/model_builder.h"

#include <osg/MatrixTransform>
#include <osg/NodeCallback>

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

} // namespace

BuiltModel loadModel(std::string const& path, std::string const& modelName, OptParams const& params) {
    BuiltModel model;
    LoadResult& result = model.result;
    try {
        ModelTree const tree = readModel(path, params);
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

void BuiltModel::enter(hyxSDK::Simulation& simulation, hyxSDK::Assembly* parent) const {
    if (gravity)
        simulation.setGravity(*gravity);
    if (parent)
        parent->add(result.getAssembly());
    else
        simulation.add(result.getAssembly());
}

void BuiltModel::createVisuals(osg::Group& root, bool frames) const {
    osg::ref_ptr<osg::Group> group = new osg::Group;
    group->setName(result.modelName);
    for (Visual const& visual : visuals) {
        osg::ref_ptr<osg::MatrixTransform> following =
            new osg::MatrixTransform(osg::Matrixd(visual.body->getTransform().ptr()));
        following->setName(visual.body->getName());
        following->addChild(visual.node);
        following->addUpdateCallback(new BodyCallback(visual.body.get()));
        group->addChild(following);
    }
    constexpr float thickness = 0.5f, length = 0.25f;
    if (frames)
        for (auto const& body : result.assembly->getRigidBodies())
            hyxOSG::createAxes(body.get(), static_cast<hyx::Frame*>(nullptr), group.get(), thickness, length);
    root.addChild(group);
}

} // namespace hyxtavlang
