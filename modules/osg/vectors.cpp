// Vectors, rotations and matrices of the scene graph.
#include "binding/vocabulary/component_rows.h"
#include "modules/osg/scene_graph_rows.h"

#include <osg/Matrixd>
#include <osg/Quat>
#include <osg/Vec2f>
#include <osg/Vec3d>
#include <osg/Vec3f>
#include <osg/Vec4f>

#include <algorithm>
#include <cmath>

template <>
inline constexpr std::size_t vocabulary::component_count<osg::Quat> = 4;

namespace {

template <class Value>
std::string vector_text(Value const& self, char const* name) {
    return std::string("osg.") + name + "(" + vocabulary::components_text(self) + ")";
}

std::string text2f(osg::Vec2f const& self) {
    return vector_text(self, "Vec2f");
}

std::string text3f(osg::Vec3f const& self) {
    return vector_text(self, "Vec3f");
}

std::string text4f(osg::Vec4f const& self) {
    return vector_text(self, "Vec4f");
}

std::string text3d(osg::Vec3d const& self) {
    return vector_text(self, "Vec3d");
}

osg::Vec3d rotate(osg::Quat const& self, osg::Vec3d const& vector) {
    return self * vector;
}

double matrix_part(osg::Matrixd const& self, int row, int column) {
    if (row < 0 || row > 3 || column < 0 || column > 3)
        throw std::out_of_range("a matrix has rows and columns 0 to 3");
    return self(row, column);
}

void set_matrix_part(osg::Matrixd& self, int row, int column, double value) {
    matrix_part(self, row, column);
    self(row, column) = value;
}

osg::Matrixd product(osg::Matrixd const& self, osg::Matrixd const& other) {
    return self * other;
}

osg::Matrixd inverse(osg::Matrixd const& self) {
    osg::Matrixd result;
    bool const inverted = result.invert(self);
    if (!inverted || !std::all_of(result.ptr(), result.ptr() + 16, [](double part) { return std::isfinite(part); }))
        throw std::invalid_argument("the matrix has no inverse");
    return result;
}

osg::Vec3d transformed(osg::Matrixd const& self, osg::Vec3d const& point) {
    return point * self;
}

osg::Matrixd* matrix_from_numbers(PyObject* numbers) {
    double read[16];
    vocabulary::read_numbers(numbers, 16, read);
    return new osg::Matrixd(read);
}

constexpr Declared vectors_rows[] = {
    FUNCTION(new_Vec2f, NEW(osg::Vec2f, ()), NEW(osg::Vec2f, (float, float)), NEW(osg::Vec2f, (osg::Vec2f const&)),
             CONTAINER(MAKE(osg::Vec2f, vocabulary::from_components<osg::Vec2f>, (PyObject*)))),
    COMPONENT_ROWS(osg::Vec2f, Vec2f, float),
    ARITHMETIC_ROWS(osg::Vec2f, Vec2f, float),
    SCALE_ROW(osg::Vec2f, Vec2f, float),
    FUNCTION(Vec2f_length, METHOD(osg::Vec2f, length, () const)),
    FUNCTION(Vec2f___repr__, ADAPTER(osg::Vec2f, __repr__, text2f, () const)),
    FUNCTION(new_Vec3f, NEW(osg::Vec3f, ()), NEW(osg::Vec3f, (float, float, float)),
             NEW(osg::Vec3f, (osg::Vec3f const&)),
             CONTAINER(MAKE(osg::Vec3f, vocabulary::from_components<osg::Vec3f>, (PyObject*)))),
    COMPONENT_ROWS(osg::Vec3f, Vec3f, float),
    ARITHMETIC_ROWS(osg::Vec3f, Vec3f, float),
    SCALE_ROW(osg::Vec3f, Vec3f, float),
    FUNCTION(Vec3f_length, METHOD(osg::Vec3f, length, () const)),
    FUNCTION(Vec3f___repr__, ADAPTER(osg::Vec3f, __repr__, text3f, () const)),
    FUNCTION(new_Vec4f, NEW(osg::Vec4f, ()), NEW(osg::Vec4f, (float, float, float, float)),
             NEW(osg::Vec4f, (osg::Vec4f const&)),
             CONTAINER(MAKE(osg::Vec4f, vocabulary::from_components<osg::Vec4f>, (PyObject*)))),
    COMPONENT_ROWS(osg::Vec4f, Vec4f, float),
    ARITHMETIC_ROWS(osg::Vec4f, Vec4f, float),
    SCALE_ROW(osg::Vec4f, Vec4f, float),
    FUNCTION(Vec4f_length, METHOD(osg::Vec4f, length, () const)),
    FUNCTION(Vec4f___repr__, ADAPTER(osg::Vec4f, __repr__, text4f, () const)),
    FUNCTION(new_Vec3d, NEW(osg::Vec3d, ()), NEW(osg::Vec3d, (double, double, double)),
             NEW(osg::Vec3d, (osg::Vec3f const&)), NEW(osg::Vec3d, (osg::Vec3d const&)),
             CONTAINER(MAKE(osg::Vec3d, vocabulary::from_components<osg::Vec3d>, (PyObject*)))),
    COMPONENT_ROWS(osg::Vec3d, Vec3d, double),
    ARITHMETIC_ROWS(osg::Vec3d, Vec3d, double),
    SCALE_ROW(osg::Vec3d, Vec3d, double),
    FUNCTION(Vec3d_length, METHOD(osg::Vec3d, length, () const)),
    FUNCTION(Vec3d___repr__, ADAPTER(osg::Vec3d, __repr__, text3d, () const)),

    FUNCTION(new_Quat, NEW(osg::Quat, ()), NEW(osg::Quat, (double, double, double, double)),
             NEW(osg::Quat, (double, osg::Vec3d const&))),
    COMPONENT_ROWS(osg::Quat, Quat, double),
    FUNCTION(Quat_rotate, ADAPTER(osg::Quat, rotate, rotate, (osg::Vec3d const&) const)),

    FUNCTION(new_Matrixd, NEW(osg::Matrixd, ()), NEW(osg::Matrixd, (osg::Matrixd const&)),
             CONTAINER(MAKE(osg::Matrixd, matrix_from_numbers, (PyObject*)))),
    FUNCTION(delete_Matrixd, DELETE(osg::Matrixd)),
    FUNCTION(Matrixd_get, CONTAINER(ADAPTER(osg::Matrixd, get, matrix_part, (int, int) const))),
    FUNCTION(Matrixd_set, CONTAINER(ADAPTER(osg::Matrixd, set, set_matrix_part, (int, int, double)))),
    OPERATOR(Matrixd___mul__, ADAPTER(osg::Matrixd, __mul__, product, (osg::Matrixd const&) const)),
    FUNCTION(Matrixd_inverse, ADAPTER(osg::Matrixd, inverse, inverse, () const)),
    FUNCTION(Matrixd_transform, ADAPTER(osg::Matrixd, transform, transformed, (osg::Vec3d const&) const)),
    FUNCTION(Matrixd_getTrans, METHOD(osg::Matrixd, getTrans, () const)),
    FUNCTION(Matrixd_getScale, METHOD(osg::Matrixd, getScale, () const)),
    FUNCTION(Matrixd_getRotate, METHOD(osg::Matrixd, getRotate, () const)),
    FUNCTION(Matrixd_isIdentity, METHOD(osg::Matrixd, isIdentity, () const)),
    FUNCTION(Matrixd_scale, STATIC(osg::Matrixd, scale, (osg::Vec3d const&)),
             STATIC(osg::Matrixd, scale, (osg::Vec3f const&)), STATIC(osg::Matrixd, scale, (double, double, double))),
    FUNCTION(Matrixd_rotate, STATIC(osg::Matrixd, rotate, (osg::Quat const&)),
             STATIC(osg::Matrixd, rotate, (double, osg::Vec3d const&))),
    FUNCTION(Matrixd_translate, STATIC(osg::Matrixd, translate, (osg::Vec3d const&)),
             STATIC(osg::Matrixd, translate, (osg::Vec3f const&)),
             STATIC(osg::Matrixd, translate, (double, double, double))),
    FUNCTION(Matrixd_lookAt, STATIC(osg::Matrixd, lookAt, (osg::Vec3d const&, osg::Vec3d const&, osg::Vec3d const&))),
    REGISTER(osg::Matrixd, Matrixd),
    INIT(Matrixd),
};

} // namespace

ROWS(vectors_rows);
