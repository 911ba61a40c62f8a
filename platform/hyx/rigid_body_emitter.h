#pragma once

#include "platform/hyx/emitter.h"
#include "platform/hyx/rigid_body.h"

#include <functional>
#include <vector>

namespace hyxCollide {
class Geometry;
}

namespace hyxSDK {
class Simulation;
}

namespace hyx {

/// Makes rigid bodies at a rate and adds them to a simulation.
class RigidBodyEmitter : public Emitter {
public:
  /// Makes the body of one emission; the result is taken over.
  using Template = std::function<RigidBody *()>;
  /// Told of each new body after it was added to the simulation.
  using EmitCallback = std::function<void(RigidBody *)>;

  /// An emitter into `simulation`, which must outlive it; null emits nothing.
  explicit RigidBodyEmitter(hyxSDK::Simulation * simulation = nullptr);

  /// The simulation that receives the bodies.
  void setSimulation(hyxSDK::Simulation * simulation);
  hyxSDK::Simulation * getSimulation() const;

  /// Bodies to come are spheres of this radius in metres. Throws `std::invalid_argument` unless above 0.
  void setSphereTemplate(Real radius);
  /// Bodies to come are boxes with these half sides in metres. Throws `std::invalid_argument` unless all are above 0.
  void setBoxTemplate(Vec3 const & halfExtents);
  /// Bodies to come are made by `make`.
  void setTemplate(Template make);

  /// Adds someone who is told of each new body.
  void addEmitCallback(EmitCallback callback);

  /// All bodies made so far.
  std::vector<ref_ptr<RigidBody>> const & getBodies() const;

protected:
  ~RigidBodyEmitter() override = default;
  bool emit(Vec3 const & position, Vec3 const & velocity) override;

private:
  hyxSDK::Simulation * m_simulation;
  Template m_make;
  std::vector<EmitCallback> m_callbacks;
  std::vector<ref_ptr<RigidBody>> m_bodies;
};

}
