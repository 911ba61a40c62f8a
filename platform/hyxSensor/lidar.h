// Laser scanners that measure distances.
#pragma once

#include "platform/hyx/objects/process.h"
#include "platform/hyx/objects/referenced.h"
#include "platform/hyx/values/range_real.h"
#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec3.h"
#include "platform/hyx/values/vector.h"

#include <memory>
#include <vector>

namespace hyx {
class Frame;
class Material;
class RigidBody;
} // namespace hyx

namespace hyxSensor {

/// One return: light of a pulse that came back from something.
struct LidarHit {
    hyx::Vec3 position;            ///< metres, world
    hyx::Real time = 0;            ///< simulated seconds, when the pulse left
    float intensity = 0;           ///< how much of the light came back; 1 from a white wall that is near
    float distance = 0;            ///< metres from the sensor, noise included
    unsigned int ring = 0;         ///< the row of the ray, from the lowest
    unsigned int identity = 0;     ///< the number of the body, as in cameras; 0 for what is no body
    unsigned int returnNumber = 1; ///< of the pulse, from 1 for the nearest
    unsigned int numReturns = 1;   ///< of the pulse
};

/// A laser scanner: rings of rays into the simulated world, columns of them one after the other.
///
/// It looks along the X axis of its frame, with Z up; a scan is one full fan, at one moment or, when it rolls, over the
/// time of a scan. The intensity is that of a dull surface: its reflectivity times the cosine between ray and surface
/// normal, weakened with the distance; half of it is left at a fifth of the range. Rays meet shapes exactly, in double
/// precision; all processors shoot them.
class Lidar : public hyx::Process {
public:
    /// A scanner that rides on `frame`; null stands at the world's origin. It sees the simulation that it was added to.
    explicit Lidar(hyx::Frame* frame = nullptr);

    /// Where the lidar stands and looks: X ahead, Z up.
    void setFrame(hyx::Frame* frame);
    hyx::Frame* getFrame() const;
    /// A body that the rays pass through, as a rule the one that carries the scanner; null for none.
    void setIgnoredBody(hyx::RigidBody* body);
    hyx::RigidBody* getIgnoredBody() const;

    /// The number of rings and of rays in each, 16 and 360 at first. Throws `std::invalid_argument` for 0.
    void setResolution(hyx::UInt rings, hyx::UInt raysPerRing);
    hyx::UInt getNumRings() const;
    hyx::UInt getNumRaysPerRing() const;
    /// The angles in radians that the fan spans, 2 pi and 0.5 at first; centred on the frame's X axis.
    void setFieldOfView(hyx::Real horizontal, hyx::Real vertical);
    hyx::Real getHorizontalFieldOfView() const;
    hyx::Real getVerticalFieldOfView() const;
    /// The distances in metres that can be measured, 0.1 to 100 at first. Throws `std::invalid_argument` for a negative
    /// or empty range.
    void setRange(hyx::RangeReal range);
    hyx::RangeReal getRange() const;
    /// The standard deviation in metres of the measured distance, 0 at first.
    void setDistanceNoise(hyx::Real standardDeviation);
    hyx::Real getDistanceNoise() const;
    /// Starts the generator of noise and dropout anew.
    void setSeed(hyx::UInt seed);
    /// The angle of each ring above the frame's horizon in radians, from the lowest; sets the number of rings. An empty
    /// list spreads them evenly over the vertical field of view again. Throws `std::invalid_argument` for an angle that
    /// is not within a quarter turn of the horizon.
    void setRingElevations(hyx::RealVector const& elevations);
    /// One for each ring, however they were set.
    hyx::RealVector getRingElevations() const;

    /// Whether columns are shot one after the other over the time of a scan, along the motion of frame and bodies
    /// between the steps of the simulation; off at first. The hits are then those of the last scan that is complete.
    void setRolling(bool enable);
    bool getRolling() const;
    /// The most returns of one pulse, 1 to 8, at first 1: the strongest. A pulse has several where its beam is wide or
    /// meets what is transparent. Throws `std::invalid_argument` for other numbers.
    void setMaxReturns(hyx::UInt number);
    hyx::UInt getMaxReturns() const;
    /// The full angle in radians that a beam spans, 0 at first. A wide beam is seven rays, so edges return in part.
    void setBeamDivergence(hyx::Real angle);
    hyx::Real getBeamDivergence() const;
    /// Returns of one pulse that are nearer to each other are one, at their mean distance; 0.5 m at first.
    void setReturnSeparation(hyx::Real metres);
    hyx::Real getReturnSeparation() const;
    /// The share of light that a material throws back, 1 at first; retroreflectors have more. A null material stands
    /// for all that have none of their own. Throws `std::invalid_argument` for a negative share.
    void setReflectivity(hyx::Material* material, hyx::Real share);
    hyx::Real getReflectivity(hyx::Material* material) const;
    /// The share of light, 0 to 1, that goes on behind a surface of the material; 0 at first.
    void setTransparency(hyx::Material* material, hyx::Real share);
    hyx::Real getTransparency(hyx::Material* material) const;
    /// The share of returns, 0 to 1, that are lost by chance; 0 at first.
    void setDropout(hyx::Real share);
    hyx::Real getDropout() const;
    /// Weaker returns are not noticed; 0 at first.
    void setLeastIntensity(hyx::Real intensity);
    hyx::Real getLeastIntensity() const;
    /// How many scans `step` makes a second, 10 at first; 0 scans at every step.
    void setScanRate(hyx::Real perSecond);
    hyx::Real getScanRate() const;
    /// A disabled scanner keeps its last hits.
    void setEnable(bool enable);
    bool getEnable() const;

    /// Scans now, all columns at this moment, and returns the number of hits. Outside of a simulation nothing is hit.
    hyx::UInt scan();
    /// Scans when one is due after `timeStep` more seconds; when it rolls, shoots the columns of that time.
    void step(hyx::Real timeStep);
    /// Remembers where things stand before the first step.
    void preStep(hyx::TimeStamp time, hyx::Real timeStep) override;
    /// Advances by the simulation's time step.
    void postStep(hyx::TimeStamp time, hyx::Real timeStep) override;
    /// Takes points measured elsewhere in place of a scan; the hits' values are kept as they are.
    void setHits(std::vector<LidarHit> hits);
    /// The hits of the last scan.
    std::vector<LidarHit> const& getHits() const;
    /// Rises with every new set of hits.
    hyx::UInt getRevision() const;
    /// The number of hits per ring in the last scan: several of a pulse count.
    std::vector<hyx::UInt> getRingCounts() const;

protected:
    ~Lidar() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxSensor
