// Tries a call again that a row refused, and tells what is wrong where that is in vain.
#include "python/support/adaptation.h"
#include "python/support/keywords.h"
#include "python/support/row.h"
#include "python/support/speech.h"

#include <algorithm>

namespace proxy {

namespace {

// A form that has the right number of arguments.
struct Candidate {
    Form const* form;
    std::vector<NamedParameter> const* names;
    std::vector<Owned> arguments;
};

class Recovery {
public:
    Recovery(Row const& row, Spoken const& spoken, NamedCall const& call)
        : row_(row), spoken_(spoken), function_(*row.function), call_(call), names_(function_.form_count) {
        if (call.keyword_names)
            read_names();
        PyObject *type, *value, *trace;
        PyErr_Fetch(&type, &value, &trace);
        type_ = Owned(type);
        value_ = Owned(value);
        trace_ = Owned(trace);
        argument_ = type ? row.records->refusal->argument : -1;
    }

    // A new reference; null with an error set.
    PyObject* run() {
        if (!find_candidates())
            return nullptr;
        for (Candidate& candidate : candidates_) {
            PyObject* result = nullptr;
            if (is_answered(candidate, result))
                return result;
        }
        bool const other_tries = function_.binary_operator && (!type_ || type_.get() == PyExc_TypeError);
        return other_tries ? Py_NewRef(Py_NotImplemented) : raise();
    }

private:
    void read_names() {
        for (std::size_t i = 0; i < names_.size() && spoken_.parameters != Py_None; ++i)
            names_[i] = read_parameters(PyTuple_GET_ITEM(spoken_.parameters, static_cast<Py_ssize_t>(i)));
    }

    void add_candidate(Form const& form, std::size_t count) {
        auto const& names = names_[static_cast<std::size_t>(&form - function_.forms)];
        auto arguments = bind(form, names, leading_, call_);
        if (arguments && arguments->size() == count)
            candidates_.push_back({&form, &names, std::move(*arguments)});
    }

    // In the order in which a dispatcher tries them. False with an error set.
    bool find_candidates() {
        if (!function_.dispatches())
            add_candidate(function_.forms[0], function_.maximum);
        for (std::size_t i = 0; i < function_.trial_count && !PyErr_Occurred(); ++i)
            add_candidate(*function_.trials[i].form, function_.trials[i].count);
        return !PyErr_Occurred();
    }

    // -1 with an error set, else whether an argument was changed.
    int adapt(Candidate& candidate) {
        bool changed = false;
        for (std::size_t i = leading_; i < candidate.arguments.size(); ++i) {
            Parameter const& parameter = candidate.form->parameters[i];
            // Between a vector and an array, NumPy decides.
            if (function_.binary_operator && parameter.kind == vocabulary::Kind::pointer)
                continue;
            PyObject* const before = candidate.arguments[i].get();
            PyObject* reason = cause_.release();
            Owned after(adapted(*row_.records, parameter, before, &reason));
            cause_ = Owned(reason);
            if (!after)
                return -1;
            changed |= after.get() != before;
            candidate.arguments[i] = std::move(after);
        }
        return changed;
    }

    // Whether the call is over: with a result, or with an error that is not about its arguments.
    bool is_answered(Candidate& candidate, PyObject*& result) {
        int const changed = adapt(candidate);
        if (changed < 0)
            return true;
        // What has been refused before will be again; but the only form tells which argument it is.
        bool const told = !function_.dispatches() && value_;
        if (!changed && !call_.keyword_names && (told || candidates_.size() > 1))
            return false;
        std::vector<PyObject*> arguments;
        for (Owned const& argument : candidate.arguments)
            arguments.push_back(argument.get());
        auto const count = static_cast<Py_ssize_t>(arguments.size());
        result = row_.showing(arguments.data(), count,
                              [&] { return row_.records->call_form(candidate.form, arguments.data(), count); });
        if (result || !row_.records->refusal->by_arguments)
            return true;
        argument_ = row_.records->refusal->argument;
        keep_error();
        return false;
    }

    void keep_error() {
        PyObject *type, *value, *trace;
        PyErr_Fetch(&type, &value, &trace);
        bool const first = !type_;
        if (first || candidates_.size() == 1)
            type_ = Owned(type), value_ = Owned(value), trace_ = Owned(trace);
        else
            Py_XDECREF(type), Py_XDECREF(value), Py_XDECREF(trace);
    }

    PyObject* raise() {
        PyObject* const type = type_ ? type_.get() : PyExc_TypeError;
        if (type != PyExc_TypeError && type != PyExc_OverflowError) {
            PyErr_Restore(type_.release(), value_.release(), trace_.release());
            return nullptr;
        }
        if (!call_.keyword_names)
            read_names();
        speak(row_, spoken_, type, text(type), cause_.release());
        return nullptr;
    }

    PyObject* text(PyObject* type) const {
        if (candidates_.size() == 1 && argument_ >= 0)
            return one_argument(candidates_[0], type);
        int const leading = static_cast<int>(leading_);
        bool const on_object = leading > 0 && row_.has_self && spoken_.kind != Spoken::Kind::constructor;
        if (on_object && call_.count > 0 && is_wrong_self(row_, function_.forms[0], call_.arguments[0]))
            return argument_text(row_, spoken_, function_.forms[0], 0, nullptr, call_.arguments[0], false, leading);
        bool const short_of_self = call_.count < leading;
        if (call_.keyword_names && function_.form_count == 1 && !short_of_self)
            if (PyObject* found = misfit(function_.forms[0], names_[0], leading_, call_))
                return found;
        if (candidates_.empty() && (!call_.keyword_names || short_of_self))
            return count_text(function_, leading, call_.count);
        return no_form_text(call_.arguments, call_.count, call_.keyword_names, leading);
    }

    PyObject* one_argument(Candidate const& candidate, PyObject* type) const {
        auto const index = static_cast<std::size_t>(argument_);
        std::size_t const name = index - leading_;
        bool const named = index >= leading_ && name < candidate.names->size();
        return argument_text(row_, spoken_, *candidate.form, argument_,
                             named ? (*candidate.names)[name].name.get() : nullptr, candidate.arguments[index].get(),
                             type == PyExc_OverflowError, static_cast<int>(leading_));
    }

    Row const& row_;
    Spoken const& spoken_;
    Function const& function_;
    NamedCall call_;
    std::vector<std::vector<NamedParameter>> names_; // one a form; read when they are needed
    std::size_t const leading_ = spoken_.leading;
    std::vector<Candidate> candidates_;
    Owned type_, value_, trace_; // of the error to raise; empty where the call has not been tried
    Owned cause_;
    int argument_; // that the last call refused, or -1
};

} // namespace

PyObject* recover(Row const& row, Spoken const& spoken, PyObject* const* arguments, Py_ssize_t count,
                  PyObject* keyword_names) {
    if (row.function->form_count == 0) {
        PyErr_Clear();
        return PyObject_Vectorcall(row.flat, arguments, static_cast<std::size_t>(count), keyword_names);
    }
    Recovery recovery(row, spoken, {arguments, count, keyword_names});
    PyObject* const result = recovery.run();
    if (!result)
        raise_as_python();
    return result;
}

PyObject* Row::after(PyObject* result, Spoken const& spoken) const {
    vocabulary::Refusal const refusal = *records->refusal;
    if (result) { // NotImplemented
        if (!function->binary_operator)
            return result;
        Py_DECREF(result);
        return recover(*this, spoken, refusal.arguments, refusal.count, nullptr);
    }
    if (function->form_count > 0 && refusal.by_arguments)
        return recover(*this, spoken, refusal.arguments, refusal.count, nullptr);
    raise_as_python();
    return nullptr;
}

} // namespace proxy
