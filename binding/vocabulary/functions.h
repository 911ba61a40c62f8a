// From the forms of one Python name to its record: calling convention, trial order, failure message.
#pragma once

#include "binding/vocabulary/call.h"
#include "binding/vocabulary/class_operations.h"
#include "binding/vocabulary/forms.h"
#include "binding/vocabulary/registration.h"

#include <algorithm>

namespace vocabulary {

// What FUNCTION's variants add to a name.
enum class Choice {
    by_arguments,
    by_count,        // the number of arguments alone chooses the form
    binary_operator, // arguments that do not convert give NotImplemented
};

// One form under one Python name.
template <class Name, class F>
class FormOf {
    using Parameters = typename F::Parameters;
    static constexpr std::size_t count = Parameters::size;
    static_assert(count <= most_arguments, "a form has more parameters than the call machinery has slots");
    using Text = Literal<Messages<Name, typename F::Text, F::has_self, F::self_is_const, count>>;

    template <class... P>
    static constexpr std::array<Parameter, count + 1> make_parameters(Types<P...>) {
        [[maybe_unused]] char const* message = Text::text.data();
        return {make_parameter<P, F::disowns>(message)..., Parameter{}};
    }

    template <class... P>
    static constexpr bool makes_temporaries(Types<P...>) {
        return ((ParameterOf<P>::kind == Kind::converted) || ...);
    }

    template <class... P>
    static constexpr bool reads_objects(Types<P...>) {
        return ((ParameterOf<P>::kind == Kind::object || ParameterOf<P>::kind == Kind::slice) || ...);
    }

    static PyObject* thunk(Call const& call) { return F::finish(F::template invoke<F::hold>(call), call); }

public:
    static constexpr std::array<Parameter, count + 1> parameters = make_parameters(Parameters{});
    static constexpr Form form = {
        parameters.data(),
        count,
        F::required,
        F::may_call_back,
        makes_temporaries(Parameters{}),
        reads_objects(Parameters{}),
        F::has_self && !F::disowns && F::role != Role::disown,
        thunk,
        F::template translate<Name>,
        F::Text::class_name.empty() ? nullptr : F::Text::class_name.data(),
        F::Text::native_name.data(),
        F::Text::parameters.data(),
        F::Text::defaults.data(),
        TypeName<typename F::Result>::text.data(),
        F::is_static,
        F::self_is_const,
        F::hold == Hold::owned,
    };

    // A position's rank in the trial order: primitive kinds, then strings, then class pointers, more derived first.
    template <class P>
    static constexpr int rank() {
        using Of = ParameterOf<P>;
        if constexpr (Of::kind <= Kind::single)
            return int(Of::kind);
        else if constexpr (Of::kind == Kind::text)
            return 100;
        else if constexpr (Of::kind == Kind::converted)
            return ConvertedParameter<std::remove_cvref_t<P>>::is_text ? 100 : 1000;
        else
            return 1000 - Of::depth;
    }

    template <class... P>
    static constexpr std::array<int, count + 1> make_ranks(Types<P...>) {
        return {rank<P>()..., 0};
    }

    static constexpr std::array<int, count + 1> ranks = make_ranks(Parameters{});

    // The prototype with the first `given` Python arguments, ended by a newline.
    template <class Sink>
    static constexpr void write_prototype(Sink& sink, std::size_t given) {
        sink.put("    ");
        if (!F::Text::class_name.empty()) {
            put_type(sink, F::Text::class_name);
            sink.put("::");
        }
        sink.put(F::Text::native_name);
        sink.put('(');
        std::size_t const native = given - (count - list_size(F::Text::parameters));
        // The native default arguments of a director's constructor make the form that takes the Python object alone.
        if (native == 0 && given > 0 && !F::has_self)
            sink.put("PyObject *");
        for (std::size_t i = 0; i < native; ++i) {
            if (i > 0)
                sink.put(',');
            put_type(sink, list_item(F::Text::parameters, i));
        }
        sink.put(')');
        if (F::self_is_const)
            sink.put(" const");
        sink.put('\n');
    }
};

// A candidate of a dispatcher while the trial order is made.
struct Candidate {
    Trial trial;
    int const* ranks;
};

constexpr bool tried_before(Candidate const& a, Candidate const& b) {
    if (a.trial.count != b.trial.count)
        return a.trial.count < b.trial.count;
    return std::lexicographical_compare(a.ranks, a.ranks + a.trial.count, b.ranks, b.ranks + b.trial.count);
}

template <class Name, Choice How, class... F>
class FunctionOf {
    static constexpr std::size_t form_count = sizeof...(F);
    static constexpr std::array<Form, form_count> forms = {FormOf<Name, F>::form...};
    static constexpr std::size_t trial_count =
        ((FormOf<Name, F>::form.maximum - FormOf<Name, F>::form.minimum + 1) + ...);
    static constexpr bool dispatches = trial_count > 1;
    static constexpr std::size_t maximum = std::max({std::size_t(FormOf<Name, F>::form.maximum)...});

    // Expansion of the forms by their defaults, sorted stably: ties keep the order of declaration.
    static constexpr std::array<Trial, trial_count> trials = [] {
        std::array<Candidate, trial_count> candidates{};
        int const* const ranks[] = {FormOf<Name, F>::ranks.data()...};
        std::size_t n = 0;
        for (std::size_t f = 0; f < form_count; ++f)
            for (std::size_t given = forms[f].minimum; given <= forms[f].maximum; ++given)
                candidates[n++] = {{&forms[f], std::uint8_t(given)}, ranks[f]};
        for (std::size_t i = 1; i < n; ++i)
            for (std::size_t j = i; j > 0 && tried_before(candidates[j], candidates[j - 1]); --j)
                std::swap(candidates[j], candidates[j - 1]);
        std::array<Trial, trial_count> result{};
        for (std::size_t i = 0; i < n; ++i)
            result[i] = candidates[i].trial;
        return result;
    }();

    struct Failure {
        template <class Sink>
        static constexpr void write(Sink& sink) {
            sink.put("Wrong number or type of arguments for overloaded function '");
            sink.put(Name{}());
            sink.put("'.\n  Possible C/C++ prototypes are:\n");
            (write_forms<FormOf<Name, F>>(sink), ...);
        }

        template <class Of, class Sink>
        static constexpr void write_forms(Sink& sink) {
            for (std::size_t given = Of::form.maximum + 1; given-- > Of::form.minimum;)
                Of::write_prototype(sink, given);
        }
    };

    static constexpr int flags = dispatches || maximum > 1 ? METH_VARARGS : maximum == 1 ? METH_O : METH_NOARGS;
    static constexpr Role role = std::array{F::role...}[0];

    static PyObject* entry(PyObject*, PyObject* arguments) {
        if constexpr (flags == METH_NOARGS)
            return call_no_argument(function);
        else if constexpr (flags == METH_O)
            return call_one_argument(function, arguments);
        else
            return call_tuple(function, arguments);
    }

public:
    static constexpr Function function = {
        Name{}().data(),
        role,
        flags,
        entry,
        forms.data(),
        form_count,
        maximum,
        How == Choice::by_count,
        How == Choice::binary_operator,
        !dispatches && How != Choice::binary_operator && !forms[0].makes_temporaries ? forms.data() : nullptr,
        dispatches ? trials.data() : nullptr,
        dispatches ? trial_count : 0,
        dispatches ? Literal<Failure>::text.data() : nullptr,
        nullptr,
    };
};

// CLASS_swigregister and CLASS_swiginit.
template <class Class, class Name, class ClassName>
struct RegisterOf {
    static PyObject* entry(PyObject*, PyObject* cls) { return register_class(cls, type_index<Class>); }

    static constexpr Function function = {
        Name{}().data(),
        Role::swigregister,
        METH_O,
        entry,
        nullptr,
        0,
        1,
        false,
        false,
        nullptr,
        nullptr,
        0,
        nullptr,
        ClassName{}().data(),
        class_operations<Class>(),
    };
};

template <class Name>
struct InitOf {
    static PyObject* entry(PyObject*, PyObject* args) { return initialise_instance(args); }

    static constexpr Function function = {
        Name{}().data(), Role::swiginit, METH_VARARGS, entry,   nullptr, 0,       2,
        false,           false,          nullptr,      nullptr, 0,       nullptr, nullptr,
    };
};

// The flat access functions of a linked variable: the getter takes nothing through a tuple, the setter one object.
template <class Name, PyObject* (*Get)()>
struct StaticGetOf {
    static PyObject* entry(PyObject*, PyObject* arguments);
    static constexpr Function function = {
        Name{}().data(), Role::static_get, METH_VARARGS, entry, nullptr, 0,       0, false,
        false,           nullptr,          nullptr,      0,     nullptr, nullptr,
    };
};

template <class Name, PyObject* (*Get)()>
PyObject* StaticGetOf<Name, Get>::entry(PyObject*, PyObject* arguments) {
    return SWIG_Python_UnpackTuple(arguments, function.name, 0, 0, nullptr) ? Get() : nullptr;
}

template <class Name, int (*Set)(PyObject*)>
struct StaticSetOf {
    static PyObject* entry(PyObject*, PyObject* value) {
        if (Set(value) != 0)
            return nullptr;
        Py_RETURN_NONE;
    }

    static constexpr Function function = {
        Name{}().data(), Role::static_set, METH_O,  entry, nullptr, 0,       1, false,
        false,           nullptr,          nullptr, 0,     nullptr, nullptr,
    };
};

} // namespace vocabulary
