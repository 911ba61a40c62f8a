// The application's loop: stepping, drawing, pacing and its end.
#include "platform/hyx/objects/high_accuracy_timer.h"
#include "platform/hyxPython/script_manager.h"
#include "reference/hyxOSG/application/application_implementation.h"
#include "reference/hyxOSG/application/removed_geometry.h"
#include "reference/hyxOSG/application/window_events.h"
#include "reference/hyxPython/interpreter.h"
#include "reference/hyxPython/native_work.h"
#include "reference/hyxPython/script_errors.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <exception>
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

/// Calls those of `called` that are listeners still. False, and the rest is not called, once a script has left an error
/// or asks to exit: that goes on to the caller of the loop, and nothing else is to run before.
template <class Call>
bool callAll(ListenerHolds const& called, ListenerHolds const& listeners, Call const& call) {
    for (ListenerHold const& listener : called) {
        if (std::ranges::find(listeners, listener) != listeners.end())
            call(*listener.get());
        if (hyxPython::interpreterInterrupts())
            return false;
    }
    return true;
}

} // namespace

int ExampleApplication::run() {
    auto const kept = Implementation::keep(*this);
    hyxPython::FirstError firstError;
    ScopedFlag const running(m_implementation->running);
    m_implementation->ensureSimulation();
    if (!m_implementation->noGraphics)
        m_implementation->ensureWindow(*this);
    initRpc();
    if (m_implementation->testsScenes) {
        m_implementation->testScenes(*this);
    } else {
        if (!m_implementation->sceneBuilt)
            initScene();
        while (!done())
            stepWrapper();
    }
    postExecution();
    if (m_implementation->raisesErrors)
        firstError.raise();
    return m_implementation->exitCode;
}

void ExampleApplication::setRaiseScriptErrors(bool enable) {
    m_implementation->raisesErrors = enable;
}

bool ExampleApplication::getRaiseScriptErrors() const {
    return m_implementation->raisesErrors;
}

void ExampleApplication::stop(int code) {
    m_implementation->stopRequested = true;
    m_implementation->exitCode = code;
}

void ExampleApplication::cancelStop() {
    m_implementation->stopRequested = false;
    m_implementation->exitCode = 0;
}

bool ExampleApplication::shouldStop() const {
    if (m_implementation->stopRequested)
        return true;
    if (m_implementation->stopTime < 0 || !m_implementation->simulation)
        return false;
    // Half a step of slack: the sum of many steps is never exact.
    return m_implementation->simulation->getTimeStamp() >=
           m_implementation->stopTime - 0.5 * m_implementation->simulation->getTimeStep();
}

bool ExampleApplication::breakRequested() const {
    return hyxPython::interpreterInterrupts();
}

bool ExampleApplication::done() const {
    bool const closed =
        m_implementation->quitEventSetsDone && m_implementation->window && !m_implementation->window->open();
    return closed || shouldStop() || breakRequested();
}

int ExampleApplication::getExitCode() const {
    return m_implementation->exitCode;
}

void ExampleApplication::step() {
    auto const kept = Implementation::keep(*this);
    m_implementation->turn(*this, true);
}

void ExampleApplication::stepWrapper() {
    auto const kept = Implementation::keep(*this);
    step();
    handleReactiveScriptErrors(false);
}

bool ExampleApplication::executeOneStepWithGraphics(hyx::HighAccuracyTimer& timer) {
    auto const kept = Implementation::keep(*this);
    timer.reset();
    timer.start();
    m_implementation->ensureWindow(*this);
    m_implementation->turn(*this, true);
    timer.stop();
    return !done();
}

bool ExampleApplication::executeOneStepWithoutGraphics() {
    auto const kept = Implementation::keep(*this);
    m_implementation->turn(*this, false);
    return !done();
}

void ExampleApplication::Implementation::turn(ExampleApplication& application, bool withGraphics) {
    if (inTurn)
        throw std::logic_error("the application is making a frame already: a listener cannot step it again");
    ensureSimulation();
    {
        std::lock_guard<std::mutex> const lock(frameMutex);
        ScopedFlag const making(inTurn);
        makeFrame(application, withGraphics && window);
    }
    Profiler::Task const task(profiler, "wait");
    pacer.endFrame();
    times.endFrame(simulation->getTimeStamp());
    application.throttleIdleCpuUsageBySleeping();
}

void ExampleApplication::Implementation::makeFrame(ExampleApplication& application, bool draws) {
    bool const updates = autoStepping || pauseUpdate;
    auto const called = listeners; // one may add or remove others
    if (updates && !callAll(called, listeners, [&](auto& listener) { listener.preFrame(&application); }))
        return;
    if (draws) {
        Profiler::Task const task(profiler, "events");
        handleEvents(application);
    }
    application.updateServices(); // also of what is paused: they may be what lets it go on
    if (autoStepping && !application.useCoSimulation() && !application.m_isFMU)
        application.synchronizedStep();
    if (draws)
        updateNotes(application);
    if (draws && drawingDue()) {
        if (controller && controller->wantsFrame())
            application.pushFrameToRemoteViewer(); // draws, too
        else
            draw();
    }
    if (updates)
        callAll(called, listeners, [&](auto& listener) { listener.postFrame(&application); });
}

bool ExampleApplication::Implementation::drawingDue() {
    bool const captures =
        (imageCapture && imageCapture->getCaptureStarted()) || (videoCapture && videoCapture->getCaptureStarted());
    if (!running || autoStepping || captures || !renderTargets.empty() || !window->open())
        return true;
    auto const* events = static_cast<WindowEvents const*>(eventHandler.get());
    return changes.isDue(*window->camera(), *graph.root(), *simulation, events ? events->count() : 0);
}

void ExampleApplication::Implementation::draw() {
    RemovedGeometry::sweep();
    if (debug.enabled())
        debug.update(*simulation);
    Profiler::Task const task(profiler, "draw");
    FrameTimes::Measure const measure(times, false);
    auto const shown = window;
    shown->draw(viewIsWanted() ? Pass::EVERYTHING : Pass::TARGETS);
    pacer.noteDrawing(measure.cost());
}

bool ExampleApplication::Implementation::viewIsWanted() const {
    if (renderTargets.empty() || !window->offscreen())
        return true;
    auto const idle = [](auto const& capture, osg::Camera::DrawCallback const* callback) {
        return capture && capture->getDrawCallback() == callback && !capture->getCaptureStarted();
    };
    return window->viewIsWaitedFor([&](osg::Camera::DrawCallback const* callback) {
        return idle(imageCapture, callback) || idle(videoCapture, callback);
    });
}

void ExampleApplication::stepSimulation() {
    auto const kept = Implementation::keep(*this);
    hyxSDK::Simulation& simulation = m_implementation->ensureSimulation();
    if (m_implementation->journal->isPlaying()) {
        Profiler::Task const task(m_implementation->profiler, "journal");
        m_implementation->playStep(*this);
        return;
    }
    {
        Profiler::Task const task(m_implementation->profiler, "simulation");
        FrameTimes::Measure const measure(m_implementation->times, true);
        simulation.step();
    }
    m_implementation->followStep(*this);
}

void ExampleApplication::Implementation::followStep(ExampleApplication& application) {
    if (stepCallback.valid()) {
        Profiler::Task const task(profiler, "callback");
        stepCallback();
    }
    keepHistory();
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
    auto const kept = Implementation::keep(*this);
    Pacer& pacer = m_implementation->pacer;
    if (!pacer.realTimeSync())
        return shouldStop() ? void() : stepSimulation();
    pacer.beginSteps(getTimeStep());
    for (bool first = force; !shouldStop() && (pacer.takeStep(getTimeStep()) || first); first = false) {
        stepSimulation();
        if (!m_implementation->autoStepping || hyxPython::interpreterInterrupts())
            return; // paused by what the step did
    }
}

void ExampleApplication::updateServices() {
    Profiler::Task const task(m_implementation->profiler, "services");
    updateRemoteDebugger();
    updateCoSimulationServer();
}

void ExampleApplication::postExecution() {
    // What one of them cannot write does not keep the others from ending; the first reason is the caller's.
    std::exception_ptr failure;
    auto const end = [&failure](auto const& part) {
        try {
            part();
        } catch (std::exception const&) {
            failure = failure ? failure : std::current_exception();
        }
    };
    end([this] { m_implementation->journal->close(); });
    if (m_implementation->imageCapture)
        end([this] { m_implementation->imageCapture->stopCapture(); });
    if (m_implementation->videoCapture)
        end([this] { m_implementation->videoCapture->stopCapture(); });
    end([this] { m_implementation->profiler.close(); });
    if (failure)
        std::rethrow_exception(failure);
}

void ExampleApplication::throttleIdleCpuUsageBySleeping() {
    if (!m_implementation->autoStepping && m_implementation->pacer.targetFps() == 0) {
        hyxPython::IdleWait const wait;
        std::this_thread::sleep_for(idleSleep);
    }
}

void ExampleApplication::setTimeStep(double timeStep) {
    m_implementation->ensureSimulation().setTimeStep(timeStep);
    m_implementation->wantedTimeStep = timeStep;
}

double ExampleApplication::getTimeStep() const {
    return m_implementation->ensureSimulation().getTimeStep();
}

double ExampleApplication::getTimeStamp() const {
    return m_implementation->ensureSimulation().getTimeStamp();
}

void ExampleApplication::stopAfter(double time) {
    if (std::isnan(time))
        throw std::invalid_argument("the time to stop after must be a number");
    m_implementation->stopTime = time;
}

void ExampleApplication::setTargetFPS(double framesPerSecond) {
    m_implementation->pacer.setTargetFps(framesPerSecond);
}

double ExampleApplication::getTargetFPS() const {
    return m_implementation->pacer.targetFps();
}

void ExampleApplication::setRealTimeSync(bool enable) {
    m_implementation->pacer.setRealTimeSync(enable);
    m_implementation->realTimeSyncSet = true;
}

bool ExampleApplication::getRealTimeSync() const {
    return m_implementation->pacer.realTimeSync();
}

void ExampleApplication::setSpeed(double speed) {
    m_implementation->pacer.setSpeed(speed);
    if (speed != 1)
        setRealTimeSync(true);
}

double ExampleApplication::getSpeed() const {
    return m_implementation->pacer.speed();
}

void ExampleApplication::setAutoStepping(bool enable, bool triggerEvent) {
    if (m_implementation->autoStepping == enable)
        return;
    m_implementation->autoStepping = enable;
    m_implementation->pacer.restart();
    if (triggerEvent)
        autoStepEvent.trigger(enable);
}

bool ExampleApplication::getAutoStepping() const {
    return m_implementation->autoStepping;
}

void ExampleApplication::setEnablePauseUpdate(bool enable) {
    m_implementation->pauseUpdate = enable;
}

bool ExampleApplication::getEnablePauseUpdate() const {
    return m_implementation->pauseUpdate;
}

hyx::Callback ExampleApplication::getStepCallback() const {
    return m_implementation->stepCallback;
}

void ExampleApplication::setStepCallback(hyx::Callback callback) {
    m_implementation->stepCallback = callback;
}

void ExampleApplication::setQuitEventSetsDone(bool enable) {
    m_implementation->quitEventSetsDone = enable;
}

bool ExampleApplication::getQuitEventSetsDone() const {
    return m_implementation->quitEventSetsDone;
}

std::mutex* ExampleApplication::getFrameMutex() {
    return &m_implementation->frameMutex;
}

void ExampleApplication::handleReactiveScriptErrors(bool pause) {
    size_t const errors = Implementation::countScriptErrors();
    bool const anyNew = errors > m_implementation->errorsSeen;
    m_implementation->errorsSeen = errors;
    if (anyNew && pause)
        setAutoStepping(false);
}

size_t ExampleApplication::Implementation::countScriptErrors() {
    hyxPython::ScriptManager const* manager = hyxPython::ScriptManager::instance("", "", "", false);
    return manager ? manager->getNumRegistered() : 0;
}

} // namespace hyxOSG
