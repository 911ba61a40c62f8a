/// Pairs that pause the simulation when they touch.
#pragma once

#include <utility>
#include <vector>

namespace hyx {
class RigidBody;
}
namespace hyxCollide {
class Geometry;
class LocalGeometryContact;
}  // namespace hyxCollide
namespace hyxSDK {
class Simulation;
}

namespace hyxOSG {

/// The pairs are only compared with what touches, never looked into, so that a pair may outlive its bodies.
class AutoPause {
public:
  void add(const hyx::RigidBody* body1, const hyx::RigidBody* body2);
  void add(const hyxCollide::Geometry* geometry1, const hyxCollide::Geometry* geometry2);
  void remove(const hyx::RigidBody* body1, const hyx::RigidBody* body2);
  void remove(const hyxCollide::Geometry* geometry1, const hyxCollide::Geometry* geometry2);

  void setEnable(bool enable) { m_enabled = enable; }
  bool enabled() const { return m_enabled; }

  /// Whether a pair has begun to touch in the last step. Pairs that go on touching do not count again.
  bool beganToTouch(const hyxSDK::Simulation& simulation);

private:
  template <class T>
  struct Pair {
    const T* first;
    const T* second;
    bool touching;
    bool is(const T* a, const T* b) const { return (first == a && second == b) || (first == b && second == a); }
  };
  template <class T>
  static void addPair(std::vector<Pair<T>>& pairs, const T* first, const T* second);

  std::vector<Pair<hyx::RigidBody>> m_bodies;
  std::vector<Pair<hyxCollide::Geometry>> m_geometries;
  bool m_enabled = true;
};

}  // namespace hyxOSG
