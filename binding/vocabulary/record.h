// What is known of one wrapped function when the module runs. The shared call machinery reads these records; only the
// thunks are code of their own.
#pragma once

#include "binding/runtime/type_records.h"

#include <Python.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <typeinfo>

namespace vocabulary {

// One converted argument.
union Slot {
    void* pointer; // class pointers and references, function pointers, strings and sequences
    PyObject* object;
    long integer;
    unsigned long natural;
    double real;
    float single;
    bool flag;
};

// How an argument is converted.
enum class Kind : std::uint8_t {
    boolean,
    int32,     // int and enumerations
    int64,     // long, ptrdiff_t
    uint32,    // unsigned int
    uint64,    // unsigned long, size_t
    real,      // double
    single,    // float
    text,      // char pointers into the Python str
    converted, // by the parameter's Conversion: strings and sequences
    slice,     // a Python slice
    object,    // any Python object
    function,  // native function pointers
    untyped,   // any wrapped pointer
    pointer,   // a pointer to the parameter's class
    disowned,  // the same, and the Python object stops owning it
};

// A conversion into a heap object or an existing one.
struct Conversion {
    int (*convert)(PyObject* object, void** result); // a status code; SWIG_NEWOBJ: the caller releases the result
    void (*release)(void* result);
};

struct Parameter {
    Kind kind;
    bool reference;               // a null pointer is refused
    std::int16_t type;            // index of the class's descriptor, -1 for none
    Conversion const* conversion; // Kind::converted only
    char const* null_message;     // the complete message for a null reference
    char const* text;             // the native type as declared, not zero-terminated
    std::uint16_t text_size;

    // The complete message for an argument of another type: the null message without its first words.
    char const* message() const noexcept { return null_message + sizeof "invalid null reference " - 1; }
};

// The arguments of one call: slots[i] is converted from arguments[i] for i < count.
struct Call {
    Slot const* slots;
    PyObject* const* arguments;
    std::size_t count;
};

// One native form. Omitted trailing arguments are filled in by its thunk.
struct Form {
    Parameter const* parameters;
    std::uint8_t maximum;   // number of parameters
    std::uint8_t minimum;   // without those that have defaults
    bool may_call_back;     // the native call can run Python code, which can leave an error pending
    bool makes_temporaries; // some argument's conversion can make an object that is released after the call
    bool reads_objects;     // the native call reads Python objects itself, which can run code of the user
    bool needs_self;        // a null self is refused once all arguments have converted
    PyObject* (*thunk)(Call const& call); // makes the native call; may throw
    void (*translate)();                  // called in a handler: turns the native exception into a Python one
    // For descriptions:
    char const* class_name;     // C++ class, NULL for free functions
    char const* method;         // native name as written in the row
    char const* parameter_list; // as written in the row
    char const* default_list;   // as written in the row
    char const* result;         // canonical C++ type
    bool is_static;             // takes no self
    bool is_const;
    bool result_owned;
};

enum class Role : std::uint8_t {
    function,
    constructor,
    destructor,
    member_get,
    member_set,
    static_get,
    static_set,
    swigregister,
    swiginit,
    disown,
};

// One form with a certain number of arguments, in the order in which a dispatcher tries them.
struct Trial {
    Form const* form;
    std::uint8_t count;
};

// How the objects behind pointer results are shown to the one call that has these arguments. The proxies set it around
// each call of theirs; the flat functions, also where such a call leads to them, give what they state.
struct Shower {
    PyObject* const* arguments;
    PyObject* (*show)(void* object, swig_type_info* type); // a new reference, or NULL to leave it to the caller
    // Before a delete function drops the constructor's reference: whether the proxy has dropped one of its own instead,
    // or has had that one dropped before. What a proxy shows then may end at any time: it shows nothing more, unless
    // native code calls it.
    bool (*let_go)(PyObject* proxy);
};

// One of the two families of objects that count references, each under a root class. The functions take the root.
struct Family {
    bool of_scene_graph;
    void (*take)(void* root);
    void (*drop)(void* root);                  // the last reference ends the object
    int (*count)(void* root);                  // of references
    void* (*whole)(void* root);                // the address of the complete object
    std::type_info const& (*type)(void* root); // of the complete object
};

// A class whose objects count references.
struct ClassOperations {
    std::int16_t type; // index of the class's descriptor
    Family const* family;
    void* (*to_root)(void* object);
    void* (*from_root)(void* root); // NULL for an object of another class
    void (*release)(void* object);  // drops the constructor's reference, where it took one
};

struct Function {
    char const* name;
    Role role;
    int flags; // METH_O, METH_VARARGS or METH_NOARGS
    PyCFunction entry;
    Form const* forms;
    std::size_t form_count;
    std::uint8_t maximum; // largest number of arguments
    bool by_count;        // the number of arguments alone chooses the form
    bool binary_operator; // arguments that do not convert give NotImplemented
    Form const* direct;   // the only form, where it makes no temporaries and nothing but the count is to be checked
    Trial const* trials;  // NULL for functions with one fixed form
    std::size_t trial_count;
    char const* failure;                         // the complete message when no form fits; NULL without trials
    char const* class_name;                      // of swigregister rows
    ClassOperations const* operations = nullptr; // of swigregister rows of classes that count references

    bool dispatches() const noexcept { return trials != nullptr; }
};

// An element of an area's table.
struct Declared {
    Function const* function;
};

// One area's table.
struct Rows {
    Declared const* functions;
    std::size_t count;
};

} // namespace vocabulary
