// Rows of the placements.
#include "platform/hyx/values/affine_matrix4x4.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"

#include <string>

namespace {

using Matrix = hyx::AffineMatrix4x4;

Matrix* from_rows(PyObject* rows) {
    auto const items = vocabulary::read_items(rows, "expected sixteen numbers or four rows of four");
    double numbers[16];
    if (PyTuple_GET_SIZE(items.get()) == 4)
        for (int row = 0; row < 4; ++row)
            vocabulary::read_numbers(PyTuple_GET_ITEM(items.get(), row), 4, numbers + 4 * row);
    else
        vocabulary::read_numbers(items.get(), 16, numbers);
    return new Matrix(numbers);
}

Matrix affine_matrix4x4_product(Matrix const& self, Matrix const& next) {
    return self * next;
}

bool affine_matrix4x4_equal(Matrix const& self, Matrix const& other) {
    return self == other;
}

hyx::Vec3 transformed(Matrix const& self, hyx::Vec3 const& point) {
    return self.transformPoint(point);
}

// Four tuples of four numbers, for NumPy and printing.
PyObject* to_rows(Matrix const& self) {
    return Py_BuildValue("((dddd)(dddd)(dddd)(dddd))", self(0, 0), self(0, 1), self(0, 2), self(0, 3), self(1, 0),
                         self(1, 1), self(1, 2), self(1, 3), self(2, 0), self(2, 1), self(2, 2), self(2, 3), self(3, 0),
                         self(3, 1), self(3, 2), self(3, 3));
}

unsigned long row_count(Matrix const&) {
    return 4;
}

PyObject* get_row(Matrix const& self, long row) {
    if (row < -4 || row > 3)
        throw std::out_of_range("a matrix has the rows 0 to 3");
    double const* numbers = self.ptr() + 4 * (row < 0 ? row + 4 : row);
    return Py_BuildValue("(dddd)", numbers[0], numbers[1], numbers[2], numbers[3]);
}

std::string matrix_repr(Matrix const& self) {
    runtime::Reference const rows = runtime::Reference::take(to_rows(self));
    runtime::Reference const text = runtime::Reference::take(rows.get() ? PyObject_Repr(rows.get()) : nullptr);
    if (!text.get())
        throw vocabulary::PythonError();
    return std::string("hyx.AffineMatrix4x4(") + PyUnicode_AsUTF8(text.get()) + ")";
}

constexpr Declared affine_matrix4x4_rows[] = {
    FUNCTION(new_AffineMatrix4x4, NEW(hyx::AffineMatrix4x4, ()),
             NEW(hyx::AffineMatrix4x4, (hyx::Quat const&, hyx::Vec3 const&)),
             NEW(hyx::AffineMatrix4x4, (hyx::Quat const&)), NEW(hyx::AffineMatrix4x4, (hyx::Vec3 const&)),
             NEW(hyx::AffineMatrix4x4, (hyx::AffineMatrix4x4 const&)),
             CONTAINER(MAKE(hyx::AffineMatrix4x4, from_rows, (PyObject*)))),
    FUNCTION(delete_AffineMatrix4x4, DELETE(hyx::AffineMatrix4x4)),
    FUNCTION(AffineMatrix4x4_translate, STATIC(hyx::AffineMatrix4x4, translate, (hyx::Vec3 const&))),
    FUNCTION(AffineMatrix4x4_rotate, STATIC(hyx::AffineMatrix4x4, rotate, (hyx::Quat const&))),
    FUNCTION(AffineMatrix4x4_scale, STATIC(hyx::AffineMatrix4x4, scale, (hyx::Vec3 const&))),
    FUNCTION(AffineMatrix4x4_lookAt,
             STATIC(hyx::AffineMatrix4x4, lookAt, (hyx::Vec3 const&, hyx::Vec3 const&, hyx::Vec3 const&))),
    FUNCTION(AffineMatrix4x4_get, CONTAINER(METHOD(hyx::AffineMatrix4x4, get, (unsigned, unsigned) const))),
    FUNCTION(AffineMatrix4x4_set, CONTAINER(METHOD(hyx::AffineMatrix4x4, set, (unsigned, unsigned, double)))),
    FUNCTION(AffineMatrix4x4_getTranslate, METHOD(hyx::AffineMatrix4x4, getTranslate, () const)),
    FUNCTION(AffineMatrix4x4_setTranslate, METHOD(hyx::AffineMatrix4x4, setTranslate, (hyx::Vec3 const&))),
    FUNCTION(AffineMatrix4x4_getRotate, METHOD(hyx::AffineMatrix4x4, getRotate, () const)),
    FUNCTION(AffineMatrix4x4_setRotate, METHOD(hyx::AffineMatrix4x4, setRotate, (hyx::Quat const&))),
    FUNCTION(AffineMatrix4x4_getScale, METHOD(hyx::AffineMatrix4x4, getScale, () const)),
    FUNCTION(AffineMatrix4x4_inverse, METHOD(hyx::AffineMatrix4x4, inverse, () const)),
    FUNCTION(AffineMatrix4x4_transformPoint, METHOD(hyx::AffineMatrix4x4, transformPoint, (hyx::Vec3 const&) const)),
    FUNCTION(AffineMatrix4x4_transformVector, METHOD(hyx::AffineMatrix4x4, transformVector, (hyx::Vec3 const&) const)),
    OPERATOR(AffineMatrix4x4___mul__,
             ADAPTER(hyx::AffineMatrix4x4, __mul__, affine_matrix4x4_product, (hyx::AffineMatrix4x4 const&) const)),
    OPERATOR(AffineMatrix4x4___rmul__, ADAPTER(hyx::AffineMatrix4x4, __rmul__, transformed, (hyx::Vec3 const&) const)),
    OPERATOR(AffineMatrix4x4___eq__,
             ADAPTER(hyx::AffineMatrix4x4, __eq__, affine_matrix4x4_equal, (hyx::AffineMatrix4x4 const&) const)),
    FUNCTION(AffineMatrix4x4___len__, ADAPTER(hyx::AffineMatrix4x4, __len__, row_count, () const)),
    FUNCTION(AffineMatrix4x4___getitem__, CONTAINER(ADAPTER(hyx::AffineMatrix4x4, __getitem__, get_row, (long) const))),
    FUNCTION(AffineMatrix4x4___repr__, ADAPTER(hyx::AffineMatrix4x4, __repr__, matrix_repr, () const)),
    REGISTER(hyx::AffineMatrix4x4, AffineMatrix4x4),
    INIT(AffineMatrix4x4),
};

} // namespace

ROWS(affine_matrix4x4_rows);
