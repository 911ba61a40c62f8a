// Terrains in a simulation.
#include "platform/hyxSDK/terrain_instance.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared terrain_instance_rows[] = {
    FUNCTION(new_TerrainInstance, NEW(hyxSDK::TerrainInstance, (hyxTerrain::Terrain*))),
    FUNCTION(TerrainInstance_getTerrain, SHARED(METHOD(hyxSDK::TerrainInstance, getTerrain, () const))),
    FUNCTION(TerrainInstance_getGeometry, SHARED(METHOD(hyxSDK::TerrainInstance, getGeometry, () const))),
    FUNCTION(TerrainInstance_getRigidBody, SHARED(METHOD(hyxSDK::TerrainInstance, getRigidBody, () const))),
    FUNCTION(TerrainInstance_setEnableCompaction, METHOD(hyxSDK::TerrainInstance, setEnableCompaction, (bool))),
    FUNCTION(TerrainInstance_getEnableCompaction, METHOD(hyxSDK::TerrainInstance, getEnableCompaction, () const)),
    FUNCTION(TerrainInstance_step, METHOD(hyxSDK::TerrainInstance, step, (hyx::Real))),
    FUNCTION(delete_TerrainInstance, DELETE(hyxSDK::TerrainInstance)),
    REGISTER(hyxSDK::TerrainInstance, TerrainInstance),
    INIT(TerrainInstance),
};

} // namespace

ROWS(terrain_instance_rows);
