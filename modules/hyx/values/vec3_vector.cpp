// Lists of points and of numbers, filled from any Python iterable.
#include "platform/hyx/values/vec3_vector.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/values/vec3f.h"
#include "platform/hyx/values/vector_pod.h"

namespace {

using SinglePoints = hyx::VectorPOD<hyx::Vec3f>;

template <class List>
typename List::value_type vec3_vector_get_item(List const& self, long index) {
    long const size = static_cast<long>(self.size());
    if (index < -size || index >= size)
        throw std::out_of_range("list index out of range");
    return self[static_cast<std::size_t>(index < 0 ? index + size : index)];
}

hyx::Vec3Vector* from_points(PyObject* points) {
    hyx::Vec3Vector list;
    vocabulary::read_values<hyx::Vec3>(points, list);
    return new hyx::Vec3Vector(std::move(list));
}

unsigned long vec3_vector_count(hyx::Vec3Vector const& self) {
    return self.size();
}

void vec3_vector_append(hyx::Vec3Vector& self, hyx::Vec3 const& point) {
    self.push_back(point);
}

void vec3_vector_clear(hyx::Vec3Vector& self) {
    self.clear();
}

unsigned long single_count(SinglePoints const& self) {
    return self.size();
}

constexpr Declared vec3_vector_rows[] = {
    FUNCTION(new_Vec3Vector, NEW(hyx::Vec3Vector, ()), MAKE(hyx::Vec3Vector, from_points, (PyObject*))),
    FUNCTION(delete_Vec3Vector, DELETE(hyx::Vec3Vector)),
    FUNCTION(Vec3Vector___len__, ADAPTER(hyx::Vec3Vector, __len__, vec3_vector_count, () const)),
    FUNCTION(Vec3Vector___getitem__,
             CONTAINER(ADAPTER(hyx::Vec3Vector, __getitem__, vec3_vector_get_item<hyx::Vec3Vector>, (long) const))),
    FUNCTION(Vec3Vector_append, ADAPTER(hyx::Vec3Vector, append, vec3_vector_append, (hyx::Vec3 const&))),
    FUNCTION(Vec3Vector_clear, ADAPTER(hyx::Vec3Vector, clear, vec3_vector_clear, ())),
    REGISTER(hyx::Vec3Vector, Vec3Vector),
    INIT(Vec3Vector),
    FUNCTION(delete_Vec3fVector, DELETE(hyx::VectorPOD<hyx::Vec3f>)),
    FUNCTION(Vec3fVector___len__, ADAPTER(hyx::VectorPOD<hyx::Vec3f>, __len__, single_count, () const)),
    FUNCTION(Vec3fVector___getitem__, CONTAINER(ADAPTER(hyx::VectorPOD<hyx::Vec3f>, __getitem__,
                                                        vec3_vector_get_item<SinglePoints>, (long) const))),
    REGISTER(hyx::VectorPOD<hyx::Vec3f>, Vec3fVector),
    INIT(Vec3fVector),
};

} // namespace

ROWS(vec3_vector_rows);
