// Runs the steps of a module's import in their order.
#include "binding/entry/family_module.h"

#include "binding/directors/python_call.h"
#include "binding/runtime/packed_object.h"
#include "binding/runtime/pointer_constants.h"
#include "binding/runtime/pointer_object.h"
#include "binding/runtime/state.h"
#include "binding/runtime/type_chain.h"
#include "binding/vocabulary/call.h"
#include "binding/vocabulary/describe.h"
#include "binding/vocabulary/own_turns.h"
#include "binding/vocabulary/refusal.h"
#include "binding/vocabulary/results.h"

#include <vector>

// The ends of this module's row tables, from the linker.
extern "C" {
[[gnu::visibility("hidden")]] extern vocabulary::Rows const __start_hyx_rows[];
[[gnu::visibility("hidden")]] extern vocabulary::Rows const __stop_hyx_rows[];
}

namespace entry {

namespace {

// Built on the first import and kept: the interpreter refers to both for the life of the process.
std::vector<PyMethodDef> SwigMethods;
std::vector<vocabulary::Function const*> functions;

swig_const_info const swig_const_table[] = {{0, nullptr, 0, 0.0, nullptr, nullptr}};

PyObject* describe() {
    return vocabulary::describe_functions(functions.data(), functions.size());
}

PyObject* borrow(void* object, swig_type_info* type) {
    return SwigPyObject_Create(object, type, 0);
}

vocabulary::RecordTable records = {
    0,
    nullptr,
    vocabulary::call_array,
    vocabulary::call_one_form,
    &vocabulary::refusal,
    vocabulary::prototypes,
    swig_types,
    borrow,
    &vocabulary::shower,
    &Swig::shown_by,
    describe,
};

vocabulary::ModuleDefinition SWIG_module = {
    {PyModuleDef_HEAD_INIT, nullptr, nullptr, -1, nullptr, nullptr, nullptr, nullptr, nullptr},
    vocabulary::record_table_magic,
    &records,
};

void join_method_tables(Contents const& contents) {
    if (!SwigMethods.empty())
        return;
    for (vocabulary::Rows const* rows = __start_hyx_rows; rows != __stop_hyx_rows; ++rows) {
        for (std::size_t row = 0; row < rows->count; ++row) {
            vocabulary::Function const* function = rows->functions[row].function;
            functions.push_back(function);
            SwigMethods.push_back({function->name, function->entry, function->flags, nullptr});
        }
    }
    SwigMethods.push_back({nullptr, nullptr, 0, nullptr});
    records.count = functions.size();
    records.functions = functions.data();
    SWIG_module.def.m_name = contents.name;
    SWIG_module.def.m_methods = SwigMethods.data();
}

// Made before any wrapper can run, so that no look-up has to create them.
void create_singletons() {
    SWIG_This();
    SWIG_Python_TypeCache();
    SwigPyPacked_type();
    SwigPyObject_type();
}

// The types, the chain and the proxy classes are the process's: objects of one interpreter must not reach another.
bool refuse_sub_interpreter(char const* name) noexcept {
    if (PyInterpreterState_Get() == PyInterpreterState_Main())
        return false;
    PyErr_Format(PyExc_ImportError, "%s works in the main interpreter only, not in a sub-interpreter", name);
    return true;
}

#if PY_VERSION_HEX < 0x030C0000
// After an import the interpreter keeps a copy of the module's dict, which it would hand to other interpreters without
// asking. Without the copy they run the module's initialisation, which refuses.
int forget_copy(void*) noexcept {
    Py_CLEAR(SWIG_module.def.m_base.m_copy);
    return 0;
}
#endif

} // namespace

PyObject* initialise(Contents const& contents) noexcept {
    if (refuse_sub_interpreter(contents.name))
        return nullptr;
    join_method_tables(contents);
    create_singletons();
    SWIG_Python_FixMethods(SwigMethods.data(), swig_const_table);
    PyObject* module = PyModule_Create2(&SWIG_module.def, PYTHON_API_VERSION);
    if (!module)
        return nullptr;
    PyObject* dict = PyModule_GetDict(module);
    SWIG_InitializeModule(swig_type_initial, swig_cast_initial);
    SWIG_Python_InstallConstants(dict, swig_const_table);
    if (contents.install && !contents.install(dict))
        return nullptr;
    if (!vocabulary::watch_exit())
        return nullptr;
#if PY_VERSION_HEX < 0x030C0000
    Py_AddPendingCall(forget_copy, nullptr);
#endif
    return module;
}

} // namespace entry
