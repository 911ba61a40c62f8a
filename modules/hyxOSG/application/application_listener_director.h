// Lets a Python subclass be told before and after each frame of an application.
#pragma once

#include "binding/directors/director.h"
#include "binding/directors/native_owners.h"
#include "platform/hyxOSG/application/example_application_listener.h"

class SwigDirector_ExampleApplicationListener : public hyxOSG::ExampleApplicationListener, public Swig::Director {
public:
    explicit SwigDirector_ExampleApplicationListener(PyObject* self);

    bool swig_get_inner(char const* name) const override;
    void swig_set_inner(char const* name, bool value) const override;

    void preFrame(hyxOSG::ExampleApplication* application) override;
    void postFrame(hyxOSG::ExampleApplication* application) override;
    void enterApplication() override;
    void leaveApplication() override;

private:
    mutable std::map<std::string, bool> swig_inner;
    unsigned swig_holds = 0; // of applications
    Swig::NativeOwners swig_native_owners;
};
