// Calls a script's listener before and after each frame.
#include "modules/hyxOSG/application/application_listener_director.h"

#include "binding/directors/python_call.h"
#include "binding/vocabulary/native_types.h"

using Base = hyxOSG::ExampleApplicationListener;
using Swig::call_python;
using Swig::DirectorMethod;
using Swig::to_python;

namespace {

swig_type_info* application_type() {
    return vocabulary::descriptor<hyxOSG::ExampleApplication>();
}

DirectorMethod pre_frame{"ExampleApplicationListener", "preFrame", "hyxOSG::ExampleApplicationListener::preFrame",
                         true};
DirectorMethod post_frame{"ExampleApplicationListener", "postFrame", "hyxOSG::ExampleApplicationListener::postFrame",
                          true};

} // namespace

SwigDirector_ExampleApplicationListener::SwigDirector_ExampleApplicationListener(PyObject* self)
    : Swig::Director(self) {}

bool SwigDirector_ExampleApplicationListener::swig_get_inner(char const* name) const {
    auto const found = swig_inner.find(name);
    return found != swig_inner.end() && found->second;
}

void SwigDirector_ExampleApplicationListener::swig_set_inner(char const* name, bool value) const {
    swig_inner[name] = value;
}

void SwigDirector_ExampleApplicationListener::enterApplication() {
    Swig::Callee const callee(*this);
    if (swig_holds++ == 0 && !callee.is_gone())
        swig_native_owners.enter(Swig::NativeOwners::application, callee.self());
}

void SwigDirector_ExampleApplicationListener::leaveApplication() {
    Swig::Callee const callee(*this);
    if (--swig_holds == 0)
        swig_native_owners.leave(Swig::NativeOwners::application);
}

void SwigDirector_ExampleApplicationListener::preFrame(hyxOSG::ExampleApplication* application) {
    Swig::Callee const callee(*this);
    if (callee.is_gone())
        return Base::preFrame(application);
    call_python(callee, pre_frame, to_python(application, application_type()));
}

void SwigDirector_ExampleApplicationListener::postFrame(hyxOSG::ExampleApplication* application) {
    Swig::Callee const callee(*this);
    if (callee.is_gone())
        return Base::postFrame(application);
    call_python(callee, post_frame, to_python(application, application_type()));
}
