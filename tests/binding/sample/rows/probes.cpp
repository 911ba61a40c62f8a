// Probes: what the runtime does where no wrapped function shows it.
#include "binding/runtime/packed_object.h"
#include "binding/runtime/pointer_constants.h"
#include "binding/runtime/pointers.h"
#include "binding/runtime/reference.h"
#include "binding/runtime/state.h"
#include "binding/runtime/type_chain.h"
#include "binding/vocabulary/rows.h"

#include <memory>

namespace {

using runtime::Reference;

// Mangled name of the type that a query finds; None for none.
PyObject* query_type(char const* name) {
    swig_type_info* type = SWIG_Python_TypeQuery(name);
    return SWIG_FromCharPtr(type ? type->name : nullptr);
}

PyObject* cached_queries() {
    return Py_NewRef(SWIG_Python_TypeCache());
}

// Mangled names of the types that convert to a type, in list order; a '+' marks entries with a converter.
PyObject* cast_list(char const* name) {
    swig_type_info* type = SWIG_Python_TypeQuery(name);
    Reference list = Reference::take(PyList_New(0));
    for (swig_cast_info* cast = type ? type->cast : nullptr; cast; cast = cast->next) {
        Reference item = Reference::take(PyUnicode_FromFormat("%s%s", cast->type->name, cast->converter ? "+" : ""));
        PyList_Append(list.get(), item.get());
        if ((cast->prev ? cast->prev->next : type->cast) != cast)
            PyErr_SetString(PyExc_AssertionError, "the list's links do not agree");
    }
    return list.release();
}

// (status, address, ownership bits) of converting an object to a named type; "" is no type.
PyObject* convert_object(PyObject* object, char const* name, int how) {
    void* pointer = nullptr;
    int own = -99;
    swig_type_info* type = *name ? SWIG_Python_TypeQuery(name) : nullptr;
    int const status = SWIG_Python_ConvertPtrAndOwn(object, &pointer, type, PointerConversion(how), &own);
    return Py_BuildValue("(iKi)", status, reinterpret_cast<unsigned long long>(pointer), own);
}

PyObject* convert_function(PyObject* object, char const* name) {
    void* pointer = nullptr;
    int const status = SWIG_Python_ConvertFunctionPtr(object, &pointer, SWIG_Python_TypeQuery(name));
    return Py_BuildValue("(iK)", status, reinterpret_cast<unsigned long long>(pointer));
}

PyObject* wrap_address(unsigned long address, char const* name) {
    swig_type_info* type = *name ? SWIG_Python_TypeQuery(name) : nullptr;
    return SWIG_Python_NewPointerObj(reinterpret_cast<void*>(address), type, PointerResult::borrowed_proxied);
}

PyObject* new_packed(int size, char const* name) {
    std::string bytes;
    for (int i = 0; i < size; ++i)
        bytes += char(i);
    return SwigPyPacked_Create(bytes.data(), bytes.size(), SWIG_Python_TypeQuery(name));
}

PyObject* new_null_packed() {
    return SwigPyPacked_Create(nullptr, 0, nullptr);
}

PyObject* error_type(int code) {
    return Py_NewRef(SWIG_Python_ErrorType(code));
}

// Raises the pending exception `type` (None: none) and then an overload failure.
PyObject* overload_failure(PyObject* type, char const* text) {
    if (type != Py_None)
        PyErr_SetString(type, text);
    SWIG_Python_RaiseOrModifyTypeError("no form");
    return nullptr;
}

// The unpacker's result for a tuple (or another object) with room for max arguments.
PyObject* unpack(PyObject* args, int min, int max) {
    PyObject* slots[8];
    Py_ssize_t const found = SWIG_Python_UnpackTuple(args == Py_None ? nullptr : args, "name", min, max, slots);
    return found ? PyLong_FromSsize_t(found) : nullptr;
}

// A shared pointer to Leaf whose control block is missing or counts one owner, wrapped as its own or another type.
std::shared_ptr<int> owner;
std::shared_ptr<int> empty;

PyObject* shared_leaf(bool with_owner, char const* type) {
    owner = std::make_shared<int>(7);
    return SWIG_Python_NewPointerObj(with_owner ? &owner : &empty, SWIG_Python_TypeQuery(type),
                                     PointerResult::borrowed_proxied);
}

// (status, ownership bits, use count while the temporary lives, use count after) of converting to a base.
PyObject* convert_shared(PyObject* object, char const* name) {
    void* pointer = nullptr;
    int own = 0;
    int const status =
        SWIG_Python_ConvertPtrAndOwn(object, &pointer, SWIG_Python_TypeQuery(name), PointerConversion::general, &own);
    auto* temporary = static_cast<std::shared_ptr<int>*>(pointer);
    long const during = owner.use_count();
    bool const is_empty = temporary && !*temporary;
    if (own & SWIG_CAST_NEW_MEMORY)
        delete temporary;
    return Py_BuildValue("(iilli)", status, own, during, owner.use_count(), int(is_empty));
}

int published_value = 41;

swig_const_info const* constant_table() {
    static swig_const_info table[] = {
        {SWIG_PY_POINTER, "VALUE", 0, 0.0, &published_value, &swig_types[vocabulary::type_index<int>]},
        {SWIG_PY_BINARY, "BYTES", 4, 0.0, &published_value, &swig_types[vocabulary::type_index<int>]},
        {SWIG_PY_BINARY, "NOTHING", 4, 0.0, nullptr, &swig_types[vocabulary::type_index<int>]},
        {0, nullptr, 0, 0.0, nullptr, nullptr},
    };
    return table;
}

// The constants as a dict, as module initialisation installs them.
PyObject* installed_constants() {
    Reference dict = Reference::take(PyDict_New());
    SWIG_Python_InstallConstants(dict.get(), constant_table());
    return dict.release();
}

PyObject* published_function(PyObject*, PyObject*) {
    Py_RETURN_NONE;
}

PyMethodDef published[] = {
    {"with_pointer", published_function, METH_NOARGS, "Does this. swig_ptr: VALUE"},
    {"without_pointer", published_function, METH_NOARGS, "Does that."},
    {"with_null", published_function, METH_NOARGS, "swig_ptr: NULL"},
    {"broken", published_function, METH_NOARGS, "swig_ptr: _00zz"},
    {nullptr, nullptr, 0, nullptr},
};

// Native function objects whose doc strings publish pointers.
PyObject* published_functions() {
    SWIG_Python_FixMethods(published, constant_table());
    Reference list = Reference::take(PyList_New(0));
    for (PyMethodDef* method = published; method->ml_name; ++method) {
        Reference function = Reference::take(PyCFunction_New(method, nullptr));
        PyList_Append(list.get(), function.get());
    }
    return list.release();
}

unsigned long published_address() {
    return reinterpret_cast<unsigned long>(&published_value);
}

// Names of the chain's modules by their first descriptor, from the head on.
PyObject* chain_sizes() {
    Reference list = Reference::take(PyList_New(0));
    swig_module_info* head = SWIG_Python_GetModuleChain();
    swig_module_info* module = head;
    while (module) {
        Reference size = Reference::take(PyLong_FromUnsignedLong(module->size));
        PyList_Append(list.get(), size.get());
        module = module->next == head ? nullptr : module->next;
    }
    return list.release();
}

bool publishes_chain() {
    return interpreter_counter == 1;
}

constexpr Declared functions[] = {
    FUNCTION(query_type, FREE(query_type, (char const*))),
    FUNCTION(cached_queries, FREE(cached_queries, ())),
    FUNCTION(cast_list, FREE(cast_list, (char const*))),
    FUNCTION(convert_object, FREE(convert_object, (PyObject*, char const*, int), 0)),
    FUNCTION(convert_function, FREE(convert_function, (PyObject*, char const*))),
    FUNCTION(wrap_address, FREE(wrap_address, (unsigned long, char const*))),
    FUNCTION(new_packed, FREE(new_packed, (int, char const*))),
    FUNCTION(new_null_packed, FREE(new_null_packed, ())),
    FUNCTION(error_type, FREE(error_type, (int))),
    FUNCTION(overload_failure, FREE(overload_failure, (PyObject*, char const*))),
    FUNCTION(unpack, FREE(unpack, (PyObject*, int, int))),
    FUNCTION(shared_leaf, FREE(shared_leaf, (bool, char const*), "_p_std__shared_ptrT_sample__Leaf_t")),
    FUNCTION(convert_shared, FREE(convert_shared, (PyObject*, char const*))),
    FUNCTION(installed_constants, FREE(installed_constants, ())),
    FUNCTION(published_functions, FREE(published_functions, ())),
    FUNCTION(published_address, FREE(published_address, ())),
    FUNCTION(chain_sizes, FREE(chain_sizes, ())),
    FUNCTION(publishes_chain, FREE(publishes_chain, ())),
};

} // namespace

ROWS(functions);
