// A process goes to Python as what it is.
#pragma once

#include "binding/vocabulary/derived.h"
#include "platform/hyx/particles/particle_system.h"
#include "platform/hyx/particles/rigid_body_emitter.h"
#include "platform/hyxCable/cable.h"
#include "platform/hyxCable/cable_damage.h"
#include "platform/hyxModel/fracture_generator.h"
#include "platform/hyxModel/height_field_deformer.h"
#include "platform/hyxModel/pressure_field.h"
#include "platform/hyxSDK/simulation.h"
#include "platform/hyxSDK/terrain_instance.h"
#include "platform/hyxSensor/lidar.h"
#include "platform/hyxWire/wire.h"

namespace modules {

inline PyObject* to_derived(hyx::Process* process) {
    return vocabulary::to_first_that_fits<hyx::ParticleSystem, hyx::RigidBodyEmitter, hyx::Emitter,
                                          hyxSDK::TerrainInstance, hyxCable::Cable, hyxCable::CableDamage,
                                          hyxWire::Wire, hyxSensor::Lidar, hyxModel::PressureField,
                                          hyxModel::FractureGenerator, hyxModel::HeightFieldDeformer>(process);
}

inline PyObject* to_derived_list(hyxSDK::ProcessPtrVector const& processes) {
    return vocabulary::to_derived_list(processes, [](hyx::Process* process) { return to_derived(process); });
}

} // namespace modules
