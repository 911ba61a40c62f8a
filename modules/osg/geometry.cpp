// Meshes that scripts make point by point.
#include "modules/osg/scene_graph_rows.h"
#include "platform/hyx/values/vec3.h"

#include <osg/Drawable>
#include <osg/Geometry>

#include <vector>

namespace {

// All numbers of a buffer of floats or doubles (a NumPy array), or of a list of rows.
std::vector<float> read_rows(PyObject* rows, std::size_t width) {
    auto const items = vocabulary::read_items(rows, "expected a sequence of rows of numbers");
    std::vector<float> numbers;
    for (Py_ssize_t i = 0; i < PyTuple_GET_SIZE(items.get()); ++i) {
        double row[4];
        vocabulary::read_numbers(PyTuple_GET_ITEM(items.get(), i), width, row);
        numbers.insert(numbers.end(), row, row + width);
    }
    return numbers;
}

template <class Array>
osg::ref_ptr<Array> array_of(PyObject* rows) {
    using Element = typename Array::ElementDataType;
    std::vector<float> const numbers = read_rows(rows, Element::num_components);
    osg::ref_ptr<Array> const array = new Array;
    for (std::size_t i = 0; i < numbers.size(); i += Element::num_components) {
        Element element;
        std::copy_n(numbers.begin() + static_cast<std::ptrdiff_t>(i), Element::num_components, element.ptr());
        array->push_back(element);
    }
    return array;
}

// One more than the highest place that the elements name.
unsigned int vertices_named(osg::Geometry const& self) {
    unsigned int most = 0;
    for (auto const& elements : self.getPrimitiveSetList())
        for (unsigned int i = 0; i < elements->getNumIndices(); ++i)
            most = std::max(most, elements->index(i) + 1);
    return most;
}

void set_vertices(osg::Geometry& self, PyObject* rows) {
    osg::ref_ptr<osg::Vec3Array> const vertices = array_of<osg::Vec3Array>(rows);
    if (unsigned int const named = vertices_named(self); named > vertices->size())
        throw std::invalid_argument("the elements name " + std::to_string(named) + " vertices: give as many");
    self.setVertexArray(vertices);
    self.dirtyBound();
}

void set_normals(osg::Geometry& self, PyObject* rows) {
    self.setNormalArray(array_of<osg::Vec3Array>(rows), osg::Array::BIND_PER_VERTEX);
}

void set_colors(osg::Geometry& self, PyObject* rows) {
    osg::ref_ptr<osg::Vec4Array> const colors = array_of<osg::Vec4Array>(rows);
    self.setColorArray(colors, colors->size() == 1 ? osg::Array::BIND_OVERALL : osg::Array::BIND_PER_VERTEX);
}

void set_texcoords(osg::Geometry& self, PyObject* rows) {
    self.setTexCoordArray(0, array_of<osg::Vec2Array>(rows), osg::Array::BIND_PER_VERTEX);
}

// Elements of a mode (GL_POINTS 0, GL_LINES 1, GL_TRIANGLES 4 ...), each the place of a vertex.
void add_elements(osg::Geometry& self, unsigned int mode, PyObject* indices) {
    auto const items = vocabulary::read_items(indices, "expected a sequence of indices");
    unsigned int const vertices = self.getVertexArray() ? self.getVertexArray()->getNumElements() : 0;
    osg::ref_ptr<osg::DrawElementsUInt> const elements = new osg::DrawElementsUInt(mode);
    for (Py_ssize_t i = 0; i < PyTuple_GET_SIZE(items.get()); ++i) {
        unsigned long const index = PyLong_AsUnsignedLong(PyTuple_GET_ITEM(items.get(), i));
        if (PyErr_Occurred())
            throw vocabulary::PythonError();
        if (index >= vertices)
            throw std::out_of_range("there is no vertex " + std::to_string(index));
        elements->push_back(static_cast<GLuint>(index));
    }
    if (mode == GL_TRIANGLES && elements->size() % 3 != 0)
        throw std::invalid_argument("each triangle takes three indices");
    self.addPrimitiveSet(elements);
}

unsigned int vertex_count(osg::Geometry const& self) {
    return self.getVertexArray() ? self.getVertexArray()->getNumElements() : 0;
}

hyx::Vec3 vec3_at(osg::Array const* array, unsigned int place) {
    auto const* const vectors = dynamic_cast<osg::Vec3Array const*>(array);
    if (!vectors || place >= vectors->size())
        throw std::out_of_range("there is no vertex " + std::to_string(place) + " with that value");
    osg::Vec3 const& value = (*vectors)[place];
    return {value.x(), value.y(), value.z()};
}

hyx::Vec3 vertex(osg::Geometry const& self, unsigned int place) {
    return vec3_at(self.getVertexArray(), place);
}

hyx::Vec3 normal(osg::Geometry const& self, unsigned int place) {
    return vec3_at(self.getNormalArray(), place);
}

osg::Vec4f vertex_color(osg::Geometry const& self, unsigned int place) {
    auto const* const colors = dynamic_cast<osg::Vec4Array const*>(self.getColorArray());
    if (!colors || colors->empty() || (place >= colors->size() && colors->getBinding() != osg::Array::BIND_OVERALL))
        throw std::out_of_range("there is no vertex " + std::to_string(place) + " with a colour");
    return colors->getBinding() == osg::Array::BIND_OVERALL ? colors->front() : (*colors)[place];
}

osg::BoundingBox drawable_bounding_box(osg::Drawable const& self) {
    return self.getBoundingBox();
}

constexpr Declared geometry_rows[] = {
    FUNCTION(Drawable_getBoundingBox, ADAPTER(osg::Drawable, getBoundingBox, drawable_bounding_box, () const)),
    SHARED_CLASS_ROWS(osg::Drawable, Drawable),
    FUNCTION(new_Geometry, NEW(osg::Geometry, ())),
    FUNCTION(Geometry_setVertexArray, ADAPTER(osg::Geometry, setVertexArray, set_vertices, (PyObject*))),
    FUNCTION(Geometry_setNormalArray, ADAPTER(osg::Geometry, setNormalArray, set_normals, (PyObject*))),
    FUNCTION(Geometry_setColorArray, ADAPTER(osg::Geometry, setColorArray, set_colors, (PyObject*))),
    FUNCTION(Geometry_setTexCoordArray, ADAPTER(osg::Geometry, setTexCoordArray, set_texcoords, (PyObject*))),
    FUNCTION(Geometry_addElements,
             CONTAINER(ADAPTER(osg::Geometry, addElements, add_elements, (unsigned int, PyObject*)))),
    FUNCTION(Geometry_getNumVertices, ADAPTER(osg::Geometry, getNumVertices, vertex_count, () const)),
    FUNCTION(Geometry_getNumPrimitiveSets, METHOD(osg::Geometry, getNumPrimitiveSets, () const)),
    FUNCTION(Geometry_getVertex, CONTAINER(ADAPTER(osg::Geometry, getVertex, vertex, (unsigned int) const))),
    FUNCTION(Geometry_getNormal, CONTAINER(ADAPTER(osg::Geometry, getNormal, normal, (unsigned int) const))),
    FUNCTION(Geometry_getColor, CONTAINER(ADAPTER(osg::Geometry, getColor, vertex_color, (unsigned int) const))),
    SHARED_CLASS_ROWS(osg::Geometry, Geometry),
};

} // namespace

ROWS(geometry_rows);
