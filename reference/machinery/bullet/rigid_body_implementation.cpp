// Keeps Bullet's body in step with mass, geometries and place.
#include "reference/machinery/bullet/rigid_body_implementation.h"

#include "reference/hyx/values/number_checks.h"
#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/geometry_implementation.h"
#include "reference/machinery/bullet/physics_world.h"
#include "reference/machinery/bullet/shape_mass.h"

namespace hyx {

using hyxCollide::Geometry;
using hyxCollide::ShapeMass;

namespace {

bool isIdentity(btTransform const& transform) {
    return transform.getOrigin().length2() < 1e-24 &&
           transform.getRotation().angleShortestPath(btQuaternion::getIdentity()) < 1e-9;
}

ShapeMass massOf(Geometry const& geometry) {
    hyx::Material const* material = geometry.getMaterial();
    ShapeMass result;
    if (!geometry.isSensor())
        result.add(hyxCollide::massOf(*geometry.getShape()), toBullet(geometry.getLocalTransform()),
                   material ? material->getDensity() : 1000);
    return result;
}

ShapeMass massOf(Vector<ref_ptr<Geometry>> const& geometries) {
    ShapeMass sum;
    for (auto const& geometry : geometries)
        sum.add(massOf(*geometry), btTransform::getIdentity(), 1);
    return sum;
}

/// Moments small against the others make solvers unstable; a needle still has some.
btVector3 requireMoments(btVector3 const& moments) {
    double const least = 1e-6 * moments[moments.maxAxis()];
    return btVector3(std::max(moments.x(), least), std::max(moments.y(), least), std::max(moments.z(), least));
}

bool isDiagonal(btMatrix3x3 const& tensor) {
    double const scale = tensor[0][0] + tensor[1][1] + tensor[2][2];
    return std::max({std::abs(tensor[0][1]), std::abs(tensor[0][2]), std::abs(tensor[1][2])}) <= 1e-12 * scale;
}

} // namespace

bool BodyFrame::findPlace(AffineMatrix4x4& place) const {
    if (m_body)
        place = m_body->getTransform();
    return m_body != nullptr;
}

void BodyFrame::bodyEnds() {
    setLocalMatrix(m_body->getTransform());
    m_body = nullptr;
}

RigidBody::Implementation::Implementation(RigidBody& owner)
    : owner(owner),
      bullet(btRigidBody::btRigidBodyConstructionInfo(1, nullptr, &emptyShape)),
      frame(new BodyFrame(&owner)) {
    carrier.body = &owner;
    bullet.setUserPointer(&carrier);
    applyControl();
}

RigidBody::Implementation::~Implementation() {
    for (auto const& geometry : geometries)
        geometry->implementation().body = nullptr;
}

void RigidBody::Implementation::setModelTransform(btTransform const& transform) {
    bullet.setWorldTransform(transform * massFrame);
    bullet.setInterpolationWorldTransform(bullet.getWorldTransform());
    bullet.updateInertiaTensor();
    if (carrier.world)
        carrier.world->bodyMoved(*this);
}

void RigidBody::Implementation::setMassFrame(btTransform const& frame) {
    btTransform const model = modelTransform();
    massFrame = frame;
    massFrameInverse = frame.inverse();
    setModelTransform(model);
}

void RigidBody::Implementation::setInertiaTensor(btMatrix3x3 tensor) {
    btMatrix3x3 axes = btMatrix3x3::getIdentity();
    if (!isDiagonal(tensor))
        tensor.diagonalize(axes, 1e-12, 60);
    Vec3 const moments(tensor[0][0], tensor[1][1], tensor[2][2]);
    inertia = requireMoments(toBullet(requirePositive(moments, "the principal moments of inertia of a body")));
    inertiaFixed = true;
    setMassFrame(btTransform(axes, massFrame.getOrigin()));
    rebuildShape();
}

btMatrix3x3 RigidBody::Implementation::inertiaTensor() const {
    btMatrix3x3 const& axes = massFrame.getBasis();
    return axes.scaled(inertia) * axes.transpose();
}

void RigidBody::Implementation::updateMass() {
    ShapeMass const spread = massOf(geometries);
    bool const solid = spread.volume > 0;
    if (!massFixed)
        mass = solid ? spread.volume : 1;
    btVector3 const center = centerFixed ? massFrame.getOrigin() : spread.center;
    btTransform frame(inertiaFixed ? massFrame.getBasis() : btMatrix3x3::getIdentity(), center);
    if (!inertiaFixed && solid) {
        btMatrix3x3 tensor = spread.inertia * (mass / spread.volume);
        btVector3 const offset = center - spread.center;
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j)
                tensor[i][j] += mass * ((i == j ? offset.length2() : 0) - offset[i] * offset[j]);
        // One geometry keeps its own axes, which are principal ones for all shapes but meshes and compounds.
        btMatrix3x3 const axes = geometries.size() == 1 ? toBullet(geometries.front()->getLocalTransform()).getBasis()
                                                        : btMatrix3x3::getIdentity();
        btMatrix3x3 own = axes.transpose() * tensor * axes;
        frame.setBasis(axes);
        if (!isDiagonal(own)) {
            btMatrix3x3 rotation = btMatrix3x3::getIdentity();
            own.diagonalize(rotation, 1e-12, 60);
            frame.setBasis(axes * rotation);
        }
        inertia = requireMoments(btVector3(own[0][0], own[1][1], own[2][2]));
    } else if (!inertiaFixed) {
        inertia = btVector3(0.4, 0.4, 0.4) * mass;
    }
    setMassFrame(frame);
    applyControl();
}

void RigidBody::Implementation::rebuildShape() {
    // Outside the world while it changes: the world keeps moving and standing objects apart.
    PhysicsWorld* const world = carrier.world;
    if (world)
        world->remove(*this);
    applyControl();
    bullet.setCollisionShape(&emptyShape);
    compound.reset();
    carrier.geometries.clear();
    for (auto const& geometry : geometries) {
        geometry->implementation().index = static_cast<int>(carrier.geometries.size());
        carrier.geometries.push_back(geometry.get());
    }
    if (geometries.size() == 1 && isIdentity(massFrameInverse * toBullet(geometries.front()->getLocalTransform()))) {
        bullet.setCollisionShape(geometries.front()->implementation().bulletShape(movesByForces()));
    } else if (!geometries.empty()) {
        compound = std::make_unique<btCompoundShape>(false, static_cast<int>(geometries.size()));
        for (auto const& geometry : geometries)
            compound->addChildShape(massFrameInverse * toBullet(geometry->getLocalTransform()),
                                    geometry->implementation().bulletShape(movesByForces()));
        bullet.setCollisionShape(compound.get());
    }
    if (world)
        world->add(*this);
}

void RigidBody::Implementation::geometriesChanged() {
    updateMass();
    rebuildShape();
}

void RigidBody::Implementation::applyControl() {
    int flags = bullet.getCollisionFlags() | btCollisionObject::CF_CUSTOM_MATERIAL_CALLBACK;
    flags &= ~(btCollisionObject::CF_STATIC_OBJECT | btCollisionObject::CF_KINEMATIC_OBJECT);
    bullet.setCollisionFlags(flags);
    if (control == DYNAMICS) {
        bullet.setMassProps(mass, inertia);
    } else {
        bullet.setMassProps(0, btVector3(0, 0, 0));
        if (control == KINEMATICS)
            bullet.setCollisionFlags(flags | btCollisionObject::CF_KINEMATIC_OBJECT);
    }
    bullet.setLinearVelocity(velocity());
    bullet.setAngularVelocity(spin());
    bullet.updateInertiaTensor();
}

btVector3 RigidBody::Implementation::velocity() const {
    return control == DYNAMICS     ? bullet.getLinearVelocity()
           : control == KINEMATICS ? kinematicVelocity
                                   : btVector3(0, 0, 0);
}

btVector3 RigidBody::Implementation::spin() const {
    return control == DYNAMICS     ? bullet.getAngularVelocity()
           : control == KINEMATICS ? kinematicSpin
                                   : btVector3(0, 0, 0);
}

} // namespace hyx
