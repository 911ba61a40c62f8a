// An object of a base class goes to Python as what it is.
#pragma once

#include "binding/vocabulary/python_values.h"

namespace vocabulary {

// As the first of the classes that the object is of; as the base when it is of none.
template <class First, class... Rest, class Base>
PyObject* to_first_that_fits(Base* object) {
    if (auto* derived = dynamic_cast<First*>(object))
        return to_shared(derived);
    if constexpr (sizeof...(Rest) > 0)
        return to_first_that_fits<Rest...>(object);
    else
        return to_shared(object);
}

// A list of what `convert` makes of the objects of a list of holders.
template <class List, class Convert>
PyObject* to_derived_list(List const& objects, Convert convert) {
    runtime::Reference const list = runtime::Reference::take(PyList_New(0));
    for (auto const& object : objects) {
        runtime::Reference const item = runtime::Reference::take(convert(object.get()));
        if (!list.get() || !item.get() || PyList_Append(list.get(), item.get()) < 0)
            throw PythonError();
    }
    return Py_XNewRef(list.get());
}

} // namespace vocabulary
