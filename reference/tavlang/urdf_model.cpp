/// Builds bodies and joints from a parsed robot description.
#include "reference/tavlang/urdf_model.h"

#include "platform/hyx/hinge.h"
#include "platform/hyx/lock_joint.h"
#include "platform/hyx/motor1d.h"
#include "platform/hyx/prismatic.h"
#include "platform/hyx/range1d.h"
#include "platform/hyx/rigid_body.h"
#include "platform/hyxOSG/grid_axes.h"
#include "reference/tavlang/urdf_geometry.h"

#include <console_bridge/console.h>
#include <osg/MatrixTransform>
#include <osg/NodeCallback>
#include <urdf_parser/urdf_parser.h>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <stdexcept>

namespace hyxtavlang {
namespace {

/// Keeps what the parser complains of, instead of printing it.
class ParserErrors : public console_bridge::OutputHandler {
public:
  ParserErrors() { console_bridge::useOutputHandler(this); }
  ~ParserErrors() override { console_bridge::restorePreviousOutputHandler(); }
  void log(const std::string& text, console_bridge::LogLevel level, const char*, int) override {
    if (level >= console_bridge::CONSOLE_BRIDGE_LOG_ERROR) texts.push_back(text);
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

/// Walks from the root link to the tips. A link without mass that is fixed to its parent becomes a part of the parent's body.
class Builder {
public:
  Builder(const urdf::ModelInterface& robot, const UrdfFiles& files, const OptParams& params, UrdfModel& model)
      : m_robot(robot), m_files(files), m_params(params), m_model(model), m_assembly(new hyxSDK::Assembly(robot.getName())) {}

  hyx::ref_ptr<hyxSDK::Assembly> build() {
    const urdf::LinkConstSharedPtr root = m_robot.getRoot();
    hyx::RigidBody* body = makeBody(*root, hyx::AffineMatrix4x4());
    if (m_params.fixedBase || !root->inertial) body->setMotionControl(hyx::RigidBody::STATIC);
    addChildren(*root, {body, hyx::AffineMatrix4x4()});
    return m_assembly;
  }

private:
  /// A link's body, and the link's frame in it.
  struct Place {
    hyx::RigidBody* body;
    hyx::AffineMatrix4x4 local;
  };

  void addChildren(const urdf::Link& link, const Place& place) {
    for (const urdf::JointSharedPtr& joint : link.child_joints) {
      const urdf::LinkConstSharedPtr child = m_robot.getLink(joint->child_link_name);
      const hyx::AffineMatrix4x4 local = toMatrix(joint->parent_to_joint_origin_transform) * place.local;
      const bool merged = joint->type == urdf::Joint::FIXED && !child->inertial;
      if (merged) {
        fill(*child, {place.body, local});
        addChildren(*child, {place.body, local});
      } else {
        hyx::RigidBody* body = makeBody(*child, local * place.body->getTransform());
        join(*joint, place.body, body);
        addChildren(*child, {body, hyx::AffineMatrix4x4()});
      }
    }
  }

  hyx::RigidBody* makeBody(const urdf::Link& link, const hyx::AffineMatrix4x4& transform) {
    hyx::ref_ptr<hyx::RigidBody> body = new hyx::RigidBody(hyx::Name(m_params.namePrefix + link.name));
    body->setTransform(transform);
    fill(link, {body.get(), hyx::AffineMatrix4x4()});
    if (link.inertial) setMass(*body, *link.inertial);
    m_assembly->add(body.get());
    return body.get();
  }

  void fill(const urdf::Link& link, const Place& place) {
    for (const urdf::CollisionSharedPtr& collision : link.collision_array)
      if (collision->geometry)
        place.body->add(makeCollision(*collision->geometry, toMatrix(collision->origin) * place.local, m_files).get());
    for (const urdf::VisualSharedPtr& visual : link.visual_array)
      if (visual->geometry)
        m_model.visuals.push_back({place.body, makeVisual(*visual, toMatrix(visual->origin) * place.local, m_files)});
  }

  static void setMass(hyx::RigidBody& body, const urdf::Inertial& inertial) {
    if (!(inertial.mass > 0)) return;
    body.setMass(inertial.mass);
    const hyx::AffineMatrix4x4 frame = toMatrix(inertial.origin);
    body.setCenterOfMass(frame.getTranslate());
    // The diagonal in the link's axes: the sum over the tensor, turned by the inertial frame's rotation.
    const double tensor[3][3] = {{inertial.ixx, inertial.ixy, inertial.ixz},
                                 {inertial.ixy, inertial.iyy, inertial.iyz},
                                 {inertial.ixz, inertial.iyz, inertial.izz}};
    hyx::Vec3 diagonal;
    for (int axis = 0; axis < 3; ++axis)
      for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) diagonal[axis] += frame(i, axis) * tensor[i][j] * frame(j, axis);
    if (diagonal.x > 0 && diagonal.y > 0 && diagonal.z > 0) body.setInertia(diagonal);
  }

  void join(const urdf::Joint& joint, hyx::RigidBody* parent, hyx::RigidBody* child) {
    for (const auto& one : parent->getGeometries())
      for (const auto& other : child->getGeometries()) one->setEnableCollisions(other.get(), false);
    if (hyx::ref_ptr<hyx::Constraint> constraint = makeJoint(joint, parent, child)) {
      constraint->setName(hyx::Name(m_params.namePrefix + joint.name));
      m_assembly->add(constraint.get());
    }
  }

  hyx::ref_ptr<hyx::Constraint> makeJoint(const urdf::Joint& joint, hyx::RigidBody* parent, hyx::RigidBody* child) {
    const hyx::AffineMatrix4x4 frame = child->getTransform();
    const hyx::Vec3 axis = frame.transformVector(hyx::Vec3(joint.axis.x, joint.axis.y, joint.axis.z));
    switch (joint.type) {  // the child comes first: positions count its motion against the parent
      case urdf::Joint::REVOLUTE:
      case urdf::Joint::CONTINUOUS: return limited(new hyx::Hinge(frame.getTranslate(), axis, child, parent), joint);
      case urdf::Joint::PRISMATIC: return limited(new hyx::Prismatic(frame.getTranslate(), axis, child, parent), joint);
      case urdf::Joint::FIXED: return new hyx::LockJoint(parent, child);
      case urdf::Joint::FLOATING: return nullptr;
      default: throw std::runtime_error("the joint '" + joint.name + "' is planar, which is not supported");
    }
  }

  /// The range keeps to the limits; the motor, off at first, has the joint's effort.
  static hyx::ref_ptr<hyx::Constraint> limited(hyx::ref_ptr<hyx::Constraint1DOF> constraint, const urdf::Joint& joint) {
    if (!joint.limits) return constraint;
    if (joint.type != urdf::Joint::CONTINUOUS && joint.limits->lower <= joint.limits->upper) {
      constraint->getRange1D()->setRange(hyx::RangeReal(joint.limits->lower, joint.limits->upper));
      constraint->getRange1D()->setEnable(true);
    }
    if (joint.limits->effort > 0) constraint->getMotor1D()->setForceRange(hyx::RangeReal(joint.limits->effort));
    return constraint;
  }

  const urdf::ModelInterface& m_robot;
  const UrdfFiles& m_files;
  const OptParams& m_params;
  UrdfModel& m_model;
  hyx::ref_ptr<hyxSDK::Assembly> m_assembly;
};

urdf::ModelInterfaceSharedPtr parse(const std::string& path, std::vector<std::string>& errors) {
  if (!std::filesystem::is_regular_file(path)) {
    errors.push_back("the file '" + path + "' cannot be read");
    return nullptr;
  }
  if (std::filesystem::path(path).extension() != ".urdf") {
    errors.push_back("the file '" + path + "' is of a closed format; robot descriptions with the ending .urdf are read");
    return nullptr;
  }
  ParserErrors parserErrors;
  const urdf::ModelInterfaceSharedPtr robot = urdf::parseURDFFile(path);
  errors = parserErrors.texts;
  if (!robot && errors.empty()) errors.push_back("the file '" + path + "' is no robot description");
  if (robot && !robot->getRoot()) errors.push_back("the robot in '" + path + "' has no root link");
  return errors.empty() ? robot : nullptr;
}

}  // namespace

UrdfModel readUrdf(const std::string& path, const std::string& modelName, const OptParams& params) {
  UrdfModel model;
  const urdf::ModelInterfaceSharedPtr robot = parse(path, model.result.errors);
  if (!robot) return model;
  model.result.modelName = robot->getName();
  if (!modelName.empty() && modelName != robot->getName()) {
    model.result.errors.push_back("the file '" + path + "' holds the model '" + robot->getName() + "', not '" + modelName + "'");
    return model;
  }
  try {
    model.result.assembly = Builder(*robot, {path, params.searchPaths}, params, model).build();
  } catch (const std::exception& error) {
    model.result.errors.push_back(error.what());
    model.visuals.clear();
  }
  return model;
}

void UrdfModel::createVisuals(osg::Group& root, bool frames) const {
  osg::ref_ptr<osg::Group> group = new osg::Group;
  group->setName(result.modelName);
  for (const Visual& visual : visuals) {
    osg::ref_ptr<osg::MatrixTransform> following = new osg::MatrixTransform(osg::Matrixd(visual.body->getTransform().ptr()));
    following->setName(visual.body->getName());
    following->addChild(visual.node);
    following->addUpdateCallback(new BodyCallback(visual.body.get()));
    group->addChild(following);
  }
  constexpr float thickness = 0.5f, length = 0.25f;
  if (frames)
    for (const auto& body : result.assembly->getRigidBodies())
      hyxOSG::createAxes(body.get(), static_cast<hyx::Frame*>(nullptr), group.get(), thickness, length);
  root.addChild(group);
}

}  // namespace hyxtavlang
