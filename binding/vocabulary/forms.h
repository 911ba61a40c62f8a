// One native form of a wrapped function: its texts, its parameters and its thunk, all made by the compiler from one
// row. Every form is a type with the same static interface, so that a table's element types stay uniform.
#pragma once

#include "binding/directors/director.h"
#include "binding/vocabulary/guards.h"
#include "binding/vocabulary/parameters.h"
#include "binding/vocabulary/policies.h"
#include "binding/vocabulary/record.h"
#include "binding/vocabulary/results.h"
#include "binding/vocabulary/text.h"

#include <tuple>
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

// What all forms share. Own supplies: Text, Parameters (Python-level, self included), Result, invoke(Call const &).
template <class Own>
struct FormBase {
    static constexpr bool has_self = false;
    static constexpr bool self_is_const = false;
    static constexpr bool is_static = false;
    static constexpr bool disowns = false;
    static constexpr Hold hold = Hold::borrowed;
    static constexpr bool may_call_back = true;
    static constexpr Role role = Role::function;

    template <class Name>
    static void translate() {
        translate_native_exception();
    }

    static PyObject* finish(PyObject* result, Call const&) { return result; }
};

// Parameters as Python sees them: a method's self in front.
template <class Self, class List>
struct WithSelf;

template <class Self, class... P>
struct WithSelf<Self, Types<P...>> {
    using Type = Types<Self*, P...>;
};

// Runs call() and converts its result.
template <class R, Hold How, class F>
PyObject* converted_result(F&& call) {
    if constexpr (std::is_void_v<R>) {
        call();
        Py_RETURN_NONE;
    } else {
        return from_result<R, How>(call());
    }
}

// A free or static function.
template <auto Native, class Row, class Signature, class Defaults, bool HasClass>
struct FreeForm : FormBase<void> {
    using Text = Row;
    using Parameters = typename Select<Signature>::Parameters;
    using Result = typename ResultOf<decltype(Native)>::Type;
    using Given = Arguments<Parameters, Defaults>;
    static constexpr std::size_t required = Given::required;
    static constexpr bool is_static = HasClass;

    template <Hold How>
    static PyObject* invoke(Call const& call) {
        return converted_result<Result, How>([&]() -> Result {
            return Given::apply(call.slots, call.count,
                                [](auto&&... a) -> Result { return Native(std::forward<decltype(a)>(a)...); });
        });
    }
};

// A method, called through the object's virtual table where it has one.
template <class Class, auto Native, class Row, class Signature, class Defaults>
struct MethodForm : FormBase<void> {
    using Text = Row;
    using NativeParameters = typename Select<Signature>::Parameters;
    using Parameters = typename WithSelf<Class, NativeParameters>::Type;
    using Result = typename ResultOf<decltype(Native)>::Type;
    using Given = Arguments<NativeParameters, Defaults>;
    static constexpr std::size_t required = Given::required + 1;
    static constexpr bool has_self = true;
    static constexpr bool self_is_const = Select<Signature>::is_const;
    static constexpr bool may_call_back = !self_is_const;

    template <Hold How>
    static PyObject* invoke(Call const& call) {
        auto* self = static_cast<Class*>(call.slots[0].pointer);
        return converted_result<Result, How>([&]() -> Result {
            return Given::apply(call.slots + 1, call.count - 1, [self](auto&&... a) -> Result {
                return (self->*Native)(std::forward<decltype(a)>(a)...);
            });
        });
    }
};

// A virtual method of a class with a director: called by the director's own Python object it runs the native
// implementation (Upcall), else it goes through the virtual table.
template <class Class, auto Native, class Upcall, class Row, class Signature, class Defaults>
struct VirtualForm : MethodForm<Class, Native, Row, Signature, Defaults> {
    using Base = MethodForm<Class, Native, Row, Signature, Defaults>;
    using Result = typename Base::Result;
    static constexpr bool may_call_back = true;

    template <class Name>
    static void translate() {
        translate_director_exception();
    }

    template <Hold How>
    static PyObject* invoke(Call const& call) {
        auto* self = static_cast<Class*>(call.slots[0].pointer);
        auto* director = dynamic_cast<Swig::Director*>(self);
        if (!director || director->swig_get_self() != call.arguments[0])
            return Base::template invoke<How>(call);
        return converted_result<Result, How>([&]() -> Result {
            return Base::Given::apply(call.slots + 1, call.count - 1, [self](auto&&... a) -> Result {
                return Upcall{}(*self, std::forward<decltype(a)>(a)...);
            });
        });
    }
};

// A function of the row's file that is presented as a method; it takes the object as its first argument.
template <class Class, auto Native, class Row, class Signature, class Defaults>
struct AdapterForm : FormBase<void> {
    using Text = Row;
    using NativeParameters = typename Select<Signature>::Parameters;
    using Parameters = typename WithSelf<Class, NativeParameters>::Type;
    using Result = typename ResultOf<decltype(Native)>::Type;
    using Given = Arguments<NativeParameters, Defaults>;
    static constexpr std::size_t required = Given::required + 1;
    static constexpr bool has_self = true;
    static constexpr bool self_is_const = Select<Signature>::is_const;

    template <Hold How>
    static PyObject* invoke(Call const& call) {
        auto& self = *static_cast<Class*>(call.slots[0].pointer);
        return converted_result<Result, How>([&]() -> Result {
            return Given::apply(call.slots + 1, call.count - 1, [&self](auto&&... a) -> Result {
                return Native(self, std::forward<decltype(a)>(a)...);
            });
        });
    }
};

// A constructor. The result is owned and bare: the proxy's initialiser attaches it.
template <class Class, class Row, class Signature, class Defaults>
struct NewForm : FormBase<void> {
    using Text = Row;
    using Parameters = typename Select<Signature>::Parameters;
    using Result = Class*;
    using Given = Arguments<Parameters, Defaults>;
    static constexpr std::size_t required = Given::required;
    static constexpr bool is_static = true;
    static constexpr Hold hold = Hold::owned;
    static constexpr Role role = Role::constructor;

    template <Hold>
    static PyObject* invoke(Call const& call) {
        Class* object = Given::apply(call.slots, call.count,
                                     [](auto&&... a) { return new Class(std::forward<decltype(a)>(a)...); });
        ReferencePolicy<Class>::take(object);
        return from_pointer(object, PointerResult::owned_bare);
    }
};

// A function of the row's file that makes an object; presented as the constructor.
template <class Class, auto Make, class Row, class Signature, class Defaults>
struct MakeForm : NewForm<Class, Row, Signature, Defaults> {
    using Base = NewForm<Class, Row, Signature, Defaults>;

    template <Hold>
    static PyObject* invoke(Call const& call) {
        Class* object = Base::Given::apply(call.slots, call.count,
                                           [](auto&&... a) { return Make(std::forward<decltype(a)>(a)...); });
        ReferencePolicy<Class>::take(object);
        return from_pointer(object, PointerResult::owned_bare);
    }
};

// The constructor of a class with a director. The first Python argument is the object to forward to, or None for the
// plain class.
template <class Class, class DirectorClass, class Row, class Signature, class Defaults>
struct NewDirectorForm : FormBase<void> {
    using Text = Row;
    using NativeParameters = typename Select<Signature>::Parameters;
    template <class List>
    struct InFront;

    template <class... P>
    struct InFront<Types<P...>> {
        using Type = Types<PyObject*, P...>;
    };

    using Parameters = typename InFront<NativeParameters>::Type;
    using Result = Class*;
    using Given = Arguments<NativeParameters, Defaults>;
    static constexpr std::size_t required = Given::required + 1;
    static constexpr bool is_static = true;
    static constexpr Hold hold = Hold::owned;
    static constexpr Role role = Role::constructor;

    template <Hold>
    static PyObject* invoke(Call const& call) {
        PyObject* self = call.slots[0].object;
        Class* object = Given::apply(call.slots + 1, call.count - 1, [self](auto&&... a) -> Class* {
            if (self == Py_None)
                return new Class(std::forward<decltype(a)>(a)...);
            return new DirectorClass(self, std::forward<decltype(a)>(a)...);
        });
        ReferencePolicy<Class>::take(object);
        return from_pointer(object, PointerResult::owned_bare);
    }
};

// A destructor: deletes the object or drops the constructor's reference. The conversion has disowned the proxy.
template <class Class, class Row>
struct DeleteForm : FormBase<void> {
    using Text = Row;
    using Parameters = Types<Class*>;
    using Result = void;
    static constexpr std::size_t required = 1;
    static constexpr bool has_self = true;
    static constexpr bool disowns = true;
    static constexpr Role role = Role::destructor;

    template <Hold>
    static PyObject* invoke(Call const& call) {
        if (auto* object = static_cast<Class*>(call.slots[0].pointer))
            ReferencePolicy<Class>::drop(object);
        Py_RETURN_NONE;
    }
};

// Gives the director's Python object into the director's keeping.
template <class Class, class Row>
struct DisownForm : FormBase<void> {
    using Text = Row;
    using Parameters = Types<Class*>;
    using Result = void;
    static constexpr std::size_t required = 1;
    static constexpr bool has_self = true;
    static constexpr Role role = Role::disown;

    template <Hold>
    static PyObject* invoke(Call const& call) {
        if (auto* director = dynamic_cast<Swig::Director*>(static_cast<Class*>(call.slots[0].pointer)))
            director->swig_disown();
        Py_RETURN_NONE;
    }
};

// Reads a member. Class-typed members are copied, unless Borrowed: then a pointer into the object is handed out.
template <class Class, auto Member, class Row, bool Borrowed>
struct GetForm : FormBase<void> {
    using Text = Row;
    using Parameters = Types<Class*>;
    using Value = std::remove_reference_t<decltype(std::declval<Class&>().*Member)>;
    using Result = std::conditional_t<Borrowed, Value&, Value>;
    static constexpr std::size_t required = 1;
    static constexpr bool has_self = true;
    static constexpr bool may_call_back = false;
    static constexpr Role role = Role::member_get;

    template <Hold>
    static PyObject* invoke(Call const& call) {
        return from_result<Result, Hold::borrowed>(static_cast<Class*>(call.slots[0].pointer)->*Member);
    }
};

// Writes a member.
template <class Class, auto Member, class Row, class Signature>
struct SetForm : FormBase<void> {
    using Text = Row;
    using NativeParameters = typename Select<Signature>::Parameters;
    using Parameters = typename WithSelf<Class, NativeParameters>::Type;
    using Result = void;
    static constexpr std::size_t required = 2;
    static constexpr bool has_self = true;
    static constexpr bool may_call_back = false;
    static constexpr Role role = Role::member_set;

    struct NoDefaults {
        std::tuple<> operator()() const { return {}; }
    };

    template <Hold>
    static PyObject* invoke(Call const& call) {
        auto* self = static_cast<Class*>(call.slots[0].pointer);
        Arguments<NativeParameters, NoDefaults>::apply(
            call.slots + 1, 1, [self](auto&& value) { self->*Member = std::forward<decltype(value)>(value); });
        Py_RETURN_NONE;
    }
};

// Policies that wrap a form.

template <class Base>
struct OwnedForm : Base {
    static constexpr Hold hold = Hold::owned;
};

template <class Base>
struct SharedForm : Base {
    static constexpr Hold hold = Hold::shared;
};

template <class Base, auto Translate>
struct GuardedForm : Base {
    template <class Name>
    static void translate() {
        Translate();
    }
};

// Listener-style methods report native exceptions under the name of their wrapper.
template <class Base, int Line, class Source>
struct ListenerForm : Base {
    template <class Name>
    static void translate() {
        report_listener_exception(Name{}(), Line, Source{}());
    }
};

// Finish(result, call) sees the Python result before it is returned and may replace it.
template <class Base, auto Finish>
struct FinishedForm : Base {
    static PyObject* finish(PyObject* result, Call const& call) { return result ? Finish(result, call) : nullptr; }
};

} // namespace vocabulary
