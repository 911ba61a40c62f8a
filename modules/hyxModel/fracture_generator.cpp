// Bodies that break.
#include "platform/hyxModel/fracture_generator.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"

namespace {

PyObject* fracture(hyxModel::FractureGenerator& self, hyx::RigidBody* body, hyx::Vec3 const& point) {
    return vocabulary::to_shared_list(self.fracture(body, point));
}

PyObject* fragments(hyxModel::FractureGenerator const& self) {
    return vocabulary::to_shared_list(self.getFragments());
}

constexpr Declared fracture_generator_rows[] = {
    FUNCTION(new_FractureGenerator, NEW(hyxModel::FractureGenerator, ())),
    FUNCTION(FractureGenerator_setNumFragments, METHOD(hyxModel::FractureGenerator, setNumFragments, (hyx::UInt))),
    FUNCTION(FractureGenerator_getNumFragments, METHOD(hyxModel::FractureGenerator, getNumFragments, () const)),
    FUNCTION(FractureGenerator_setSeed, METHOD(hyxModel::FractureGenerator, setSeed, (hyx::UInt))),
    FUNCTION(FractureGenerator_setBreakingForce, METHOD(hyxModel::FractureGenerator, setBreakingForce, (hyx::Real))),
    FUNCTION(FractureGenerator_getBreakingForce, METHOD(hyxModel::FractureGenerator, getBreakingForce, () const)),
    FUNCTION(FractureGenerator_add, METHOD(hyxModel::FractureGenerator, add, (hyx::RigidBody*))),
    FUNCTION(FractureGenerator_remove, METHOD(hyxModel::FractureGenerator, remove, (hyx::RigidBody*))),
    FUNCTION(FractureGenerator_fracture,
             ADAPTER(hyxModel::FractureGenerator, fracture, fracture, (hyx::RigidBody*, hyx::Vec3 const&))),
    FUNCTION(FractureGenerator_step, METHOD(hyxModel::FractureGenerator, step, ())),
    FUNCTION(FractureGenerator_getFragments, ADAPTER(hyxModel::FractureGenerator, getFragments, fragments, () const)),
    FUNCTION(delete_FractureGenerator, DELETE(hyxModel::FractureGenerator)),
    REGISTER(hyxModel::FractureGenerator, FractureGenerator),
    INIT(FractureGenerator),
};

} // namespace

ROWS(fracture_generator_rows);
