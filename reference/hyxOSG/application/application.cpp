/// Construction and initialisation of the application.
#include "reference/hyxOSG/application/application_state.h"
#include "reference/hyxOSG/renderers/simulation_scene.h"

#include <osg/Notify>

#include <stdexcept>

namespace hyxOSG {

void ExampleApplicationListener::preFrame(ExampleApplication*) {}

void ExampleApplicationListener::postFrame(ExampleApplication*) {}

ExampleApplication::ExampleApplication() : ExampleApplication(nullptr) {}

ExampleApplication::ExampleApplication(hyxSDK::Simulation* simulation) : m_state(std::make_unique<State>()) {
    m_state->showSimulation(simulation);
}

ExampleApplication::~ExampleApplication() = default;

void ExampleApplication::initSimulation(hyxSDK::Simulation* simulation, bool applyOptions) {
    if (m_state->simulation && m_state->simulation != simulation) {
        m_state->proxies->clear();
        m_state->journal->close();
    }
    m_state->showSimulation(simulation ? simulation : new hyxSDK::Simulation);
    if (applyOptions)
        m_state->configureSimulation();
    if (m_state->pickHandler)
        m_state->pickHandler->setSimulation(m_state->simulation.get());
    if (m_state->imageCapture)
        m_state->imageCapture->setSimulation(m_state->simulation.get());
    if (m_state->videoCapture)
        m_state->videoCapture->setSimulation(m_state->simulation.get());
    m_state->pacer.restart();
}

hyxSDK::Simulation& ExampleApplication::State::ensureSimulation() {
    if (!simulation) {
        showSimulation(new hyxSDK::Simulation);
        configureSimulation();
    }
    return *simulation;
}

void ExampleApplication::State::showSimulation(hyxSDK::Simulation* next) {
    if (simulation)
        set_simulation_scene(simulation, nullptr);
    simulation = next;
    if (simulation)
        set_simulation_scene(simulation, graph.libraryRoot());
}

void ExampleApplication::State::configureSimulation() {
    if (wantedTimeStep)
        simulation->setTimeStep(*wantedTimeStep);
    if (wantedSolver)
        simulation->setSolver(hyxSDK::Simulation::SolverType(*wantedSolver));
}

bool ExampleApplication::initialized() const {
    return m_state->simulation && m_state->window && m_state->sceneBuilt;
}

RenderProxyFactory* ExampleApplication::getRenderProxyFactory() {
    return m_state->proxies.get();
}

void ExampleApplication::createVisual(hyxSDK::Simulation* simulation, float detailRatio, bool evenIfSensor) {
    m_state->proxies->create(simulation, detailRatio, evenIfSensor);
}

void ExampleApplication::createVisual(hyxSDK::Assembly* assembly, float detailRatio, bool evenIfSensor) {
    m_state->proxies->create(assembly, detailRatio, evenIfSensor);
}

void ExampleApplication::setOsgNotifyLevel(osg::NotifySeverity severity) const {
    if (severity < osg::ALWAYS || severity > osg::DEBUG_FP)
        throw std::invalid_argument("the notify severity must be 0 (always) to 6 (most detailed)");
    osg::setNotifyLevel(severity);
}

hyxSDK::Simulation* ExampleApplication::getSimulation() {
    return &m_state->ensureSimulation();
}

hyx::Vec3 ExampleApplication::getGravity() {
    return m_state->ensureSimulation().getGravity();
}

} // namespace hyxOSG
