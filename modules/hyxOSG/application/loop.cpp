// Rows of ExampleApplication: running, stepping, breaking, listeners.
#include "binding/vocabulary/rows.h"
#include "platform/hyxOSG/application/example_application.h"

namespace {

// Constant methods are taken to run no Python code, but these let the interpreter answer signals.
bool breakRequested(hyxOSG::ExampleApplication const& self) {
    return self.breakRequested();
}

bool done(hyxOSG::ExampleApplication const& self) {
    return self.done();
}

constexpr Declared loop_rows[] = {
    FUNCTION(ExampleApplication_run, METHOD(hyxOSG::ExampleApplication, run, ())),
    FUNCTION(ExampleApplication_stop, METHOD(hyxOSG::ExampleApplication, stop, (int), 0)),
    FUNCTION(ExampleApplication_cancelStop, METHOD(hyxOSG::ExampleApplication, cancelStop, ())),
    FUNCTION(ExampleApplication_shouldStop, METHOD(hyxOSG::ExampleApplication, shouldStop, () const)),
    FUNCTION(ExampleApplication_breakRequested,
             ADAPTER(hyxOSG::ExampleApplication, breakRequested, breakRequested, () const)),
    FUNCTION(ExampleApplication_done, ADAPTER(hyxOSG::ExampleApplication, done, done, () const)),
    FUNCTION(ExampleApplication_getExitCode, METHOD(hyxOSG::ExampleApplication, getExitCode, () const)),
    FUNCTION(ExampleApplication_step, METHOD(hyxOSG::ExampleApplication, step, ())),
    FUNCTION(ExampleApplication_stepWrapper, METHOD(hyxOSG::ExampleApplication, stepWrapper, ())),
    FUNCTION(ExampleApplication_stepSimulation, METHOD(hyxOSG::ExampleApplication, stepSimulation, ())),
    FUNCTION(ExampleApplication_synchronizedStep, METHOD(hyxOSG::ExampleApplication, synchronizedStep, (bool), false)),
    FUNCTION(ExampleApplication_executeOneStepWithGraphics,
             METHOD(hyxOSG::ExampleApplication, executeOneStepWithGraphics, (hyx::HighAccuracyTimer&))),
    FUNCTION(ExampleApplication_executeOneStepWithoutGraphics,
             METHOD(hyxOSG::ExampleApplication, executeOneStepWithoutGraphics, ())),
    FUNCTION(ExampleApplication_updateServices, METHOD(hyxOSG::ExampleApplication, updateServices, ())),
    FUNCTION(ExampleApplication_postExecution, METHOD(hyxOSG::ExampleApplication, postExecution, ())),
    FUNCTION(ExampleApplication_throttleIdleCpuUsageBySleeping,
             METHOD(hyxOSG::ExampleApplication, throttleIdleCpuUsageBySleeping, ())),
    FUNCTION(ExampleApplication_setTimeStep, METHOD(hyxOSG::ExampleApplication, setTimeStep, (double))),
    FUNCTION(ExampleApplication_getTimeStep, METHOD(hyxOSG::ExampleApplication, getTimeStep, () const)),
    FUNCTION(ExampleApplication_getTimeStamp, METHOD(hyxOSG::ExampleApplication, getTimeStamp, () const)),
    FUNCTION(ExampleApplication_stopAfter, METHOD(hyxOSG::ExampleApplication, stopAfter, (double))),
    FUNCTION(ExampleApplication_setTargetFPS, METHOD(hyxOSG::ExampleApplication, setTargetFPS, (double))),
    FUNCTION(ExampleApplication_getTargetFPS, METHOD(hyxOSG::ExampleApplication, getTargetFPS, () const)),
    FUNCTION(ExampleApplication_setRealTimeSync, METHOD(hyxOSG::ExampleApplication, setRealTimeSync, (bool))),
    FUNCTION(ExampleApplication_getRealTimeSync, METHOD(hyxOSG::ExampleApplication, getRealTimeSync, () const)),
    FUNCTION(ExampleApplication_setAutoStepping,
             METHOD(hyxOSG::ExampleApplication, setAutoStepping, (bool, bool), true)),
    FUNCTION(ExampleApplication_getAutoStepping, METHOD(hyxOSG::ExampleApplication, getAutoStepping, () const)),
    FUNCTION(ExampleApplication_setEnablePauseUpdate, METHOD(hyxOSG::ExampleApplication, setEnablePauseUpdate, (bool))),
    FUNCTION(ExampleApplication_getEnablePauseUpdate,
             METHOD(hyxOSG::ExampleApplication, getEnablePauseUpdate, () const)),
    FUNCTION(ExampleApplication_addAutoPausePair,
             METHOD(hyxOSG::ExampleApplication, addAutoPausePair, (hyx::RigidBody const*, hyx::RigidBody const*)),
             METHOD(hyxOSG::ExampleApplication, addAutoPausePair,
                    (hyxCollide::Geometry const*, hyxCollide::Geometry const*))),
    FUNCTION(ExampleApplication_removeAutoPausePair,
             METHOD(hyxOSG::ExampleApplication, removeAutoPausePair, (hyx::RigidBody const*, hyx::RigidBody const*)),
             METHOD(hyxOSG::ExampleApplication, removeAutoPausePair,
                    (hyxCollide::Geometry const*, hyxCollide::Geometry const*))),
    FUNCTION(ExampleApplication_setEnableAutoPausing, METHOD(hyxOSG::ExampleApplication, setEnableAutoPausing, (bool))),
    FUNCTION(ExampleApplication_getEnableAutoPausing,
             METHOD(hyxOSG::ExampleApplication, getEnableAutoPausing, () const)),
    FUNCTION(ExampleApplication_setSolverType,
             METHOD(hyxOSG::ExampleApplication, setSolverType, (hyxOSG::ExampleApplication::SolverType))),
    FUNCTION(ExampleApplication_getSolverType, METHOD(hyxOSG::ExampleApplication, getSolverType, () const),
             METHOD(hyxOSG::ExampleApplication, getSolverType, (std::string const&) const)),
    FUNCTION(ExampleApplication_getSolverName,
             METHOD(hyxOSG::ExampleApplication, getSolverName, (hyxOSG::ExampleApplication::SolverType) const)),
    FUNCTION(ExampleApplication_changeSolver, METHOD(hyxOSG::ExampleApplication, changeSolver, ())),
    FUNCTION(ExampleApplication_getStepCallback, METHOD(hyxOSG::ExampleApplication, getStepCallback, () const)),
    FUNCTION(ExampleApplication_setStepCallback, METHOD(hyxOSG::ExampleApplication, setStepCallback, (hyx::Callback))),
    FUNCTION(ExampleApplication_setQuitEventSetsDone, METHOD(hyxOSG::ExampleApplication, setQuitEventSetsDone, (bool))),
    FUNCTION(ExampleApplication_getQuitEventSetsDone,
             METHOD(hyxOSG::ExampleApplication, getQuitEventSetsDone, () const)),
    FUNCTION(ExampleApplication_getFrameMutex, METHOD(hyxOSG::ExampleApplication, getFrameMutex, ())),
    FUNCTION(ExampleApplication_getSimulation, METHOD(hyxOSG::ExampleApplication, getSimulation, ())),
    FUNCTION(ExampleApplication_getGravity, METHOD(hyxOSG::ExampleApplication, getGravity, ())),
    FUNCTION(ExampleApplication_addListener,
             METHOD(hyxOSG::ExampleApplication, addListener, (hyxOSG::ExampleApplicationListener*))),
};

} // namespace

ROWS(loop_rows);
