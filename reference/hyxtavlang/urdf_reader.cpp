// Reads robot descriptions into model trees.
#include "platform/hyxtavlang/model_joints.h"
#include "platform/hyxtavlang/model_looks.h"
#include "reference/hyxtavlang/error_lines.h"
#include "reference/hyxtavlang/model_reader.h"
#include "reference/hyxtavlang/resource_paths.h"
#include "reference/hyxtavlang/urdf_document.h"
#include "reference/machinery/meshes/notices.h"

#include <console_bridge/console.h>
#include <urdf_parser/urdf_parser.h>

#include <map>
#include <stdexcept>
#include <string>

namespace hyxtavlang {
namespace {

namespace model3d = tavlang::Physics3D;
namespace joints = tavlang::Robotics::Joints;

/// The walk along them recurs.
constexpr int mostLinksInARow = 1000;

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

hyx::Vec3 toVector(urdf::Vector3 const& vector) {
    return {vector.x, vector.y, vector.z};
}

hyx::AffineMatrix4x4 toMatrix(urdf::Pose const& pose) {
    return hyx::AffineMatrix4x4(hyx::Quat(pose.rotation.x, pose.rotation.y, pose.rotation.z, pose.rotation.w),
                                toVector(pose.position));
}

/// Walks from the root link to the tips.
class UrdfReader {
public:
    UrdfReader(urdf::ModelInterface const& robot, std::string const& path, std::vector<std::string> const& searchPaths)
        : m_robot(robot), m_path(path), m_searchPaths(searchPaths), m_tree(std::make_shared<model3d::System>()) {}

    ModelTree read() {
        m_tree->name = m_robot.getName();
        urdf::LinkConstSharedPtr const root = m_robot.getRoot();
        addChildren(*root, addBody(*root, hyx::AffineMatrix4x4()));
        for (auto const& [name, joint] : m_robot.joints_)
            if (joint->mimic)
                addMimic(name, *joint->mimic);
        return m_tree;
    }

private:
    using BodyPtr = std::shared_ptr<model3d::Body>;

    void addChildren(urdf::Link const& link, BodyPtr const& parent, int level = 1) {
        if (level > mostLinksInARow)
            throw std::runtime_error("the robot has more than " + std::to_string(mostLinksInARow) + " links in a row");
        for (urdf::JointSharedPtr const& joint : link.child_joints) {
            urdf::LinkConstSharedPtr const child = m_robot.getLink(joint->child_link_name);
            BodyPtr const body = addBody(*child, toMatrix(joint->parent_to_joint_origin_transform) * parent->transform);
            addJoint(*joint, parent, body);
            addChildren(*child, body, level + 1);
        }
    }

    BodyPtr addBody(urdf::Link const& link, hyx::AffineMatrix4x4 const& transform) {
        auto const body = std::make_shared<model3d::Body>();
        body->name = link.name;
        body->transform = transform;
        if (link.inertial && link.inertial->mass > 0)
            addMass(*link.inertial, *body);
        for (urdf::CollisionSharedPtr const& collision : link.collision_array)
            if (collision->geometry)
                body->children.push_back(shape(*collision->geometry, collision->origin));
        for (urdf::VisualSharedPtr const& visual : link.visual_array)
            if (visual->geometry)
                addVisual(*visual, *body);
        m_tree->children.push_back(body);
        return body;
    }

    static void addMass(urdf::Inertial const& inertial, model3d::Body& body) {
        body.hasMass = true;
        body.mass = inertial.mass;
        body.centerOfMass = toVector(inertial.origin.position);
        // Turned from the axes of the inertial frame to the body's.
        double const given[3][3] = {{inertial.ixx, inertial.ixy, inertial.ixz},
                                    {inertial.ixy, inertial.iyy, inertial.iyz},
                                    {inertial.ixz, inertial.iyz, inertial.izz}};
        hyx::AffineMatrix4x4 const turn = toMatrix(inertial.origin);
        auto const turned = [&](int i, int j) {
            double sum = 0;
            for (int k = 0; k < 3; ++k)
                for (int l = 0; l < 3; ++l)
                    sum += turn(k, i) * given[k][l] * turn(l, j);
            return sum;
        };
        body.inertia = {turned(0, 0), turned(1, 1), turned(2, 2), turned(0, 1), turned(0, 2), turned(1, 2)};
    }

    std::shared_ptr<model3d::Geometry> shape(urdf::Geometry const& geometry, urdf::Pose const& origin) const {
        std::shared_ptr<model3d::Geometry> made;
        switch (geometry.type) {
        case urdf::Geometry::BOX: {
            auto const box = std::make_shared<model3d::Geometries::Box>();
            box->halfExtents = toVector(static_cast<urdf::Box const&>(geometry).dim) * 0.5;
            made = box;
            break;
        }
        case urdf::Geometry::SPHERE: {
            auto const sphere = std::make_shared<model3d::Geometries::Sphere>();
            sphere->radius = static_cast<urdf::Sphere const&>(geometry).radius;
            made = sphere;
            break;
        }
        case urdf::Geometry::CYLINDER: {
            auto const cylinder = std::make_shared<model3d::Geometries::Cylinder>();
            cylinder->radius = static_cast<urdf::Cylinder const&>(geometry).radius;
            cylinder->height = static_cast<urdf::Cylinder const&>(geometry).length;
            made = cylinder;
            break;
        }
        default: {
            auto const& given = static_cast<urdf::Mesh const&>(geometry);
            auto const mesh = std::make_shared<model3d::Geometries::Mesh>();
            mesh->file = findResource(given.filename, m_path, m_searchPaths);
            if (mesh->file.empty())
                throw ModelError("the mesh '" + given.filename + "' was not found");
            mesh->scale = toVector(given.scale);
            made = mesh;
        }
        }
        made->transform = toMatrix(origin);
        return made;
    }

    void addVisual(urdf::Visual const& given, model3d::Body& body) const {
        auto const visual = std::make_shared<tavlang::Visuals::Visual>();
        visual->name = given.name;
        visual->geometry = shape(*given.geometry, given.origin);
        if (given.material) {
            urdf::Color const& color = given.material->color;
            bool const named = !(color.a == 1 && color.r == 0 && color.g == 0 && color.b == 0);
            std::string const texture = given.material->texture_filename;
            if (named || !texture.empty()) {
                visual->material = std::make_shared<tavlang::Visuals::Material>();
                visual->material->name = given.material->name;
                visual->material->texture = texture.empty() ? "" : findTexture(texture);
                if (named)
                    visual->material->color = hyx::Vec4f(color.r, color.g, color.b, color.a);
            }
        }
        body.children.push_back(visual);
    }

    /// A robot is of use without its textures: what is not found is told once.
    std::string findTexture(std::string const& file) const {
        std::string found = findResource(file, m_path, m_searchPaths);
        if (!found.empty())
            return found;
        std::string const text = "the texture '" + file + "' was not found";
        for (auto const& known : m_tree->annotations)
            if (known->text == text)
                return found;
        auto const remark = std::make_shared<tavlang::Annotation>(text, m_path, lineOfName(text, m_path));
        m_tree->annotations.push_back(remark);
        hyxOSG::warn(m_path + ":" + std::to_string(remark->line) + ": " + text);
        return found;
    }

    static std::shared_ptr<joints::Joint> make(urdf::Joint const& joint) {
        switch (joint.type) {
        case urdf::Joint::REVOLUTE:
        case urdf::Joint::CONTINUOUS:
            return std::make_shared<joints::HingeJoint>();
        case urdf::Joint::PRISMATIC:
            return std::make_shared<joints::PrismaticJoint>();
        case urdf::Joint::PLANAR:
            return std::make_shared<joints::PlanarJoint>();
        case urdf::Joint::FLOATING:
            return std::make_shared<joints::FreeJoint>();
        case urdf::Joint::FIXED:
            return std::make_shared<joints::LockJoint>();
        default:
            throw ModelError("the joint '" + joint.name + "' is of an unknown type");
        }
    }

    void addJoint(urdf::Joint const& given, BodyPtr const& parent, BodyPtr const& child) {
        std::shared_ptr<joints::Joint> const joint = make(given);
        joint->name = given.name;
        joint->parent = parent;
        joint->child = child;
        joint->axis = toVector(given.axis);
        if (auto const single = std::dynamic_pointer_cast<joints::SingleAxisJoint>(joint)) {
            addLimits(given, *single);
            m_joints[given.name] = single;
        }
        m_tree->children.push_back(joint);
    }

    static void addLimits(urdf::Joint const& given, joints::SingleAxisJoint& joint) {
        if (given.dynamics) {
            joint.damping = given.dynamics->damping;
            joint.friction = given.dynamics->friction;
        }
        if (!given.limits)
            return;
        joint.hasRange = given.type != urdf::Joint::CONTINUOUS && given.limits->lower <= given.limits->upper;
        if (joint.hasRange) {
            joint.lower = given.limits->lower;
            joint.upper = given.limits->upper;
        }
        if (given.limits->effort > 0)
            joint.maximumEffort = given.limits->effort;
        if (given.limits->velocity > 0)
            joint.maximumSpeed = given.limits->velocity;
    }

    void addMimic(std::string const& name, urdf::JointMimic const& given) {
        auto const follower = m_joints.find(name), leader = m_joints.find(given.joint_name);
        if (follower == m_joints.end() || leader == m_joints.end() || follower == leader)
            throw ModelError("the joint '" + name + "' cannot follow '" + given.joint_name +
                             "': both must be there, and turn or slide");
        auto const mimic = std::make_shared<tavlang::Robotics::Mimic>();
        mimic->follower = follower->second;
        mimic->leader = leader->second;
        mimic->multiplier = given.multiplier;
        mimic->offset = given.offset;
        m_tree->children.push_back(mimic);
    }

    urdf::ModelInterface const& m_robot;
    std::string m_path;
    std::vector<std::string> const& m_searchPaths;
    ModelTree m_tree;
    std::map<std::string, std::shared_ptr<joints::SingleAxisJoint>> m_joints;
};

/// The robot, whose links end one after another: each holds the next, and would end it within its own end.
urdf::ModelInterfaceSharedPtr endingByLinks(urdf::ModelInterfaceSharedPtr const& robot) {
    return {robot.get(), [robot](urdf::ModelInterface*) {
                if (robot)
                    for (auto const& [name, link] : robot->links_)
                        link->child_links.clear();
            }};
}

urdf::ModelInterfaceSharedPtr parse(std::string const& path, std::string const& text) {
    ParserErrors complaints;
    urdf::ModelInterfaceSharedPtr const robot = endingByLinks(urdf::parseURDF(text));
    std::vector<std::string> errors = complaints.texts;
    if (!robot && errors.empty())
        errors.push_back("the file '" + path + "' is no robot description");
    if (robot && !robot->getRoot())
        errors.push_back("the robot in '" + path + "' has no root link");
    if (!errors.empty())
        throw ModelError(errors);
    return robot;
}

} // namespace

ModelTree readUrdf(std::string const& path, std::vector<std::string> const& searchPaths) {
    try {
        UrdfDocument document(path);
        urdf::ModelInterfaceSharedPtr const robot = parse(path, document.text());
        ModelTree const tree = UrdfReader(*robot, path, searchPaths).read();
        document.complete(*tree);
        return tree;
    } catch (ModelError const& error) {
        std::vector<std::string> lines;
        for (std::string const& text : error.lines) {
            bool const isPlaced = text.rfind(path + ":", 0) == 0;
            lines.push_back(isPlaced ? text : path + ":" + std::to_string(lineOfName(text, path)) + ": " + text);
        }
        throw ModelError(lines);
    }
}

} // namespace hyxtavlang
