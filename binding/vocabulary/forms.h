// One native form of a wrapped function: its texts, its parameters and its thunk, all made by the compiler from one
// row. Every form is a type with the same static interface, so that a table's element types stay uniform.
#pragma once

#include "binding/directors/director.h"
#include "binding/vocabulary/guards.h"
#include "binding/vocabulary/policies.h"
#include "binding/vocabulary/results.h"
#include "binding/vocabulary/signatures.h"

#include <stdexcept>
#include <tuple>
#include <utility>

namespace vocabulary {

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
PyObject* converted_result(PyObject* const* arguments, F&& call) {
    if constexpr (std::is_void_v<R>) {
        call();
        Py_RETURN_NONE;
    } else {
        return from_result<R, How>(call(), arguments);
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
        return converted_result<Result, How>(call.arguments, [&]() -> Result {
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
        return converted_result<Result, How>(call.arguments, [&]() -> Result {
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
        return converted_result<Result, How>(call.arguments, [&]() -> Result {
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
        return converted_result<Result, How>(call.arguments, [&]() -> Result {
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
        if (self != Py_None && !PyType_SUPPORTS_WEAKREFS(Py_TYPE(self)))
            return PyErr_Format(PyExc_TypeError, "cannot forward to a '%s' object: it cannot be weakly referenced",
                                Py_TYPE(self)->tp_name);
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
        if (auto* object = static_cast<Class*>(call.slots[0].pointer)) {
            if (runtime::holds_lent(call.arguments[0]))
                throw std::invalid_argument("the object lies inside of another one and cannot be deleted");
            if (shower.let_go && shower.let_go(call.arguments[0]))
                Py_RETURN_NONE;
            if (ends_when_dropped(object))
                runtime::forget_deleted(call.arguments[0], object, descriptor<Class>());
            ReferencePolicy<Class>::drop(object);
        }
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
        PyObject* result =
            from_result<Result, Hold::borrowed>(static_cast<Class*>(call.slots[0].pointer)->*Member, call.arguments);
        if constexpr (Borrowed)
            lend_result(result);
        return result;
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
