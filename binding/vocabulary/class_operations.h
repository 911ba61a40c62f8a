// Fills in the records by which proxies keep shared objects alive and tell them apart.
#pragma once

#include "binding/vocabulary/native_types.h"
#include "binding/vocabulary/policies.h"
#include "binding/vocabulary/record.h"

#include <type_traits>
#include <typeinfo>

namespace vocabulary {

template <class Root>
struct FamilyOf {
    static void take(void* root) { change(static_cast<Root*>(root), true); }

    static void drop(void* root) { change(static_cast<Root*>(root), false); }

    static int count(void* root) { return count_of(static_cast<Root*>(root)); }

    static void* whole(void* root) { return dynamic_cast<void*>(static_cast<Root*>(root)); }

    static std::type_info const& type(void* root) { return typeid(*static_cast<Root*>(root)); }

    static constexpr Family family = {std::is_same_v<Root, osg::Referenced>, take, drop, count, whole, type};

private:
    static int count_of(osg::Referenced* root) { return root->referenceCount(); }

    static int count_of(hyx::Referenced* root) { return root->getReferenceCount(); }

    static void change(osg::Referenced* root, bool up) {
        up ? static_cast<void>(root->ref()) : static_cast<void>(root->unref());
    }

    static void change(hyx::Referenced* root, bool up) { up ? root->reference() : root->unreference(); }
};

template <class Class, class Root>
struct ClassOperationsOf {
    static void* to_root(void* object) { return static_cast<Root*>(static_cast<Class*>(object)); }

    static void* from_root(void* root) { return dynamic_cast<Class*>(static_cast<Root*>(root)); }

    static void release(void* object) {
        if constexpr (requires { &ReferencePolicy<Class>::drop; })
            ReferencePolicy<Class>::drop(static_cast<Class*>(object));
    }

    static constexpr ClassOperations operations = {type_index<Class>, &FamilyOf<Root>::family, to_root, from_root,
                                                   release};
};

// NULL for classes that do not count.
template <class Class>
constexpr ClassOperations const* class_operations() {
    if constexpr (std::is_base_of_v<osg::Referenced, Class>)
        return &ClassOperationsOf<Class, osg::Referenced>::operations;
    else if constexpr (std::is_base_of_v<hyx::Referenced, Class>)
        return &ClassOperationsOf<Class, hyx::Referenced>::operations;
    else
        return nullptr;
}

} // namespace vocabulary
