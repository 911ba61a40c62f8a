// Calls a script's listener for input events and around the steps of its simulation.
#include "modules/hyxOSG/picking/gui_event_listener_director.h"

#include "binding/directors/python_call.h"
#include "binding/vocabulary/native_types.h"

using Base = hyxOSG::GuiEventListener;
using Swig::call_python;
using Swig::Callee;
using Swig::DirectorMethod;
using Swig::NativeOwners;
using Swig::to_python;

namespace {

swig_type_info* object_type() {
    return vocabulary::descriptor<hyx::Object>();
}

// The raising methods.
DirectorMethod print_subtree{"GuiEventListener", "printSubtree", nullptr};
DirectorMethod set_context{"GuiEventListener", "setContext", nullptr};
DirectorMethod rebind_names{"GuiEventListener", "rebind", nullptr};
DirectorMethod add_object{"GuiEventListener", "addObject", nullptr};
DirectorMethod remove_object{"GuiEventListener", "removeObject", nullptr};
DirectorMethod set_mask{"GuiEventListener", "setMask", nullptr};
DirectorMethod set_inverse_transform{"GuiEventListener", "setInverseTransform", nullptr};
// The reporting ones.
DirectorMethod add_notification{"GuiEventListener", "addNotification", "hyxSDK::EventListener::addNotification"};
DirectorMethod remove_notification{"GuiEventListener", "removeNotification",
                                   "hyxSDK::EventListener::removeNotification"};
DirectorMethod mouse_dragged{"GuiEventListener", "mouseDragged", "hyxOSG::GuiEventListener::mouseDragged", true};
DirectorMethod mouse_moved{"GuiEventListener", "mouseMoved", "hyxOSG::GuiEventListener::mouseMoved", true};
DirectorMethod mouse_button{"GuiEventListener", "mouse", "hyxOSG::GuiEventListener::mouse", true};
DirectorMethod keyboard_key{"GuiEventListener", "keyboard", "hyxOSG::GuiEventListener::keyboard", true};
DirectorMethod update_frame{"GuiEventListener", "update", "hyxOSG::GuiEventListener::update", true};

} // namespace

SwigDirector_GuiEventListener::SwigDirector_GuiEventListener(PyObject* self,
                                                             hyxSDK::GuiEventListener::ActivationMask mask)
    : Base(mask), Swig::Director(self) {}

bool SwigDirector_GuiEventListener::swig_get_inner(char const* name) const {
    auto const found = swig_inner.find(name);
    return found != swig_inner.end() && found->second;
}

void SwigDirector_GuiEventListener::swig_set_inner(char const* name, bool value) const {
    swig_inner[name] = value;
}

void SwigDirector_GuiEventListener::printSubtree() const {
    Callee const callee(*this);
    if (callee.is_gone())
        return Base::printSubtree();
    call_python(callee, print_subtree);
}

void SwigDirector_GuiEventListener::setContext(hyx::Object* context) {
    Callee const callee(*this);
    if (callee.is_gone())
        return Base::setContext(context);
    if (context)
        swig_native_owners.enter(NativeOwners::component, callee.self());
    else
        swig_native_owners.leave(NativeOwners::component);
    call_python(callee, set_context, to_python(context, object_type()));
}

void SwigDirector_GuiEventListener::rebind() {
    Callee const callee(*this);
    if (callee.is_gone())
        return Base::rebind();
    call_python(callee, rebind_names);
}

void SwigDirector_GuiEventListener::addObject(hyx::Object* object, bool replace) {
    Callee const callee(*this);
    if (callee.is_gone())
        return Base::addObject(object, replace);
    call_python(callee, add_object, to_python(object, object_type()), to_python(replace));
}

void SwigDirector_GuiEventListener::removeObject(hyx::Object* object) {
    Callee const callee(*this);
    if (callee.is_gone())
        return Base::removeObject(object);
    call_python(callee, remove_object, to_python(object, object_type()));
}

void SwigDirector_GuiEventListener::setMask(int mask) {
    Callee const callee(*this);
    if (callee.is_gone())
        return Base::setMask(mask);
    call_python(callee, set_mask, to_python(mask));
}

void SwigDirector_GuiEventListener::addNotification() {
    Callee const callee(*this);
    if (callee.is_gone())
        return Base::addNotification();
    if (getSimulation())
        swig_native_owners.enter(NativeOwners::simulation, callee.self());
    call_python(callee, add_notification);
}

void SwigDirector_GuiEventListener::removeNotification() {
    Callee const callee(*this);
    if (callee.is_gone())
        return Base::removeNotification();
    swig_native_owners.leave(NativeOwners::simulation);
    call_python(callee, remove_notification);
}

bool SwigDirector_GuiEventListener::mouseDragged(MouseButtonMask buttons, float x, float y) {
    Callee const callee(*this);
    if (callee.is_gone())
        return Base::mouseDragged(buttons, x, y);
    return Swig::to_bool(call_python(callee, mouse_dragged, to_python(buttons), to_python(x), to_python(y)),
                         "virtual bool SwigDirector_GuiEventListener::mouseDragged("
                         "hyxSDK::GuiEventListener::MouseButtonMask, float, float)");
}

bool SwigDirector_GuiEventListener::mouseMoved(float x, float y) {
    Callee const callee(*this);
    if (callee.is_gone())
        return Base::mouseMoved(x, y);
    return Swig::to_bool(call_python(callee, mouse_moved, to_python(x), to_python(y)),
                         "virtual bool SwigDirector_GuiEventListener::mouseMoved(float, float)");
}

bool SwigDirector_GuiEventListener::mouse(MouseButtonMask buttons, MouseState state, float x, float y) {
    Callee const callee(*this);
    if (callee.is_gone())
        return Base::mouse(buttons, state, x, y);
    return Swig::to_bool(
        call_python(callee, mouse_button, to_python(buttons), to_python(state), to_python(x), to_python(y)),
        "virtual bool SwigDirector_GuiEventListener::mouse("
        "hyxSDK::GuiEventListener::MouseButtonMask, hyxSDK::GuiEventListener::MouseState, float, float)");
}

bool SwigDirector_GuiEventListener::keyboard(int key, unsigned int modKeyMask, float x, float y, bool keydown) {
    Callee const callee(*this);
    if (callee.is_gone())
        return Base::keyboard(key, modKeyMask, x, y, keydown);
    return Swig::to_bool(call_python(callee, keyboard_key, to_python(key), to_python(modKeyMask), to_python(x),
                                     to_python(y), to_python(keydown)),
                         "virtual bool SwigDirector_GuiEventListener::keyboard(int, unsigned int, float, float, bool)");
}

void SwigDirector_GuiEventListener::update(float x, float y) {
    Callee const callee(*this);
    if (callee.is_gone())
        return Base::update(x, y);
    call_python(callee, update_frame, to_python(x), to_python(y));
}

void SwigDirector_GuiEventListener::setInverseTransform(hyx::AffineMatrix4x4 const& matrix) {
    Callee const callee(*this);
    if (callee.is_gone())
        return Base::setInverseTransform(matrix);
    call_python(callee, set_inverse_transform,
                to_python(const_cast<hyx::AffineMatrix4x4*>(&matrix), vocabulary::descriptor<hyx::AffineMatrix4x4>()));
}
