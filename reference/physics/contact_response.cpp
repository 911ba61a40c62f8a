#include "reference/physics/contact_response.h"

#include "reference/collide/geometry_implementation.h"
#include "reference/physics/physics_world.h"

#include <BulletCollision/CollisionDispatch/btCollisionObjectWrapper.h>
#include <BulletCollision/CollisionDispatch/btCompoundCollisionAlgorithm.h>
#include <BulletCollision/CollisionDispatch/btManifoldResult.h>
#include <BulletDynamics/Dynamics/btRigidBody.h>

#include <cmath>

namespace hyx {

using hyxCollide::CollisionCarrier;
using hyxCollide::Geometry;

namespace {

/// m/s; slower contacts come to rest.
constexpr double bounceSpeed = 0.3;

CollisionCarrier const & carrierOf(btCollisionObject const * object) {
  return *static_cast<CollisionCarrier const *>(object->getUserPointer());
}

/// Triangles and parts of compounds come wrapped in the shapes that they are part of.
Geometry * geometryOf(btCollisionObjectWrapper const * wrapper) {
  for (; wrapper; wrapper = wrapper->m_parent)
    if (Geometry * geometry = hyxCollide::geometryOf(wrapper->getCollisionShape()))
      return geometry;
  return nullptr;
}

btVector3 velocityAt(btCollisionObject const * object, btVector3 const & point) {
  btRigidBody const * body = btRigidBody::upcast(object);
  return body ? body->getVelocityInLocalPoint(point - body->getCenterOfMassPosition()) : btVector3(0, 0, 0);
}

/// A bounce must not gain speed from the penetration that one step has brought, which bullet would take back by a velocity.
void keepBounceExact(btManifoldPoint & point, btCollisionObject const * first, btCollisionObject const * second) {
  btVector3 const approach = velocityAt(first, point.getPositionWorldOnA()) - velocityAt(second, point.getPositionWorldOnB());
  if (point.m_combinedRestitution > 0 && approach.dot(point.m_normalWorldOnB) < -bounceSpeed) {
    point.m_contactERP = 0;
    point.m_contactPointFlags |= BT_CONTACT_FLAG_HAS_CONTACT_ERP;
  } else {
    point.m_contactPointFlags &= ~BT_CONTACT_FLAG_HAS_CONTACT_ERP;
  }
}

void makeForceless(btManifoldPoint & point) {
  point.m_combinedFriction = point.m_combinedRestitution = point.m_combinedRollingFriction = point.m_combinedSpinningFriction = 0;
  point.m_contactCFM = 1e20;
  point.m_contactPointFlags |= BT_CONTACT_FLAG_HAS_CONTACT_CFM;
}

void respond(btManifoldPoint & point, ContactMaterial const & material) {
  point.m_combinedFriction = material.getFriction();
  point.m_combinedRestitution = material.getRestitution();
  point.m_combinedSpinningFriction = material.getRollingResistance();
  point.m_contactPointFlags &= ~BT_CONTACT_FLAG_CONTACT_STIFFNESS_DAMPING;
  if (std::isfinite(material.getStiffness())) {
    point.m_combinedContactStiffness1 = material.getStiffness();
    point.m_combinedContactDamping1 = material.getDamping();
    point.m_contactPointFlags |= BT_CONTACT_FLAG_CONTACT_STIFFNESS_DAMPING;
  }
}

void respond(btManifoldPoint & point, Material const * first, Material const * second) {
  point.m_combinedFriction = ContactMaterial::combinedFriction(first, second);
  point.m_combinedRestitution = ContactMaterial::combinedRestitution(first, second);
  point.m_combinedSpinningFriction = ContactMaterial::combinedRollingResistance(first, second);
}

bool contactAdded(btManifoldPoint & point, btCollisionObjectWrapper const * wrapper0, int, int, btCollisionObjectWrapper const * wrapper1, int, int) {
  Geometry const * first = geometryOf(wrapper0);
  Geometry const * second = geometryOf(wrapper1);
  if (!first || !second)
    return false;
  point.m_index0 = first->implementation().index;
  point.m_index1 = second->implementation().index;
  if (first->isSensor() || second->isSensor()) {
    makeForceless(point);
    return true;
  }
  PhysicsWorld const * world = carrierOf(wrapper0->getCollisionObject()).world;
  ContactMaterial const * material = world ? world->contactMaterial(first->getMaterial(), second->getMaterial()) : nullptr;
  if (material)
    respond(point, *material);
  else
    respond(point, first->getMaterial(), second->getMaterial());
  if (!(point.m_contactPointFlags & BT_CONTACT_FLAG_CONTACT_STIFFNESS_DAMPING))
    keepBounceExact(point, wrapper0->getCollisionObject(), wrapper1->getCollisionObject());
  return true;
}

bool partsMayCollide(btCollisionShape const * first, btCollisionShape const * second) {
  return Geometry::Implementation::mayCollide(hyxCollide::geometryOf(first), hyxCollide::geometryOf(second));
}

}

ContactDispatcher::ContactDispatcher(btCollisionConfiguration * configuration) : btCollisionDispatcher(configuration) {
  gContactAddedCallback = contactAdded;
  gCompoundChildShapePairCallback = partsMayCollide;
}

bool ContactDispatcher::needsCollision(btCollisionObject const * first, btCollisionObject const * second) {
  return partsMayCollide(first->getCollisionShape(), second->getCollisionShape()) && btCollisionDispatcher::needsCollision(first, second);
}

Geometry * geometryAt(btCollisionObject const * object, int index) {
  auto const & geometries = carrierOf(object).geometries;
  return index >= 0 && index < static_cast<int>(geometries.size()) ? geometries[index] : nullptr;
}

}
