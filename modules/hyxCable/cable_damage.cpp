// Wear of cables.
#include "platform/hyxCable/cable_damage.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"

namespace {

hyxCable::DamageProperties cable_damage_properties(hyxCable::CableDamage const& self) {
    return self.getProperties();
}

constexpr Declared cable_damage_rows[] = {
    FUNCTION(new_CableDamage, NEW(hyxCable::CableDamage, (hyxCable::Cable*, hyxCable::DamageProperties const&),
                                  hyxCable::DamageProperties())),
    FUNCTION(CableDamage_getCable, SHARED(METHOD(hyxCable::CableDamage, getCable, () const))),
    FUNCTION(CableDamage_getProperties,
             ADAPTER(hyxCable::CableDamage, getProperties, cable_damage_properties, () const)),
    FUNCTION(CableDamage_update, METHOD(hyxCable::CableDamage, update, ())),
    FUNCTION(CableDamage_reset, METHOD(hyxCable::CableDamage, reset, ())),
    FUNCTION(CableDamage_getNumSegments, METHOD(hyxCable::CableDamage, getNumSegments, () const)),
    FUNCTION(CableDamage_getStress, METHOD(hyxCable::CableDamage, getStress, (hyx::Index) const)),
    FUNCTION(CableDamage_getCurrentDamage, METHOD(hyxCable::CableDamage, getCurrentDamage, (hyx::Index) const)),
    FUNCTION(CableDamage_getAccumulatedDamage, METHOD(hyxCable::CableDamage, getAccumulatedDamage, (hyx::Index) const)),
    FUNCTION(CableDamage_getMaximumAccumulatedDamage,
             METHOD(hyxCable::CableDamage, getMaximumAccumulatedDamage, () const)),
    FUNCTION(CableDamage_getRevision, METHOD(hyxCable::CableDamage, getRevision, () const)),
    FUNCTION(delete_CableDamage, DELETE(hyxCable::CableDamage)),
    REGISTER(hyxCable::CableDamage, CableDamage),
    INIT(CableDamage),
    FUNCTION(new_DamageProperties, NEW(hyxCable::DamageProperties, ())),
    FUNCTION(DamageProperties_tensionWeight_get, GET(hyxCable::DamageProperties, tensionWeight)),
    FUNCTION(DamageProperties_tensionWeight_set, SET(hyxCable::DamageProperties, tensionWeight, (double))),
    FUNCTION(DamageProperties_bendWeight_get, GET(hyxCable::DamageProperties, bendWeight)),
    FUNCTION(DamageProperties_bendWeight_set, SET(hyxCable::DamageProperties, bendWeight, (double))),
    FUNCTION(DamageProperties_twistWeight_get, GET(hyxCable::DamageProperties, twistWeight)),
    FUNCTION(DamageProperties_twistWeight_set, SET(hyxCable::DamageProperties, twistWeight, (double))),
    FUNCTION(DamageProperties_referenceStress_get, GET(hyxCable::DamageProperties, referenceStress)),
    FUNCTION(DamageProperties_referenceStress_set, SET(hyxCable::DamageProperties, referenceStress, (double))),
    FUNCTION(DamageProperties_exponent_get, GET(hyxCable::DamageProperties, exponent)),
    FUNCTION(DamageProperties_exponent_set, SET(hyxCable::DamageProperties, exponent, (double))),
    FUNCTION(delete_DamageProperties, DELETE(hyxCable::DamageProperties)),
    REGISTER(hyxCable::DamageProperties, DamageProperties),
    INIT(DamageProperties),
};

} // namespace

ROWS(cable_damage_rows);
