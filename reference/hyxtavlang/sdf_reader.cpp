// Reads SDF models and worlds into model trees.
#include "reference/hyxtavlang/sdf_context.h"

#include <console_bridge/console.h>

#include <cmath>

namespace hyxtavlang {
namespace {

using Bodies = std::vector<SdfContext::BodyPtr>;

/// What the library cannot read it tries as a robot description, whose parser prints.
struct NoOutput {
    NoOutput() { console_bridge::noOutputHandler(); }

    ~NoOutput() { console_bridge::restorePreviousOutputHandler(); }
};

class SdfReader {
public:
    explicit SdfReader(SdfContext& context) : m_context(context) {}

    void read() {
        sdf::Console::Instance()->SetQuiet(true);
        auto const find = [this](std::string const& uri) { return m_context.findModel(uri, m_context.path); };
        m_context.files.check(m_context.path, find, [this](auto const& path, int line, auto const& version) {
            m_context.tree->annotations.push_back(std::make_shared<tavlang::Annotation>(
                "version " + version + " is read as " + sdf::SDF::Version() + ", what is newer as it is named here",
                path, line));
        });
        sdf::ParserConfig config;
        config.SetFindCallback([&](std::string const& uri) { return m_context.files.copy(find(uri)); });
        NoOutput const quiet;
        sdf::Root root;
        m_context.check(root.Load(m_context.files.copy(m_context.path), config));
        if (root.WorldCount() > 1)
            throw ModelError(m_context.path + ":1: holds " + std::to_string(root.WorldCount()) +
                             " worlds, expected one");
        if (root.WorldCount() == 1)
            readWorld(*root.WorldByIndex(0));
        else if (root.Model())
            readRoot(*root.Model());
        else
            throw ModelError(m_context.path + ":1: expected a model or a world");
        connectSdfMimics(m_context);
    }

private:
    void readWorld(sdf::World const& world) {
        m_context.tree->name = world.Name();
        auto const settings = std::make_shared<tavlang::Simulation::Settings>();
        settings->line = SdfContext::lineOf(world.Element());
        settings->hasGravity = true; // the format has a value for worlds that give none
        settings->gravity = SdfContext::vector(world.Gravity());
        if (world.PhysicsDefault())
            settings->timeStep = world.PhysicsDefault()->MaxStepSize();
        m_context.tree->children.push_back(settings);
        for (uint64_t i = 0; i < world.ModelCount(); ++i)
            readTop(*world.ModelByIndex(i), world.ModelByIndex(i)->Name() + "::");
        for (uint64_t i = 0; i < world.LightCount(); ++i)
            readSdfLight(m_context, *world.LightByIndex(i), nullptr, "");
        m_context.remarkRest(world.Element(), {"model", "include", "light", "gravity", "physics", "frame"});
    }

    void readRoot(sdf::Model const& model) {
        m_context.tree->name = model.Name();
        readTop(model, "");
    }

    void readTop(sdf::Model const& model, std::string const& prefix) {
        Bodies const links = readModel(model, hyx::AffineMatrix4x4(), prefix, false);
        if (model.SelfCollide())
            return;
        for (std::size_t i = 0; i < links.size(); ++i)
            for (std::size_t j = 0; j < i; ++j)
                exclude(links[i], links[j]);
    }

    /// Also what is in the models in it. Returns the links that collide.
    Bodies readModel(sdf::Model const& model, hyx::AffineMatrix4x4 const& around, std::string const& prefix,
                     bool fixed) {
        hyx::AffineMatrix4x4 const place = m_context.place(model.SemanticPose()) * around;
        Bodies links;
        for (uint64_t i = 0; i < model.LinkCount(); ++i) {
            sdf::Link const& link = *model.LinkByIndex(i);
            SdfContext::BodyPtr const body = readLink(link, place, prefix, fixed || model.Static());
            if (link.CollisionCount())
                links.push_back(body);
        }
        for (uint64_t i = 0; i < model.ModelCount(); ++i) {
            sdf::Model const& nested = *model.ModelByIndex(i);
            Bodies const more = readModel(nested, place, prefix + nested.Name() + "::", fixed || model.Static());
            links.insert(links.end(), more.begin(), more.end());
        }
        for (uint64_t i = 0; i < model.JointCount(); ++i)
            readSdfJoint(m_context, *model.JointByIndex(i), prefix);
        m_context.remarkRest(model.Element(), {"link", "joint", "model", "include", "frame", "pose", "static",
                                               "self_collide", "allow_auto_disable"});
        return links;
    }

    void exclude(SdfContext::BodyPtr const& first, SdfContext::BodyPtr const& second) {
        auto const exclusion = std::make_shared<tavlang::Physics3D::CollisionExclusion>();
        exclusion->first = first;
        exclusion->second = second;
        m_context.tree->children.push_back(exclusion);
    }

    SdfContext::BodyPtr readLink(sdf::Link const& link, hyx::AffineMatrix4x4 const& around, std::string const& prefix,
                                 bool fixed) {
        auto const body = std::make_shared<tavlang::Physics3D::Body>();
        body->name = prefix + link.Name();
        body->line = SdfContext::lineOf(link.Element());
        body->transform = m_context.place(link.SemanticPose()) * around;
        body->fixed = fixed;
        weigh(link, *body);
        for (uint64_t i = 0; i < link.CollisionCount(); ++i)
            readSdfCollision(m_context, *link.CollisionByIndex(i), *body);
        for (uint64_t i = 0; i < link.VisualCount(); ++i)
            readSdfVisual(m_context, *link.VisualByIndex(i), *body);
        for (uint64_t i = 0; i < link.LightCount(); ++i)
            readSdfLight(m_context, *link.LightByIndex(i), body, prefix);
        for (uint64_t i = 0; i < link.SensorCount(); ++i)
            readSdfSensor(m_context, *link.SensorByIndex(i), body, prefix);
        m_context.remarkRest(link.Element(), {"pose", "inertial", "collision", "visual", "light", "sensor"});
        m_context.bodies[body->name] = body;
        m_context.tree->children.push_back(body);
        return body;
    }

    void weigh(sdf::Link const& link, tavlang::Physics3D::Body& body) {
        auto const& inertial = link.Inertial();
        double const mass = inertial.MassMatrix().Mass();
        if (!inertial.MassMatrix().IsValid()) {
            if (body.fixed)
                return;
            if (!(mass > 0) || !std::isfinite(mass))
                m_context.fail(link.Element(), "the link '" + link.Name() + "' has the mass " + std::to_string(mass) +
                                                   ", expected one above 0");
            m_context.remark("the inertia of the link '" + link.Name() + "', which no body has,", link.Element());
        }
        auto const tensor = inertial.Moi(); // along the axes of the link
        body.hasMass = true;
        body.mass = mass;
        body.centerOfMass = SdfContext::vector(inertial.Pose().Pos());
        body.inertia = {tensor(0, 0), tensor(1, 1), tensor(2, 2), tensor(0, 1), tensor(0, 2), tensor(1, 2)};
    }

    SdfContext& m_context;
};

} // namespace

void readSdfInto(std::string const& path, std::vector<std::string> const& searchPaths, ModelTree& tree) {
    try {
        SdfContext context(path, searchPaths);
        SdfReader(context).read();
        tree = context.tree;
    } catch (ModelError const&) {
        throw;
    } catch (std::exception const& error) { // what the library throws of damaged files
        throw ModelError(path + ":1: " + error.what());
    }
}

} // namespace hyxtavlang

extern "C" __attribute__((visibility("default"))) hyxtavlang::LateReader* const hyxReadSdf = &hyxtavlang::readSdfInto;
