// Bodies of MJCF files: their joints, shapes and masses.
#include "reference/hyxtavlang/body_masses.h"
#include "reference/hyxtavlang/mjcf_context.h"

#include <algorithm>
#include <cmath>

namespace hyxtavlang {
namespace {

namespace model3d = tavlang::Physics3D;
namespace joints = tavlang::Robotics::Joints;
using BodyPtr = std::shared_ptr<model3d::Body>;

/// Where an element stands: in a body, or in a frame of it.
struct Surroundings {
    BodyPtr body;
    hyx::AffineMatrix4x4 local; ///< from here to the body
    std::string childClass;
};

/// What a body gathers while it is read.
struct Gathered {
    std::vector<std::shared_ptr<joints::Joint>> holders;
    std::vector<MjcfShape> shapes;
    std::vector<std::pair<MjcfElement, Surroundings>> bodies;
    std::unique_ptr<MjcfEntry> inertial;
};

class MjcfBodies {
public:
    explicit MjcfBodies(MjcfContext& context) : m_context(context) {}

    void read(std::vector<MjcfElement> const& worlds) {
        auto const world = std::make_shared<model3d::Body>();
        world->name = "world";
        world->fixed = true;
        m_context.bodies["world"] = world;
        m_welded.insert(world.get());
        m_context.tree->children.push_back(world);
        Gathered gathered;
        for (MjcfElement const& section : worlds)
            gather(section, {world, {}, section.text("childclass")}, gathered);
        if (!gathered.holders.empty())
            throw ModelError(worlds.front().file + ":" + std::to_string(worlds.front().xml->GetLineNum()) +
                             ": the world itself has a joint, expected in a body of it");
        addShapes(*world, gathered);
        for (auto const& [element, around] : gathered.bodies)
            readBody(element, around);
        if (world->children.empty())
            std::erase(m_context.tree->children, world);
        scaleMasses();
    }

private:
    void gather(MjcfElement const& section, Surroundings const& around, Gathered& gathered) {
        for (MjcfElement const& element : m_context.document.children(section)) {
            std::string const kind = element.name();
            if (kind == "body") {
                gathered.bodies.emplace_back(element, around);
            } else if (kind == "frame") {
                MjcfEntry const entry(element, {});
                std::string const own = element.text("childclass");
                gather(element,
                       {around.body, entry.place(m_context.compiler.angles) * around.local,
                        own.empty() ? around.childClass : own},
                       gathered);
            } else if (kind == "inertial") {
                gathered.inertial = std::make_unique<MjcfEntry>(element, MjcfAttributes());
            } else {
                readPart(m_context.entry(element, around.childClass), around, gathered);
            }
        }
    }

    void readPart(MjcfEntry const& entry, Surroundings const& around, Gathered& gathered) {
        std::string const kind = entry.kind();
        if (kind == "geom") {
            if (MjcfShape const shape = readMjcfShape(m_context, entry, around.local); shape.geometry) {
                gathered.shapes.push_back(shape);
                addVisual(entry, shape, *around.body);
                if (!entry.name().empty())
                    m_context.geoms.emplace(entry.name(), shape.geometry);
            }
        } else if (kind == "joint" || kind == "freejoint") {
            gathered.holders.push_back(joint(entry, around));
        } else if (kind == "site") {
            addSite(entry, around);
        } else if (kind == "light") {
            addLight(entry, around);
        } else if (kind == "camera") {
            addCamera(entry, around);
        } else {
            return m_context.remark("<" + kind + ">", entry.file(), entry.line());
        }
        m_context.remarkRest(entry);
    }

    /// The viewers of this format leave out the groups from 3 on, which are those of shapes that only collide.
    void addVisual(MjcfEntry const& entry, MjcfShape const& shape, model3d::Body& body) {
        constexpr int seen = 3;
        auto const look = readMjcfLook(m_context, entry);
        if (shape.group >= seen)
            return;
        auto const visual = std::make_shared<tavlang::Visuals::Visual>();
        visual->name = entry.name();
        visual->line = entry.line();
        visual->geometry = shape.geometry;
        visual->material = look;
        body.children.push_back(visual);
    }

    static void addShapes(model3d::Body& body, Gathered const& gathered) {
        for (MjcfShape const& shape : gathered.shapes)
            body.children.push_back(shape.geometry);
    }

    void readBody(MjcfElement const& element, Surroundings const& around) {
        MjcfEntry const entry(element, {});
        auto const body = std::make_shared<model3d::Body>();
        body->name = entry.name();
        body->line = entry.line();
        body->transform = entry.place(m_context.compiler.angles) * around.local * around.body->transform;
        m_context.tree->children.push_back(body);
        if (!body->name.empty() && !m_context.bodies.emplace(body->name, body).second)
            entry.fail("has the name of another body");
        if (entry.flag("mocap", false))
            m_context.remark("\"mocap\" of <body>", entry.file(), entry.line());
        std::string const own = element.text("childclass");
        Gathered gathered;
        gather(element, {body, {}, own.empty() ? around.childClass : own}, gathered);
        addShapes(*body, gathered);
        weigh(entry, *body, gathered);
        hold(body, around.body, gathered.holders);
        m_context.remarkRest(entry);
        for (auto const& [child, inside] : gathered.bodies)
            readBody(child, inside);
    }

    /// A body without joints is a part of its parent. What hangs on the world, or on a part of it, may touch it.
    void hold(BodyPtr const& body, BodyPtr const& parent, std::vector<std::shared_ptr<joints::Joint>> holders) {
        if (holders.empty()) {
            auto const lock = std::make_shared<joints::LockJoint>();
            lock->line = body->line;
            holders.push_back(lock);
            if (m_welded.count(parent.get()))
                m_welded.insert(body.get());
        }
        for (auto const& joint : holders) {
            joint->parent = m_welded.count(parent.get()) ? nullptr : parent;
            joint->child = body;
            m_context.tree->children.push_back(joint);
        }
    }

    void weigh(MjcfEntry const& entry, model3d::Body& body, Gathered const& gathered) {
        MjcfCompiler const& compiler = m_context.compiler;
        bool const fromShapes =
            compiler.inertiaFromShapes == "true" || (compiler.inertiaFromShapes == "auto" && !gathered.inertial);
        body.hasMass = true;
        if (fromShapes)
            addUp(body, gathered);
        else if (gathered.inertial)
            readInertial(*gathered.inertial, body);
        body.mass = std::max(body.mass, compiler.leastMass);
        for (int i = 0; i < 3; ++i)
            body.inertia[i] = std::max(body.inertia[i], compiler.leastInertia);
        if (!(body.mass >= 0))
            entry.fail("has a negative mass");
    }

    void addUp(model3d::Body& body, Gathered const& gathered) const {
        auto const& groups = m_context.compiler.inertiaGroups;
        std::vector<model3d::Body> parts;
        hyx::Vec3 moment;
        for (MjcfShape const& shape : gathered.shapes) {
            if (shape.group < groups[0] || shape.group > groups[1])
                continue;
            parts.push_back(shape.weigh());
            model3d::Body const& part = parts.back();
            body.mass += part.mass;
            moment += part.transform.transformPoint(part.centerOfMass) * part.mass;
        }
        if (!(body.mass > 0))
            return;
        body.centerOfMass = moment / body.mass;
        for (model3d::Body const& part : parts)
            addTensor(body, part.inertia, part.transform, part.mass,
                      part.transform.transformPoint(part.centerOfMass) - body.centerOfMass);
    }

    /// Adds a tensor along the axes of `turn`, of a mass whose centre is `off` the whole's.
    static void addTensor(model3d::Body& body, std::array<double, 6> const& given, hyx::AffineMatrix4x4 const& turn,
                          double mass, hyx::Vec3 const& off) {
        auto const& [xx, yy, zz, xy, xz, yz] = given;
        double const tensor[3][3] = {{xx, xy, xz}, {xy, yy, yz}, {xz, yz, zz}};
        static constexpr int rows[6][2] = {{0, 0}, {1, 1}, {2, 2}, {0, 1}, {0, 2}, {1, 2}};
        for (std::size_t n = 0; n < 6; ++n) {
            auto const [i, j] = rows[n];
            for (int k = 0; k < 3; ++k)
                for (int l = 0; l < 3; ++l)
                    body.inertia[n] += turn(k, i) * tensor[k][l] * turn(l, j);
            body.inertia[n] += mass * ((i == j ? off.length2() : 0) - off[i] * off[j]);
        }
    }

    void readInertial(MjcfEntry const& entry, model3d::Body& body) const {
        if (!entry.has("pos") || !entry.has("mass"))
            entry.fail("needs \"pos\" and \"mass\"");
        body.mass = entry.number("mass", 0);
        hyx::AffineMatrix4x4 const frame = entry.place(m_context.compiler.angles);
        body.centerOfMass = frame.getTranslate();
        std::array<double, 6> tensor{};
        if (std::vector<double> const full = entry.numbers("fullinertia", 6, 6); !full.empty())
            std::copy(full.begin(), full.end(), tensor.begin());
        else if (std::vector<double> const diagonal = entry.numbers("diaginertia", 3, 3); !diagonal.empty())
            std::copy(diagonal.begin(), diagonal.end(), tensor.begin());
        addTensor(body, tensor, frame, 0, {});
    }

    /// Scales all masses so that they sum up to what the file wants.
    void scaleMasses() const {
        double const wanted = m_context.compiler.totalMass;
        if (!(wanted > 0))
            return;
        double sum = 0;
        for (auto const& child : m_context.tree->children)
            if (auto const body = std::dynamic_pointer_cast<model3d::Body>(child))
                sum += body->mass;
        for (auto const& child : m_context.tree->children)
            if (auto const body = std::dynamic_pointer_cast<model3d::Body>(child); body && sum > 0) {
                body->mass *= wanted / sum;
                for (double& moment : body->inertia)
                    moment *= wanted / sum;
            }
    }

    std::shared_ptr<joints::Joint> joint(MjcfEntry const& entry, Surroundings const& around) {
        std::string const type = entry.kind() == "freejoint" ? "free" : entry.text("type", "hinge");
        std::shared_ptr<joints::Joint> made;
        if (type == "free") {
            made = std::make_shared<joints::FreeJoint>();
            for (char const* key : {"pos", "axis", "stiffness", "damping", "armature", "frictionloss", "limited",
                                    "group", "align", "margin", "range"})
                entry.has(key);
        } else if (type == "ball") {
            made = std::make_shared<joints::BallJoint>();
        } else if (type == "hinge" || type == "slide") {
            made = single(entry, type);
        } else {
            entry.fail("expected hinge, slide, ball or free in \"type\", not \"" + type + "\"");
        }
        made->name = entry.name();
        made->line = entry.line();
        if (type != "free") {
            made->anchor = around.local.transformPoint(entry.vector("pos"));
            hyx::Vec3 const axis = entry.vector("axis", hyx::Vec3(0, 0, 1));
            if (!(axis.length() > 0))
                entry.fail("expected a direction in \"axis\", not zeros");
            made->axis = around.local.transformVector(axis.normal());
        }
        return made;
    }

    std::shared_ptr<joints::SingleAxisJoint> single(MjcfEntry const& entry, std::string const& type) {
        std::shared_ptr<joints::SingleAxisJoint> made;
        double gain = 0;
        for (MjcfActuator const& actuator : m_context.actuators)
            if (actuator.joint == entry.name() && !entry.name().empty() &&
                std::dynamic_pointer_cast<tavlang::Control::PositionActuator>(actuator.made))
                gain += actuator.made->gear * actuator.made->gear * actuator.made->gain;
        if (type == "slide") {
            made = std::make_shared<joints::PrismaticJoint>();
        } else if (gain > 0) {
            auto const hinge = std::make_shared<joints::PositionHingeJoint>();
            hinge->gain = gain;
            made = hinge;
        } else {
            made = std::make_shared<joints::HingeJoint>();
        }
        addDynamics(entry, type == "hinge", *made);
        if (!entry.name().empty() && !m_context.joints.emplace(entry.name(), made).second)
            entry.fail("has the name of another joint");
        return made;
    }

    void addDynamics(MjcfEntry const& entry, bool turns, joints::SingleAxisJoint& joint) const {
        auto const unit = [&](double value) { return turns ? m_context.compiler.angles.radians(value) : value; };
        std::vector<double> const range = entry.numbers("range", 2, 2);
        joint.hasRange = entry.limited("limited", m_context.compiler.autolimits && !range.empty());
        if (joint.hasRange) {
            if (range.empty() || !(range[0] < range[1]))
                entry.fail("needs a \"range\" from a lower to an upper end");
            joint.lower = unit(range[0]);
            joint.upper = unit(range[1]);
        }
        joint.start = unit(entry.number("ref", 0));
        joint.restPosition = unit(entry.number("springref", 0));
        joint.stiffness = entry.numbers("stiffness", 1, 3).empty() ? 0 : entry.list("stiffness")[0];
        joint.damping = entry.numbers("damping", 1, 3).empty() ? 0 : entry.list("damping")[0];
        joint.friction = entry.number("frictionloss", 0);
        for (double value : {joint.stiffness, joint.damping, joint.friction})
            if (!(value >= 0))
                entry.fail("has a negative stiffness, damping or friction");
        std::vector<double> const force = entry.numbers("actuatorfrcrange", 2, 2);
        if (entry.limited("actuatorfrclimited", m_context.compiler.autolimits && !force.empty()) && !force.empty())
            joint.maximumEffort = std::max(std::abs(force[0]), std::abs(force[1]));
        entry.has("group");
        entry.has("type");
    }

    /// Its look is that of a mark in the format's own viewer.
    void addSite(MjcfEntry const& entry, Surroundings const& around) {
        auto const site = std::make_shared<model3d::Site>();
        site->name = entry.name();
        site->line = entry.line();
        site->body = around.body;
        double halfLength = 0;
        hyx::AffineMatrix4x4 const place =
            entry.has("fromto") ? placeBetweenEnds(entry, halfLength) : entry.place(m_context.compiler.angles);
        site->transform = place * around.local;
        for (char const* look : {"size", "type", "rgba", "material", "group"})
            entry.has(look);
        if (!site->name.empty())
            m_context.sites.emplace(site->name, site);
        m_context.tree->children.push_back(site);
    }

    void addLight(MjcfEntry const& entry, Surroundings const& around) {
        auto const light = std::make_shared<tavlang::Visuals::Light>();
        light->name = entry.name();
        light->line = entry.line();
        light->body = around.body;
        light->position = around.local.transformPoint(entry.vector("pos"));
        light->direction = around.local.transformVector(entry.vector("dir", hyx::Vec3(0, 0, -1)));
        light->directional = entry.flag("directional", entry.text("type") == "directional");
        auto const color = [&](char const* key, double otherwise) {
            hyx::Vec3 const given = entry.vector(key, hyx::Vec3(otherwise, otherwise, otherwise));
            return hyx::Vec4f(float(given.x), float(given.y), float(given.z), 1);
        };
        constexpr double matt = 0.7, shiny = 0.3, beam = 45, narrowness = 10; // of the format
        light->color = color("diffuse", matt);
        light->specular = color("specular", shiny);
        light->castsShadows = entry.flag("castshadow", true);
        for (char const* ofBeams : {"cutoff", "exponent"})
            entry.has(ofBeams);
        if (!light->directional && entry.text("type", "spot") == "spot") {
            light->spotAngle = entry.number("cutoff", beam) * osg::PI / 180;
            light->spotExponent = entry.number("exponent", narrowness);
        }
        if (std::vector<double> const given = entry.numbers("attenuation", 3, 3); !given.empty())
            std::copy(given.begin(), given.end(), light->attenuation.begin());
        m_context.tree->children.push_back(light);
    }

    void addCamera(MjcfEntry const& entry, Surroundings const& around) {
        auto const camera = std::make_shared<tavlang::Visuals::Camera>();
        camera->name = entry.name();
        camera->line = entry.line();
        camera->body = around.body;
        camera->transform = entry.place(m_context.compiler.angles) * around.local;
        constexpr double degrees = 45;
        camera->verticalAngle = entry.number("fovy", degrees) * std::atan(1.0) / degrees;
        m_context.tree->children.push_back(camera);
    }

    MjcfContext& m_context;
    std::set<model3d::Body const*> m_welded; ///< to the world
};

} // namespace

void readMjcfBodies(MjcfContext& context, std::vector<MjcfElement> const& worlds) {
    MjcfBodies(context).read(worlds);
}

} // namespace hyxtavlang
