// The enumerators of simulations and listeners.
#pragma once

#include "binding/runtime/integer_constants.h"
#include "platform/hyxSDK/gui_event_listener.h"
#include "platform/hyxSDK/simulation.h"

namespace modules {

inline constexpr runtime::Constant simulation_constants[] = {
    {"Simulation_MULTI", hyxSDK::Simulation::MULTI},
    {"Simulation_ITERATIVE", hyxSDK::Simulation::ITERATIVE},
    {"Simulation_DIRECT", hyxSDK::Simulation::DIRECT},
    {"EventListener_PRE_COLLIDE_STEP", hyxSDK::EventListener::PRE_COLLIDE_STEP},
    {"EventListener_PRE_STEP", hyxSDK::EventListener::PRE_STEP},
    {"EventListener_POST_STEP", hyxSDK::EventListener::POST_STEP},
    {"EventListener_LAST_STEP", hyxSDK::EventListener::LAST_STEP},
    {"EventListener_ALL_STEPS", hyxSDK::EventListener::ALL_STEPS},
};

inline constexpr runtime::Constant gui_event_listener_constants[] = {
    {"GuiEventListener_MOUSE", hyxSDK::GuiEventListener::MOUSE},
    {"GuiEventListener_MOUSE_MOVED", hyxSDK::GuiEventListener::MOUSE_MOVED},
    {"GuiEventListener_MOUSE_DRAGGED", hyxSDK::GuiEventListener::MOUSE_DRAGGED},
    {"GuiEventListener_KEYBOARD", hyxSDK::GuiEventListener::KEYBOARD},
    {"GuiEventListener_UPDATE", hyxSDK::GuiEventListener::UPDATE},
    {"GuiEventListener_DEFAULT", hyxSDK::GuiEventListener::DEFAULT},
    {"GuiEventListener_ALL", hyxSDK::GuiEventListener::ALL},
    {"GuiEventListener_NONE", hyxSDK::GuiEventListener::NONE},
    {"GuiEventListener_LEFT", hyxSDK::GuiEventListener::LEFT},
    {"GuiEventListener_MIDDLE", hyxSDK::GuiEventListener::MIDDLE},
    {"GuiEventListener_RIGHT", hyxSDK::GuiEventListener::RIGHT},
    {"GuiEventListener_DOWN", hyxSDK::GuiEventListener::DOWN},
    {"GuiEventListener_UP", hyxSDK::GuiEventListener::UP},
    {"GuiEventListener_DOUBLE_CLICK", hyxSDK::GuiEventListener::DOUBLE_CLICK},
};

} // namespace modules
