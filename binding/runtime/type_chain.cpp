// Links a module's type table into the process's chain, searches it, and takes it down at the end.
#include "binding/runtime/type_chain.h"

#include "binding/runtime/client_data.h"
#include "binding/runtime/global_variables.h"
#include "binding/runtime/reference.h"
#include "binding/runtime/state.h"

#include <cstring>
#include <iterator>

using runtime::Reference;

PyObject* Swig_This_global = nullptr;
PyObject* Swig_TypeCache_global = nullptr;
PyObject* Swig_Capsule_global = nullptr;
PyObject* Swig_Globals_global = nullptr;
int interpreter_counter = 0;

PyObject* SWIG_This() noexcept {
    if (!Swig_This_global)
        Swig_This_global = PyUnicode_InternFromString("this");
    return Swig_This_global;
}

PyObject* SWIG_Python_TypeCache() noexcept {
    if (!Swig_TypeCache_global)
        Swig_TypeCache_global = PyDict_New();
    return Swig_TypeCache_global;
}

swig_module_info* SWIG_Python_GetModuleChain() noexcept {
    void* chain = PyCapsule_Import(chain_capsule_name, 0);
    if (PyErr_Occurred()) {
        PyErr_Clear();
        chain = nullptr;
    }
    return static_cast<swig_module_info*>(chain);
}

namespace {

// Where the chain starts, as seen when this module was linked. The head's `next` changes whenever a module joins.
swig_module_info* chain_head = &swig_module;

// Publishes this module's record. A failure is silent: the module then works without a published chain.
void publish() noexcept {
    PyObject* holder = PyImport_AddModule("swig_runtime_data4"); // borrowed
    Reference capsule = Reference::take(PyCapsule_New(&swig_module, chain_capsule_name, SWIG_Python_DestroyModule));
    if (holder && capsule) {
        PyObject* const published = capsule.get();
        if (PyModule_AddObject(holder, "type_pointer_capsule", published) == 0) {
            (void)capsule.release(); // now the module's
            ++interpreter_counter;
            Swig_Capsule_global = published;
            return;
        }
    }
    PyErr_Clear();
}

// Splices this module's record in behind the head. False when it is already in the chain.
bool splice(swig_module_info* head) noexcept {
    swig_module_info* module = head;
    do {
        if (module == &swig_module)
            return false;
        module = module->next;
    } while (module != head);
    swig_module.next = head->next;
    head->next = &swig_module;
    return true;
}

bool alone() noexcept {
    return swig_module.next == &swig_module;
}

swig_type_info* query_others(char const* name) noexcept {
    return alone() ? nullptr : SWIG_Python_QueryMangled(swig_module.next, &swig_module, name);
}

void push_front(swig_type_info* target, swig_cast_info* cast) noexcept {
    cast->next = target->cast;
    if (target->cast)
        target->cast->prev = cast;
    target->cast = cast;
}

// Merges one initial cast entry of own (now known as shared) into shared's list, unless it is known there.
void link_cast(swig_type_info* own, swig_type_info* shared, swig_cast_info* cast) noexcept {
    swig_type_info* source = query_others(cast->type->name);
    if (source && shared == own) {
        cast->type = source;
        source = nullptr;
    } else if (source && !SWIG_Python_FindCast(source->name, shared)) {
        source = nullptr;
    }
    if (!source)
        push_front(shared, cast);
}

void link_type(std::size_t index) noexcept {
    swig_type_info* own = swig_module.type_initial[index];
    swig_type_info* shared = query_others(own->name);
    if (!shared)
        shared = own;
    else if (own->clientdata)
        shared->clientdata = own->clientdata;
    for (swig_cast_info* cast = swig_module.cast_initial[index]; cast->type; ++cast)
        link_cast(own, shared, cast);
    swig_module.types[index] = shared;
}

} // namespace

void SWIG_InitializeModule(swig_type_info** initial, swig_cast_info** casts) noexcept {
    bool const first = swig_module.next == nullptr;
    if (first) {
        swig_module.type_initial = initial;
        swig_module.cast_initial = casts;
        swig_module.next = &swig_module;
    }
    if (swig_module_info* head = SWIG_Python_GetModuleChain()) {
        if (!splice(head))
            return;
        chain_head = head;
    } else {
        publish();
    }
    if (!first)
        return;
    for (std::size_t i = 0; i < swig_module.size; ++i)
        link_type(i);
    swig_module.types[swig_module.size] = nullptr;
}

void SWIG_Python_DestroyModule(PyObject* capsule) {
    auto* module = static_cast<swig_module_info*>(PyCapsule_GetPointer(capsule, chain_capsule_name));
    if (interpreter_counter-- != 1)
        return;
    for (std::size_t i = 0; i < module->size; ++i) {
        swig_type_info* type = module->types[i];
        if (!type->owndata)
            continue;
        auto* data = static_cast<SwigPyClientData*>(type->clientdata);
        type->clientdata = nullptr;
        SwigPyClientData_Del(data);
    }
    // A missing singleton is made before it is released, so that the end state never depends on what was used.
    Py_XDECREF(SWIG_This());
    Swig_This_global = nullptr;
    Py_XDECREF(SWIG_Python_Globals());
    Swig_Globals_global = nullptr;
    Py_XDECREF(SWIG_Python_TypeCache());
    Swig_TypeCache_global = nullptr;
    Swig_Capsule_global = nullptr;
}

namespace {

swig_type_info* search(swig_module_info const* module, char const* name) noexcept {
    if (module->size == 0)
        return nullptr;
    std::size_t low = 0;
    std::size_t high = module->size - 1;
    while (low <= high) {
        std::size_t const middle = (low + high) / 2;
        swig_type_info* type = module->types[middle];
        if (!type || !type->name)
            return nullptr;
        int const order = std::strcmp(name, type->name);
        if (order == 0)
            return type;
        if (order > 0)
            low = middle + 1;
        else if (middle == 0)
            return nullptr;
        else
            high = middle - 1;
    }
    return nullptr;
}

// Equality of [a, a_end) and [b, b_end) in which blanks do not count.
bool same_spelling(char const* a, char const* a_end, char const* b, char const* b_end) noexcept {
    for (;;) {
        while (a != a_end && *a == ' ')
            ++a;
        while (b != b_end && *b == ' ')
            ++b;
        if (a == a_end || b == b_end)
            return a == a_end && b == b_end;
        if (*a++ != *b++)
            return false;
    }
}

bool has_spelling(swig_type_info const* type, char const* query, char const* query_end) noexcept {
    if (!type || !type->str || !*type->str)
        return false;
    for (char const* start = type->str;;) {
        char const* end = std::strchr(start, '|');
        if (same_spelling(query, query_end, start, end ? end : start + std::strlen(start)))
            return true;
        if (!end)
            return false;
        start = end + 1;
    }
}

swig_type_info* search_spelling(swig_module_info* head, char const* name) noexcept {
    char const* end = name + std::strlen(name);
    swig_module_info* module = head;
    do {
        for (std::size_t i = 0; i < module->size; ++i)
            if (has_spelling(module->types[i], name, end))
                return module->types[i];
        module = module->next;
    } while (module != head);
    return nullptr;
}

} // namespace

swig_type_info* SWIG_Python_QueryMangled(swig_module_info* start, swig_module_info* end, char const* name) noexcept {
    swig_module_info* module = start;
    do {
        if (swig_type_info* type = search(module, name))
            return type;
        module = module->next;
    } while (module != end);
    return nullptr;
}

swig_type_info* SWIG_Python_TypeQuery(char const* name) noexcept {
    PyObject* cache = SWIG_Python_TypeCache();
    Reference key = Reference::take(PyUnicode_FromString(name));
    if (!cache || !key) {
        PyErr_Clear();
        return nullptr;
    }
    if (PyObject* known = PyDict_GetItemWithError(cache, key.get()))
        return static_cast<swig_type_info*>(PyCapsule_GetPointer(known, nullptr));
    swig_module_info* head = SWIG_Python_GetModuleChain();
    if (!head)
        return nullptr;
    swig_type_info* type = SWIG_Python_QueryMangled(head, head, name);
    if (!type)
        type = search_spelling(head, name);
    if (type) {
        Reference capsule = Reference::take(PyCapsule_New(type, nullptr, nullptr));
        if (!capsule || PyDict_SetItem(cache, key.get(), capsule.get()) != 0)
            PyErr_Clear();
    }
    return type;
}

swig_cast_info* SWIG_Python_FindCast(char const* source, swig_type_info* target) noexcept {
    for (swig_cast_info* cast = target->cast; cast; cast = cast->next) {
        if (std::strcmp(cast->type->name, source) != 0)
            continue;
        if (cast != target->cast) {
            cast->prev->next = cast->next;
            if (cast->next)
                cast->next->prev = cast->prev;
            cast->prev = nullptr;
            cast->next = target->cast;
            target->cast->prev = cast;
            target->cast = cast;
        }
        return cast;
    }
    return nullptr;
}

swig_cast_info* runtime::find_cast(swig_type_info const* source, swig_type_info* target) noexcept {
    struct Miss {
        swig_type_info const* source;
        swig_type_info const* target;
        swig_module_info const* newest; // the chain's newest module when the search failed
    };

    static Miss misses[512];

    swig_cast_info* head = target->cast;
    if (head && head->type == source)
        return head;
    auto const hash =
        (reinterpret_cast<std::uintptr_t>(source) >> 4) * 31 + (reinterpret_cast<std::uintptr_t>(target) >> 4);
    Miss& miss = misses[hash % std::size(misses)];
    if (miss.source == source && miss.target == target && miss.newest == chain_head->next)
        return nullptr;
    swig_cast_info* cast = SWIG_Python_FindCast(source->name, target);
    if (!cast)
        miss = {source, target, chain_head->next};
    return cast;
}

swig_type_info* runtime::known_type(char const* name) noexcept {
    if (swig_type_info* type = search(&swig_module, name))
        return type;
    // A shared descriptor has the spellings of the module that made it.
    char const* end = name + std::strlen(name);
    for (std::size_t i = 0; swig_module.type_initial && i < swig_module.size; ++i)
        if (has_spelling(swig_module.type_initial[i], name, end))
            return swig_module.types[i];
    return SWIG_Python_TypeQuery(name);
}

swig_type_info* runtime::required_type(char const* name) noexcept {
    static swig_type_info nothing = {"", nullptr, nullptr, nullptr, nullptr, 0};
    swig_type_info* type = known_type(name);
    return type ? type : &nothing;
}

void SWIG_TypeClientData(swig_type_info* type, void* clientdata) noexcept {
    type->clientdata = clientdata;
    for (swig_cast_info* cast = type->cast; cast; cast = cast->next)
        if (!cast->converter && !cast->type->clientdata)
            SWIG_TypeClientData(cast->type, clientdata);
}

void SWIG_TypeAdoptClientData(swig_type_info* type, void* clientdata) noexcept {
    SWIG_TypeClientData(type, clientdata);
    type->owndata = 1;
}

char const* SWIG_Python_PrettyTypeName(swig_type_info const* type) noexcept {
    if (!type)
        return "unknown";
    if (!type->str)
        return type->name ? type->name : "unknown";
    char const* last = std::strrchr(type->str, '|');
    return last ? last + 1 : type->str;
}
