// The enumerators of the application classes.
#pragma once

#include "binding/runtime/integer_constants.h"
#include "platform/hyxOSG/application/example_application.h"

namespace modules {

inline constexpr runtime::Constant example_application_constants[] = {
    {"ExampleApplication_MAIN_SCENE_MASK", hyxOSG::ExampleApplication::MAIN_SCENE_MASK},
    {"ExampleApplication_DEBUG_RENDER_MASK", hyxOSG::ExampleApplication::DEBUG_RENDER_MASK},
    {"ExampleApplication_OSG_RENDER_MASK", hyxOSG::ExampleApplication::OSG_RENDER_MASK},
    {"ExampleApplication_HUD_MASK", hyxOSG::ExampleApplication::HUD_MASK},
    {"ExampleApplication_DECORATOR_MASK", hyxOSG::ExampleApplication::DECORATOR_MASK},
    {"ExampleApplication_CASTS_SHADOWS_MASK", hyxOSG::ExampleApplication::CASTS_SHADOWS_MASK},
    {"ExampleApplication_RECIEVES_SHADOWS_MASK", hyxOSG::ExampleApplication::RECIEVES_SHADOWS_MASK},
    {"ExampleApplication_MULTI", hyxOSG::ExampleApplication::MULTI},
    {"ExampleApplication_ITERATIVE", hyxOSG::ExampleApplication::ITERATIVE},
    {"ExampleApplication_NUM_SOLVERS", hyxOSG::ExampleApplication::NUM_SOLVERS},
};

} // namespace modules
