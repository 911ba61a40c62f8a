// Lets a Python subclass be called at every step. No caller could catch an error of it: every method reports.
#pragma once

#include "binding/directors/native_owners.h"
#include "binding/directors/python_call.h"
#include "platform/hyxSDK/event_listener.h"

class SwigDirector_EventListener : public hyxSDK::EventListener, public Swig::Director {
public:
    SwigDirector_EventListener(PyObject* self, hyx::Name const& name) : EventListener(name), Director(self) {}

    void setContext(hyx::Object* context) override {
        Swig::Callee const callee(*this);
        EventListener::setContext(context);
        if (context)
            swig_native_owners.enter(Swig::NativeOwners::component, callee.self());
        else
            swig_native_owners.leave(Swig::NativeOwners::component);
    }

    void addNotification() override {
        Swig::Callee const callee(*this);
        if (getSimulation())
            swig_native_owners.enter(Swig::NativeOwners::simulation, callee.self());
        call(callee, add_notification);
    }

    void removeNotification() override {
        Swig::Callee const callee(*this);
        swig_native_owners.leave(Swig::NativeOwners::simulation);
        call(callee, remove_notification);
    }

    void preCollide(hyx::TimeStamp time) override { call(Swig::Callee(*this), pre_collide, Swig::to_python(time)); }

    void pre(hyx::TimeStamp time) override { call(Swig::Callee(*this), pre_step, Swig::to_python(time)); }

    void post(hyx::TimeStamp time) override { call(Swig::Callee(*this), post_step, Swig::to_python(time)); }

    void last(hyx::TimeStamp time) override { call(Swig::Callee(*this), last_step, Swig::to_python(time)); }

private:
    using Method = Swig::DirectorMethod;
    static inline Method add_notification{"EventListener", "addNotification", "hyxSDK::EventListener::addNotification"};
    static inline Method remove_notification{"EventListener", "removeNotification",
                                             "hyxSDK::EventListener::removeNotification"};
    static inline Method pre_collide{"EventListener", "preCollide", "hyxSDK::EventListener::preCollide", true};
    static inline Method pre_step{"EventListener", "pre", "hyxSDK::EventListener::pre", true};
    static inline Method post_step{"EventListener", "post", "hyxSDK::EventListener::post", true};
    static inline Method last_step{"EventListener", "last", "hyxSDK::EventListener::last", true};

    // The native methods do nothing: a listener whose Python object has gone is silent.
    template <class... A>
    static void call(Swig::Callee const& callee, Method& method, A const&... arguments) {
        if (!callee.is_gone())
            Swig::call_python(callee, method, arguments...);
    }

    Swig::NativeOwners swig_native_owners;
};
