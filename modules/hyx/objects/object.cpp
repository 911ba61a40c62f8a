// The bases of all named and shared objects.
#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/objects/process.h"
#include "platform/hyxSDK/simulation.h"

namespace {

PyObject* objects(hyx::Component const& self) {
    return vocabulary::to_shared_list(self.getObjects());
}

constexpr Declared object_rows[] = {
    FUNCTION(delete_Referenced, DELETE(hyx::Referenced)),
    FUNCTION(Referenced_getReferenceCount, METHOD(hyx::Referenced, getReferenceCount, () const)),
    REGISTER(hyx::Referenced, Referenced),
    INIT(Referenced),
    FUNCTION(new_Object, NEW(hyx::Object, (hyx::Name const&), hyx::Name())),
    FUNCTION(delete_Object, DELETE(hyx::Object)),
    FUNCTION(Object_setName, METHOD(hyx::Object, setName, (hyx::Name const&))),
    FUNCTION(Object_getName, METHOD(hyx::Object, getName, () const)),
    REGISTER(hyx::Object, Object),
    INIT(Object),
    FUNCTION(new_Component, NEW(hyx::Component, (hyx::Name const&), hyx::Name())),
    FUNCTION(delete_Component, DELETE(hyx::Component)),
    FUNCTION(Component_printSubtree, VIRTUAL(hyx::Component, printSubtree, () const)),
    FUNCTION(Component_setContext, VIRTUAL(hyx::Component, setContext, (hyx::Object*))),
    FUNCTION(Component_getContext, SHARED(METHOD(hyx::Component, getContext, () const))),
    FUNCTION(Component_rebind, VIRTUAL(hyx::Component, rebind, ())),
    FUNCTION(Component_addObject, VIRTUAL(hyx::Component, addObject, (hyx::Object*, bool), false)),
    FUNCTION(Component_removeObject, VIRTUAL(hyx::Component, removeObject, (hyx::Object*))),
    FUNCTION(Component_findObject, SHARED(METHOD(hyx::Component, findObject, (hyx::Name const&) const))),
    FUNCTION(Component_getObjects, ADAPTER(hyx::Component, getObjects, objects, () const)),
    REGISTER(hyx::Component, Component),
    INIT(Component),
    FUNCTION(delete_Process, DELETE(hyx::Process)),
    FUNCTION(Process_getSimulation, SHARED(METHOD(hyx::Process, getSimulation, () const))),
    REGISTER(hyx::Process, Process),
    INIT(Process),
};

} // namespace

ROWS(object_rows);
