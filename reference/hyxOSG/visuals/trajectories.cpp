// Records positions over time as lines.
#include "platform/hyxOSG/visuals/trajectories.h"

#include "platform/hyx/bodies/observer_frame.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/particles/particle_system.h"
#include "platform/hyxOSG/nodes/frame_trajectory_drawable.h"
#include "platform/hyxOSG/renderers/scalar_color_map.h"
#include "platform/hyxSDK/simulation.h"
#include "platform/osg/attachment.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/meshes/trajectory_lines.h"

#include <osg/Geode>
#include <osg/NodeVisitor>

#include <cmath>
#include <limits>
#include <stdexcept>

namespace hyxOSG {
namespace {

/// Tells when the next point of a trajectory is due.
class PointClock {
public:
    explicit PointClock(double interval) : m_interval(interval) {
        if (!(interval >= 0) || !std::isfinite(interval))
            throw std::invalid_argument("the interval of a trajectory must be a number of seconds, 0 or more");
    }

    /// Counts from the last point; a time that goes back starts anew.
    bool due(double time) {
        constexpr double tolerance = 1e-9; // of the clock's rounding
        bool const passed = time < m_last || (time > m_last && time >= m_last + m_interval - tolerance);
        if (passed)
            m_last = time;
        return passed;
    }

private:
    double m_interval;
    double m_last = -std::numeric_limits<double>::infinity();
};

/// Adds the present positions of something to its lines at every update traversal that is due.
class RecordCallback : public osg::DrawableUpdateCallback {
public:
    RecordCallback(double interval, hyx::UInt numPoints) : m_lines(numPoints), m_clock(interval) {}

    void update(osg::NodeVisitor* visitor, osg::Drawable* drawable) override {
        if (!m_clock.due(time(visitor)))
            return;
        record(m_lines);
        m_lines.writeTo(static_cast<osg::Geometry&>(*drawable));
    }

protected:
    /// Seconds; null visitors and those without a frame stamp are at 0.
    virtual double time(osg::NodeVisitor const* visitor) const = 0;
    virtual void record(TrajectoryLines& lines) = 0;

private:
    TrajectoryLines m_lines;
    PointClock m_clock;
};

class RecordParticles : public RecordCallback {
public:
    RecordParticles(hyx::ParticleSystem* system, double interval, hyx::UInt numPoints)
        : RecordCallback(interval, numPoints), m_system(system) {}

protected:
    double time(osg::NodeVisitor const* visitor) const override {
        if (auto const* const simulation = m_system->getSimulation())
            return simulation->getTimeStamp();
        return visitor && visitor->getFrameStamp() ? visitor->getFrameStamp()->getSimulationTime() : 0;
    }

    void record(TrajectoryLines& lines) override {
        std::set<TrajectoryLines::Key> alive;
        for (hyx::Particle const& particle : static_cast<hyx::ParticleSystem const&>(*m_system).getParticles()) {
            lines.add(particle.id, toOsg(particle.position), toOsg(particle.color));
            alive.insert(particle.id);
        }
        lines.keepOnly(alive);
    }

private:
    hyx::ref_ptr<hyx::ParticleSystem> m_system;
};

class RecordBodies : public RecordCallback {
public:
    RecordBodies(hyxSDK::Simulation* simulation, double interval, hyx::UInt numPoints, ScalarColorMap* colorMap)
        : RecordCallback(interval, numPoints), m_simulation(simulation), m_colorMap(colorMap) {}

protected:
    double time(osg::NodeVisitor const*) const override { return m_simulation->getTimeStamp(); }

    void record(TrajectoryLines& lines) override {
        std::set<TrajectoryLines::Key> alive;
        std::size_t index = 0;
        for (auto const& body : m_simulation->getRigidBodies()) {
            ++index;
            if (body->getMotionControl() == hyx::RigidBody::STATIC)
                continue;
            auto const key = reinterpret_cast<TrajectoryLines::Key>(body.get());
            double const speed = body->getVelocity().length();
            lines.add(key, toOsg(body->getPosition()),
                      m_colorMap ? osg::Vec4(m_colorMap->getColorOSG(speed)) : distinctColor(index));
            alive.insert(key);
        }
        lines.keepOnly(alive);
    }

private:
    hyx::ref_ptr<hyxSDK::Simulation> m_simulation;
    hyx::ref_ptr<ScalarColorMap> m_colorMap;
};

/// Lets a frame trajectory drawable take a point when the simulation has gone on.
class RecordFrames : public osg::DrawableUpdateCallback {
public:
    explicit RecordFrames(hyxSDK::Simulation* simulation) : m_simulation(simulation), m_clock(0) {}

    void update(osg::NodeVisitor*, osg::Drawable* drawable) override {
        if (m_clock.due(m_simulation->getTimeStamp()))
            static_cast<FrameTrajectoryDrawable&>(*drawable).update();
    }

private:
    hyx::ref_ptr<hyxSDK::Simulation> m_simulation;
    PointClock m_clock;
};

/// Draws the contacts of the last step anew at every update traversal.
class DrawContacts : public osg::DrawableUpdateCallback {
public:
    DrawContacts(hyx::ParticleSystem* system, double minForce, double maxForce)
        : m_system(system), m_minForce(minForce), m_maxForce(maxForce) {}

    void update(osg::NodeVisitor*, osg::Drawable* drawable) override {
        auto& geometry = static_cast<osg::Geometry&>(*drawable);
        auto& points = static_cast<osg::Vec3Array&>(*geometry.getVertexArray());
        auto& colors = static_cast<osg::Vec4Array&>(*geometry.getColorArray());
        points.clear();
        colors.clear();
        auto const& particles = static_cast<hyx::ParticleSystem const&>(*m_system).getParticles();
        for (hyx::ParticleContact const& contact : m_system->getContacts()) {
            bool const isPair = contact.first < particles.size() && contact.second < particles.size();
            if (!isPair || contact.force < m_minForce)
                continue;
            for (hyx::Index const end : {contact.first, contact.second}) {
                points.push_back(toOsg(particles[end].position));
                colors.push_back(colorOf(contact.force));
            }
        }
        points.dirty();
        colors.dirty();
        static_cast<osg::DrawArrays&>(*geometry.getPrimitiveSet(0)).setCount(static_cast<GLsizei>(points.size()));
        geometry.dirtyBound();
    }

private:
    osg::Vec4 colorOf(double force) const {
        auto const share = static_cast<float>(std::clamp((force - m_minForce) / (m_maxForce - m_minForce), 0.0, 1.0));
        return {share, 0.2f, 1 - share, 1};
    }

    hyx::ref_ptr<hyx::ParticleSystem> m_system;
    double m_minForce, m_maxForce;
};

osg::Geode* addLines(osg::Group& root, osg::ref_ptr<osg::Geometry> const& lines, osg::Callback* update) {
    lines->setUpdateCallback(update);
    osg::ref_ptr<osg::Geode> const geode = new osg::Geode;
    geode->addDrawable(lines);
    osg::attach(root, *geode);
    return geode;
}

osg::ref_ptr<osg::Geometry> emptyLines() {
    osg::ref_ptr<osg::Geometry> const lines = new osg::Geometry;
    prepareForLines(*lines);
    return lines;
}

} // namespace

osg::Geode* createParticleContactGraph(hyx::ParticleSystem* particleSystem, osg::Group* root, double minForce,
                                       double maxForce) {
    if (!(minForce >= 0 && maxForce > minForce))
        throw std::invalid_argument("a contact graph needs 0 <= minForce < maxForce");
    if (!particleSystem || !root)
        return nullptr;
    osg::ref_ptr<osg::Geometry> const lines = emptyLines();
    lines->addPrimitiveSet(new osg::DrawArrays(GL_LINES, 0, 0));
    return addLines(*root, lines, new DrawContacts(particleSystem, minForce, maxForce));
}

osg::Geode* createParticleTrajectoriesVisual(hyx::ParticleSystem* particleSystem, osg::Group* root, double interval,
                                             hyx::UInt numPoints) {
    if (!particleSystem || !root)
        return nullptr;
    return addLines(*root, emptyLines(), new RecordParticles(particleSystem, interval, numPoints));
}

osg::Geode* createRigidBodyTrajectoriesVisual(hyxSDK::Simulation* simulation, osg::Group* root, double interval,
                                              hyx::UInt numPoints, ScalarColorMap* colorMap) {
    if (!simulation || !root)
        return nullptr;
    return addLines(*root, emptyLines(), new RecordBodies(simulation, interval, numPoints, colorMap));
}

osg::Geode* createFrameTrajectoryDrawable(hyxSDK::Simulation* simulation, osg::Group* root, hyx::UInt numPoints,
                                          hyx::Vec4f const& color) {
    if (!simulation || !root)
        return nullptr;
    osg::ref_ptr<FrameTrajectoryDrawable> const lines = new FrameTrajectoryDrawable(numPoints, color);
    for (auto const& frame : simulation->getFrames())
        if (dynamic_cast<hyx::ObserverFrame*>(frame.get()))
            lines->add(frame);
    return addLines(*root, lines, new RecordFrames(simulation));
}

} // namespace hyxOSG
