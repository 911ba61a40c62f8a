// The records of the shared type table. Their layouts are a binary interface between all extension modules of the
// family that are loaded into one process, also those built elsewhere: they must not move.
#pragma once

#include <cstddef>
#include <cstdint>

extern "C" {

struct swig_type_info;

// Adjusts a pointer to a derived object into one to its base. Sets *newmemory to 2 when the result is a new heap
// object that the caller must delete; otherwise leaves it alone.
using swig_converter_func = void* (*)(void*, int* newmemory);
// Maps a pointer to the descriptor of its most derived type.
using swig_dycast_func = swig_type_info* (*)(void**);

// One (source type, target type) pair, kept in the target's list.
struct swig_cast_info {
    swig_type_info* type;          // source type; NULL ends an initial list
    swig_converter_func converter; // NULL: the pointer is used unchanged
    swig_cast_info* next;          // NULL at the end
    swig_cast_info* prev;          // NULL at the head
};

// One native type.
struct swig_type_info {
    char const* name;       // mangled, unique in the family
    char const* str;        // readable, equivalent spellings separated by '|'; may be NULL
    swig_dycast_func dcast; // may be NULL
    swig_cast_info* cast;   // head of the types that convert to this one
    void* clientdata;       // SwigPyClientData of the proxy class; NULL before it registers
    std::int32_t owndata;   // 1: clientdata is released at teardown
};

// One module's type table; the modules form a circular chain.
struct swig_module_info {
    swig_type_info** types;        // live array, size + 1 slots, NULL-terminated once linked
    std::uint64_t size;            // number of descriptors
    swig_module_info* next;        // NULL: not yet initialised
    swig_type_info** type_initial; // the module's own descriptors, sorted by name
    swig_cast_info** cast_initial; // per initial descriptor, entries up to one whose type is NULL
    void* clientdata;              // unused, NULL
};
}

static_assert(sizeof(void*) == 8, "the shared records are those of 64-bit Linux");

static_assert(offsetof(swig_cast_info, type) == 0);
static_assert(offsetof(swig_cast_info, converter) == 8);
static_assert(offsetof(swig_cast_info, next) == 16);
static_assert(offsetof(swig_cast_info, prev) == 24);
static_assert(sizeof(swig_cast_info) == 32);

static_assert(offsetof(swig_type_info, name) == 0);
static_assert(offsetof(swig_type_info, str) == 8);
static_assert(offsetof(swig_type_info, dcast) == 16);
static_assert(offsetof(swig_type_info, cast) == 24);
static_assert(offsetof(swig_type_info, clientdata) == 32);
static_assert(offsetof(swig_type_info, owndata) == 40);
static_assert(sizeof(swig_type_info) == 48);

static_assert(offsetof(swig_module_info, types) == 0);
static_assert(offsetof(swig_module_info, size) == 8);
static_assert(offsetof(swig_module_info, next) == 16);
static_assert(offsetof(swig_module_info, type_initial) == 24);
static_assert(offsetof(swig_module_info, cast_initial) == 32);
static_assert(offsetof(swig_module_info, clientdata) == 40);
static_assert(sizeof(swig_module_info) == 48);
