// Pairs that pause the simulation when they touch.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxCollide/geometry.h"

#include <vector>

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxOSG {

/// A pair keeps its objects, so that none that comes later can be taken for one of them.
class AutoPause {
public:
    void add(hyx::RigidBody const* body1, hyx::RigidBody const* body2);
    void add(hyxCollide::Geometry const* geometry1, hyxCollide::Geometry const* geometry2);
    void remove(hyx::RigidBody const* body1, hyx::RigidBody const* body2);
    void remove(hyxCollide::Geometry const* geometry1, hyxCollide::Geometry const* geometry2);

    void setEnable(bool enable) { m_enabled = enable; }

    bool enabled() const { return m_enabled; }

    /// Whether a pair has begun to touch in the last step. Pairs that go on touching do not count again.
    bool beganToTouch(hyxSDK::Simulation const& simulation);

    bool operator==(AutoPause const&) const = default;

private:
    template <class T>
    struct Pair {
        hyx::ref_ptr<T> first;
        hyx::ref_ptr<T> second;
        bool touching;

        bool is(T const* a, T const* b) const {
            return (first.get() == a && second.get() == b) || (first.get() == b && second.get() == a);
        }

        bool operator==(Pair const& other) const { return first == other.first && second == other.second; }
    };
    template <class T>
    static void addPair(std::vector<Pair<T>>& pairs, T const* first, T const* second);

    std::vector<Pair<hyx::RigidBody>> m_bodies;
    std::vector<Pair<hyxCollide::Geometry>> m_geometries;
    bool m_enabled = true;
};

} // namespace hyxOSG
