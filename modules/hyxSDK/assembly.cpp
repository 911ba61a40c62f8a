// Rows of the assemblies.
#include "binding/vocabulary/rows.h"
#include "modules/hyx/joints/derived_constraint.h"
#include "platform/hyxSDK/simulation.h"

namespace {

using hyxSDK::Assembly;

PyObject* assembly_bodies(Assembly const& self) {
    return vocabulary::to_shared_list(self.getRigidBodies());
}

PyObject* geometries(Assembly const& self) {
    return vocabulary::to_shared_list(self.getGeometries());
}

PyObject* assembly_constraints(Assembly const& self) {
    return modules::to_derived_list(self.getConstraints());
}

PyObject* assembly_assemblies(Assembly const& self) {
    return vocabulary::to_shared_list(self.getAssemblies());
}

PyObject* assembly_constraint(Assembly const& self, hyx::Name const& name) {
    return modules::to_derived(self.getConstraint(name));
}

constexpr Declared assembly_rows[] = {
    FUNCTION(new_Assembly, NEW(hyxSDK::Assembly, (hyx::Name const&), hyx::Name())),
    FUNCTION(delete_Assembly, DELETE(hyxSDK::Assembly)),
    FUNCTION(Assembly_add, METHOD(hyxSDK::Assembly, add, (hyx::RigidBody*)),
             METHOD(hyxSDK::Assembly, add, (hyxCollide::Geometry*)), METHOD(hyxSDK::Assembly, add, (hyx::Constraint*)),
             METHOD(hyxSDK::Assembly, add, (hyx::Process*)), METHOD(hyxSDK::Assembly, add, (hyx::Frame*)),
             METHOD(hyxSDK::Assembly, add, (hyxSDK::EventListener*)),
             METHOD(hyxSDK::Assembly, add, (hyxSDK::Assembly*))),
    FUNCTION(Assembly_remove, METHOD(hyxSDK::Assembly, remove, (hyx::RigidBody*)),
             METHOD(hyxSDK::Assembly, remove, (hyxCollide::Geometry*)),
             METHOD(hyxSDK::Assembly, remove, (hyx::Constraint*)), METHOD(hyxSDK::Assembly, remove, (hyx::Process*)),
             METHOD(hyxSDK::Assembly, remove, (hyx::Frame*)),
             METHOD(hyxSDK::Assembly, remove, (hyxSDK::EventListener*)),
             METHOD(hyxSDK::Assembly, remove, (hyxSDK::Assembly*))),
    FUNCTION(Assembly_getRigidBodies, ADAPTER(hyxSDK::Assembly, getRigidBodies, assembly_bodies, () const)),
    FUNCTION(Assembly_getGeometries, ADAPTER(hyxSDK::Assembly, getGeometries, geometries, () const)),
    FUNCTION(Assembly_getConstraints, ADAPTER(hyxSDK::Assembly, getConstraints, assembly_constraints, () const)),
    FUNCTION(Assembly_getAssemblies, ADAPTER(hyxSDK::Assembly, getAssemblies, assembly_assemblies, () const)),
    FUNCTION(Assembly_getRigidBody, SHARED(METHOD(hyxSDK::Assembly, getRigidBody, (hyx::Name const&) const))),
    FUNCTION(Assembly_getConstraint,
             ADAPTER(hyxSDK::Assembly, getConstraint, assembly_constraint, (hyx::Name const&) const)),
    FUNCTION(Assembly_getAssembly, SHARED(METHOD(hyxSDK::Assembly, getAssembly, (hyx::Name const&) const))),
    FUNCTION(Assembly_transform, METHOD(hyxSDK::Assembly, transform, (hyx::AffineMatrix4x4 const&))),
    FUNCTION(Assembly_getSimulation, SHARED(METHOD(hyxSDK::Assembly, getSimulation, () const))),
    REGISTER(hyxSDK::Assembly, Assembly),
    INIT(Assembly),
};

} // namespace

ROWS(assembly_rows);
