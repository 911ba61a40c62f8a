// Calls a Python method for an override, and reports or raises what goes wrong.
#include "binding/directors/python_call.h"

#include "binding/runtime/user_code.h"
#include "platform/hyx/objects/notify.h"
#include "platform/hyxPython/script_manager.h"

#include <optional>

namespace Swig {

namespace {

// The place in the maker's interface description that declares how errors are reported.
constexpr int report_line = 170;
constexpr char report_source[] = "swig/configuration/hyxPython/hyxOSG";

[[noreturn]] void raise_uninitialized(DirectorMethod const& method) {
    std::string const text =
        std::string("'self' uninitialized, maybe you forgot to call ") + method.class_name + ".__init__.";
    DirectorException::raise(text.c_str());
}

[[noreturn]] void raise_method_error(DirectorMethod const& method) {
    std::string const text = std::string("Error detected when calling '") + method.class_name + "." + method.name + "'";
    DirectorMethodException::raise(text.c_str());
}

// Hands the pending error to the script manager; where there is none it stays pending.
void report_error(DirectorMethod const& method) {
    hyxPython::ScriptManager* manager = nullptr;
    {
        runtime::SavedError const error;
        manager = hyxPython::ScriptManager::instance("", "", "", false);
    }
    if (!manager)
        return;
    try {
        manager->registerError(method.qualified);
    } catch (std::exception const& failure) {
        std::string const director = std::string("SwigDirector_") + method.class_name + "::" + method.name;
        hyx::Notify::instance().notify(hyx::Notify::NOTIFY_ERROR, director.c_str(), report_line, report_source,
                                       failure.what());
    }
}

bool all_converted(PyObject* const* arguments, std::size_t count) {
    for (std::size_t i = 1; i <= count; ++i)
        if (!arguments[i])
            return false;
    return true;
}

} // namespace

runtime::Reference to_python(void* object, swig_type_info* type) {
    // Making the proxy runs Python code, which must not find the error that an earlier call has left.
    std::optional<runtime::SavedError> earlier;
    if (PyErr_Occurred())
        earlier.emplace();
    PyObject* proxy = SWIG_Python_NewPointerObj(object, type, PointerResult::borrowed_proxied);
    return runtime::Reference::take(proxy && shown_by ? shown_by(proxy) : proxy);
}

runtime::Reference call_python(Callee const& callee, DirectorMethod& method, PyObject** arguments, std::size_t count) {
    if (!callee.self())
        raise_uninitialized(method);
    std::optional<runtime::SavedError> earlier;
    if (PyErr_Occurred()) {
        if (method.of_frame)
            return {};
        earlier.emplace();
    }
    if (!method.text)
        method.text = PyUnicode_InternFromString(method.name);
    runtime::Reference result;
    if (method.text && all_converted(arguments, count))
        result = runtime::Reference::take(runtime::run_user_code(
            [&] { return PyObject_VectorcallMethod(method.text, arguments, count + 1, nullptr); }));
    if (!result && PyErr_Occurred()) {
        if (!method.qualified)
            raise_method_error(method);
        report_error(method);
    }
    return result;
}

void raise_no_bool(char const* signature) {
    std::string const text =
        std::string(": Python code called by '") + signature + "' has wrong output value type. Expected bool.";
    DirectorTypeMismatchException::raise(PyExc_TypeError, text.c_str());
}

} // namespace Swig
