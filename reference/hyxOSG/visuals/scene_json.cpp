// Reads scenes in JSON: bodies, joints, materials, looks.
#include "reference/hyxOSG/visuals/scene_json.h"

#include "platform/hyx/bodies/material.h"
#include "platform/hyx/joints/ball_joint.h"
#include "platform/hyx/joints/hinge.h"
#include "platform/hyx/joints/lock_joint.h"
#include "platform/hyx/joints/motor1d.h"
#include "platform/hyx/joints/prismatic.h"
#include "platform/hyx/joints/range1d.h"
#include "platform/hyxCollide/box.h"
#include "platform/hyxCollide/capsule.h"
#include "platform/hyxCollide/cone.h"
#include "platform/hyxCollide/cylinder.h"
#include "platform/hyxCollide/plane.h"
#include "platform/hyxCollide/sphere.h"
#include "platform/hyxCollide/trimesh.h"
#include "platform/hyxOSG/visuals/read_file.h"
#include "platform/hyxOSG/visuals/trimesh_conversion.h"

#include <nlohmann/json.hpp>
#include <osg/Math>
#include <osg/MatrixTransform>
#include <osgDB/FileNameUtils>

#include <array>
#include <stdexcept>
#include <vector>

namespace hyxOSG {
namespace {

using Json = nlohmann::json;

/// A part of the file that knows its name, for messages.
class Entry {
public:
    Entry(Json const& json, std::string name) : m_json(json), m_name(std::move(name)) {
        if (!json.is_object())
            fail("must be an object");
    }

    [[noreturn]] void fail(std::string const& what) const { throw std::runtime_error(m_name + " " + what); }

    bool has(char const* key) const { return m_json.contains(key); }

    template <class Value>
    Value get(char const* key) const {
        try {
            return m_json.at(key).get<Value>();
        } catch (Json::exception const&) {
            fail(std::string(has(key) ? "has a wrong" : "needs a") + " \"" + key + "\"");
        }
    }

    template <class Value>
    Value get(char const* key, Value otherwise) const {
        return has(key) ? get<Value>(key) : otherwise;
    }

    hyx::Vec3 vector(char const* key, hyx::Vec3 const& otherwise = hyx::Vec3()) const {
        if (!has(key))
            return otherwise;
        auto const [x, y, z] = get<std::array<double, 3>>(key);
        return {x, y, z};
    }

    std::vector<Entry> list(char const* key) const {
        std::vector<Entry> entries;
        if (!has(key))
            return entries;
        Json const& values = m_json.at(key);
        if (!values.is_array())
            fail(std::string("has a \"") + key + "\" that is no list");
        for (std::size_t i = 0; i < values.size(); ++i)
            entries.emplace_back(values[i], m_name + ", " + key + "[" + std::to_string(i) + "]");
        return entries;
    }

    hyx::AffineMatrix4x4 place() const {
        hyx::Quat rotation;
        if (has("rpy"))
            rotation = hyx::Quat::fromEulerAngles(vector("rpy") * (osg::PI / 180));
        if (has("rotation")) {
            auto const [x, y, z, w] = get<std::array<double, 4>>("rotation");
            rotation = hyx::Quat(x, y, z, w);
        }
        return {rotation, vector("position")};
    }

private:
    Json const& m_json;
    std::string m_name;
};

class SceneReader {
public:
    explicit SceneReader(std::string const& folder) : m_folder(folder) {}

    SceneContent read(Entry const& scene) {
        m_content.hasGravity = scene.has("gravity");
        m_content.gravity = scene.vector("gravity");
        for (Entry const& entry : scene.list("materials"))
            m_content.materials.push_back(material(entry));
        for (Entry const& entry : scene.list("bodies"))
            m_content.bodies.push_back(body(entry));
        for (Entry const& entry : scene.list("constraints"))
            m_content.constraints.push_back(constraint(entry));
        return m_content;
    }

private:
    hyx::ref_ptr<hyx::Material> material(Entry const& entry) const {
        hyx::ref_ptr<hyx::Material> const made = new hyx::Material(entry.get<std::string>("name"));
        made->setDensity(entry.get("density", made->getDensity()));
        made->setFriction(entry.get("friction", made->getFriction()));
        made->setRestitution(entry.get("restitution", made->getRestitution()));
        return made;
    }

    hyx::ref_ptr<hyxCollide::Shape> mesh(Entry const& entry) const {
        std::string const file = entry.get<std::string>("file");
        osg::ref_ptr<osg::Node> const node =
            readNodeFile(osgDB::isAbsolutePath(file) ? file : osgDB::concatPaths(m_folder, file), true);
        if (!node)
            entry.fail("names the mesh file \"" + file + "\", which cannot be read");
        hyx::Vec3 const scale = entry.vector("scale", hyx::Vec3(1, 1, 1));
        osg::ref_ptr<osg::MatrixTransform> const scaled =
            new osg::MatrixTransform(osg::Matrix::scale(scale.x, scale.y, scale.z));
        scaled->addChild(node);
        hyx::ref_ptr<hyxCollide::Shape> const shape = createTrimesh(scaled);
        if (!shape)
            entry.fail("names the mesh file \"" + file + "\", which has no triangles");
        return shape;
    }

    hyx::ref_ptr<hyxCollide::Shape> shape(Entry const& entry) const {
        std::string const kind = entry.get<std::string>("shape");
        if (kind == "box")
            return new hyxCollide::Box(entry.vector("halfExtents"));
        if (kind == "sphere")
            return new hyxCollide::Sphere(entry.get<double>("radius"));
        if (kind == "cylinder")
            return new hyxCollide::Cylinder(entry.get<double>("radius"), entry.get<double>("height"));
        if (kind == "capsule")
            return new hyxCollide::Capsule(entry.get<double>("radius"), entry.get<double>("height"));
        if (kind == "cone")
            return new hyxCollide::Cone(entry.get<double>("radius"), entry.get<double>("height"));
        if (kind == "plane")
            return new hyxCollide::Plane(entry.vector("normal", hyx::Vec3(0, 0, 1)), hyx::Vec3());
        if (kind == "mesh")
            return mesh(entry);
        entry.fail("has the unknown shape \"" + kind + "\"");
    }

    template <class List>
    auto named(List const& list, Entry const& entry, char const* key) const {
        std::string const name = entry.get<std::string>(key);
        for (auto const& object : list)
            if (object->getName() == name)
                return object;
        entry.fail(std::string("names \"") + name + "\" as its \"" + key + "\", which is not there");
    }

    hyx::ref_ptr<hyxCollide::Geometry> geometry(Entry const& entry) {
        hyx::ref_ptr<hyxCollide::Geometry> const made =
            new hyxCollide::Geometry(shape(entry), entry.get<std::string>("name", ""));
        made->setSensor(entry.get("sensor", false));
        if (entry.has("material"))
            made->setMaterial(named(m_content.materials, entry, "material"));
        if (entry.has("color")) {
            auto const [r, g, b, a] = entry.get<std::array<float, 4>>("color");
            m_content.colors[made] = {r, g, b, a};
        }
        return made;
    }

    static hyx::RigidBody::MotionControl motion(Entry const& entry) {
        static std::map<std::string, hyx::RigidBody::MotionControl> const names{
            {"dynamics", hyx::RigidBody::DYNAMICS},
            {"kinematics", hyx::RigidBody::KINEMATICS},
            {"static", hyx::RigidBody::STATIC}};
        auto const place = names.find(entry.get<std::string>("motion", "dynamics"));
        if (place == names.end())
            entry.fail("has an unknown \"motion\"; use dynamics, kinematics or static");
        return place->second;
    }

    hyx::ref_ptr<hyx::RigidBody> body(Entry const& entry) {
        hyx::ref_ptr<hyx::RigidBody> const made = new hyx::RigidBody(entry.get<std::string>("name", ""));
        for (Entry const& part : entry.list("geometries"))
            made->add(geometry(part), part.place());
        made->setMotionControl(motion(entry));
        made->updateMassProperties();
        if (entry.has("mass"))
            made->setMass(entry.get<double>("mass"));
        made->setTransform(entry.place());
        made->setVelocity(entry.vector("velocity"));
        made->setAngularVelocity(entry.vector("angularVelocity"));
        return made;
    }

    hyx::ref_ptr<hyx::Constraint> constraint(Entry const& entry) const {
        hyx::ref_ptr<hyx::RigidBody> const first = named(m_content.bodies, entry, "body1");
        hyx::ref_ptr<hyx::RigidBody> second;
        if (entry.has("body2"))
            second = named(m_content.bodies, entry, "body2");
        hyx::Vec3 const position = entry.vector("position", first->getPosition()),
                        axis = entry.vector("axis", hyx::Vec3(0, 0, 1));
        std::string const type = entry.get<std::string>("type");
        hyx::ref_ptr<hyx::Constraint> made;
        if (type == "hinge")
            made = new hyx::Hinge(position, axis, first, second);
        else if (type == "prismatic")
            made = new hyx::Prismatic(position, axis, first, second);
        else if (type == "ball")
            made = new hyx::BallJoint(position, first, second);
        else if (type == "lock")
            made = new hyx::LockJoint(first.get(), second.get());
        else
            entry.fail("has the unknown type \"" + type + "\"");
        made->setName(entry.get<std::string>("name", ""));
        if (auto* const joint = dynamic_cast<hyx::Constraint1DOF*>(made.get()))
            drive(*joint, entry);
        return made;
    }

    static void drive(hyx::Constraint1DOF& joint, Entry const& entry) {
        if (entry.has("speed")) {
            joint.getMotor1D()->setSpeed(entry.get<double>("speed"));
            joint.getMotor1D()->setEnable(true);
        }
        if (entry.has("range")) {
            auto const [lower, upper] = entry.get<std::array<double, 2>>("range");
            joint.getRange1D()->setRange({lower, upper});
            joint.getRange1D()->setEnable(true);
        }
    }

    std::string m_folder;
    SceneContent m_content;
};

} // namespace

SceneContent readSceneJson(std::string const& text, std::string const& folder) {
    Json json;
    try {
        json = Json::parse(text);
    } catch (Json::parse_error const& error) {
        throw std::runtime_error(std::string("it is no JSON: ") + error.what());
    }
    try {
        return SceneReader(folder).read(Entry(json, "the scene"));
    } catch (std::logic_error const& error) { // values that the physics refuses
        throw std::runtime_error(error.what());
    }
}

} // namespace hyxOSG
