// The enumerators of the decoration classes.
#pragma once

#include "binding/runtime/integer_constants.h"
#include "platform/hyxOSG/decoration/scene_decorator.h"
#include "platform/hyxOSG/decoration/text.h"

namespace modules {

inline constexpr runtime::Constant text_constants[] = {
    {"Text_XY_PLANE", hyxOSG::Text::XY_PLANE},
    {"Text_REVERSED_XY_PLANE", hyxOSG::Text::REVERSED_XY_PLANE},
    {"Text_XZ_PLANE", hyxOSG::Text::XZ_PLANE},
    {"Text_REVERSED_XZ_PLANE", hyxOSG::Text::REVERSED_XZ_PLANE},
    {"Text_YZ_PLANE", hyxOSG::Text::YZ_PLANE},
    {"Text_REVERSED_YZ_PLANE", hyxOSG::Text::REVERSED_YZ_PLANE},
    {"Text_SCREEN", hyxOSG::Text::SCREEN},
    {"Text_USER_DEFINED_ROTATION", hyxOSG::Text::USER_DEFINED_ROTATION},
    {"Text_DROP_SHADOW_BOTTOM_RIGHT", hyxOSG::Text::DROP_SHADOW_BOTTOM_RIGHT},
    {"Text_DROP_SHADOW_CENTER_RIGHT", hyxOSG::Text::DROP_SHADOW_CENTER_RIGHT},
    {"Text_DROP_SHADOW_TOP_RIGHT", hyxOSG::Text::DROP_SHADOW_TOP_RIGHT},
    {"Text_DROP_SHADOW_BOTTOM_CENTER", hyxOSG::Text::DROP_SHADOW_BOTTOM_CENTER},
    {"Text_DROP_SHADOW_TOP_CENTER", hyxOSG::Text::DROP_SHADOW_TOP_CENTER},
    {"Text_DROP_SHADOW_BOTTOM_LEFT", hyxOSG::Text::DROP_SHADOW_BOTTOM_LEFT},
    {"Text_DROP_SHADOW_CENTER_LEFT", hyxOSG::Text::DROP_SHADOW_CENTER_LEFT},
    {"Text_DROP_SHADOW_TOP_LEFT", hyxOSG::Text::DROP_SHADOW_TOP_LEFT},
    {"Text_OUTLINE", hyxOSG::Text::OUTLINE},
    {"Text_NONE", hyxOSG::Text::NONE},
    {"Text_LEFT_TOP", hyxOSG::Text::LEFT_TOP},
    {"Text_LEFT_CENTER", hyxOSG::Text::LEFT_CENTER},
    {"Text_LEFT_BOTTOM", hyxOSG::Text::LEFT_BOTTOM},
    {"Text_CENTER_TOP", hyxOSG::Text::CENTER_TOP},
    {"Text_CENTER_CENTER", hyxOSG::Text::CENTER_CENTER},
    {"Text_CENTER_BOTTOM", hyxOSG::Text::CENTER_BOTTOM},
    {"Text_RIGHT_TOP", hyxOSG::Text::RIGHT_TOP},
    {"Text_RIGHT_CENTER", hyxOSG::Text::RIGHT_CENTER},
    {"Text_RIGHT_BOTTOM", hyxOSG::Text::RIGHT_BOTTOM},
    {"Text_LEFT_BASE_LINE", hyxOSG::Text::LEFT_BASE_LINE},
    {"Text_CENTER_BASE_LINE", hyxOSG::Text::CENTER_BASE_LINE},
    {"Text_RIGHT_BASE_LINE", hyxOSG::Text::RIGHT_BASE_LINE},
    {"Text_LEFT_BOTTOM_BASE_LINE", hyxOSG::Text::LEFT_BOTTOM_BASE_LINE},
    {"Text_CENTER_BOTTOM_BASE_LINE", hyxOSG::Text::CENTER_BOTTOM_BASE_LINE},
    {"Text_RIGHT_BOTTOM_BASE_LINE", hyxOSG::Text::RIGHT_BOTTOM_BASE_LINE},
    {"Text_BASE_LINE", hyxOSG::Text::BASE_LINE},
    {"Text_TEXT", hyxOSG::Text::TEXT},
    {"Text_BOUNDINGBOX", hyxOSG::Text::BOUNDINGBOX},
    {"Text_FILLEDBOUNDINGBOX", hyxOSG::Text::FILLEDBOUNDINGBOX},
    {"Text_ALIGNMENT", hyxOSG::Text::ALIGNMENT},
};

inline constexpr runtime::Constant scene_decorator_constants[] = {
    {"SceneDecorator_UPPER_LEFT", hyxOSG::SceneDecorator::UPPER_LEFT},
    {"SceneDecorator_LOWER_LEFT", hyxOSG::SceneDecorator::LOWER_LEFT},
    {"SceneDecorator_UPPER_RIGHT", hyxOSG::SceneDecorator::UPPER_RIGHT},
    {"SceneDecorator_LOWER_RIGHT", hyxOSG::SceneDecorator::LOWER_RIGHT},
    {"SceneDecorator_FREE", hyxOSG::SceneDecorator::FREE},
    {"SceneDecorator_LIGHT0", hyxOSG::SceneDecorator::LIGHT0},
    {"SceneDecorator_LIGHT1", hyxOSG::SceneDecorator::LIGHT1},
    {"SceneDecorator_LIGHT2", hyxOSG::SceneDecorator::LIGHT2},
    {"SceneDecorator_ALL", hyxOSG::SceneDecorator::ALL},
    {"SceneDecorator_SOFT_SHADOWMAP", hyxOSG::SceneDecorator::SOFT_SHADOWMAP},
    {"SceneDecorator_SHADOWMAP", hyxOSG::SceneDecorator::SHADOWMAP},
    {"SceneDecorator_SHADOWVOLUME", hyxOSG::SceneDecorator::SHADOWVOLUME},
    {"SceneDecorator_PARALLELLSPLIT_SHADOWMAP", hyxOSG::SceneDecorator::PARALLELLSPLIT_SHADOWMAP},
    {"SceneDecorator_LIGHTSPACEPERSPECTIVE_SHADOWMAP", hyxOSG::SceneDecorator::LIGHTSPACEPERSPECTIVE_SHADOWMAP},
    {"SceneDecorator_SHADOWTEXTURE", hyxOSG::SceneDecorator::SHADOWTEXTURE},
    {"SceneDecorator_NO_SHADOWS", hyxOSG::SceneDecorator::NO_SHADOWS},
};

} // namespace modules
