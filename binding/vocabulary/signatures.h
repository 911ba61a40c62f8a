// What a row spells out, for the compiler: the overload it means, its parameters with their messages, its defaults.
#pragma once

#include "binding/vocabulary/parameters.h"
#include "binding/vocabulary/record.h"
#include "binding/vocabulary/text.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

namespace vocabulary {

template <class... P>
struct Types {
    static constexpr std::size_t size = sizeof...(P);
};

// Picks the native function with exactly the parameters of Signature, a function type that returns void.
template <class Signature>
struct Select;

template <class... P>
struct Select<void(P...)> {
    using Parameters = Types<P...>;
    static constexpr bool is_const = false;
    template <class C, class M>
    using Self = C;

    template <class R>
    static constexpr auto free(R (*function)(P...)) {
        return function;
    }

    template <class R, class C>
    static constexpr auto method(R (C::*function)(P...)) {
        return function;
    }
};

template <class... P>
struct Select<void(P...) const> {
    using Parameters = Types<P...>;
    static constexpr bool is_const = true;

    template <class R, class C>
    static constexpr auto method(R (C::*function)(P...) const) {
        return function;
    }
};

template <class Function>
struct ResultOf;

template <class R, class... P>
struct ResultOf<R (*)(P...)> {
    using Type = R;
};

template <class R, class... P>
struct ResultOf<R (*)(P...) noexcept> {
    using Type = R;
};

template <class R, class C, class... P>
struct ResultOf<R (C::*)(P...)> {
    using Type = R;
};

template <class R, class C, class... P>
struct ResultOf<R (C::*)(P...) const> {
    using Type = R;
};

// The texts of a row as it stands in the source. Each is a captureless lambda, so that it can be part of a type.
template <class ClassName, class NativeName, class ParameterList, class DefaultList>
struct RowText {
    static constexpr std::string_view class_name = ClassName{}();
    static constexpr std::string_view native_name = NativeName{}();
    static constexpr std::string_view parameters = ParameterList{}();
    static constexpr std::string_view defaults = DefaultList{}();
};

// Argument number Index, or its default where the caller gave fewer.
template <class Parameters, class Defaults>
struct Arguments;

template <class... P, class Defaults>
struct Arguments<Types<P...>, Defaults> {
    using Values = decltype(std::declval<Defaults>()());
    static constexpr std::size_t required = sizeof...(P) - std::tuple_size_v<Values>;
    static_assert(std::tuple_size_v<Values> <= sizeof...(P), "more default values than parameters");

    // Calls function(arguments...) with the slots from `slots` on, of which `given` are filled.
    template <class Call>
    static decltype(auto) apply(Slot const* slots, std::size_t given, Call&& function) {
        return apply(slots, given, std::forward<Call>(function), std::index_sequence_for<P...>());
    }

private:
    template <class Call, std::size_t... I>
    static decltype(auto) apply([[maybe_unused]] Slot const* slots, [[maybe_unused]] std::size_t given, Call&& function,
                                std::index_sequence<I...>) {
        [[maybe_unused]] Values defaults = Defaults{}();
        return function(argument<P, I>(slots, given, defaults)...);
    }

    template <class T, std::size_t I>
    static decltype(auto) argument(Slot const* slots, [[maybe_unused]] std::size_t given,
                                   [[maybe_unused]] Values& defaults) {
        if constexpr (I < required)
            return ParameterOf<T>::get(slots[I]);
        else
            return optional<T>(slots[I], given > I, std::get<I - required>(defaults));
    }

    template <class T, class D>
    static auto optional(Slot slot, bool given, D& value)
        -> std::conditional_t<std::is_class_v<std::remove_cvref_t<T>>, std::remove_reference_t<T> const&,
                              std::remove_cvref_t<T>> {
        using Plain = std::remove_cvref_t<T>;
        if constexpr (std::is_class_v<Plain>) {
            static_assert(std::is_same_v<Plain, D>, "a default value must have the type of its parameter");
            return given ? ParameterOf<T>::get(slot) : value;
        } else {
            return given ? static_cast<Plain>(ParameterOf<T>::get(slot)) : static_cast<Plain>(value);
        }
    }
};

// The complete messages of all parameters, one zero-terminated literal after another. A method's self comes first.
template <class Name, class Text, bool HasSelf, bool ConstSelf, std::size_t Count>
struct Messages {
    template <class Sink>
    static constexpr void put_parameter_type(Sink& sink, std::size_t index) {
        // In front of what the row spells out stands a method's self, or the Python object of a director.
        constexpr std::size_t in_front = Count - list_size(Text::parameters);
        if (index >= in_front)
            return put_type(sink, list_item(Text::parameters, index - in_front));
        if (!HasSelf)
            return sink.put("PyObject *");
        put_type(sink, Text::class_name);
        sink.put(ConstSelf ? std::string_view(" const *") : std::string_view(" *"));
    }

    template <class Sink>
    static constexpr void write(Sink& sink) {
        for (std::size_t i = 0; i < Count; ++i) {
            sink.put("invalid null reference in method '");
            sink.put(Name{}());
            sink.put("', argument ");
            put_number(sink, i + 1);
            sink.put(" of type '");
            put_parameter_type(sink, i);
            sink.put("'");
            sink.put('\0');
        }
    }
};

template <class P, bool Disowned>
constexpr Parameter make_parameter(char const*& message) {
    using Of = ParameterOf<P>;
    Parameter parameter{
        Disowned ? Kind::disowned : Of::kind, Of::reference, Of::type, Of::conversion, message, nullptr, 0};
    std::string_view const text = message;
    std::size_t const type = text.find("of type '") + sizeof "of type '" - 1;
    parameter.text = message + type;
    parameter.text_size = static_cast<std::uint16_t>(text.size() - type - 1);
    message += text.size() + 1;
    return parameter;
}

} // namespace vocabulary
