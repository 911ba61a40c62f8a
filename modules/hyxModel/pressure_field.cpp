// Pressure on a contact surface.
#include "platform/hyxModel/pressure_field.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxModel/triangle_data.h"

namespace {

template <class Array>
Array& checked(Array& corners, hyx::UInt corner) {
    if (corner > 2)
        throw std::out_of_range("a triangle has the corners 0, 1 and 2");
    return corners;
}

hyx::Vec3 vertex(hyxModel::TriangleData const& self, hyx::UInt corner) {
    return checked(self.vertices, corner)[corner];
}

void set_vertex(hyxModel::TriangleData& self, hyx::UInt corner, hyx::Vec3 const& place) {
    checked(self.vertices, corner)[corner] = place;
}

double pressure(hyxModel::TriangleData const& self, hyx::UInt corner) {
    return checked(self.pressures, corner)[corner];
}

void set_pressure(hyxModel::TriangleData& self, hyx::UInt corner, double value) {
    checked(self.pressures, corner)[corner] = value;
}

PyObject* triangles(hyxModel::PressureField const& self) {
    return vocabulary::to_list(self.getTriangles());
}

constexpr Declared pressure_field_rows[] = {
    FUNCTION(new_TriangleData, NEW(hyxModel::TriangleData, ())),
    FUNCTION(TriangleData_getVertex, ADAPTER(hyxModel::TriangleData, getVertex, vertex, (hyx::UInt) const)),
    FUNCTION(TriangleData_setVertex,
             ADAPTER(hyxModel::TriangleData, setVertex, set_vertex, (hyx::UInt, hyx::Vec3 const&))),
    FUNCTION(TriangleData_getPressure, ADAPTER(hyxModel::TriangleData, getPressure, pressure, (hyx::UInt) const)),
    FUNCTION(TriangleData_setPressure, ADAPTER(hyxModel::TriangleData, setPressure, set_pressure, (hyx::UInt, double))),
    FUNCTION(TriangleData_normal_get, GET(hyxModel::TriangleData, normal)),
    FUNCTION(TriangleData_normal_set, SET(hyxModel::TriangleData, normal, (hyx::Vec3 const&))),
    FUNCTION(TriangleData_getArea, METHOD(hyxModel::TriangleData, getArea, () const)),
    FUNCTION(TriangleData_getForce, METHOD(hyxModel::TriangleData, getForce, () const)),
    FUNCTION(delete_TriangleData, DELETE(hyxModel::TriangleData)),
    REGISTER(hyxModel::TriangleData, TriangleData),
    INIT(TriangleData),
    FUNCTION(new_PressureField, NEW(hyxModel::PressureField, (hyx::RigidBody*, hyx::Real))),
    FUNCTION(PressureField_getRigidBody, SHARED(METHOD(hyxModel::PressureField, getRigidBody, () const))),
    FUNCTION(PressureField_setFoundationDepth, METHOD(hyxModel::PressureField, setFoundationDepth, (hyx::Real))),
    FUNCTION(PressureField_getFoundationDepth, METHOD(hyxModel::PressureField, getFoundationDepth, () const)),
    FUNCTION(PressureField_update, METHOD(hyxModel::PressureField, update, ())),
    FUNCTION(PressureField_getTriangles, ADAPTER(hyxModel::PressureField, getTriangles, triangles, () const)),
    FUNCTION(PressureField_getForce, METHOD(hyxModel::PressureField, getForce, () const)),
    FUNCTION(delete_PressureField, DELETE(hyxModel::PressureField)),
    REGISTER(hyxModel::PressureField, PressureField),
    INIT(PressureField),
};

} // namespace

ROWS(pressure_field_rows);
