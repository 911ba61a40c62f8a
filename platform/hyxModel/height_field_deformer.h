// Wheel tracks: ground that gives way under contacts and stays pressed in.
#pragma once

#include "platform/hyx/objects/process.h"
#include "platform/hyx/objects/referenced.h"
#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec3.h"
#include "platform/hyxCollide/geometry.h"
#include "platform/hyxCollide/height_field.h"

#include <vector>

namespace hyxModel {

/// Lets a height field give way under what rolls or stands on it, as wet ground does.
/// A point sinks until the ground carries the load: sinkage = load / (stiffness x area), once for each load; the track
/// stays.
class HeightFieldDeformer : public hyx::Process {
public:
    /// A deformer of the height field that `geometry` shows. Throws `std::invalid_argument` for null or another shape.
    explicit HeightFieldDeformer(hyxCollide::Geometry* geometry);

    /// The ground that gives way.
    hyxCollide::Geometry* getGeometry() const;
    /// The shape of that ground.
    hyxCollide::HeightField* getHeightField() const;

    /// Pressure in Pa per metre of sinkage, 5e5 at first. Throws `std::invalid_argument` unless above 0.
    void setStiffness(hyx::Real stiffness);
    hyx::Real getStiffness() const;
    /// How far in metres the ground can sink below its first height, 0.3 at first.
    void setMaximumSinkage(hyx::Real depth);
    hyx::Real getMaximumSinkage() const;
    /// The radius in metres over which one contact point presses, 0.15 at first. Throws `std::invalid_argument` unless
    /// above 0.
    void setContactRadius(hyx::Real radius);
    hyx::Real getContactRadius() const;

    /// Presses with `force` newtons at `point` (metres, world). Returns the deepest sinkage in metres that this added.
    hyx::Real press(hyx::Vec3 const& point, hyx::Real force);
    /// Presses with the contacts of the last step of the geometry's simulation.
    void update();
    void postStep(hyx::TimeStamp time, hyx::Real timeStep) override;
    /// Takes the heights back to their first values.
    void reset();

    /// Rises with every change of a height.
    hyx::UInt getRevision() const;
    /// How far in metres the ground has sunk at one point of the field, 0 at first.
    hyx::Real getSinkage(hyx::UInt xIndex, hyx::UInt yIndex) const;

protected:
    ~HeightFieldDeformer() override = default;

private:
    /// Goes the given share of the way that the force would go in the end.
    hyx::Real pressLocal(hyx::Vec3 const& local, hyx::Real force, hyx::Real share = 1);

    hyx::ref_ptr<hyxCollide::Geometry> m_geometry;
    hyx::ref_ptr<hyxCollide::HeightField> m_field;
    std::vector<hyx::Real> m_firstHeights;
    hyx::Real m_stiffness = 5e5;
    hyx::Real m_maximumSinkage = 0.3;
    hyx::Real m_radius = 0.15;
    /// Of the step that is being taken in.
    hyx::Real m_share = 1;
    hyx::UInt m_revision = 1;
};

} // namespace hyxModel
