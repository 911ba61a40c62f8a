// What a native parameter type asks of its argument: which conversion, and how the slot becomes the native value.
#pragma once

#include "binding/vocabulary/conversions.h"
#include "binding/vocabulary/native_types.h"

#include <string>
#include <type_traits>

namespace hyx {
class String;
} // namespace hyx

// Stands for a Python slice in the parameter lists of sequences.
struct SWIGPY_SLICEOBJECT;

namespace vocabulary {

template <Kind K>
struct ParameterBase {
    static constexpr Kind kind = K;
    static constexpr bool reference = false;
    static constexpr std::int16_t type = -1;
    static constexpr Conversion const* conversion = nullptr;
    static constexpr int depth = 0;
};

// Plain values.
template <class T>
struct ParameterOf;

template <>
struct ParameterOf<bool> : ParameterBase<Kind::boolean> {
    static bool get(Slot slot) noexcept { return slot.flag; }
};

template <>
struct ParameterOf<int> : ParameterBase<Kind::int32> {
    static int get(Slot slot) noexcept { return static_cast<int>(slot.integer); }
};

template <>
struct ParameterOf<long> : ParameterBase<Kind::int64> {
    static long get(Slot slot) noexcept { return slot.integer; }
};

template <>
struct ParameterOf<unsigned int> : ParameterBase<Kind::uint32> {
    static unsigned int get(Slot slot) noexcept { return static_cast<unsigned int>(slot.natural); }
};

template <>
struct ParameterOf<unsigned long> : ParameterBase<Kind::uint64> {
    static unsigned long get(Slot slot) noexcept { return slot.natural; }
};

template <>
struct ParameterOf<double> : ParameterBase<Kind::real> {
    static double get(Slot slot) noexcept { return slot.real; }
};

template <>
struct ParameterOf<float> : ParameterBase<Kind::single> {
    static float get(Slot slot) noexcept { return slot.single; }
};

template <>
struct ParameterOf<char*> : ParameterBase<Kind::text> {
    static char* get(Slot slot) noexcept { return static_cast<char*>(slot.pointer); }
};

template <>
struct ParameterOf<char const*> : ParameterBase<Kind::text> {
    static char const* get(Slot slot) noexcept { return static_cast<char const*>(slot.pointer); }
};

template <>
struct ParameterOf<SWIGPY_SLICEOBJECT*> : ParameterBase<Kind::slice> {
    static SWIGPY_SLICEOBJECT* get(Slot slot) noexcept { return static_cast<SWIGPY_SLICEOBJECT*>(slot.pointer); }
};

template <>
struct ParameterOf<PyObject*> : ParameterBase<Kind::object> {
    static PyObject* get(Slot slot) noexcept { return slot.object; }
};

template <class T>
    requires std::is_enum_v<T>
struct ParameterOf<T> : ParameterBase<Kind::int32> {
    static T get(Slot slot) noexcept { return static_cast<T>(slot.integer); }
};

// Pointers. The void pointer takes whatever pointer the object holds.
template <>
struct ParameterOf<void*> : ParameterBase<Kind::untyped> {
    static void* get(Slot slot) noexcept { return slot.pointer; }
};

template <>
struct ParameterOf<void const*> : ParameterBase<Kind::untyped> {
    static void const* get(Slot slot) noexcept { return slot.pointer; }
};

template <class T>
struct ParameterOf<T*> : ParameterBase<Kind::pointer> {
    static constexpr std::int16_t type = type_index<T>;
    static constexpr int depth = derivation_depth<T>;

    static T* get(Slot slot) noexcept { return static_cast<T*>(slot.pointer); }
};

template <class R, class... P>
struct ParameterOf<R (*)(P...)> : ParameterBase<Kind::function> {
    static constexpr std::int16_t type = type_index<R(P...)>;
    using Pointer = R (*)(P...);

    static Pointer get(Slot slot) noexcept { return reinterpret_cast<Pointer>(slot.pointer); }
};

// Objects behind a pointer: references, and classes by value, which are copied from the wrapped object.
template <class T>
struct ObjectParameter : ParameterBase<Kind::pointer> {
    static constexpr bool reference = true;
    static constexpr std::int16_t type = type_index<T>;
    static constexpr int depth = derivation_depth<T>;
};

template <class T>
struct ConvertedParameter : ParameterBase<Kind::converted> {
    static constexpr bool reference = true;
    static constexpr Conversion const* conversion = [] {
        if constexpr (std::is_same_v<T, std::string>)
            return &std_string_conversion;
        else if constexpr (std::is_same_v<T, hyx::String>)
            return &hyx_string_conversion;
        else
            return sequence_conversion<T>;
    }();
    // Strings are primitive to the trial order, sequences are class objects.
    static constexpr bool is_text = std::is_same_v<T, std::string> || std::is_same_v<T, hyx::String>;
};
template <class T>
inline constexpr bool is_converted =
    std::is_same_v<T, std::string> || std::is_same_v<T, hyx::String> || sequence_conversion<T> != nullptr;

template <class T>
    requires std::is_class_v<T>
struct ParameterOf<T> : std::conditional_t<is_converted<T>, ConvertedParameter<T>, ObjectParameter<T>> {
    static T const& get(Slot slot) noexcept { return *static_cast<T const*>(slot.pointer); }
};

template <class T>
    requires std::is_class_v<T>
struct ParameterOf<T const&> : ParameterOf<T> {};

template <class T>
    requires std::is_arithmetic_v<T>
struct ParameterOf<T const&> : ParameterOf<T> {};

// References that the native side writes through take an existing wrapped object, also of plain values.
template <class T>
struct ParameterOf<T&> : ObjectParameter<T> {
    static T& get(Slot slot) noexcept { return *static_cast<T*>(slot.pointer); }
};

} // namespace vocabulary
