// The shapes that are given by many points.
#include "binding/vocabulary/lists.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyxCollide/height_field.h"
#include "platform/hyxCollide/trimesh.h"

namespace {

hyx::UInt32Vector read_triangles(PyObject* indices) {
    std::vector<unsigned int> const numbers = vocabulary::read_indices(indices);
    return hyx::UInt32Vector(numbers.begin(), numbers.end());
}

// Of any shape.
hyx::RealVector read_heights(PyObject* heights) {
    if (!PyObject_CheckBuffer(heights))
        return vocabulary::read_list<hyx::RealVector>(heights);
    std::vector<double> const numbers = vocabulary::read_all_numbers(heights);
    return hyx::RealVector(numbers.begin(), numbers.end());
}

hyxCollide::Trimesh* make_mesh(PyObject* vertices, PyObject* indices, hyx::Name const& name) {
    hyx::UInt32Vector const triangles = read_triangles(indices);
    return new hyxCollide::Trimesh(vocabulary::read_list<hyx::Vec3Vector>(vertices), triangles, name);
}

PyObject* vertices(hyxCollide::Trimesh const& self) {
    return vocabulary::to_list(self.getVertices());
}

PyObject* indices(hyxCollide::Trimesh const& self) {
    return vocabulary::to_list(self.getIndices());
}

PyObject* vertex_array(hyxCollide::Trimesh const& self) {
    return vocabulary::list_array(self.getVertices());
}

// Three to a row.
PyObject* index_array(hyxCollide::Trimesh const& self) {
    return vocabulary::copied_array(self.getIndices().data(), self.getNumTriangles(), 3);
}

void update(hyxCollide::Trimesh& self, PyObject* vertices) {
    self.updateVertices(vocabulary::read_list<hyx::Vec3Vector>(vertices));
}

hyxCollide::HeightField* make_field(hyx::UInt resolutionX, hyx::UInt resolutionY, hyx::Real sizeX, hyx::Real sizeY,
                                    PyObject* heights) {
    return new hyxCollide::HeightField(resolutionX, resolutionY, sizeX, sizeY, read_heights(heights));
}

PyObject* heights(hyxCollide::HeightField const& self) {
    return vocabulary::to_list(self.getHeights());
}

// A row for each place along x, as `setHeights` takes them.
PyObject* height_array(hyxCollide::HeightField const& self) {
    return vocabulary::copied_array(self.getHeights().data(), self.getResolutionY(), self.getResolutionX());
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
    FUNCTION(Trimesh_getVertexArray, ADAPTER(hyxCollide::Trimesh, getVertexArray, vertex_array, () const)),
    FUNCTION(Trimesh_getIndexArray, ADAPTER(hyxCollide::Trimesh, getIndexArray, index_array, () const)),
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
    FUNCTION(HeightField_getHeightArray, ADAPTER(hyxCollide::HeightField, getHeightArray, height_array, () const)),
    FUNCTION(HeightField_getHeightAt, METHOD(hyxCollide::HeightField, getHeightAt, (hyx::Real, hyx::Real) const)),
    FUNCTION(HeightField_getVertex,
             CONTAINER(METHOD(hyxCollide::HeightField, getVertex, (hyx::UInt, hyx::UInt) const))),
    REGISTER(hyxCollide::HeightField, HeightField),
    INIT(HeightField),
};

} // namespace

ROWS(meshes_rows);
