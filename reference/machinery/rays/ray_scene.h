// All that rays can meet in a simulation, as it moved from one moment to the next.
#pragma once

#include "platform/hyxCollide/space.h"
#include "reference/machinery/rays/pose_motion.h"
#include "reference/machinery/rays/ray_surface.h"

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace hyx {

/// Copies of places and trees over surfaces: once it is up to date, many threads may ask at a time.
class RayScene {
public:
    /// Something that a ray can meet: a geometry, or a part of one that is compound.
    struct Target {
        hyxCollide::Geometry* geometry = nullptr;
        hyxCollide::Shape const* shape = nullptr;
        RaySurface const* surface = nullptr; ///< null for shapes in closed form
        PoseMotion motion;
    };

    struct Hit : RayMeeting {
        Target const* target = nullptr;
    };

    /// The places of what moves at one moment, which each thread keeps for itself.
    class Moment {
    public:
        /// `share` of the way from the former update (0) to the last one (1).
        void set(double share);

    private:
        friend class RayScene;
        double m_share = 1;
        std::uint32_t m_number = 1;
        std::vector<std::pair<std::uint32_t, btTransform>> m_places; ///< with the number of their moment
    };

    /// Takes over what stands in `space`. With `moving` it came from where the last update found it.
    void update(hyxCollide::Space const& space, RigidBody const* ignored, bool moving);

    /// What a ray meets first before `reach` metres. A ray that starts inside of a solid does not meet that.
    std::optional<Hit> cast(Moment& moment, btVector3 const& origin, btVector3 const& direction, double reach) const;

private:
    struct Surface {
        ref_ptr<hyxCollide::Shape> shape;
        UInt revision = 0;
        std::unique_ptr<RaySurface> triangles; ///< null for shapes in closed form
        bool used = true;
    };

    struct Known {
        Pose pose;
        RayBox box;
    };

    using Places = std::map<std::pair<hyxCollide::Geometry const*, UInt>, Known>;

    void add(hyxCollide::Geometry& geometry, Places& places, bool moving);
    void addPart(hyxCollide::Geometry& geometry, hyxCollide::Shape& shape, AffineMatrix4x4 const& place, UInt part,
                 Places& places, bool moving);
    RaySurface const* surfaceOf(hyxCollide::Shape& shape);
    btTransform const& placeOf(Moment& moment, std::uint32_t target) const;
    void meet(Moment& moment, std::uint32_t target, Ray const& ray, std::optional<Hit>& nearest, double& reach) const;

    std::vector<Target> m_targets;
    std::vector<RayBox> m_boxes;
    std::vector<std::uint32_t> m_bounded; ///< the targets in the tree
    std::vector<std::uint32_t> m_endless; ///< planes
    BoxTree m_tree;
    std::map<hyxCollide::Shape const*, Surface> m_surfaces;
    Places m_places; ///< at the last update
};

} // namespace hyx
