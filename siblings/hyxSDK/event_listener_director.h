// Lets a Python subclass be called at every step.
#pragma once

#include "directors/director.h"
#include "directors/native_owners.h"

#include "platform/hyxPython/script_manager.h"
#include "platform/hyxSDK/event_listener.h"

class SwigDirector_EventListener : public hyxSDK::EventListener, public Swig::Director {
  public:
    SwigDirector_EventListener(PyObject *self, hyx::Name const &name) : EventListener(name), Director(self) {}

    void setContext(hyx::Object *context) override
    {
        EventListener::setContext(context);
        if (context)
            owners.enter(Swig::NativeOwners::component, swig_get_self());
        else
            owners.leave(Swig::NativeOwners::component);
    }
    void addNotification() override
    {
        if (getSimulation())
            owners.enter(Swig::NativeOwners::simulation, swig_get_self());
        call("addNotification", nullptr);
    }
    void removeNotification() override
    {
        call("removeNotification", nullptr);
        owners.leave(Swig::NativeOwners::simulation);
    }
    void preCollide(hyx::TimeStamp time) override { call("preCollide", &time); }
    void pre(hyx::TimeStamp time) override { call("pre", &time); }
    void post(hyx::TimeStamp time) override { call("post", &time); }
    void last(hyx::TimeStamp time) override { call("last", &time); }

  private:
    // An error has no caller who could catch it: it goes to the script manager.
    void call(char const *method, hyx::TimeStamp const *time)
    {
        // The call may drop the last other reference to its own object, and with it this director.
        runtime::Reference const self = runtime::Reference::share(swig_get_self());
        if (!self)
            return;
        runtime::Reference const result = runtime::Reference::take(
            time ? PyObject_CallMethod(self.get(), method, "d", *time) : PyObject_CallMethod(self.get(), method, nullptr));
        if (result)
            return;
        if (auto *manager = hyxPython::ScriptManager::instance("", "", "", false))
            manager->registerError(std::string("hyxSDK::EventListener::") + method);
    }

    Swig::NativeOwners owners;
};
