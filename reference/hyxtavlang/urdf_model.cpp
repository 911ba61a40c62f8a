// Builds bodies and joints from a parsed robot description.
#include "reference/hyxtavlang/urdf_model.h"

#include "platform/hyxOSG/visuals/grid_axes.h"
#include "reference/hyxtavlang/link_masses.h"
#include "reference/hyxtavlang/mimic.h"
#include "reference/hyxtavlang/urdf_geometry.h"
#include "reference/hyxtavlang/urdf_joint.h"

#include <console_bridge/console.h>
#include <osg/MatrixTransform>
#include <osg/NodeCallback>
#include <urdf_parser/urdf_parser.h>

#include <filesystem>
#include <map>
#include <stdexcept>
#include <utility>

namespace hyxtavlang {
namespace {

/// Keeps what the parser complains of, instead of printing it.
class ParserErrors : public console_bridge::OutputHandler {
public:
    ParserErrors() { console_bridge::useOutputHandler(this); }

    ~ParserErrors() override { console_bridge::restorePreviousOutputHandler(); }

    void log(std::string const& text, console_bridge::LogLevel level, char const*, int) override {
        if (level >= console_bridge::CONSOLE_BRIDGE_LOG_ERROR)
            texts.push_back(text);
    }

    std::vector<std::string> texts;
};

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

/// Walks from the root link to the tips. Links that are fixed to each other become one body, with the name of the
/// first.
class Builder {
public:
    Builder(urdf::ModelInterface const& robot, UrdfFiles const& files, OptParams const& params, UrdfModel& model)
        : m_robot(robot),
          m_files(files),
          m_params(params),
          m_model(model),
          m_assembly(new hyxSDK::Assembly(robot.getName())) {}

    hyx::ref_ptr<hyxSDK::Assembly> build() {
        urdf::LinkConstSharedPtr const root = m_robot.getRoot();
        hyx::RigidBody* body = makeBody(*root, hyx::AffineMatrix4x4());
        addChildren(*root, {body, hyx::AffineMatrix4x4()});
        for (auto const& [massive, masses] : m_masses)
            masses.giveTo(*massive);
        if (m_params.fixedBase || !m_masses.count(body))
            body->setMotionControl(hyx::RigidBody::STATIC);
        addMimics();
        keepApart();
        return m_assembly;
    }

private:
    /// A link's body, and the link's frame in it.
    struct Place {
        hyx::RigidBody* body;
        hyx::AffineMatrix4x4 local;
    };

    void addChildren(urdf::Link const& link, Place const& place) {
        for (urdf::JointSharedPtr const& joint : link.child_joints) {
            urdf::LinkConstSharedPtr const child = m_robot.getLink(joint->child_link_name);
            hyx::AffineMatrix4x4 const local = toMatrix(joint->parent_to_joint_origin_transform) * place.local;
            if (joint->type == urdf::Joint::FIXED) {
                fill(*child, {place.body, local});
                addChildren(*child, {place.body, local});
            } else {
                hyx::RigidBody* body = makeBody(*child, local * place.body->getTransform());
                join(*joint, place.body, body);
                addChildren(*child, {body, hyx::AffineMatrix4x4()});
            }
        }
    }

    hyx::RigidBody* makeBody(urdf::Link const& link, hyx::AffineMatrix4x4 const& transform) {
        hyx::ref_ptr<hyx::RigidBody> body = new hyx::RigidBody(hyx::Name(m_params.namePrefix + link.name));
        body->setTransform(transform);
        fill(link, {body.get(), hyx::AffineMatrix4x4()});
        m_assembly->add(body.get());
        return body.get();
    }

    void fill(urdf::Link const& link, Place const& place) {
        for (urdf::CollisionSharedPtr const& collision : link.collision_array)
            if (collision->geometry)
                place.body->add(
                    makeCollision(*collision->geometry, toMatrix(collision->origin) * place.local, m_files).get());
        for (urdf::VisualSharedPtr const& visual : link.visual_array)
            if (visual->geometry)
                m_model.visuals.push_back(
                    {place.body, makeVisual(*visual, toMatrix(visual->origin) * place.local, m_files)});
        if (link.inertial && link.inertial->mass > 0)
            m_masses[place.body].add(*link.inertial, place.local);
    }

    void join(urdf::Joint const& joint, hyx::RigidBody* parent, hyx::RigidBody* child) {
        m_joined.emplace_back(parent, child);
        if (hyx::ref_ptr<hyx::Constraint> constraint = makeJoint(joint, parent, child)) {
            constraint->setName(hyx::Name(m_params.namePrefix + joint.name));
            m_assembly->add(constraint.get());
        }
    }

    /// Bodies that a joint connects never collide, and no two do without self collision.
    void keepApart() const {
        auto const separate = [](hyx::RigidBody const& one, hyx::RigidBody const& other) {
            for (auto const& geometry : one.getGeometries())
                for (auto const& opposite : other.getGeometries())
                    geometry->setEnableCollisions(opposite.get(), false);
        };
        for (auto const& [parent, child] : m_joined)
            separate(*parent, *child);
        if (m_params.selfCollision)
            return;
        hyx::RigidBodyPtrVector const& bodies = m_assembly->getRigidBodies();
        for (size_t i = 0; i < bodies.size(); ++i)
            for (size_t j = 0; j < i; ++j)
                separate(*bodies[i], *bodies[j]);
    }

    void addMimics() {
        for (auto const& [name, joint] : m_robot.joints_) {
            if (!joint->mimic)
                continue;
            hyx::Constraint1DOF* follower = findJoint(name);
            hyx::Constraint1DOF* leader = findJoint(joint->mimic->joint_name);
            if (!follower || !leader)
                throw std::runtime_error("the joint '" + name + "' cannot follow '" + joint->mimic->joint_name +
                                         "': both must be there, and turn or slide");
            m_assembly->add(
                hyx::ref_ptr<Mimic>(new Mimic(follower, leader, joint->mimic->multiplier, joint->mimic->offset)).get());
        }
    }

    hyx::Constraint1DOF* findJoint(std::string const& name) const {
        return dynamic_cast<hyx::Constraint1DOF*>(m_assembly->getConstraint(hyx::Name(m_params.namePrefix + name)));
    }

    urdf::ModelInterface const& m_robot;
    UrdfFiles const& m_files;
    OptParams const& m_params;
    UrdfModel& m_model;
    hyx::ref_ptr<hyxSDK::Assembly> m_assembly;
    std::map<hyx::RigidBody*, LinkMasses> m_masses; ///< of the bodies that a link gives mass
    std::vector<std::pair<hyx::RigidBody const*, hyx::RigidBody const*>> m_joined;
};

urdf::ModelInterfaceSharedPtr parse(std::string const& path, std::vector<std::string>& errors) {
    if (!std::filesystem::is_regular_file(path)) {
        errors.push_back("the file '" + path + "' cannot be read");
        return nullptr;
    }
    if (std::filesystem::path(path).extension() != ".urdf") {
        errors.push_back("the file '" + path + "' is no robot description: those with the ending .urdf are read here");
        return nullptr;
    }
    ParserErrors parserErrors;
    urdf::ModelInterfaceSharedPtr const robot = urdf::parseURDFFile(path);
    errors = parserErrors.texts;
    if (!robot && errors.empty())
        errors.push_back("the file '" + path + "' is no robot description");
    if (robot && !robot->getRoot())
        errors.push_back("the robot in '" + path + "' has no root link");
    return errors.empty() ? robot : nullptr;
}

} // namespace

UrdfModel readUrdf(std::string const& path, std::string const& modelName, OptParams const& params) {
    UrdfModel model;
    urdf::ModelInterfaceSharedPtr const robot = parse(path, model.result.errors);
    if (!robot)
        return model;
    model.result.modelName = robot->getName();
    if (!modelName.empty() && modelName != robot->getName()) {
        model.result.errors.push_back("the file '" + path + "' holds the model '" + robot->getName() + "', not '" +
                                      modelName + "'");
        return model;
    }
    try {
        model.result.assembly = Builder(*robot, {path, params.searchPaths}, params, model).build();
    } catch (std::exception const& error) {
        model.result.errors.push_back(error.what());
        model.visuals.clear();
    }
    return model;
}

void UrdfModel::createVisuals(osg::Group& root, bool frames) const {
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
