#include "directors/application_listener_director.h"

#include "directors/python_call.h"

using Base = hyxOSG::ExampleApplicationListener;
using Swig::call_python;
using Swig::DirectorMethod;
using Swig::to_python;

namespace {

constexpr char application_type[] = "hyxOSG::ExampleApplication *";

DirectorMethod pre_frame{"ExampleApplicationListener", "preFrame", "hyxOSG::ExampleApplicationListener::preFrame"};
DirectorMethod post_frame{"ExampleApplicationListener", "postFrame", "hyxOSG::ExampleApplicationListener::postFrame"};

} // namespace

SwigDirector_ExampleApplicationListener::SwigDirector_ExampleApplicationListener(PyObject *self) : Swig::Director(self) {}

bool SwigDirector_ExampleApplicationListener::swig_get_inner(const char *name) const
{
    auto const found = swig_inner.find(name);
    return found != swig_inner.end() && found->second;
}

void SwigDirector_ExampleApplicationListener::swig_set_inner(const char *name, bool value) const
{
    swig_inner[name] = value;
}

void SwigDirector_ExampleApplicationListener::preFrame(hyxOSG::ExampleApplication *application)
{
    if (swig_is_gone())
        return Base::preFrame(application);
    hyx::ref_ptr<Base> const keep(this);
    call_python(*this, pre_frame, to_python(application, application_type));
}

void SwigDirector_ExampleApplicationListener::postFrame(hyxOSG::ExampleApplication *application)
{
    if (swig_is_gone())
        return Base::postFrame(application);
    hyx::ref_ptr<Base> const keep(this);
    call_python(*this, post_frame, to_python(application, application_type));
}
