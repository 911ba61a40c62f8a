// Reads scenes in JSON into model trees: bodies, joints, materials, looks.
#include "platform/hyxtavlang/model_joints.h"
#include "platform/hyxtavlang/model_looks.h"
#include "reference/hyxtavlang/resource_paths.h"
#include "reference/hyxtavlang/scene_document.h"

#include <filesystem>

namespace hyxtavlang {
namespace {

namespace model3d = tavlang::Physics3D;
namespace shapes = tavlang::Physics3D::Geometries;
namespace joints = tavlang::Robotics::Joints;

/// Round shapes of the file stand along Y, those of the tree along Z.
hyx::AffineMatrix4x4 const fromZ(hyx::Quat(hyx::Vec3(0, 0, 1), hyx::Vec3(0, 1, 0)));

class SceneReader {
public:
    SceneReader(SceneDocument const& document, std::vector<std::string> const& searchPaths)
        : m_document(document), m_searchPaths(searchPaths) {}

    ModelTree read() {
        SceneEntry const scene(m_document, m_document.root, "");
        m_tree->name = scene.text("name", std::filesystem::path(m_document.path).stem().string());
        m_tree->line = scene.line();
        m_tree->neighboursCollide = true;
        if (scene.has("gravity"))
            readGravity(scene);
        for (SceneEntry const& entry : scene.list("materials"))
            readMaterial(entry);
        for (SceneEntry const& entry : scene.list("bodies"))
            readBody(entry);
        for (SceneEntry const& entry : scene.list("constraints"))
            readConstraint(entry);
        remarkRest(scene);
        return m_tree;
    }

private:
    template <class Made>
    static std::shared_ptr<Made> make(SceneEntry const& entry, tavlang::Core::Object& parent) {
        auto const made = std::make_shared<Made>();
        made->name = entry.text("name", "");
        made->line = entry.line();
        parent.children.push_back(made);
        return made;
    }

    void remarkRest(SceneEntry const& entry) {
        for (auto const& [key, line] : entry.rest())
            if (m_remarked.insert(key).second)
                m_tree->annotations.push_back(
                    std::make_shared<tavlang::Annotation>("\"" + key + "\" is not carried over", entry.path(), line));
    }

    void readGravity(SceneEntry const& scene) {
        auto const settings = std::make_shared<tavlang::Simulation::Settings>();
        settings->line = scene.line();
        settings->hasGravity = true;
        settings->gravity = scene.vector("gravity");
        m_tree->children.push_back(settings);
    }

    template <class List>
    static auto named(List const& list, SceneEntry const& entry, char const* key) {
        auto const found = list.find(entry.text(key));
        if (found == list.end())
            entry.fail(std::string("there is no \"") + entry.text(key) + "\" for its \"" + key + "\"");
        return found->second;
    }

    void readMaterial(SceneEntry const& entry) {
        auto const made = make<model3d::Material>(entry, *m_tree);
        m_materials.emplace(entry.text("name"), made);
        made->density = entry.positive("density", made->density);
        made->friction = entry.has("friction") ? entry.number("friction") : made->friction;
        made->restitution = entry.has("restitution") ? entry.number("restitution") : made->restitution;
        remarkRest(entry);
    }

    template <class Round>
    static std::shared_ptr<model3d::Geometry> readRound(SceneEntry const& entry, model3d::Body& body) {
        auto const made = make<Round>(entry, body);
        made->transform = fromZ;
        made->radius = entry.number("radius");
        made->height = entry.number("height");
        return made;
    }

    std::shared_ptr<model3d::Geometry> readMesh(SceneEntry const& entry, model3d::Body& body) const {
        auto const made = make<shapes::Mesh>(entry, body);
        std::string const file = entry.text("file");
        made->file = findResource(file, m_document.path, m_searchPaths);
        if (made->file.empty())
            entry.fail("the file '" + file + "' was not found; expected beside the scene or in a search path");
        made->scale = entry.vector("scale", made->scale);
        return made;
    }

    std::shared_ptr<model3d::Geometry> readShape(SceneEntry const& entry, model3d::Body& body) const {
        std::string const kind = entry.text("shape");
        if (kind == "box") {
            auto const made = make<shapes::Box>(entry, body);
            made->halfExtents = entry.vector("halfExtents");
            return made;
        }
        if (kind == "sphere") {
            auto const made = make<shapes::Sphere>(entry, body);
            made->radius = entry.number("radius");
            return made;
        }
        if (kind == "plane") {
            auto const made = make<shapes::Plane>(entry, body);
            hyx::Vec3 const normal = entry.vector("normal", hyx::Vec3(0, 0, 1));
            if (!(normal.length() > 0))
                entry.fail("expected a direction in \"normal\", not zeros");
            made->transform = hyx::AffineMatrix4x4(hyx::Quat(hyx::Vec3(0, 0, 1), normal), hyx::Vec3());
            return made;
        }
        if (kind == "cylinder")
            return readRound<shapes::Cylinder>(entry, body);
        if (kind == "capsule")
            return readRound<shapes::Capsule>(entry, body);
        if (kind == "cone")
            return readRound<shapes::Cone>(entry, body);
        if (kind == "mesh")
            return readMesh(entry, body);
        entry.fail("expected box, sphere, cylinder, capsule, cone, plane or mesh in \"shape\", not \"" + kind + "\"");
    }

    void readGeometry(SceneEntry const& entry, model3d::Body& body) {
        std::shared_ptr<model3d::Geometry> const made = readShape(entry, body);
        made->transform = made->transform * entry.place();
        made->sensor = entry.flag("sensor", false);
        if (entry.has("material"))
            made->material = named(m_materials, entry, "material");
        auto const visual = make<tavlang::Visuals::Visual>(entry, body);
        visual->geometry = made;
        if (entry.has("color")) {
            visual->material = std::make_shared<tavlang::Visuals::Material>();
            auto const [r, g, b, a] = entry.numbers<4>("color");
            visual->material->color = hyx::Vec4f(float(r), float(g), float(b), float(a));
        }
        remarkRest(entry);
    }

    void readBody(SceneEntry const& entry) {
        auto const body = make<model3d::Body>(entry, *m_tree);
        m_bodies.emplace(body->name, body);
        std::string const motion = entry.text("motion", "dynamics");
        if (motion != "dynamics" && motion != "kinematics" && motion != "static")
            entry.fail("expected dynamics, kinematics or static in \"motion\", not \"" + motion + "\"");
        body->fixed = motion == "static";
        body->kinematic = motion == "kinematics";
        body->transform = entry.place();
        body->velocity = entry.vector("velocity", hyx::Vec3());
        body->angularVelocity = entry.vector("angularVelocity", hyx::Vec3());
        body->shapesWeigh = true;
        body->mass = entry.positive("mass", 0);
        for (SceneEntry const& part : entry.list("geometries"))
            readGeometry(part, *body);
        remarkRest(entry);
    }

    std::shared_ptr<joints::Joint> makeJoint(SceneEntry const& entry) {
        std::string const type = entry.text("type");
        if (type == "hinge")
            return make<joints::HingeJoint>(entry, *m_tree);
        if (type == "prismatic")
            return make<joints::PrismaticJoint>(entry, *m_tree);
        if (type == "ball")
            return make<joints::BallJoint>(entry, *m_tree);
        if (type == "lock")
            return make<joints::LockJoint>(entry, *m_tree);
        entry.fail("expected hinge, prismatic, ball or lock in \"type\", not \"" + type + "\"");
    }

    /// The first joint of a body holds it; more, and those of a ring, close loops, as locks do, which keep two bodies.
    void readConstraint(SceneEntry const& entry) {
        std::shared_ptr<joints::Joint> const joint = makeJoint(entry);
        joint->child = named(m_bodies, entry, "body1");
        joint->parent = entry.has("body2") ? named(m_bodies, entry, "body2") : nullptr;
        if (joint->parent == joint->child)
            entry.fail("connects a body with itself");
        hyx::Vec3 const place = entry.vector("position", joint->child->transform.getTranslate());
        hyx::Vec3 axis = entry.vector("axis", hyx::Vec3(0, 0, 1));
        if (!(axis.length() > 0))
            entry.fail("expected a direction in \"axis\", not zeros");
        if (joint->child->fixed && joint->parent) { // what stands still is the parent
            std::swap(joint->child, joint->parent);
            axis = axis * -1.0;
        }
        hyx::AffineMatrix4x4 const inChild = joint->child->transform.inverse();
        joint->anchor = inChild.transformPoint(place);
        joint->axis = inChild.transformVector(axis.normal());
        joint->closesLoop = entry.text("type") == "lock" || hangsOn(joint->parent.get(), *joint->child) ||
                            !m_parents.emplace(joint->child.get(), joint->parent.get()).second;
        if (auto const single = std::dynamic_pointer_cast<joints::SingleAxisJoint>(joint))
            readDrive(entry, *single);
        remarkRest(entry);
    }

    bool hangsOn(model3d::Body const* body, model3d::Body const& other) const {
        while (body && body != &other) {
            auto const found = m_parents.find(body);
            body = found == m_parents.end() ? nullptr : found->second;
        }
        return body != nullptr;
    }

    static void readDrive(SceneEntry const& entry, joints::SingleAxisJoint& joint) {
        if (entry.has("speed"))
            joint.speed = entry.number("speed");
        joint.hasRange = entry.has("range");
        if (!joint.hasRange)
            return;
        auto const [lower, upper] = entry.numbers<2>("range");
        if (!(lower <= upper))
            entry.fail("expected a lower and an upper end in \"range\"");
        joint.lower = lower;
        joint.upper = upper;
    }

    SceneDocument const& m_document;
    std::vector<std::string> const& m_searchPaths;
    ModelTree m_tree = std::make_shared<model3d::System>();
    std::map<std::string, std::shared_ptr<model3d::Material>> m_materials;
    std::map<std::string, std::shared_ptr<model3d::Body>> m_bodies;
    std::map<model3d::Body const*, model3d::Body const*> m_parents; ///< of those that a joint holds
    std::set<std::string> m_remarked;
};

} // namespace

ModelTree readScene(std::string const& path, std::vector<std::string> const& searchPaths) {
    SceneDocument const document(path);
    return SceneReader(document, searchPaths).read();
}

} // namespace hyxtavlang
