// The shapes that are given by many points.
#include "binding/vocabulary/lists.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyxCollide/height_field.h"
#include "platform/hyxCollide/trimesh.h"

namespace {

using vocabulary::PythonError;

hyx::Vec3Vector read_points(PyObject* points) {
    if (!PyObject_CheckBuffer(points))
        return vocabulary::read_list<hyx::Vec3Vector>(points);
    hyx::Vec3Vector list;
    std::vector<double> const numbers = vocabulary::read_buffer(points);
    if (numbers.size() % 3 != 0)
        throw std::invalid_argument("an array of points needs three numbers for each");
    for (std::size_t i = 0; i < numbers.size(); i += 3)
        list.emplace_back(numbers[i], numbers[i + 1], numbers[i + 2]);
    return list;
}

// Whole numbers out of any iterable, as they are or in groups.
void read_indices(PyObject* iterable, hyx::UInt32Vector& indices, bool grouped = true) {
    auto const items = vocabulary::read_items(iterable, "expected a sequence of indices");
    for (Py_ssize_t i = 0; i < PyTuple_GET_SIZE(items.get()); ++i) {
        PyObject* item = PyTuple_GET_ITEM(items.get(), i);
        if (grouped && PySequence_Check(item)) {
            read_indices(item, indices, false);
            continue;
        }
        Py_ssize_t const index = PyNumber_AsSsize_t(item, PyExc_OverflowError);
        if (index == -1 && PyErr_Occurred())
            throw vocabulary::PythonError();
        if (index < 0 || index > UINT32_MAX)
            throw std::invalid_argument("an index of the mesh is not that of a vertex");
        indices.push_back(static_cast<unsigned int>(index));
    }
}

hyx::RealVector read_heights(PyObject* iterable) {
    if (PyObject_CheckBuffer(iterable)) {
        std::vector<double> const numbers = vocabulary::read_buffer(iterable);
        return hyx::RealVector(numbers.begin(), numbers.end());
    }
    return vocabulary::read_list<hyx::RealVector>(iterable);
}

hyxCollide::Trimesh* make_mesh(PyObject* vertices, PyObject* indices, hyx::Name const& name) {
    hyx::UInt32Vector triangles;
    read_indices(indices, triangles);
    return new hyxCollide::Trimesh(read_points(vertices), triangles, name);
}

PyObject* vertices(hyxCollide::Trimesh const& self) {
    return vocabulary::to_list(self.getVertices());
}

PyObject* indices(hyxCollide::Trimesh const& self) {
    return vocabulary::to_list(self.getIndices());
}

void update(hyxCollide::Trimesh& self, PyObject* vertices) {
    self.updateVertices(read_points(vertices));
}

hyxCollide::HeightField* make_field(hyx::UInt resolutionX, hyx::UInt resolutionY, hyx::Real sizeX, hyx::Real sizeY,
                                    PyObject* heights) {
    return new hyxCollide::HeightField(resolutionX, resolutionY, sizeX, sizeY, read_heights(heights));
}

PyObject* heights(hyxCollide::HeightField const& self) {
    return vocabulary::to_list(self.getHeights());
}

void set_heights(hyxCollide::HeightField& self, PyObject* heights) {
    self.setHeights(read_heights(heights));
}

constexpr Declared meshes_rows[] = {
    FUNCTION(new_Trimesh,
             CONTAINER(MAKE(hyxCollide::Trimesh, make_mesh, (PyObject*, PyObject*, hyx::Name const&), hyx::Name()))),
    FUNCTION(delete_Trimesh, DELETE(hyxCollide::Trimesh)),
    FUNCTION(Trimesh_getVertices, ADAPTER(hyxCollide::Trimesh, getVertices, vertices, () const)),
    FUNCTION(Trimesh_getIndices, ADAPTER(hyxCollide::Trimesh, getIndices, indices, () const)),
    FUNCTION(Trimesh_getNumTriangles, METHOD(hyxCollide::Trimesh, getNumTriangles, () const)),
    FUNCTION(Trimesh_getTriangleNormal, CONTAINER(METHOD(hyxCollide::Trimesh, getTriangleNormal, (hyx::UInt) const))),
    FUNCTION(Trimesh_updateVertices, CONTAINER(ADAPTER(hyxCollide::Trimesh, updateVertices, update, (PyObject*)))),
    FUNCTION(Trimesh_isClosed, METHOD(hyxCollide::Trimesh, isClosed, () const)),
    REGISTER(hyxCollide::Trimesh, Trimesh),
    INIT(Trimesh),
    FUNCTION(
        new_HeightField, CONTAINER(NEW(hyxCollide::HeightField, (hyx::UInt, hyx::UInt, hyx::Real, hyx::Real))),
        CONTAINER(MAKE(hyxCollide::HeightField, make_field, (hyx::UInt, hyx::UInt, hyx::Real, hyx::Real, PyObject*)))),
    FUNCTION(delete_HeightField, DELETE(hyxCollide::HeightField)),
    FUNCTION(HeightField_getResolutionX, METHOD(hyxCollide::HeightField, getResolutionX, () const)),
    FUNCTION(HeightField_getResolutionY, METHOD(hyxCollide::HeightField, getResolutionY, () const)),
    FUNCTION(HeightField_getSizeX, METHOD(hyxCollide::HeightField, getSizeX, () const)),
    FUNCTION(HeightField_getSizeY, METHOD(hyxCollide::HeightField, getSizeY, () const)),
    FUNCTION(HeightField_setHeight,
             CONTAINER(METHOD(hyxCollide::HeightField, setHeight, (hyx::UInt, hyx::UInt, hyx::Real)))),
    FUNCTION(HeightField_getHeight,
             CONTAINER(METHOD(hyxCollide::HeightField, getHeight, (hyx::UInt, hyx::UInt) const))),
    FUNCTION(HeightField_setHeights, CONTAINER(ADAPTER(hyxCollide::HeightField, setHeights, set_heights, (PyObject*)))),
    FUNCTION(HeightField_getHeights, ADAPTER(hyxCollide::HeightField, getHeights, heights, () const)),
    FUNCTION(HeightField_getHeightAt, METHOD(hyxCollide::HeightField, getHeightAt, (hyx::Real, hyx::Real) const)),
    FUNCTION(HeightField_getVertex,
             CONTAINER(METHOD(hyxCollide::HeightField, getVertex, (hyx::UInt, hyx::UInt) const))),
    REGISTER(hyxCollide::HeightField, HeightField),
    INIT(HeightField),
};

} // namespace

ROWS(meshes_rows);
