// Blades that dig.
#include "platform/hyxTerrain/dig_tool.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared dig_tool_rows[] = {
    FUNCTION(new_DigTool,
             NEW(hyxTerrain::DigTool, (hyx::RigidBody*, hyx::Vec3 const&, hyx::Vec3 const&, hyx::Vec3 const&))),
    FUNCTION(DigTool_getRigidBody, SHARED(METHOD(hyxTerrain::DigTool, getRigidBody, () const))),
    FUNCTION(DigTool_getWorldEdgeBegin, METHOD(hyxTerrain::DigTool, getWorldEdgeBegin, () const)),
    FUNCTION(DigTool_getWorldEdgeEnd, METHOD(hyxTerrain::DigTool, getWorldEdgeEnd, () const)),
    FUNCTION(DigTool_getWorldTop, METHOD(hyxTerrain::DigTool, getWorldTop, () const)),
    FUNCTION(DigTool_getWorldVelocity, METHOD(hyxTerrain::DigTool, getWorldVelocity, () const)),
    FUNCTION(DigTool_setEnable, METHOD(hyxTerrain::DigTool, setEnable, (bool))),
    FUNCTION(DigTool_getEnable, METHOD(hyxTerrain::DigTool, getEnable, () const)),
    FUNCTION(DigTool_getDugMass, METHOD(hyxTerrain::DigTool, getDugMass, () const)),
    FUNCTION(DigTool_getSoilForce, METHOD(hyxTerrain::DigTool, getSoilForce, () const)),
    FUNCTION(DigTool_addDug, METHOD(hyxTerrain::DigTool, addDug, (hyx::Real, hyx::Vec3 const&))),
    FUNCTION(delete_DigTool, DELETE(hyxTerrain::DigTool)),
    REGISTER(hyxTerrain::DigTool, DigTool),
    INIT(DigTool),
};

} // namespace

ROWS(dig_tool_rows);
