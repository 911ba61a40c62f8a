// Mixes materials at contacts, and keeps inner edges of meshes from tripping bodies.
#include "reference/machinery/bullet/contact_response.h"

#include "platform/hyxCollide/height_field.h"
#include "reference/machinery/bullet/contact_points.h"
#include "reference/machinery/bullet/former_contacts.h"
#include "reference/machinery/bullet/geometry_implementation.h"
#include "reference/machinery/bullet/physics_world.h"
#include "reference/machinery/bullet/rigid_body_implementation.h"

#include <BulletCollision/CollisionDispatch/btCollisionObjectWrapper.h>
#include <BulletCollision/CollisionDispatch/btManifoldResult.h>
#include <BulletCollision/CollisionShapes/btSphereShape.h>
#include <BulletCollision/CollisionShapes/btTriangleShape.h>
#include <BulletDynamics/Dynamics/btRigidBody.h>
#include <LinearMath/btAabbUtil2.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

namespace hyx {

using hyxCollide::CollisionCarrier;
using hyxCollide::Geometry;

namespace {

/// Of 45 degrees.
constexpr double straightCosine = 0.7071;
constexpr double upright = 0.9999;
/// Of the thickness of two bodies: what they may overlap by and still be parted to the side that they came from.
constexpr double harmlessWay = 0.5;
/// How far a height field may lie from the plane of one of its triangles, in radii of the ball over it, and still
/// continue that triangle.
constexpr double smoothStep = 0.01;

CollisionCarrier const& carrierOf(btCollisionObject const* object) {
    return *static_cast<CollisionCarrier const*>(object->getUserPointer());
}

double smallerRadius(btCollisionObject const& first, btCollisionObject const& second) {
    return std::min(carrierOf(&first).radius, carrierOf(&second).radius);
}

/// Triangles and parts of compounds come wrapped in the shapes that they are part of.
Geometry* geometryOf(btCollisionObjectWrapper const* wrapper) {
    for (; wrapper; wrapper = wrapper->m_parent)
        if (Geometry* geometry = hyxCollide::geometryOf(wrapper->getCollisionShape()))
            return geometry;
    return nullptr;
}

btVector3 velocityOf(btCollisionObject const& object) {
    RigidBody const* body = carrierOf(&object).body;
    return body ? body->implementation().velocity() : btVector3(0, 0, 0);
}

/// How far a turn may bring an object's corners nearer to others in `time`: no farther than they stand out.
double turningWay(btCollisionObject const& object, double time) {
    CollisionCarrier const& carrier = carrierOf(&object);
    if (!carrier.body)
        return 0;
    btVector3 const spin = carrier.body->implementation().spin() * object.getWorldTransform().getBasis();
    return std::min((spin * carrier.arms).length() * time, std::max(carrier.radius - carrier.core, 0.0));
}

bool isShape(btCollisionObjectWrapper const* wrapper, int type) {
    return wrapper->getCollisionShape()->getShapeType() == type;
}

/// Whether a surface goes on in a triangle's plane at a point of that plane. Height fields tell; of other surfaces it
/// is assumed.
bool continuesAt(Geometry const& geometry, btVector3 const& point, double tolerance) {
    auto const* field = dynamic_cast<hyxCollide::HeightField const*>(geometry.getShape());
    return !field || std::abs(field->getHeightAt(point.x(), point.y()) - point.z()) < tolerance;
}

/// The edges between the triangles of a smooth surface must not be felt: near one, a body finds the edge beside it
/// rather than the face below it, and the normal that leans over the edge would push it along. Such a contact becomes
/// one with the triangle's plane; normals that lean more are those of true edges and stay.
void rollOverEdges(btManifoldPoint& point, btCollisionObjectWrapper const* wrapper0,
                   btCollisionObjectWrapper const* wrapper1, Geometry const& first, Geometry const& second) {
    bool const solidFirst = isShape(wrapper1, TRIANGLE_SHAPE_PROXYTYPE);
    if (solidFirst == isShape(wrapper0, TRIANGLE_SHAPE_PROXYTYPE))
        return;
    btCollisionObjectWrapper const& solid = solidFirst ? *wrapper0 : *wrapper1;
    btCollisionObjectWrapper const& surface = solidFirst ? *wrapper1 : *wrapper0;
    auto const& triangle = static_cast<btTriangleShape const&>(*surface.getCollisionShape());
    btVector3 const leaning = solidFirst ? point.m_normalWorldOnB : -point.m_normalWorldOnB;
    btVector3 normal;
    triangle.calcNormal(normal);
    normal = surface.getWorldTransform().getBasis() * normal;
    if (normal.dot(leaning) < 0)
        normal = -normal;
    if (normal.dot(leaning) < straightCosine)
        return;
    if (normal.dot(leaning) < upright)
        point.m_contactPointFlags |= leaningContact;
    double size = 0.1 * usualReach(solid.getCollisionShape()->getAngularMotionDisc());
    btVector3 lowest = solidFirst ? point.m_positionWorldOnA : point.m_positionWorldOnB;
    if (isShape(&solid, SPHERE_SHAPE_PROXYTYPE)) {
        double const radius = static_cast<btSphereShape const*>(solid.getCollisionShape())->getRadius();
        size = smoothStep * radius;
        lowest = solid.getWorldTransform().getOrigin() - normal * radius;
    }
    double const distance = (lowest - surface.getWorldTransform() * triangle.m_vertices1[0]).dot(normal);
    btVector3 const below = lowest - normal * distance;
    if (!continuesAt(solidFirst ? second : first, surface.getWorldTransform().invXform(below), size))
        return;
    point.m_distance1 = distance;
    point.m_normalWorldOnB = solidFirst ? normal : -normal;
    point.m_positionWorldOnA = solidFirst ? lowest : below;
    point.m_positionWorldOnB = solidFirst ? below : lowest;
    point.m_localPointA = wrapper0->getCollisionObject()->getWorldTransform().invXform(point.m_positionWorldOnA);
    point.m_localPointB = wrapper1->getCollisionObject()->getWorldTransform().invXform(point.m_positionWorldOnB);
}

void makeForceless(btManifoldPoint& point) {
    point.m_combinedFriction = point.m_combinedRestitution = point.m_combinedRollingFriction =
        point.m_combinedSpinningFriction = 0;
    point.m_contactCFM = 1e20;
    point.m_contactPointFlags |= BT_CONTACT_FLAG_HAS_CONTACT_CFM;
}

void respond(btManifoldPoint& point, ContactMaterial const& material) {
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

void respond(btManifoldPoint& point, Material const* first, Material const* second) {
    point.m_combinedFriction = ContactMaterial::combinedFriction(first, second);
    point.m_combinedRestitution = ContactMaterial::combinedRestitution(first, second);
    point.m_combinedSpinningFriction = ContactMaterial::combinedRollingResistance(first, second);
}

bool contactAdded(btManifoldPoint& point, btCollisionObjectWrapper const* wrapper0, int, int,
                  btCollisionObjectWrapper const* wrapper1, int, int) {
    Geometry const* first = geometryOf(wrapper0);
    Geometry const* second = geometryOf(wrapper1);
    if (!first || !second)
        return false;
    rollOverEdges(point, wrapper0, wrapper1, *first, *second);
    point.m_index0 = first->implementation().index;
    point.m_index1 = second->implementation().index;
    if (first->isSensor() || second->isSensor()) {
        makeForceless(point);
        return true;
    }
    PhysicsWorld const* world = carrierOf(wrapper0->getCollisionObject()).world;
    ContactMaterial const* material =
        world ? world->contactMaterial(first->getMaterial(), second->getMaterial()) : nullptr;
    if (material)
        respond(point, *material);
    else
        respond(point, first->getMaterial(), second->getMaterial());
    return true;
}

/// A number for a part of an object, of parts of parts too; 0 for the whole.
int partOf(btCollisionObjectWrapper const& wrapper) {
    constexpr int most = 1 << 10;
    int number = 0;
    for (btCollisionObjectWrapper const* part = &wrapper; part->m_parent; part = part->m_parent)
        number = number * most + part->m_index + 1;
    return number;
}

/// Of a pair that comes near fast: what was near is no longer, but the forces go on.
class FormerManifolds {
public:
    explicit FormerManifolds(btCollisionAlgorithm& search) {
        for (btPersistentManifold* manifold : manifoldsOf(search)) {
            m_points.emplace(manifold, *manifold);
            manifold->clearManifold();
        }
    }

    void goOn(btCollisionAlgorithm& search) const {
        for (btPersistentManifold* manifold : manifoldsOf(search))
            if (auto const former = m_points.find(manifold); former != m_points.end())
                former->second.goOn(*manifold);
    }

private:
    static std::vector<btPersistentManifold*> manifoldsOf(btCollisionAlgorithm& search) {
        btManifoldArray known;
        search.getAllContactManifolds(known);
        std::vector<btPersistentManifold*> found;
        for (int i = 0; i < known.size(); ++i)
            found.push_back(known[i]);
        return found;
    }

    std::map<btPersistentManifold*, FormerContacts> m_points;
};

void forget(btBroadphasePair& pair, btCollisionDispatcher& dispatcher) {
    if (!pair.m_algorithm)
        return;
    pair.m_algorithm->~btCollisionAlgorithm();
    dispatcher.freeCollisionAlgorithm(pair.m_algorithm);
    pair.m_algorithm = nullptr;
}

} // namespace

bool partsMayCollide(btCollisionShape const* first, btCollisionShape const* second) {
    return Geometry::Implementation::mayCollide(hyxCollide::geometryOf(first), hyxCollide::geometryOf(second));
}

/// Further for bodies that come nearer in a step by a good part of their thickness: they must not pass through each
/// other.
double ContactDispatcher::reachOf(btCollisionObject const& first, btCollisionObject const& second) const {
    double const radius = smallerRadius(first, second);
    double const way = (velocityOf(first) - velocityOf(second)).length() * m_timeStep + turningWay(first, m_timeStep) +
                       turningWay(second, m_timeStep);
    double const harmless = harmlessWay * (carrierOf(&first).core + carrierOf(&second).core);
    return way > harmless ? std::max(usualReach(radius), 1.1 * way) : usualReach(radius);
}

ContactDispatcher::ContactDispatcher(btCollisionConfiguration* configuration) : btCollisionDispatcher(configuration) {
    gContactAddedCallback = contactAdded;
    setNearCallback(findContacts);
}

/// The manifold keeps the radius of the smaller body where bullet keeps a threshold that only its own solvers look at.
btPersistentManifold* ContactDispatcher::getNewManifold(btCollisionObject const* first,
                                                        btCollisionObject const* second) {
    btPersistentManifold* manifold = btCollisionDispatcher::getNewManifold(first, second);
    double const radius = smallerRadius(*first, *second);
    manifold->setContactProcessingThreshold(radius);
    manifold->setContactBreakingThreshold(reachOf(*first, *second));
    manifold->m_companionIdA = m_parts[first == m_entered ? 0 : 1];
    manifold->m_companionIdB = m_parts[first == m_entered ? 1 : 0];
    return manifold;
}

btCollisionAlgorithm* ContactDispatcher::findAlgorithm(btCollisionObjectWrapper const* first,
                                                       btCollisionObjectWrapper const* second,
                                                       btPersistentManifold* shared, ebtDispatcherQueryType type) {
    if (m_shared)
        return btCollisionDispatcher::findAlgorithm(first, second, m_shared, BT_CONTACT_POINT_ALGORITHMS);
    return btCollisionDispatcher::findAlgorithm(first, second, shared, type);
}

void ContactDispatcher::enter(btCollisionObjectWrapper const& first, btCollisionObjectWrapper const& second) {
    m_entered = first.getCollisionObject();
    m_parts[0] = partOf(first);
    m_parts[1] = partOf(second);
}

void ContactDispatcher::dispatchAllCollisionPairs(btOverlappingPairCache* pairs, btDispatcherInfo const& info,
                                                  btDispatcher* dispatcher) {
    m_timeStep = info.m_timeStep;
    for (int i = 0; i < getNumManifolds(); ++i) {
        btPersistentManifold& manifold = *getManifoldByIndexInternal(i);
        manifold.setContactBreakingThreshold(reachOf(*manifold.getBody0(), *manifold.getBody1()));
    }
    btCollisionDispatcher::dispatchAllCollisionPairs(pairs, info, dispatcher);
}

void ContactDispatcher::findContacts(btBroadphasePair& pair, btCollisionDispatcher& dispatcher,
                                     btDispatcherInfo const& info) {
    auto& first = *static_cast<btCollisionObject*>(pair.m_pProxy0->m_clientObject);
    auto& second = *static_cast<btCollisionObject*>(pair.m_pProxy1->m_clientObject);
    // Bullet keeps pairs for a while that no longer meet.
    if (!TestAabbAgainstAabb2(pair.m_pProxy0->m_aabbMin, pair.m_pProxy0->m_aabbMax, pair.m_pProxy1->m_aabbMin,
                              pair.m_pProxy1->m_aabbMax)) {
        forget(pair, dispatcher);
        return;
    }
    if (!dispatcher.needsCollision(&first, &second))
        return;
    btCollisionShape const& one = *first.getCollisionShape();
    btCollisionShape const& other = *second.getCollisionShape();
    double const radius = smallerRadius(first, second);
    double const reach = static_cast<ContactDispatcher&>(dispatcher).reachOf(first, second);
    bool const ahead = reach > usualReach(radius);
    btCollisionObjectWrapper const wrapped0(nullptr, &one, &first, first.getWorldTransform(), -1, -1);
    btCollisionObjectWrapper const wrapped1(nullptr, &other, &second, second.getWorldTransform(), -1, -1);
    static_cast<ContactDispatcher&>(dispatcher).enter(wrapped0, wrapped1);
    if (!pair.m_algorithm)
        pair.m_algorithm = dispatcher.findAlgorithm(&wrapped0, &wrapped1, nullptr, BT_CONTACT_POINT_ALGORITHMS);
    if (!pair.m_algorithm)
        return;
    btManifoldResult result(&wrapped0, &wrapped1);
    if (!ahead)
        return pair.m_algorithm->processCollision(&wrapped0, &wrapped1, info, &result);
    result.m_closestPointDistanceThreshold = reach;
    FormerManifolds const former(*pair.m_algorithm);
    pair.m_algorithm->processCollision(&wrapped0, &wrapped1, info, &result);
    former.goOn(*pair.m_algorithm);
}

bool ContactDispatcher::needsCollision(btCollisionObject const* first, btCollisionObject const* second) {
    return partsMayCollide(first->getCollisionShape(), second->getCollisionShape()) &&
           btCollisionDispatcher::needsCollision(first, second);
}

Geometry* geometryAt(btCollisionObject const* object, int index) {
    auto const& geometries = carrierOf(object).geometries;
    return index >= 0 && index < static_cast<int>(geometries.size()) ? geometries[index] : nullptr;
}

} // namespace hyx
