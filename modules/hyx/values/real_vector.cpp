// Lists of numbers, filled from any Python iterable.
#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/values/vector.h"

namespace {

hyx::RealVector* from_numbers(PyObject* numbers) {
    runtime::Reference const fast =
        runtime::Reference::take(PySequence_Fast(numbers, "expected a sequence of numbers"));
    if (!fast.get())
        throw vocabulary::PythonError();
    hyx::RealVector list(static_cast<std::size_t>(PySequence_Fast_GET_SIZE(fast.get())));
    vocabulary::read_numbers(fast.get(), list.size(), list.data());
    return new hyx::RealVector(std::move(list));
}

unsigned long real_vector_count(hyx::RealVector const& self) {
    return self.size();
}

void real_vector_append(hyx::RealVector& self, double number) {
    self.push_back(number);
}

void real_vector_clear(hyx::RealVector& self) {
    self.clear();
}

std::size_t checked(hyx::RealVector const& self, long index) {
    long const size = static_cast<long>(self.size());
    if (index < -size || index >= size)
        throw std::out_of_range("list index out of range");
    return static_cast<std::size_t>(index < 0 ? index + size : index);
}

double real_vector_get_item(hyx::RealVector const& self, long index) {
    return self[checked(self, index)];
}

void real_vector_set_item(hyx::RealVector& self, long index, double number) {
    self[checked(self, index)] = number;
}

constexpr Declared real_vector_rows[] = {
    FUNCTION(new_RealVector, NEW(hyx::RealVector, ()), MAKE(hyx::RealVector, from_numbers, (PyObject*))),
    FUNCTION(delete_RealVector, DELETE(hyx::RealVector)),
    FUNCTION(RealVector___len__, ADAPTER(hyx::RealVector, __len__, real_vector_count, () const)),
    FUNCTION(RealVector___getitem__,
             CONTAINER(ADAPTER(hyx::RealVector, __getitem__, real_vector_get_item, (long) const))),
    FUNCTION(RealVector___setitem__,
             CONTAINER(ADAPTER(hyx::RealVector, __setitem__, real_vector_set_item, (long, double)))),
    FUNCTION(RealVector_append, ADAPTER(hyx::RealVector, append, real_vector_append, (double))),
    FUNCTION(RealVector_clear, ADAPTER(hyx::RealVector, clear, real_vector_clear, ())),
    REGISTER(hyx::RealVector, RealVector),
    INIT(RealVector),
};

} // namespace

ROWS(real_vector_rows);
