// Construction and initialisation of the application.
#include "reference/hyxOSG/application/application_implementation.h"
#include "reference/machinery/viewing/simulation_scene.h"

#include <osg/Notify>

#include <algorithm>
#include <stdexcept>

namespace hyxOSG {

void ExampleApplicationListener::preFrame(ExampleApplication*) {}

void ExampleApplicationListener::postFrame(ExampleApplication*) {}

ExampleApplication::ExampleApplication() : ExampleApplication(nullptr) {}

ExampleApplication::ExampleApplication(hyxSDK::Simulation* simulation)
    : m_implementation(std::make_unique<Implementation>(*this)) {
    m_implementation->showSimulation(simulation);
    m_implementation->graph.root()->addChild(m_implementation->notes.node());
    m_implementation->graph.root()->setUpdateCallback(m_implementation->firstView);
}

ExampleApplication::~ExampleApplication() {
    m_implementation->firstView->finish(); // a script may keep the root
    m_implementation->showSimulation(nullptr);
}

void ExampleApplication::addListener(ExampleApplicationListener* listener) {
    auto& listeners = m_implementation->listeners;
    if (listener && std::ranges::find(listeners, listener, &ListenerHold::get) == listeners.end())
        listeners.emplace_back(listener);
}

bool ExampleApplication::removeListener(ExampleApplicationListener* listener) {
    auto& listeners = m_implementation->listeners;
    auto const place = std::ranges::find(listeners, listener, &ListenerHold::get);
    if (place == listeners.end())
        return false;
    ListenerHold const last = *place; // what ends with it may remove others
    listeners.erase(place);
    return true;
}

void ExampleApplication::initSimulation(hyxSDK::Simulation* simulation, bool applyOptions) {
    if (m_implementation->simulation && m_implementation->simulation != simulation) {
        m_implementation->proxies->clear();
        m_implementation->journal->close();
    }
    m_implementation->showSimulation(simulation ? simulation : new hyxSDK::Simulation);
    if (applyOptions)
        m_implementation->configureSimulation();
    if (m_implementation->pickHandler)
        m_implementation->pickHandler->setSimulation(m_implementation->simulation.get());
    if (m_implementation->imageCapture)
        m_implementation->imageCapture->setSimulation(m_implementation->simulation.get());
    if (m_implementation->videoCapture)
        m_implementation->videoCapture->setSimulation(m_implementation->simulation.get());
    m_implementation->pacer.restart();
}

hyxSDK::Simulation& ExampleApplication::Implementation::ensureSimulation() {
    if (!simulation) {
        showSimulation(new hyxSDK::Simulation);
        configureSimulation();
    }
    return *simulation;
}

void ExampleApplication::Implementation::showSimulation(hyxSDK::Simulation* next) {
    if (simulation)
        setSimulationScene(simulation, nullptr);
    simulation = next;
    if (simulation)
        setSimulationScene(simulation, graph.libraryRoot());
}

void ExampleApplication::Implementation::configureSimulation() {
    if (wantedTimeStep)
        simulation->setTimeStep(*wantedTimeStep);
    if (wantedSolver)
        simulation->setSolver(hyxSDK::Simulation::SolverType(*wantedSolver));
}

bool ExampleApplication::initialized() const {
    return m_implementation->simulation && m_implementation->window && m_implementation->sceneBuilt;
}

RenderProxyFactory* ExampleApplication::getRenderProxyFactory() {
    return m_implementation->proxies.get();
}

void ExampleApplication::createVisual(hyxSDK::Simulation* simulation, float detailRatio, bool evenIfSensor) {
    m_implementation->proxies->create(simulation, detailRatio, evenIfSensor);
}

void ExampleApplication::createVisual(hyxSDK::Assembly* assembly, float detailRatio, bool evenIfSensor) {
    m_implementation->proxies->create(assembly, detailRatio, evenIfSensor);
}

void ExampleApplication::setOsgNotifyLevel(osg::NotifySeverity severity) const {
    if (severity < osg::ALWAYS || severity > osg::DEBUG_FP)
        throw std::invalid_argument("the notify severity must be 0 (always) to 6 (most detailed)");
    osg::setNotifyLevel(severity);
}

hyxSDK::Simulation* ExampleApplication::getSimulation() {
    return &m_implementation->ensureSimulation();
}

hyx::Vec3 ExampleApplication::getGravity() {
    return m_implementation->ensureSimulation().getGravity();
}

} // namespace hyxOSG
