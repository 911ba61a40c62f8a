// Materials, alone and in pairs.
#include "platform/hyx/bodies/material.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/bodies/contact_material.h"

namespace {

constexpr Declared material_rows[] = {
    FUNCTION(new_Material, NEW(hyx::Material, (hyx::Name const&), hyx::Name())),
    FUNCTION(delete_Material, DELETE(hyx::Material)),
    FUNCTION(Material_setDensity, METHOD(hyx::Material, setDensity, (hyx::Real))),
    FUNCTION(Material_getDensity, METHOD(hyx::Material, getDensity, () const)),
    FUNCTION(Material_setFriction, METHOD(hyx::Material, setFriction, (hyx::Real))),
    FUNCTION(Material_getFriction, METHOD(hyx::Material, getFriction, () const)),
    FUNCTION(Material_setRestitution, METHOD(hyx::Material, setRestitution, (hyx::Real))),
    FUNCTION(Material_getRestitution, METHOD(hyx::Material, getRestitution, () const)),
    FUNCTION(Material_setRollingResistance, METHOD(hyx::Material, setRollingResistance, (hyx::Real))),
    FUNCTION(Material_getRollingResistance, METHOD(hyx::Material, getRollingResistance, () const)),
    REGISTER(hyx::Material, Material),
    INIT(Material),
    FUNCTION(new_ContactMaterial, NEW(hyx::ContactMaterial, (hyx::Material*, hyx::Material*))),
    FUNCTION(delete_ContactMaterial, DELETE(hyx::ContactMaterial)),
    FUNCTION(ContactMaterial_getMaterial1, SHARED(METHOD(hyx::ContactMaterial, getMaterial1, () const))),
    FUNCTION(ContactMaterial_getMaterial2, SHARED(METHOD(hyx::ContactMaterial, getMaterial2, () const))),
    FUNCTION(ContactMaterial_setFriction, METHOD(hyx::ContactMaterial, setFriction, (hyx::Real))),
    FUNCTION(ContactMaterial_getFriction, METHOD(hyx::ContactMaterial, getFriction, () const)),
    FUNCTION(ContactMaterial_setRestitution, METHOD(hyx::ContactMaterial, setRestitution, (hyx::Real))),
    FUNCTION(ContactMaterial_getRestitution, METHOD(hyx::ContactMaterial, getRestitution, () const)),
    FUNCTION(ContactMaterial_setRollingResistance, METHOD(hyx::ContactMaterial, setRollingResistance, (hyx::Real))),
    FUNCTION(ContactMaterial_getRollingResistance, METHOD(hyx::ContactMaterial, getRollingResistance, () const)),
    FUNCTION(ContactMaterial_setStiffness, METHOD(hyx::ContactMaterial, setStiffness, (hyx::Real))),
    FUNCTION(ContactMaterial_getStiffness, METHOD(hyx::ContactMaterial, getStiffness, () const)),
    FUNCTION(ContactMaterial_setDamping, METHOD(hyx::ContactMaterial, setDamping, (hyx::Real))),
    FUNCTION(ContactMaterial_getDamping, METHOD(hyx::ContactMaterial, getDamping, () const)),
    REGISTER(hyx::ContactMaterial, ContactMaterial),
    INIT(ContactMaterial),
};

} // namespace

ROWS(material_rows);
