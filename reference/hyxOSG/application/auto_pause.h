// Pairs that pause the simulation when they touch.
#pragma once

#include <utility>
#include <vector>

namespace hyx {
class RigidBody;
} // namespace hyx

namespace hyxCollide {
class Geometry;
class LocalGeometryContact;
} // namespace hyxCollide

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxOSG {

/// The pairs are only compared with what touches, never looked into, so that a pair may outlive its bodies.
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

private:
    template <class T>
    struct Pair {
        T const* first;
        T const* second;
        bool touching;

        bool is(T const* a, T const* b) const { return (first == a && second == b) || (first == b && second == a); }
    };
    template <class T>
    static void addPair(std::vector<Pair<T>>& pairs, T const* first, T const* second);

    std::vector<Pair<hyx::RigidBody>> m_bodies;
    std::vector<Pair<hyxCollide::Geometry>> m_geometries;
    bool m_enabled = true;
};

} // namespace hyxOSG
