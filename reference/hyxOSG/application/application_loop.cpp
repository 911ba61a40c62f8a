/// The application's loop: stepping, drawing, pacing and its end.
#include "platform/hyx/objects/high_accuracy_timer.h"
#include "platform/hyxPython/script_manager.h"
#include "reference/hyxOSG/application/application_state.h"
#include "reference/hyxOSG/application/removed_geometry.h"
#include "reference/hyxPython/interpreter.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <stdexcept>
#include <thread>

namespace hyxOSG {
namespace {

constexpr auto idleSleep = std::chrono::milliseconds(5);

/// True until the end of its scope, also when an exception passes.
class ScopedFlag {
public:
    explicit ScopedFlag(bool& flag) : m_flag(flag) { m_flag = true; }

    ~ScopedFlag() { m_flag = false; }

private:
    bool& m_flag;
};

} // namespace

int ExampleApplication::run() {
    auto const kept = State::keep(*this);
    m_state->ensureSimulation();
    if (!m_state->noGraphics)
        m_state->ensureWindow(*this);
    initRpc();
    if (m_state->testsScenes) {
        m_state->testScenes(*this);
    } else {
        if (!m_state->sceneBuilt)
            initScene();
        while (!done())
            stepWrapper();
    }
    postExecution();
    return m_state->exitCode;
}

void ExampleApplication::stop(int code) {
    m_state->stopRequested = true;
    m_state->exitCode = code;
}

void ExampleApplication::cancelStop() {
    m_state->stopRequested = false;
    m_state->exitCode = 0;
}

bool ExampleApplication::shouldStop() const {
    if (m_state->stopRequested)
        return true;
    if (m_state->stopTime < 0 || !m_state->simulation)
        return false;
    // Half a step of slack: the sum of many steps is never exact.
    return m_state->simulation->getTimeStamp() >= m_state->stopTime - 0.5 * m_state->simulation->getTimeStep();
}

bool ExampleApplication::breakRequested() const {
    return hyxPython::interpreterInterrupts();
}

bool ExampleApplication::done() const {
    bool const closed = m_state->quitEventSetsDone && m_state->window && !m_state->window->open();
    return closed || shouldStop() || breakRequested();
}

int ExampleApplication::getExitCode() const {
    return m_state->exitCode;
}

void ExampleApplication::step() {
    auto const kept = State::keep(*this);
    m_state->turn(*this, true);
}

void ExampleApplication::stepWrapper() {
    auto const kept = State::keep(*this);
    step();
    handleReactiveScriptErrors(false);
}

bool ExampleApplication::executeOneStepWithGraphics(hyx::HighAccuracyTimer& timer) {
    auto const kept = State::keep(*this);
    timer.reset();
    timer.start();
    m_state->ensureWindow(*this);
    m_state->turn(*this, true);
    timer.stop();
    return !done();
}

bool ExampleApplication::executeOneStepWithoutGraphics() {
    auto const kept = State::keep(*this);
    m_state->turn(*this, false);
    return !done();
}

void ExampleApplication::State::turn(ExampleApplication& application, bool withGraphics) {
    if (inTurn)
        throw std::logic_error("the application is making a frame already: a listener cannot step it again");
    ensureSimulation();
    {
        std::lock_guard<std::mutex> const lock(frameMutex);
        ScopedFlag const making(inTurn);
        makeFrame(application, withGraphics && window);
    }
    Profiler::Task const task(profiler, "wait");
    pacer.endFrame(simulation->getTimeStep(), autoStepping);
    application.throttleIdleCpuUsageBySleeping();
}

void ExampleApplication::State::makeFrame(ExampleApplication& application, bool draws) {
    bool const updates = autoStepping || pauseUpdate;
    auto const called = listeners; // a listener may add others
    if (updates)
        for (auto const& listener : called)
            listener->preFrame(&application);
    if (draws) {
        Profiler::Task const task(profiler, "events");
        auto const shown = window;
        shown->handleEvents(simulation->getTimeStamp());
    }
    if (updates)
        application.updateServices();
    if (autoStepping && !application.useCoSimulation() && !application.m_isFMU)
        application.synchronizedStep();
    if (draws) {
        if (controller && controller->wantsFrame())
            application.pushFrameToRemoteViewer(); // draws, too
        else
            draw();
    }
    if (updates)
        for (auto const& listener : called)
            listener->postFrame(&application);
}

void ExampleApplication::State::draw() {
    RemovedGeometry::sweep();
    if (debug.enabled())
        debug.update(*simulation);
    Profiler::Task const task(profiler, "draw");
    auto const shown = window;
    shown->draw();
}

void ExampleApplication::stepSimulation() {
    auto const kept = State::keep(*this);
    hyxSDK::Simulation& simulation = m_state->ensureSimulation();
    if (m_state->journal->isPlaying()) {
        Profiler::Task const task(m_state->profiler, "journal");
        if (!m_state->journal->playNext(&simulation))
            setAutoStepping(false);
        return;
    }
    {
        Profiler::Task const task(m_state->profiler, "simulation");
        simulation.step();
    }
    m_state->followStep(*this);
}

void ExampleApplication::State::followStep(ExampleApplication& application) {
    if (stepCallback.valid()) {
        Profiler::Task const task(profiler, "callback");
        stepCallback();
    }
    if (journal->isRecording()) {
        Profiler::Task const task(profiler, "journal");
        journal->store(simulation.get());
    }
    if (simulationDump.enabled()) {
        Profiler::Task const task(profiler, "dump");
        simulationDump.write(*simulation);
    }
    if (tickSignals && controller)
        controller->pushTick();
    if (autoPause.beganToTouch(*simulation))
        application.setAutoStepping(false);
}

void ExampleApplication::synchronizedStep(bool force) {
    auto const kept = State::keep(*this);
    int due = m_state->pacer.realTimeSync() ? m_state->pacer.stepsDue(getTimeStep()) : 1;
    if (force)
        due = std::max(due, 1);
    for (; due > 0 && !shouldStop(); --due) {
        stepSimulation();
        if (!m_state->autoStepping)
            return; // paused by what the step did
    }
}

void ExampleApplication::updateServices() {
    Profiler::Task const task(m_state->profiler, "services");
    updateRemoteDebugger();
    updateCoSimulationServer();
}

void ExampleApplication::postExecution() {
    m_state->journal->close();
    if (m_state->imageCapture)
        m_state->imageCapture->stopCapture();
    if (m_state->videoCapture)
        m_state->videoCapture->stopCapture();
    m_state->profiler.close();
}

void ExampleApplication::throttleIdleCpuUsageBySleeping() {
    if (!m_state->autoStepping && m_state->pacer.targetFps() == 0)
        std::this_thread::sleep_for(idleSleep);
}

void ExampleApplication::setTimeStep(double timeStep) {
    m_state->ensureSimulation().setTimeStep(timeStep);
    m_state->wantedTimeStep = timeStep;
}

double ExampleApplication::getTimeStep() const {
    return m_state->ensureSimulation().getTimeStep();
}

double ExampleApplication::getTimeStamp() const {
    return m_state->ensureSimulation().getTimeStamp();
}

void ExampleApplication::stopAfter(double time) {
    if (std::isnan(time))
        throw std::invalid_argument("the time to stop after must be a number");
    m_state->stopTime = time;
}

void ExampleApplication::setTargetFPS(double framesPerSecond) {
    m_state->pacer.setTargetFps(framesPerSecond);
}

double ExampleApplication::getTargetFPS() const {
    return m_state->pacer.targetFps();
}

void ExampleApplication::setRealTimeSync(bool enable) {
    m_state->pacer.setRealTimeSync(enable);
    m_state->realTimeSyncSet = true;
}

bool ExampleApplication::getRealTimeSync() const {
    return m_state->pacer.realTimeSync();
}

void ExampleApplication::setAutoStepping(bool enable, bool triggerEvent) {
    if (m_state->autoStepping == enable)
        return;
    m_state->autoStepping = enable;
    m_state->pacer.restart();
    if (triggerEvent)
        autoStepEvent.trigger(enable);
}

bool ExampleApplication::getAutoStepping() const {
    return m_state->autoStepping;
}

void ExampleApplication::setEnablePauseUpdate(bool enable) {
    m_state->pauseUpdate = enable;
}

bool ExampleApplication::getEnablePauseUpdate() const {
    return m_state->pauseUpdate;
}

void ExampleApplication::addAutoPausePair(hyx::RigidBody const* body1, hyx::RigidBody const* body2) {
    m_state->autoPause.add(body1, body2);
}

void ExampleApplication::addAutoPausePair(hyxCollide::Geometry const* geometry1,
                                          hyxCollide::Geometry const* geometry2) {
    m_state->autoPause.add(geometry1, geometry2);
}

void ExampleApplication::removeAutoPausePair(hyx::RigidBody const* body1, hyx::RigidBody const* body2) {
    m_state->autoPause.remove(body1, body2);
}

void ExampleApplication::removeAutoPausePair(hyxCollide::Geometry const* geometry1,
                                             hyxCollide::Geometry const* geometry2) {
    m_state->autoPause.remove(geometry1, geometry2);
}

void ExampleApplication::setEnableAutoPausing(bool enable) {
    m_state->autoPause.setEnable(enable);
}

bool ExampleApplication::getEnableAutoPausing() const {
    return m_state->autoPause.enabled();
}

hyx::Callback ExampleApplication::getStepCallback() const {
    return m_state->stepCallback;
}

void ExampleApplication::setStepCallback(hyx::Callback callback) {
    m_state->stepCallback = callback;
}

void ExampleApplication::setQuitEventSetsDone(bool enable) {
    m_state->quitEventSetsDone = enable;
}

bool ExampleApplication::getQuitEventSetsDone() const {
    return m_state->quitEventSetsDone;
}

std::mutex* ExampleApplication::getFrameMutex() {
    return &m_state->frameMutex;
}

void ExampleApplication::addListener(ExampleApplicationListener* listener) {
    auto& listeners = m_state->listeners;
    bool const known =
        std::any_of(listeners.begin(), listeners.end(), [=](auto const& other) { return other.get() == listener; });
    if (listener && !known)
        listeners.push_back(listener);
}

void ExampleApplication::handleReactiveScriptErrors(bool pause) {
    size_t const errors = State::countScriptErrors();
    bool const anyNew = errors > m_state->errorsSeen;
    m_state->errorsSeen = errors;
    if (anyNew && pause)
        setAutoStepping(false);
}

size_t ExampleApplication::State::countScriptErrors() {
    hyxPython::ScriptManager const* manager = hyxPython::ScriptManager::instance("", "", "", false);
    return manager ? manager->getNumRegistered() : 0;
}

} // namespace hyxOSG
