// Lets a Python subclass receive the window's input events and the calls that a listener gets from its simulation.
#pragma once

#include "binding/directors/director.h"
#include "binding/directors/native_owners.h"
#include "platform/hyxOSG/picking/gui_event_listener.h"

class SwigDirector_GuiEventListener : public hyxOSG::GuiEventListener, public Swig::Director {
public:
    SwigDirector_GuiEventListener(PyObject* self, hyxSDK::GuiEventListener::ActivationMask mask);

    bool swig_get_inner(char const* name) const override;
    void swig_set_inner(char const* name, bool value) const override;

    void printSubtree() const override;
    void setContext(hyx::Object* context) override;
    void rebind() override;
    void addObject(hyx::Object* object, bool replace) override;
    void removeObject(hyx::Object* object) override;
    void setMask(int mask) override;
    void addNotification() override;
    void removeNotification() override;
    bool mouseDragged(MouseButtonMask buttons, float x, float y) override;
    bool mouseMoved(float x, float y) override;
    bool mouse(MouseButtonMask buttons, MouseState state, float x, float y) override;
    bool keyboard(int key, unsigned int modKeyMask, float x, float y, bool keydown) override;
    void update(float x, float y) override;
    void setInverseTransform(hyx::AffineMatrix4x4 const& matrix) override;

private:
    mutable std::map<std::string, bool> swig_inner;
    Swig::NativeOwners swig_native_owners;
};
