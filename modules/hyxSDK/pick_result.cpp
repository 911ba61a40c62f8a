// What is under a point of the screen.
#include "platform/hyxSDK/pick_result.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/bodies/rigid_body.h"

namespace {

PyObject* contacts(hyxSDK::PickResult const& self) {
    return vocabulary::to_list(self.getContacts());
}

unsigned long count(hyxSDK::PickResult const& self) {
    return self.getNumContacts();
}

constexpr Declared pick_result_rows[] = {
    FUNCTION(new_PickResult, NEW(hyxSDK::PickResult, ())),
    FUNCTION(delete_PickResult, DELETE(hyxSDK::PickResult)),
    FUNCTION(PickResult_isValid, METHOD(hyxSDK::PickResult, isValid, () const)),
    FUNCTION(PickResult_getNumContacts, METHOD(hyxSDK::PickResult, getNumContacts, () const)),
    FUNCTION(PickResult_getGeometry, SHARED(METHOD(hyxSDK::PickResult, getGeometry, () const))),
    FUNCTION(PickResult_getRigidBody, SHARED(METHOD(hyxSDK::PickResult, getRigidBody, () const))),
    FUNCTION(PickResult_getPoint, METHOD(hyxSDK::PickResult, getPoint, () const)),
    FUNCTION(PickResult_getNormal, METHOD(hyxSDK::PickResult, getNormal, () const)),
    FUNCTION(PickResult_getDistance, METHOD(hyxSDK::PickResult, getDistance, () const),
             CONTAINER(METHOD(hyxSDK::PickResult, getDistance, (hyx::UInt) const))),
    FUNCTION(PickResult_getContacts, ADAPTER(hyxSDK::PickResult, getContacts, contacts, () const)),
    FUNCTION(PickResult___len__, ADAPTER(hyxSDK::PickResult, __len__, count, () const)),
    REGISTER(hyxSDK::PickResult, PickResult),
    INIT(PickResult),
};

} // namespace

ROWS(pick_result_rows);
