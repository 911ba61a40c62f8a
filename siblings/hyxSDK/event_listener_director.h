// Lets a Python subclass be called at every step.
#pragma once

#include "directors/director.h"

#include "platform/hyxPython/script_manager.h"
#include "platform/hyxSDK/event_listener.h"

class SwigDirector_EventListener : public hyxSDK::EventListener, public Swig::Director {
  public:
    SwigDirector_EventListener(PyObject *self, hyx::Name const &name) : EventListener(name), Director(self) {}

    void addNotification() override { call("addNotification", nullptr); }
    void removeNotification() override { call("removeNotification", nullptr); }
    void preCollide(hyx::TimeStamp time) override { call("preCollide", &time); }
    void pre(hyx::TimeStamp time) override { call("pre", &time); }
    void post(hyx::TimeStamp time) override { call("post", &time); }
    void last(hyx::TimeStamp time) override { call("last", &time); }

  private:
    // An error has no caller who could catch it: it goes to the script manager.
    void call(char const *method, hyx::TimeStamp const *time)
    {
        PyObject *const self = swig_get_self();
        if (!self)
            return;
        PyObject *const result = time ? PyObject_CallMethod(self, method, "d", *time) : PyObject_CallMethod(self, method, nullptr);
        if (result)
            Py_DECREF(result);
        else if (auto *manager = hyxPython::ScriptManager::instance("", "", "", false))
            manager->registerError(std::string("hyxSDK::EventListener::") + method);
    }
};
