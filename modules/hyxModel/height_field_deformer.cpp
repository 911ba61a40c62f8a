// Height fields that give way.
#include "platform/hyxModel/height_field_deformer.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared height_field_deformer_rows[] = {
    FUNCTION(new_HeightFieldDeformer, NEW(hyxModel::HeightFieldDeformer, (hyxCollide::Geometry*))),
    FUNCTION(HeightFieldDeformer_getGeometry, SHARED(METHOD(hyxModel::HeightFieldDeformer, getGeometry, () const))),
    FUNCTION(HeightFieldDeformer_getHeightField,
             SHARED(METHOD(hyxModel::HeightFieldDeformer, getHeightField, () const))),
    FUNCTION(HeightFieldDeformer_setStiffness, METHOD(hyxModel::HeightFieldDeformer, setStiffness, (hyx::Real))),
    FUNCTION(HeightFieldDeformer_getStiffness, METHOD(hyxModel::HeightFieldDeformer, getStiffness, () const)),
    FUNCTION(HeightFieldDeformer_setMaximumSinkage,
             METHOD(hyxModel::HeightFieldDeformer, setMaximumSinkage, (hyx::Real))),
    FUNCTION(HeightFieldDeformer_getMaximumSinkage, METHOD(hyxModel::HeightFieldDeformer, getMaximumSinkage, () const)),
    FUNCTION(HeightFieldDeformer_setContactRadius,
             METHOD(hyxModel::HeightFieldDeformer, setContactRadius, (hyx::Real))),
    FUNCTION(HeightFieldDeformer_getContactRadius, METHOD(hyxModel::HeightFieldDeformer, getContactRadius, () const)),
    FUNCTION(HeightFieldDeformer_press, METHOD(hyxModel::HeightFieldDeformer, press, (hyx::Vec3 const&, hyx::Real))),
    FUNCTION(HeightFieldDeformer_update, METHOD(hyxModel::HeightFieldDeformer, update, ())),
    FUNCTION(HeightFieldDeformer_reset, METHOD(hyxModel::HeightFieldDeformer, reset, ())),
    FUNCTION(HeightFieldDeformer_getRevision, METHOD(hyxModel::HeightFieldDeformer, getRevision, () const)),
    FUNCTION(HeightFieldDeformer_getSinkage,
             METHOD(hyxModel::HeightFieldDeformer, getSinkage, (hyx::UInt, hyx::UInt) const)),
    FUNCTION(delete_HeightFieldDeformer, DELETE(hyxModel::HeightFieldDeformer)),
    REGISTER(hyxModel::HeightFieldDeformer, HeightFieldDeformer),
    INIT(HeightFieldDeformer),
};

} // namespace

ROWS(height_field_deformer_rows);
