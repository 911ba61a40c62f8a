// Rows of the simulation.
#include "platform/hyxSDK/simulation.h"

#include "binding/vocabulary/own_turns.h"
#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "modules/hyx/joints/derived_constraint.h"
#include "modules/hyx/objects/derived_process.h"
#include "platform/hyxPython/native_work.h"

namespace {

using hyxSDK::Simulation;

PyObject* simulation_bodies(Simulation const& self) {
    return vocabulary::to_shared_list(self.getRigidBodies());
}

PyObject* simulation_constraints(Simulation const& self) {
    return modules::to_derived_list(self.getConstraints());
}

PyObject* processes(Simulation const& self) {
    return modules::to_derived_list(self.getProcesses());
}

PyObject* frames(Simulation const& self) {
    return vocabulary::to_shared_list(self.getFrames());
}

PyObject* listeners(Simulation const& self) {
    return vocabulary::to_shared_list(self.getEventListeners());
}

PyObject* simulation_assemblies(Simulation const& self) {
    return vocabulary::to_shared_list(self.getAssemblies());
}

PyObject* materials(Simulation const& self) {
    return vocabulary::to_shared_list(self.getMaterials());
}

PyObject* simulation_constraint(Simulation const& self, hyx::Name const& name) {
    return modules::to_derived(self.getConstraint(name));
}

PyObject* save_state(Simulation const& self) {
    std::string const state = self.saveState();
    return PyBytes_FromStringAndSize(state.data(), static_cast<Py_ssize_t>(state.size()));
}

void restore_state(Simulation& self, PyObject* state) {
    char* bytes = nullptr;
    Py_ssize_t size = 0;
    if (PyBytes_AsStringAndSize(state, &bytes, &size) < 0)
        throw vocabulary::PythonError();
    self.restoreState(std::string(bytes, static_cast<std::size_t>(size)));
}

// Seconds of the last step: "step", "collision", "solver", "listeners", and the number "contactPoints".
PyObject* statistics(Simulation const& self) {
    Simulation::Statistics const& last = self.getStatistics();
    return Py_BuildValue("{sdsdsdsdsk}", "step", last.step, "collision", last.collision, "solver", last.solver,
                         "listeners", last.listeners, "contactPoints", last.numContactPoints);
}

// Python counts the references to a simulation; a script that leaves its last one ends it.
constexpr Declared simulation_rows[] = {
    FUNCTION(new_Simulation, NEW(hyxSDK::Simulation, (hyx::Name const&), hyx::Name())),
    FUNCTION(delete_Simulation, DELETE(hyxSDK::Simulation)),
    FUNCTION(Simulation_add, METHOD(hyxSDK::Simulation, add, (hyx::RigidBody*)),
             METHOD(hyxSDK::Simulation, add, (hyxCollide::Geometry*)),
             METHOD(hyxSDK::Simulation, add, (hyx::Constraint*)), METHOD(hyxSDK::Simulation, add, (hyx::Process*)),
             METHOD(hyxSDK::Simulation, add, (hyx::Frame*)),
             METHOD(hyxSDK::Simulation, add, (hyxSDK::EventListener*, int), 0),
             METHOD(hyxSDK::Simulation, add, (hyxSDK::Assembly*)), METHOD(hyxSDK::Simulation, add, (hyx::Material*)),
             METHOD(hyxSDK::Simulation, add, (hyx::ContactMaterial*))),
    FUNCTION(
        Simulation_remove, METHOD(hyxSDK::Simulation, remove, (hyx::RigidBody*)),
        METHOD(hyxSDK::Simulation, remove, (hyxCollide::Geometry*)),
        METHOD(hyxSDK::Simulation, remove, (hyx::Constraint*)), METHOD(hyxSDK::Simulation, remove, (hyx::Process*)),
        METHOD(hyxSDK::Simulation, remove, (hyx::Frame*)), METHOD(hyxSDK::Simulation, remove, (hyxSDK::EventListener*)),
        METHOD(hyxSDK::Simulation, remove, (hyxSDK::Assembly*)), METHOD(hyxSDK::Simulation, remove, (hyx::Material*)),
        METHOD(hyxSDK::Simulation, remove, (hyx::ContactMaterial*))),
    FUNCTION(Simulation_cleanup, METHOD(hyxSDK::Simulation, cleanup, ())),
    FUNCTION(Simulation_getRigidBodies, ADAPTER(hyxSDK::Simulation, getRigidBodies, simulation_bodies, () const)),
    FUNCTION(Simulation_getConstraints, ADAPTER(hyxSDK::Simulation, getConstraints, simulation_constraints, () const)),
    FUNCTION(Simulation_getProcesses, ADAPTER(hyxSDK::Simulation, getProcesses, processes, () const)),
    FUNCTION(Simulation_getFrames, ADAPTER(hyxSDK::Simulation, getFrames, frames, () const)),
    FUNCTION(Simulation_getEventListeners, ADAPTER(hyxSDK::Simulation, getEventListeners, listeners, () const)),
    FUNCTION(Simulation_getAssemblies, ADAPTER(hyxSDK::Simulation, getAssemblies, simulation_assemblies, () const)),
    FUNCTION(Simulation_getMaterials, ADAPTER(hyxSDK::Simulation, getMaterials, materials, () const)),
    FUNCTION(Simulation_getRigidBody, SHARED(METHOD(hyxSDK::Simulation, getRigidBody, (hyx::Name const&) const))),
    FUNCTION(Simulation_getConstraint,
             ADAPTER(hyxSDK::Simulation, getConstraint, simulation_constraint, (hyx::Name const&) const)),
    FUNCTION(Simulation_getAssembly, SHARED(METHOD(hyxSDK::Simulation, getAssembly, (hyx::Name const&) const))),
    FUNCTION(Simulation_getMaterial, SHARED(METHOD(hyxSDK::Simulation, getMaterial, (hyx::Name const&) const))),
    FUNCTION(Simulation_getContactMaterial, SHARED(METHOD(hyxSDK::Simulation, getContactMaterial,
                                                          (hyx::Material const*, hyx::Material const*) const))),
    FUNCTION(Simulation_getSpace, SHARED(METHOD(hyxSDK::Simulation, getSpace, () const))),
    FUNCTION(Simulation_setGravity, METHOD(hyxSDK::Simulation, setGravity, (hyx::Vec3 const&))),
    FUNCTION(Simulation_getGravity, METHOD(hyxSDK::Simulation, getGravity, () const)),
    FUNCTION(Simulation_setTimeStep, METHOD(hyxSDK::Simulation, setTimeStep, (hyx::Real))),
    FUNCTION(Simulation_getTimeStep, METHOD(hyxSDK::Simulation, getTimeStep, () const)),
    FUNCTION(Simulation_getTimeStamp, METHOD(hyxSDK::Simulation, getTimeStamp, () const)),
    FUNCTION(Simulation_setTimeStamp, METHOD(hyxSDK::Simulation, setTimeStamp, (hyx::TimeStamp))),
    FUNCTION(Simulation_setSolver, METHOD(hyxSDK::Simulation, setSolver, (hyxSDK::Simulation::SolverType))),
    FUNCTION(Simulation_getSolver, METHOD(hyxSDK::Simulation, getSolver, () const)),
    FUNCTION(Simulation_setNumIterations, METHOD(hyxSDK::Simulation, setNumIterations, (int))),
    FUNCTION(Simulation_getNumIterations, METHOD(hyxSDK::Simulation, getNumIterations, () const)),
    FUNCTION(Simulation_setEnableAutoSleep, METHOD(hyxSDK::Simulation, setEnableAutoSleep, (bool))),
    FUNCTION(Simulation_getEnableAutoSleep, METHOD(hyxSDK::Simulation, getEnableAutoSleep, () const)),
    FUNCTION(Simulation_saveState, ADAPTER(hyxSDK::Simulation, saveState, save_state, () const)),
    FUNCTION(Simulation_restoreState, ADAPTER(hyxSDK::Simulation, restoreState, restore_state, (PyObject*))),
    FUNCTION(Simulation_save, METHOD(hyxSDK::Simulation, save, (hyx::String const&) const)),
    FUNCTION(Simulation_restore, METHOD(hyxSDK::Simulation, restore, (hyx::String const&))),
    FUNCTION(Simulation_getStructureRevision, METHOD(hyxSDK::Simulation, getStructureRevision, () const)),
    FUNCTION(Simulation_getStatistics, ADAPTER(hyxSDK::Simulation, getStatistics, statistics, () const)),
    REGISTER(hyxSDK::Simulation, Simulation),
    INIT(Simulation),
};

void step_simulation(hyxSDK::Simulation& simulation) {
    hyxPython::OwnTurn const turn(&simulation);
    simulation.step();
}

hyx::UInt step_simulation_to(hyxSDK::Simulation& simulation, hyx::TimeStamp time) {
    hyxPython::OwnTurn const turn(&simulation);
    return simulation.stepTo(time);
}

// Threads may step simulations at the same time.
constexpr Declared step_rows[] = {
    FUNCTION(Simulation_step, ADAPTER(hyxSDK::Simulation, step, step_simulation, ())),
    FUNCTION(Simulation_stepTo, ADAPTER(hyxSDK::Simulation, stepTo, step_simulation_to, (hyx::TimeStamp))),
};
vocabulary::WaitThemselves const step_turns(step_rows);

} // namespace

ROWS(simulation_rows);
ROWS(step_rows);
