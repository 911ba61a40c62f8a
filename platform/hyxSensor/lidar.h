// Laser scanners that measure distances.
#pragma once

#include "platform/hyx/objects/process.h"
#include "platform/hyx/objects/referenced.h"
#include "platform/hyx/values/range_real.h"
#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec3.h"
#include "platform/hyx/values/vec3f.h"

#include <memory>
#include <vector>

namespace hyx {
class Frame;
class RigidBody;
} // namespace hyx

namespace hyxSensor {

/// One ray that met something.
struct LidarHit {
    hyx::Vec3f position;   ///< metres, world
    float intensity = 0;   ///< 0 to 1: how much of the light came back
    float distance = 0;    ///< metres from the sensor, noise included
    unsigned int ring = 0; ///< the row of the ray, from the lowest
};

/// A laser scanner: rings of rays into the simulated world.
/// It looks along the X axis of its frame, with Z up; a scan is one full fan at one moment.
/// The intensity is that of a dull surface: the cosine between ray and surface normal, weakened with the distance.
class Lidar : public hyx::Process {
public:
    /// A scanner that rides on `frame`; null stands at the world's origin. It sees the simulation that it was added to.
    explicit Lidar(hyx::Frame* frame = nullptr);

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
    /// Starts the generator of the noise anew.
    void setSeed(hyx::UInt seed);
    /// How many scans `step` makes a second, 10 at first; 0 scans at every step.
    void setScanRate(hyx::Real perSecond);
    hyx::Real getScanRate() const;
    /// A disabled scanner keeps its last hits.
    void setEnable(bool enable);
    bool getEnable() const;

    /// Scans now and returns the number of hits. Outside of a simulation nothing is hit.
    hyx::UInt scan();
    /// Scans when one is due after `timeStep` more seconds.
    void step(hyx::Real timeStep);
    /// Advances by the simulation's time step.
    void postStep(hyx::TimeStamp time, hyx::Real timeStep) override;
    /// Takes points measured elsewhere in place of a scan; the hits' values are kept as they are.
    void setHits(std::vector<LidarHit> hits);
    /// The hits of the last scan.
    std::vector<LidarHit> const& getHits() const;
    /// Rises with every new set of hits.
    hyx::UInt getRevision() const;
    /// The number of hits per ring in the last scan.
    std::vector<hyx::UInt> getRingCounts() const;

protected:
    ~Lidar() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxSensor
