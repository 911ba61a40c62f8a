// Rows of the rotations.
#include "platform/hyx/values/quat.h"

#include "binding/vocabulary/component_rows.h"

namespace {

hyx::Vec3 turned(hyx::Quat const& self, hyx::Vec3 const& vector) {
    return self * vector;
}

hyx::Quat quat_product(hyx::Quat const& self, hyx::Quat const& next) {
    return self * next;
}

std::string quat_repr(hyx::Quat const& self) {
    return "hyx.Quat(" + vocabulary::components_text(self) + ")";
}

constexpr Declared quat_rows[] = {
    FUNCTION(new_Quat, NEW(hyx::Quat, ()), NEW(hyx::Quat, (double, double, double, double)),
             NEW(hyx::Quat, (double, hyx::Vec3 const&)), NEW(hyx::Quat, (hyx::Vec3 const&, hyx::Vec3 const&)),
             NEW(hyx::Quat, (hyx::Quat const&)),
             CONTAINER(MAKE(hyx::Quat, vocabulary::from_components<hyx::Quat>, (PyObject*)))),
    COMPONENT_ROWS(hyx::Quat, Quat, double),
    FUNCTION(Quat___repr__, ADAPTER(hyx::Quat, __repr__, quat_repr, () const)),
    OPERATOR(Quat___mul__, ADAPTER(hyx::Quat, __mul__, turned, (hyx::Vec3 const&) const),
             ADAPTER(hyx::Quat, __mul__, quat_product, (hyx::Quat const&) const)),
    FUNCTION(Quat_conjugate, METHOD(hyx::Quat, conjugate, () const)),
    FUNCTION(Quat_inverse, METHOD(hyx::Quat, inverse, () const)),
    FUNCTION(Quat_getAngle, METHOD(hyx::Quat, getAngle, () const)),
    FUNCTION(Quat_getAxis, METHOD(hyx::Quat, getAxis, () const)),
    FUNCTION(Quat_getEulerAngles, METHOD(hyx::Quat, getEulerAngles, () const)),
    FUNCTION(Quat_fromEulerAngles, STATIC(hyx::Quat, fromEulerAngles, (hyx::Vec3 const&))),
    FUNCTION(Quat_set, METHOD(hyx::Quat, set, (double, double, double, double))),
    LENGTH_ROWS(hyx::Quat, Quat),
    MEMBER_ROWS(hyx::Quat, Quat, x, double),
    MEMBER_ROWS(hyx::Quat, Quat, y, double),
    MEMBER_ROWS(hyx::Quat, Quat, z, double),
    MEMBER_ROWS(hyx::Quat, Quat, w, double),
};

} // namespace

ROWS(quat_rows);
