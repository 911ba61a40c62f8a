// Reads the records when a wrapped function is called: unpacks, converts, chooses, calls.
#include "binding/vocabulary/call.h"

#include "binding/runtime/errors.h"
#include "binding/runtime/pointers.h"
#include "binding/runtime/state.h"
#include "binding/runtime/this_lookup.h"
#include "binding/runtime/type_chain.h"
#include "binding/runtime/user_code.h"
#include "binding/runtime/values.h"
#include "binding/vocabulary/argument_values.h"
#include "binding/vocabulary/candidates.h"
#include "binding/vocabulary/conversions.h"
#include "binding/vocabulary/own_turns.h"
#include "binding/vocabulary/refusal.h"
#include "platform/hyxPython/native_work.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace vocabulary {

Refusal refusal;

namespace {

// What every call ends with that fails: the last to do so is the outermost.
[[gnu::cold]] PyObject* refuse(int argument, PyObject* const* arguments, std::size_t count) noexcept {
    refusal = {true, argument, arguments, Py_ssize_t(count)};
    return nullptr;
}

[[gnu::cold]] PyObject* fail() noexcept {
    refusal = {false, -1, nullptr, 0};
    return nullptr;
}

// Argument `index` did not convert.
[[gnu::cold]] PyObject* refuse_argument(int status, std::size_t index, PyObject* const* arguments,
                                        std::size_t count) noexcept {
    return status == SWIG_UserError || runtime::is_ending() ? fail() : refuse(int(index), arguments, count);
}

// The converted arguments of one call, and the temporaries among them.
class Slots {
public:
    explicit Slots(Form const& form) noexcept : form_(form) {}

    Slots(Slots const&) = delete;

    ~Slots() {
        for (; made_ != 0; made_ &= made_ - 1) {
            int const i = std::countr_zero(made_);
            Conversion const* const conversion = form_.parameters[i].conversion;
            if (conversion == &std_string_conversion) // the commonest by far: called without detour
                release_std_string(slots[i].pointer);
            else
                conversion->release(slots[i].pointer);
        }
    }

    void mark_made(std::size_t index) noexcept { made_ |= 1u << index; }

    // Tells of an accepted argument that it is null where that will be refused.
    void mark_null(std::size_t index) noexcept { null_ |= 1u << index; }

    bool has_null() const noexcept { return null_ != 0; }

    std::size_t first_null() const noexcept { return static_cast<std::size_t>(std::countr_zero(null_)); }

    Slot slots[most_arguments];

private:
    Form const& form_;
    std::uint32_t made_ = 0; // bit i: slot i holds a temporary
    std::uint32_t null_ = 0;
};

// Refuses a null pointer where the parameter is a reference.
bool refuse_null(Parameter const& parameter, Slot slot) noexcept {
    if (slot.pointer || !parameter.reference)
        return false;
    PyErr_SetString(PyExc_TypeError, parameter.null_message);
    return true;
}

bool holds_pointer(Kind kind) noexcept {
    return kind == Kind::pointer || kind == Kind::converted;
}

// Converts one argument. A negative status has been raised with the argument's message.
int convert_argument(Parameter const& parameter, PyObject* object, Slot& slot) {
    int const status = convert_value(parameter, object, slot);
    if (status < 0)
        runtime::raise_argument_error(status, parameter.message());
    else if (holds_pointer(parameter.kind) && refuse_null(parameter, slot))
        return SWIG_NullReferenceError;
    return status;
}

// The commonest conversions: an object of just the parameter's class, True and False. False for anything else, which
// convert_argument then decides.
inline bool convert_at_once(Parameter const& parameter, PyObject* object, Slot& slot) noexcept {
    if (parameter.kind == Kind::pointer) {
        SwigPyObject const* handle = runtime::find_this_at_once(object);
        if (!handle || handle->ty != swig_types[parameter.type] || !handle->ptr)
            return false;
        slot.pointer = handle->ptr;
        return true;
    }
    slot.flag = object == Py_True;
    return parameter.kind == Kind::boolean && PyBool_Check(object);
}

// Makes a native call that can run code of the user, which must not end what the call uses.
[[gnu::noinline]] PyObject* call_with_uses(Form const& form, Call const& call) {
    runtime::Use uses[most_arguments];
    for (std::size_t i = 0; i < call.count; ++i)
        uses[i] = runtime::Use(runtime::find_kept_this(call.arguments[i]));
    return form.thunk(call);
}

// Makes the native call with converted arguments.
inline PyObject* invoke(Form const& form, Slot const* slots, PyObject* const* arguments, std::size_t count) {
    if (form.needs_self && !slots[0].pointer) [[unlikely]] {
        PyErr_SetString(PyExc_TypeError, form.parameters[0].null_message);
        return refuse(0, arguments, count);
    }
    PyObject* result = nullptr;
    if (hyxPython::nativeWorkRuns.load(std::memory_order_relaxed)) [[unlikely]]
        wait_before(form);
    try {
        Call const call{slots, arguments, count};
        result = form.reads_objects ? call_with_uses(form, call) : form.thunk(call);
    } catch (...) {
        form.translate();
        return fail();
    }
    if (!result) [[unlikely]]
        return fail();
    if (form.may_call_back && PyErr_Occurred()) {
        Py_DECREF(result);
        return fail();
    }
    return result;
}

// Code of the user that ran in between may have deleted or exchanged what earlier arguments held: their pointers are
// taken anew, but for those that the call holds. False with an error set.
[[gnu::noinline]] bool renew(Form const& form, Slot* slots, PyObject* const* arguments, std::size_t count,
                             Given const& given) {
    for (std::size_t i = 0; i < count; ++i)
        if (form.parameters[i].kind == Kind::pointer && !given.has(i) &&
            convert_argument(form.parameters[i], arguments[i], slots[i]) < 0)
            return false;
    return true;
}

// Whether code of the user may be asked for the argument's pointer object.
bool may_ask(Parameter const& parameter, PyObject* object) noexcept {
    return parameter.kind == Kind::pointer && object != Py_None && !runtime::find_this_at_once(object);
}

// The conversion of such an argument, whose pointer object the call holds from now on.
[[gnu::noinline]] int convert_given(Parameter const& parameter, PyObject* object, Slot& slot, Given& given,
                                    std::size_t index) {
    SwigPyObject* const handle = runtime::find_this(object);
    if (!handle) {
        runtime::raise_argument_error(argument_error(SWIG_ERROR), parameter.message());
        return SWIG_TypeError;
    }
    given.hold(index, handle);
    return convert_argument(parameter, reinterpret_cast<PyObject*>(handle), slot);
}

PyObject* call_form(Form const& form, PyObject* const* arguments, std::size_t count) {
    Given given;
    Slots slots(form);
    Earlier earlier;
    for (std::size_t i = 0; i < count; ++i) {
        Parameter const& parameter = form.parameters[i];
        int const status = may_ask(parameter, arguments[i])
                               ? convert_given(parameter, arguments[i], slots.slots[i], given, i)
                               : convert_argument(parameter, arguments[i], slots.slots[i]);
        earlier.converted(i);
        if (status == SWIG_NEWOBJ)
            slots.mark_made(i);
        if (status < 0)
            return refuse_argument(status, i, arguments, count);
    }
    if (earlier.count() != 0 && !renew(form, slots.slots, arguments, earlier.count(), given))
        return fail();
    if (!form.reads_objects)
        given.let_end();
    return invoke(form, slots.slots, arguments, count);
}

// The same for a form without temporaries.
PyObject* call_direct(Form const& form, PyObject* const* arguments, std::size_t count) {
    Slot slots[most_arguments];
    Earlier earlier;
    for (std::size_t i = 0; i < count; ++i) {
        Parameter const& parameter = form.parameters[i];
        if (convert_at_once(parameter, arguments[i], slots[i]))
            continue;
        if (may_ask(parameter, arguments[i]))
            return call_form(form, arguments, count);
        if (int const status = convert_argument(parameter, arguments[i], slots[i]); status < 0)
            return refuse_argument(status, i, arguments, count);
        earlier.converted(i);
    }
    if (earlier.count() != 0 && !renew(form, slots, arguments, earlier.count(), Given())) [[unlikely]]
        return fail();
    return invoke(form, slots, arguments, count);
}

// Whether an argument that is no str may hold text. Asking spares all other objects the full conversion.
bool may_wrap_text(PyObject* object, SwigPyObject* handle) noexcept {
    static swig_type_info* const types[] = {runtime::known_type("_p_char"), runtime::known_type("std::string *")};
    if (!handle || handle->next)
        return handle || object == Py_None;
    return std::any_of(std::begin(types), std::end(types), [handle](swig_type_info* type) {
        return type && handle->ty && runtime::find_cast(handle->ty, type);
    });
}

bool is_text(Parameter const& parameter) noexcept {
    return parameter.conversion == &std_string_conversion || parameter.conversion == &hyx_string_conversion;
}

// Tests one argument of a candidate form and keeps what it converted.
bool accepts(Parameter const& parameter, Candidates& candidates, Slots& slots, std::size_t index) {
    Slot& slot = slots.slots[index];
    PyObject* object = candidates.arguments[index];
    if (parameter.kind == Kind::pointer) {
        slot.pointer = nullptr;
        if (object != Py_None && !candidates.convert(index, swig_types[parameter.type], slot))
            return false;
        if (parameter.reference && !slot.pointer) [[unlikely]]
            slots.mark_null(index);
        return true;
    }
    if (parameter.conversion == &std_string_conversion && PyUnicode_CheckExact(object)) {
        if (convert_std_string(object, &slot.pointer) == SWIG_NEWOBJ) [[likely]] {
            slots.mark_made(index);
            return true;
        }
        runtime::clear_error();
        candidates.may_have_raised = true;
        return false;
    }
    if (is_text(parameter) && !PyUnicode_Check(object) && !may_wrap_text(object, candidates.handle(index)))
        return false;
    int const status = parameter.kind == Kind::converted ? parameter.conversion->convert(object, &slot.pointer)
                                                         : convert_value(parameter, object, slot);
    if (status == SWIG_NEWOBJ)
        slots.mark_made(index);
    if (status >= 0) {
        if (parameter.kind == Kind::converted && parameter.reference && !slot.pointer)
            slots.mark_null(index);
        return true;
    }
    if (PyErr_Occurred()) {
        if (status != SWIG_UserError)
            runtime::clear_error();
        candidates.may_have_raised = true;
    }
    return false;
}

bool accepts_all(Form const& form, Candidates& candidates, Slots& slots, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        if (!accepts(form.parameters[i], candidates, slots, i))
            return false;
    return true;
}

// Calls a form whose arguments have passed their tests.
PyObject* call_chosen(Form const& form, Slots const& slots, PyObject* const* arguments, std::size_t count) {
    if (slots.has_null()) [[unlikely]] {
        std::size_t const index = slots.first_null();
        refuse_null(form.parameters[index], slots.slots[index]);
        return refuse(int(index), arguments, count);
    }
    return invoke(form, slots.slots, arguments, count);
}

[[gnu::noinline]] PyObject* dispatch(Function const& function, PyObject* const* arguments, std::size_t count) {
    unsigned long const runs = runtime::user_code_runs;
    Candidates candidates;
    candidates.arguments = arguments;
    // Trials are grouped by count, smaller counts first.
    Trial const* const end = function.trials + function.trial_count;
    Trial const* place = function.trials;
    if (place->count != count)
        place = std::partition_point(place, end, [count](Trial const& t) { return t.count < count; });
    for (; place != end && place->count == count; ++place) {
        Trial const& trial = *place;
        if (function.by_count)
            return call_form(*trial.form, arguments, count);
        Slots slots(*trial.form);
        if (accepts_all(*trial.form, candidates, slots, count)) {
            if (runs != runtime::user_code_runs && !renew(*trial.form, slots.slots, arguments, count, candidates.given))
                return fail();
            if (!trial.form->reads_objects)
                candidates.given.let_end();
            return call_chosen(*trial.form, slots, arguments, count);
        }
        if (candidates.may_have_raised && PyErr_Occurred() && !PyErr_ExceptionMatches(PyExc_TypeError))
            return fail(); // of the user's own code
    }
    SWIG_Python_RaiseOrModifyTypeError(function.failure);
    return refuse(-1, arguments, count);
}

// What a binary operator answers when its arguments did not convert: Python then tries the reflected operation.
PyObject* not_implemented(PyObject* result, PyObject* const* arguments, std::size_t count) {
    if (result || (PyErr_Occurred() && !PyErr_ExceptionMatches(PyExc_TypeError)))
        return result;
    PyErr_Clear();
    refuse(-1, arguments, count);
    Py_RETURN_NOTIMPLEMENTED;
}

PyObject* raise_count(Function const& function, PyObject* const* arguments, std::size_t count) {
    std::size_t const minimum = function.dispatches() ? 0 : function.maximum;
    runtime::raise_argument_count(function.name, Py_ssize_t(minimum), function.maximum, Py_ssize_t(count));
    if (function.by_count)
        SWIG_Python_RaiseOrModifyTypeError(function.failure);
    return refuse(-1, arguments, count);
}

// Apart from call_counted, as is call_registration, so that a direct call saves no registers for them.
[[gnu::noinline]] PyObject* call_chosen_form(Function const& function, PyObject* const* arguments, std::size_t count) {
    PyObject* result = nullptr;
    if (function.dispatches() ? count > function.maximum : count != function.maximum)
        result = raise_count(function, arguments, count);
    else if (function.dispatches())
        result = dispatch(function, arguments, count);
    else
        result = call_form(function.forms[0], arguments, count);
    return function.binary_operator ? not_implemented(result, arguments, count) : result;
}

inline PyObject* call_counted(Function const& function, PyObject* const* arguments, std::size_t count) {
    if (function.direct && count == function.maximum) [[likely]]
        return call_direct(*function.direct, arguments, count);
    if (function.dispatches() && count <= function.maximum && !function.binary_operator)
        return dispatch(function, arguments, count);
    return call_chosen_form(function, arguments, count);
}

// Registration has no forms: it takes its arguments as the interpreter gives them.
[[gnu::noinline]] PyObject* call_registration(Function const& function, PyObject* const* arguments, Py_ssize_t count) {
    if ((function.flags & METH_O) && count == 1)
        return function.entry(nullptr, arguments[0]);
    PyObject* tuple = PyTuple_New(count);
    for (Py_ssize_t i = 0; tuple && i < count; ++i)
        PyTuple_SET_ITEM(tuple, i, Py_NewRef(arguments[i]));
    PyObject* result = tuple ? function.entry(nullptr, tuple) : nullptr;
    Py_XDECREF(tuple);
    return result ? result : fail();
}

} // namespace

PyObject* call_no_argument(Function const& function) {
    return call_counted(function, nullptr, 0);
}

PyObject* call_one_argument(Function const& function, PyObject* argument) {
    return call_counted(function, &argument, 1);
}

PyObject* call_tuple(Function const& function, PyObject* arguments) {
    return call_counted(function, PySequence_Fast_ITEMS(arguments), std::size_t(PyTuple_GET_SIZE(arguments)));
}

PyObject* call_array(Function const* function, PyObject* const* arguments, Py_ssize_t count) {
    if (function->form_count == 0) [[unlikely]]
        return call_registration(*function, arguments, count);
    return call_counted(*function, arguments, std::size_t(count));
}

PyObject* call_one_form(Form const* form, PyObject* const* arguments, Py_ssize_t count) {
    return call_form(*form, arguments, std::size_t(count));
}

} // namespace vocabulary
