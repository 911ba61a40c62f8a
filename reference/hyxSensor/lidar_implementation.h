// What stands behind a laser scanner.
#pragma once

#include "platform/hyx/bodies/frame.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxSensor/lidar.h"
#include "reference/hyxSensor/beam.h"
#include "reference/hyxSensor/ray_fan.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <random>
#include <vector>

namespace hyxSensor {

struct Lidar::Implementation {
    /// A scan that is being shot column by column.
    struct Turn {
        hyx::Real start = 0;       ///< simulated seconds
        hyx::UInt columnsShot = 0; ///< of this scan
        std::vector<LidarHit> hits;
    };

    /// When columns are shot, and the moments between which the scene and the frame move.
    struct Schedule {
        hyx::Real start = 0;
        hyx::Real perColumn = 0;
        hyx::Real from = 0;
        hyx::Real to = 0;

        hyx::Real time(hyx::UInt column) const { return start + perColumn * static_cast<hyx::Real>(column); }

        hyx::Real share(hyx::UInt column) const {
            return to > from ? std::clamp((time(column) - from) / (to - from), 0.0, 1.0) : 1;
        }
    };

    /// One pulse that came back.
    struct Pulse {
        hyx::UInt ring = 0;
        hyx::Real time = 0;
        btVector3 origin{0, 0, 0};
        btVector3 direction{0, 0, 0};
        std::size_t numEchoes = 0;
    };

    /// What came back of some columns, in the order in which it was shot.
    struct Shots {
        std::vector<Pulse> pulses;
        std::vector<Echo> echoes;
    };

    /// Shoots columns `first` to `end`.
    void shoot(hyx::UInt first, hyx::UInt end, Schedule const& schedule, std::vector<LidarHit>& to);
    Shots shootColumns(hyx::UInt first, hyx::UInt end, Schedule const& schedule) const;
    /// What the detector makes of it.
    void record(Shots const& shots, std::vector<LidarHit>& to);
    std::optional<LidarHit> record(Pulse const& pulse, Echo const& echo);
    /// Where everything stands now; with `moving` it came from where it stood before.
    void look(hyxCollide::Space const& space, bool moving);
    /// Shoots what is due between two moments.
    void roll(hyx::Real from, hyx::Real to);
    void publish(std::vector<LidarHit>&& complete);
    hyx::Real randomNumber(); ///< 0 to 1
    hyx::Real randomNormal();

    hyx::ref_ptr<hyx::Frame> frame;
    hyx::ref_ptr<hyx::RigidBody> ignored;
    RayFan fan;
    Beam beam;
    hyx::Real noise = 0;
    hyx::Real dropout = 0;
    hyx::Real leastIntensity = 0;
    hyx::Real rate = 10;
    hyx::Real due = 0;
    bool enable = true;
    bool rolling = false;
    std::mt19937_64 generator;
    std::vector<LidarHit> hits;
    hyx::UInt revision = 0;

    hyx::RayScene scene;
    hyx::Pose pose; ///< of the frame, at the last look
    hyx::PoseMotion motion;
    std::optional<hyx::Real> seen; ///< the simulated time of the last look, while it rolls
    std::optional<Turn> turn;
};

} // namespace hyxSensor
