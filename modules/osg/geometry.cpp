// Meshes that scripts make point by point.
#include "binding/vocabulary/number_arrays.h"
#include "modules/osg/scene_graph_rows.h"
#include "platform/hyx/values/vec3.h"

#include <osg/Drawable>
#include <osg/Geometry>
#include <osg/Multisample>

#include <algorithm>
#include <functional>
#include <vector>

namespace {

// Moving points and changing colours go into the buffer that is there, unless another mesh shares it.
template <class Array>
osg::ref_ptr<Array> array_of(
    osg::Array* present, PyObject* rows, std::function<void(std::size_t)> const& check = [](std::size_t) {}) {
    using Element = typename Array::ElementDataType;
    osg::ref_ptr<Array> array = present && present->referenceCount() == 1 ? dynamic_cast<Array*>(present) : nullptr;
    vocabulary::read_rows<typename Element::value_type>(rows, Element::num_components, [&](std::size_t count) {
        check(count);
        if (!array)
            array = new Array;
        array->resize(static_cast<unsigned int>(count));
        return array->empty() ? nullptr : array->front().ptr();
    });
    array->dirty();
    return array;
}

// A list of the driver's would be made anew with each change.
void use_buffers(osg::Geometry& self) {
    if (self.getUseDisplayList())
        self.setUseDisplayList(false);
    if (!self.getUseVertexBufferObjects())
        self.setUseVertexBufferObjects(true);
}

// One more than the highest place that the elements name.
std::size_t vertices_named(osg::Geometry const& self) {
    std::size_t most = 0;
    for (auto const& elements : self.getPrimitiveSetList()) {
        if (auto const* indices = dynamic_cast<osg::DrawElementsUInt const*>(elements.get())) {
            for (GLuint const index : *indices)
                most = std::max<std::size_t>(most, std::size_t(index) + 1);
        } else if (auto const* range = dynamic_cast<osg::DrawArrays const*>(elements.get())) {
            most = std::max<std::size_t>(most, std::size_t(range->getFirst()) + std::size_t(range->getCount()));
        }
    }
    return most;
}

void set_vertices(osg::Geometry& self, PyObject* rows) {
    auto const check = [&](std::size_t count) {
        std::size_t const present = self.getVertexArray() ? self.getVertexArray()->getNumElements() : 0;
        if (count >= present)
            return;
        if (std::size_t const named = vertices_named(self); named > count)
            throw std::invalid_argument("the elements name " + std::to_string(named) + " vertices: give as many");
    };
    use_buffers(self);
    auto const vertices = array_of<osg::Vec3Array>(self.getVertexArray(), rows, check);
    if (vertices != self.getVertexArray())
        self.setVertexArray(vertices);
    self.dirtyBound();
}

void set_normals(osg::Geometry& self, PyObject* rows) {
    self.setNormalArray(array_of<osg::Vec3Array>(self.getNormalArray(), rows), osg::Array::BIND_PER_VERTEX);
}

// An array of bytes is kept as such, 255 for all of a colour: a quarter of the memory.
void set_colors(osg::Geometry& self, PyObject* rows) {
    bool const bytes = vocabulary::NumberArray(rows).holds_bytes();
    osg::ref_ptr<osg::Array> colors;
    if (bytes)
        colors = array_of<osg::Vec4ubArray>(self.getColorArray(), rows);
    else
        colors = array_of<osg::Vec4Array>(self.getColorArray(), rows);
    colors->setNormalize(bytes);
    self.setColorArray(colors, colors->getNumElements() == 1 ? osg::Array::BIND_OVERALL : osg::Array::BIND_PER_VERTEX);
}

void set_texcoords(osg::Geometry& self, PyObject* rows) {
    self.setTexCoordArray(0, array_of<osg::Vec2Array>(self.getTexCoordArray(0), rows), osg::Array::BIND_PER_VERTEX);
}

// Points are squares of whole pixels: several samples smooth nothing there, and take twice the time.
void choose_samples(osg::Geometry& self) {
    auto const& parts = self.getPrimitiveSetList();
    bool const points =
        std::all_of(parts.begin(), parts.end(), [](auto const& part) { return part->getMode() == GL_POINTS; });
    if (points)
        self.getOrCreateStateSet()->setMode(GL_MULTISAMPLE_ARB, osg::StateAttribute::OFF);
    else if (self.getStateSet())
        self.getStateSet()->removeMode(GL_MULTISAMPLE_ARB);
}

// Elements of a mode (GL_POINTS 0, GL_LINES 1, GL_TRIANGLES 4 ...), each the place of a vertex. Places one after the
// other need no list of them.
void add_elements(osg::Geometry& self, unsigned int mode, PyObject* indices) {
    std::vector<unsigned int> const numbers = vocabulary::read_indices(indices);
    unsigned int const vertices = self.getVertexArray() ? self.getVertexArray()->getNumElements() : 0;
    bool follow = !numbers.empty();
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (numbers[i] >= vertices)
            throw std::out_of_range("there is no vertex " + std::to_string(numbers[i]));
        follow = follow && numbers[i] == numbers[0] + i;
    }
    if (mode == GL_TRIANGLES && numbers.size() % 3 != 0)
        throw std::invalid_argument("each triangle takes three indices");
    if (follow)
        self.addPrimitiveSet(
            new osg::DrawArrays(mode, static_cast<GLint>(numbers[0]), static_cast<GLsizei>(numbers.size())));
    else
        self.addPrimitiveSet(
            new osg::DrawElementsUInt(mode, static_cast<unsigned int>(numbers.size()), numbers.data()));
    choose_samples(self);
}

PyObject* numbers_of(osg::Array const* array) {
    auto const columns = array ? static_cast<std::size_t>(array->getDataSize()) : 3;
    std::size_t const rows = array ? array->getNumElements() : 0;
    if (array && array->getDataType() == GL_UNSIGNED_BYTE)
        return vocabulary::copied_array(static_cast<unsigned char const*>(array->getDataPointer()), rows, columns);
    if (array && array->getDataType() != GL_FLOAT)
        throw std::runtime_error("the numbers of this mesh are neither floats nor bytes");
    return vocabulary::copied_array(array ? static_cast<float const*>(array->getDataPointer()) : nullptr, rows,
                                    columns);
}

PyObject* vertex_array(osg::Geometry const& self) {
    return numbers_of(self.getVertexArray());
}

PyObject* normal_array(osg::Geometry const& self) {
    return numbers_of(self.getNormalArray());
}

PyObject* color_array(osg::Geometry const& self) {
    return numbers_of(self.getColorArray());
}

PyObject* texcoord_array(osg::Geometry const& self) {
    return numbers_of(self.getTexCoordArray(0));
}

// The places of all elements, one after the other.
PyObject* element_array(osg::Geometry const& self) {
    std::size_t count = 0;
    for (auto const& elements : self.getPrimitiveSetList())
        count += elements->getNumIndices();
    return vocabulary::new_array<unsigned int>(count, 0, [&](unsigned int* to) {
        for (auto const& elements : self.getPrimitiveSetList())
            for (unsigned int i = 0; i < elements->getNumIndices(); ++i)
                *to++ = elements->index(i);
    });
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
    osg::Array const* const colors = self.getColorArray();
    bool const single = colors && colors->getBinding() == osg::Array::BIND_OVERALL;
    if (!colors || colors->getNumElements() == 0 || (place >= colors->getNumElements() && !single))
        throw std::out_of_range("there is no vertex " + std::to_string(place) + " with a colour");
    unsigned int const at = single ? 0 : place;
    if (auto const* const bytes = dynamic_cast<osg::Vec4ubArray const*>(colors))
        return osg::Vec4f((*bytes)[at].r(), (*bytes)[at].g(), (*bytes)[at].b(), (*bytes)[at].a()) / 255;
    auto const* const floats = dynamic_cast<osg::Vec4Array const*>(colors);
    if (!floats)
        throw std::out_of_range("there is no vertex " + std::to_string(place) + " with a colour");
    return (*floats)[at];
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
    FUNCTION(Geometry_getVertexArray, ADAPTER(osg::Geometry, getVertexArray, vertex_array, () const)),
    FUNCTION(Geometry_getNormalArray, ADAPTER(osg::Geometry, getNormalArray, normal_array, () const)),
    FUNCTION(Geometry_getColorArray, ADAPTER(osg::Geometry, getColorArray, color_array, () const)),
    FUNCTION(Geometry_getTexCoordArray, ADAPTER(osg::Geometry, getTexCoordArray, texcoord_array, () const)),
    FUNCTION(Geometry_getElements, ADAPTER(osg::Geometry, getElements, element_array, () const)),
    FUNCTION(Geometry_getNumVertices, ADAPTER(osg::Geometry, getNumVertices, vertex_count, () const)),
    FUNCTION(Geometry_getNumPrimitiveSets, METHOD(osg::Geometry, getNumPrimitiveSets, () const)),
    FUNCTION(Geometry_getVertex, CONTAINER(ADAPTER(osg::Geometry, getVertex, vertex, (unsigned int) const))),
    FUNCTION(Geometry_getNormal, CONTAINER(ADAPTER(osg::Geometry, getNormal, normal, (unsigned int) const))),
    FUNCTION(Geometry_getColor, CONTAINER(ADAPTER(osg::Geometry, getColor, vertex_color, (unsigned int) const))),
    SHARED_CLASS_ROWS(osg::Geometry, Geometry),
};

} // namespace

ROWS(geometry_rows);
