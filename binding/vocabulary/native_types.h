// From a C++ type to its place in the type table.
#pragma once

#include "binding/runtime/state.h"
#include "catalogue_names.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <type_traits>

namespace vocabulary {

// The compiler's own spelling of T.
template <class T>
constexpr std::string_view type_name() {
    std::string_view const text = __PRETTY_FUNCTION__;
    std::size_t const start = text.find("T = ") + 4;
    return text.substr(start, std::min(text.find("; std::string_view"), text.size() - 1) - start);
}

// type_name as a zero-terminated literal.
template <class T>
struct TypeName {
    static constexpr auto text = [] {
        constexpr std::string_view name = type_name<T>();
        std::array<char, name.size() + 1> characters{};
        std::copy(name.begin(), name.end(), characters.begin());
        return characters;
    }();
};

constexpr catalogue::Entry const* find_entry(std::string_view name) {
    auto const* end = std::end(catalogue::entries);
    auto const* entry = std::lower_bound(std::begin(catalogue::entries), end, name,
                                         [](catalogue::Entry const& e, std::string_view n) { return e.native < n; });
    return entry != end && entry->native == name ? entry : nullptr;
}

template <bool Known, class T>
struct RequireCatalogued {
    static_assert(Known,
                  "this type crosses the binding but is not in the type catalogue: add a line to catalogue/*.txt");
};

// The catalogue entry of class (or function) type T.
template <class T>
constexpr catalogue::Entry const& entry_of() {
    constexpr catalogue::Entry const* entry = find_entry(type_name<std::remove_cv_t<T>>());
    (void)sizeof(RequireCatalogued<entry != nullptr, T>);
    return *entry;
}

// Index of T's descriptor in the live table.
template <class T>
inline constexpr std::int16_t type_index = entry_of<T>().index;

// How many classes T derives from: a derived class has more than any of its bases.
template <class T>
inline constexpr int derivation_depth = entry_of<T>().depth;

// The descriptor that stands for pointers to T.
template <class T>
swig_type_info* descriptor() noexcept {
    return swig_types[type_index<T>];
}

} // namespace vocabulary
