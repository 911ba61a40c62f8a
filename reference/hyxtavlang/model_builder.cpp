// Builds bodies and joints from a model tree.
#include "reference/hyxtavlang/model_builder.h"

#include "platform/hyx/bodies/contact_material.h"
#include "platform/hyxtavlang/model_sensors.h"
#include "reference/hyxtavlang/body_masses.h"
#include "reference/hyxtavlang/built_materials.h"
#include "reference/hyxtavlang/collision_rules.h"
#include "reference/hyxtavlang/joint_array_implementation.h"
#include "reference/hyxtavlang/joint_builder.h"
#include "reference/hyxtavlang/mimic.h"
#include "reference/hyxtavlang/shape_builder.h"
#include "reference/hyxtavlang/tree_parts.h"

#include <osg/MatrixTransform>

#include <algorithm>
#include <map>
#include <set>

namespace hyxtavlang {
namespace {

namespace model3d = tavlang::Physics3D;
namespace joints = tavlang::Robotics::Joints;

/// Bodies that are locked to each other become one body, with the name of the first.
class ModelBuilder {
public:
    ModelBuilder(model3d::System const& tree, OptParams const& params, BuiltModel& model)
        : m_tree(tree), m_params(params), m_model(model), m_assembly(new hyxSDK::Assembly(tree.name)) {
        m_array->drives = new JointDrives;
    }

    void build() {
        try {
            buildParts();
        } catch (std::exception const& error) {
            throw PartError(error.what(), m_line);
        }
    }

private:
    void buildParts() {
        for (auto const& joint : partsOf<joints::Joint>(m_tree))
            if (!joint->closesLoop)
                m_holders[joint->child.get()].push_back(joint.get());
        for (auto const& given : partsOf<model3d::Material>(m_tree)) {
            m_line = given->line;
            m_model.materials.push_back(m_materials.get(*given));
        }
        for (auto const& pair : partsOf<model3d::CollisionPair>(m_tree))
            m_paired.insert({pair->first.get(), pair->second.get()});
        for (auto const& body : partsOf<model3d::Body>(m_tree))
            placeOf(*body);
        for (auto const& [body, masses] : m_masses) {
            m_line = masses.line();
            masses.giveTo(*body);
        }
        for (hyx::RigidBody* body : m_fixed)
            body->setMotionControl(hyx::RigidBody::STATIC);
        for (auto const& body : partsOf<model3d::Body>(m_tree))
            push(*body);
        for (auto const& body : partsOf<model3d::Body>(m_tree))
            hang(*body);
        for (auto const& joint : partsOf<joints::Joint>(m_tree))
            if (joint->closesLoop)
                close(*joint);
        refuseMovingGround();
        addActuators();
        addMimics();
        for (auto const& exclusion : partsOf<model3d::CollisionExclusion>(m_tree))
            exclude(*exclusion);
        for (auto const& pair : partsOf<model3d::CollisionPair>(m_tree))
            join(*pair);
        m_rules.apply();
        mount<tavlang::Visuals::Camera>();
        mount<tavlang::Sensors::Sensor>();
        mount<model3d::Site>();
        for (auto const& light : partsOf<tavlang::Visuals::Light>(m_tree))
            m_model.lights.push_back(makeLight(*light));
        m_assembly->add(m_array->drives.get());
        for (auto const& settings : partsOf<tavlang::Simulation::Settings>(m_tree))
            if (settings->hasGravity)
                m_model.gravity = settings->gravity;
        m_model.result.assembly = m_assembly;
        m_model.result.joints = new JointArray(std::move(m_array));
    }

    /// The body that a body of the tree belongs to, and where in it.
    struct Place {
        hyx::RigidBody* body = nullptr;
        hyx::AffineMatrix4x4 local;
    };

    joints::Joint const* lockOf(model3d::Body const& body) const {
        auto const holders = m_holders.find(&body);
        if (holders == m_holders.end() || holders->second.size() != 1)
            return nullptr;
        return dynamic_cast<joints::LockJoint const*>(holders->second.front());
    }

    bool isRoot(model3d::Body const& body) const {
        auto const holders = m_holders.find(&body);
        return holders == m_holders.end() ||
               (holders->second.size() == 1 && dynamic_cast<joints::FreeJoint const*>(holders->second.front()) &&
                !holders->second.front()->parent);
    }

    Place const& placeOf(model3d::Body const& body) {
        if (auto const known = m_places.find(&body); known != m_places.end()) {
            if (!known->second.body)
                throw ModelError("the body '" + body.name + "' hangs on itself");
            return known->second;
        }
        m_places[&body];
        m_line = body.line;
        Place place;
        joints::Joint const* const lock = lockOf(body);
        if (lock && lock->parent) {
            place.body = placeOf(*lock->parent).body;
            place.local = body.transform * place.body->getTransform().inverse();
        } else {
            place.body = makeBody(body);
            if (body.fixed || lock || (isRoot(body) && m_params.fixedBase))
                m_fixed.insert(place.body);
        }
        fill(body, place);
        return m_places[&body] = place;
    }

    hyx::RigidBody* makeBody(model3d::Body const& body) {
        hyx::ref_ptr<hyx::RigidBody> made = new hyx::RigidBody(hyx::Name(m_params.namePrefix + body.name));
        made->setTransform(body.transform);
        if (body.kinematic)
            made->setMotionControl(hyx::RigidBody::KINEMATICS);
        m_assembly->add(made.get());
        return made.get();
    }

    /// Gives a body its speeds, of which those of its centre depend on its mass.
    void push(model3d::Body const& body) {
        hyx::RigidBody& made = *m_places.at(&body).body;
        if (body.velocity.length() > 0)
            made.setVelocity(body.velocity);
        if (body.angularVelocity.length() > 0)
            made.setAngularVelocity(body.angularVelocity);
    }

    void fill(model3d::Body const& body, Place const& place) {
        for (auto const& shape : partsOf<model3d::Geometry>(body))
            if (shape->belongsTo || shape->collidesWith || m_paired.count(shape.get()))
                addShape(*shape, place, body.fixed);
        for (auto const& visual : partsOf<tavlang::Visuals::Visual>(body))
            addVisual(*visual, place);
        m_line = body.line;
        if (body.shapesWeigh)
            weighShapes(body, *place.body);
        else if (body.hasMass && body.mass > 0)
            m_masses[place.body].add(body, place.local);
    }

    static void weighShapes(model3d::Body const& body, hyx::RigidBody& made) {
        made.updateMassProperties();
        if (body.mass > 0)
            made.setMass(body.mass);
    }

    void addVisual(tavlang::Visuals::Visual const& visual, Place const& place) {
        m_line = visual.line;
        auto const collides = m_geometries.find(visual.geometry.get());
        if (collides != m_geometries.end()) {
            m_model.visuals.push_back({place.body, collides->second,
                                       makeOwnNode(*visual.geometry, visual.material != nullptr), visual.material});
            return;
        }
        osg::ref_ptr<osg::MatrixTransform> const local = new osg::MatrixTransform(osg::Matrixd(place.local.ptr()));
        local->addChild(makeVisual(visual));
        m_model.visuals.push_back({place.body, nullptr, local, nullptr});
    }

    void addShape(model3d::Geometry const& shape, Place const& place, bool ground) {
        m_line = shape.line;
        BuiltShape const built = makeShape(shape);
        hyx::ref_ptr<hyxCollide::Geometry> made = new hyxCollide::Geometry(built.shape.get(), hyx::Name(shape.name));
        made->setLocalTransform(built.turn * shape.transform * place.local);
        made->setSensor(shape.sensor);
        if (shape.material)
            made->setMaterial(m_materials.get(*shape.material));
        place.body->add(made.get());
        m_geometries[&shape] = made;
        if (dynamic_cast<model3d::Geometries::Plane const*>(&shape) ||
            dynamic_cast<model3d::Geometries::HeightField const*>(&shape))
            m_grounds.emplace_back(place.body, shape.line);
        m_rules.add(*made, *place.body, shape, ground);
    }

    /// Connects a body to what it hangs on, by one joint after the other with a light body between two.
    void hang(model3d::Body const& body) {
        auto const holders = m_holders.find(&body);
        if (!m_hung.insert(&body).second)
            return;
        m_line = body.line;
        if (holders != m_holders.end() && holders->second.front()->parent)
            hang(*holders->second.front()->parent); // places are found from the roots to the tips
        if (holders == m_holders.end() || lockOf(body))
            return standWithoutMass(body);
        hyx::RigidBody* const child = m_places.at(&body).body;
        auto const& parentBody = holders->second.front()->parent;
        hyx::RigidBody* parent = parentBody ? m_places.at(parentBody.get()).body : nullptr;
        if (parent == child)
            throw ModelError("the joint '" + holders->second.front()->name + "' connects what is one body");
        if (parent && !m_tree.neighboursCollide)
            m_rules.separate(*parent, *child);
        for (joints::Joint const* joint : holders->second) {
            bool const last = joint == holders->second.back();
            hyx::RigidBody* const next = last ? child : carrier(*joint, body, *child);
            join(*joint, body.transform, parent, next);
            parent = next;
        }
    }

    void standWithoutMass(model3d::Body const& body) {
        Place const& place = m_places.at(&body);
        if (isRoot(body) && !body.shapesWeigh && !m_masses.count(place.body))
            place.body->setMotionControl(hyx::RigidBody::STATIC);
    }

    /// Light enough not to count, heavy enough to be solved for.
    hyx::RigidBody* carrier(joints::Joint const& joint, model3d::Body const& body, hyx::RigidBody const& child) {
        constexpr double share = 1e-6;
        hyx::ref_ptr<hyx::RigidBody> made =
            new hyx::RigidBody(hyx::Name(m_params.namePrefix + body.name + "/" + joint.name));
        made->setTransform(body.transform);
        made->setMass(child.getMass() * share);
        hyx::Vec3 const inertia = child.getInertia();
        double const greatest = std::max({inertia.x, inertia.y, inertia.z}) * share;
        made->setInertia(hyx::Vec3(greatest, greatest, greatest));
        made->setCenterOfMass(joint.anchor);
        m_assembly->add(made.get());
        return made.get();
    }

    void join(joints::Joint const& joint, hyx::AffineMatrix4x4 const& frame, hyx::RigidBody* parent,
              hyx::RigidBody* child) {
        if (m_params.fixedBase && child->getMotionControl() == hyx::RigidBody::STATIC)
            return;
        m_line = joint.line;
        hyx::AffineMatrix4x4 const above = parent ? parent->getTransform() : hyx::AffineMatrix4x4();
        Link link{parent, child, -1, child->getTransform() * above.inverse(), {}, {}};
        if (hyx::ref_ptr<hyx::Constraint> constraint = makeJoint(joint, frame, parent, child)) {
            constraint->setName(hyx::Name(m_params.namePrefix + joint.name));
            m_assembly->add(constraint.get());
            if (auto const* single = dynamic_cast<joints::SingleAxisJoint const*>(&joint)) {
                link.drive = static_cast<int>(m_array->names.size());
                hyx::AffineMatrix4x4 const toParent = frame * above.inverse();
                link.anchor = toParent.transformPoint(joint.anchor);
                link.axis = toParent.transformVector(joint.axis);
                m_array->names.push_back(constraint->getName());
                m_array->drives->drives.emplace_back(dynamic_cast<hyx::Constraint1DOF*>(constraint.get()), *single);
                m_driveOf[single] = link.drive;
            }
        }
        m_array->links.push_back(link);
    }

    void close(joints::Joint const& joint) {
        m_line = joint.line;
        hyx::RigidBody* const child = m_places.at(joint.child.get()).body;
        hyx::RigidBody* const parent = joint.parent ? m_places.at(joint.parent.get()).body : nullptr;
        if (parent == child)
            return;
        if (hyx::ref_ptr<hyx::Constraint> constraint = makeJoint(joint, joint.child->transform, parent, child)) {
            constraint->setName(hyx::Name(m_params.namePrefix + joint.name));
            m_assembly->add(constraint.get());
        }
    }

    void exclude(model3d::CollisionExclusion const& exclusion) {
        auto const first = m_places.find(exclusion.first.get()), second = m_places.find(exclusion.second.get());
        if (first != m_places.end() && second != m_places.end())
            m_rules.separate(*first->second.body, *second->second.body);
    }

    void join(model3d::CollisionPair const& pair) {
        m_line = pair.line;
        m_rules.join(*pair.first, *pair.second);
        hyx::ref_ptr<hyx::ContactMaterial> const made =
            new hyx::ContactMaterial(m_materials.get(*pair.first->material), m_materials.get(*pair.second->material));
        made->setFriction(pair.friction);
        m_model.contactMaterials.push_back(made);
    }

    BuiltLight makeLight(tavlang::Visuals::Light const& light) const {
        auto const place = m_places.find(light.body.get());
        bool const mounted = place != m_places.end();
        hyx::AffineMatrix4x4 const local = mounted ? place->second.local : hyx::AffineMatrix4x4();
        return {light, mounted ? place->second.body : nullptr, local.transformPoint(light.position),
                local.transformVector(light.direction)};
    }

    void refuseMovingGround() {
        for (auto const& [body, line] : m_grounds)
            if (body->getMotionControl() == hyx::RigidBody::DYNAMICS) {
                m_line = line;
                throw ModelError("the body '" + body->getName() +
                                 "' moves with a plane or height field, expected in the world or on a fixed body");
            }
    }

    /// Gives the sensors of a kind their places on the bodies.
    template <class Sensor>
    void mount() {
        for (auto const& sensor : partsOf<Sensor>(m_tree)) {
            auto const place = m_places.find(sensor->body.get());
            bool const mounted = place != m_places.end();
            m_model.result.sensorFrames[sensor->name] =
                new hyx::Frame(mounted ? sensor->transform * place->second.local : sensor->transform,
                               mounted ? place->second.body->getFrame() : nullptr);
            if (mounted)
                m_model.result.sensorBodies[sensor->name] = place->second.body;
        }
    }

    JointDrive& driveOf(joints::SingleAxisJoint const& joint) {
        auto const found = m_driveOf.find(&joint);
        if (found == m_driveOf.end())
            throw ModelError("the joint '" + joint.name + "' is not there to be driven");
        return m_array->drives->drives[found->second];
    }

    void addActuators() {
        for (auto const& actuator : partsOf<tavlang::Control::Actuator>(m_tree)) {
            m_line = actuator->line;
            driveOf(*actuator->joint).add(*actuator);
        }
    }

    void addMimics() {
        for (auto const& mimic : partsOf<tavlang::Robotics::Mimic>(m_tree)) {
            m_line = mimic->line;
            hyx::Constraint1DOF* const follower = driveOf(*mimic->follower).joint.get();
            if (!mimic->leader) {
                driveOf(*mimic->follower).setTarget(mimic->offset);
                continue;
            }
            JointDrive const& leader = driveOf(*mimic->leader);
            double const offset = mimic->offset + mimic->multiplier * leader.start - driveOf(*mimic->follower).start;
            auto const& [second, third, fourth] = mimic->curve;
            m_assembly->add(hyx::ref_ptr<Mimic>(new Mimic(follower, leader.joint.get(),
                                                          {offset, mimic->multiplier, second, third, fourth}))
                                .get());
        }
    }

    model3d::System const& m_tree;
    OptParams const& m_params;
    BuiltModel& m_model;
    hyx::ref_ptr<hyxSDK::Assembly> m_assembly;
    std::unique_ptr<JointArray::Implementation> m_array = std::make_unique<JointArray::Implementation>();
    std::map<model3d::Body const*, std::vector<joints::Joint const*>> m_holders;
    std::map<model3d::Body const*, Place> m_places;
    std::map<hyx::RigidBody*, BodyMasses> m_masses; ///< of the bodies that a part gives mass
    std::set<hyx::RigidBody*> m_fixed;
    std::set<model3d::Body const*> m_hung;
    std::set<model3d::Geometry const*> m_paired; ///< what collides with one other at least
    std::map<model3d::Geometry const*, hyx::ref_ptr<hyxCollide::Geometry>> m_geometries;
    BuiltMaterials m_materials;
    std::map<joints::SingleAxisJoint const*, int> m_driveOf;
    CollisionRules m_rules{m_params};
    std::vector<std::pair<hyx::RigidBody*, int>> m_grounds; ///< what has planes or height fields, and their lines
    int m_line = 0;                                         ///< of what is being built
};

} // namespace

void buildModel(ModelTree const& tree, OptParams const& params, BuiltModel& model) {
    ModelBuilder(*tree, params, model).build();
}

} // namespace hyxtavlang
