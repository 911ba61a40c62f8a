// Planes and ranges of numbers.
#include "platform/hyx/values/plane.h"

#include "binding/vocabulary/component_rows.h"
#include "platform/hyx/values/range_real.h"

namespace {

std::string number(double value) {
    char digits[40];
    return std::string(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

std::string plane_repr(hyx::Plane const& self) {
    return "hyx.Plane(" + vocabulary::components_text(self.getNormal()) + ", " + number(self.getD()) + ")";
}

std::string range_repr(hyx::RangeReal const& self) {
    return "hyx.RangeReal(" + number(self.lower()) + ", " + number(self.upper()) + ")";
}

bool plane_equal(hyx::RangeReal const& self, hyx::RangeReal const& other) {
    return self == other;
}

constexpr Declared plane_rows[] = {
    FUNCTION(new_Plane, NEW(hyx::Plane, ()), NEW(hyx::Plane, (double, double, double, double)),
             NEW(hyx::Plane, (hyx::Vec3 const&, double)), NEW(hyx::Plane, (hyx::Vec3 const&, hyx::Vec3 const&)),
             NEW(hyx::Plane, (hyx::Plane const&)),
             NEW(hyx::Plane, (hyx::Vec3 const&, hyx::Vec3 const&, hyx::Vec3 const&))),
    FUNCTION(delete_Plane, DELETE(hyx::Plane)),
    FUNCTION(Plane_getNormal, METHOD(hyx::Plane, getNormal, () const)),
    FUNCTION(Plane_getD, METHOD(hyx::Plane, getD, () const)),
    FUNCTION(Plane_getPoint, METHOD(hyx::Plane, getPoint, () const)),
    FUNCTION(Plane_distance, METHOD(hyx::Plane, distance, (hyx::Vec3 const&) const)),
    FUNCTION(Plane_project, METHOD(hyx::Plane, project, (hyx::Vec3 const&) const)),
    FUNCTION(Plane___repr__, ADAPTER(hyx::Plane, __repr__, plane_repr, () const)),
    REGISTER(hyx::Plane, Plane),
    INIT(Plane),
    FUNCTION(new_RangeReal, NEW(hyx::RangeReal, ()), NEW(hyx::RangeReal, (double)),
             NEW(hyx::RangeReal, (double, double)), NEW(hyx::RangeReal, (hyx::RangeReal const&))),
    FUNCTION(delete_RangeReal, DELETE(hyx::RangeReal)),
    FUNCTION(RangeReal_lower, METHOD(hyx::RangeReal, lower, () const)),
    FUNCTION(RangeReal_upper, METHOD(hyx::RangeReal, upper, () const)),
    FUNCTION(RangeReal_size, METHOD(hyx::RangeReal, size, () const)),
    FUNCTION(RangeReal_contains, METHOD(hyx::RangeReal, contains, (double) const)),
    FUNCTION(RangeReal_clamp, METHOD(hyx::RangeReal, clamp, (double) const)),
    OPERATOR(RangeReal___eq__, ADAPTER(hyx::RangeReal, __eq__, plane_equal, (hyx::RangeReal const&) const)),
    FUNCTION(RangeReal___repr__, ADAPTER(hyx::RangeReal, __repr__, range_repr, () const)),
    REGISTER(hyx::RangeReal, RangeReal),
    INIT(RangeReal),
};

} // namespace

ROWS(plane_rows);
