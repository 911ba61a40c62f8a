// The rims of cylinders and cones over the faces of boxes, and bullet's search for the rest.
#include "reference/machinery/bullet/flat_end_contacts.h"

#include "reference/machinery/bullet/former_contacts.h"
#include "reference/machinery/bullet/low_points.h"

#include <BulletCollision/CollisionDispatch/btCollisionDispatcher.h>
#include <BulletCollision/CollisionDispatch/btCollisionObjectWrapper.h>
#include <BulletCollision/CollisionDispatch/btConvexConvexAlgorithm.h>
#include <BulletCollision/CollisionDispatch/btManifoldResult.h>
#include <BulletCollision/CollisionShapes/btBoxShape.h>
#include <BulletCollision/NarrowPhaseCollision/btGjkEpaPenetrationDepthSolver.h>

#include <cmath>
#include <utility>
#include <vector>

namespace hyx {

namespace {

constexpr double sameDirection = 0.999;
/// Bullet looks for further points by turning the bodies a little, this many times where there are fewer.
constexpr int numTurns = 4;

struct Low {
    btVector3 point;
    double distance;
};

class FlatEndAlgorithm : public btConvexConvexAlgorithm {
public:
    FlatEndAlgorithm(btCollisionAlgorithmConstructionInfo const& info, btCollisionObjectWrapper const* first,
                     btCollisionObjectWrapper const* second, btConvexPenetrationDepthSolver* depth)
        : btConvexConvexAlgorithm(info.m_manifold, info, first, second, depth, numTurns, numTurns) {}

    void processCollision(btCollisionObjectWrapper const* first, btCollisionObjectWrapper const* second,
                          btDispatcherInfo const& info, btManifoldResult* result) override {
        btPersistentManifold const* known = getManifold();
        FormerContacts const former = known ? FormerContacts(*known) : FormerContacts();
        btConvexConvexAlgorithm::processCollision(first, second, info, result);
        btPersistentManifold* manifold = result->getPersistentManifold();
        bool const boxFirst = first->getCollisionShape()->getShapeType() == BOX_SHAPE_PROXYTYPE;
        if (!manifold || manifold->getNumContacts() == 0 ||
            boxFirst == (second->getCollisionShape()->getShapeType() == BOX_SHAPE_PROXYTYPE))
            return;
        // Bullet's normals lead from the second object to the first.
        btVector3 const out = manifold->getContactPoint(0).m_normalWorldOnB * (boxFirst ? -1 : 1);
        double const reach = manifold->getContactBreakingThreshold();
        btVector3 normal;
        std::vector<Low> const lows =
            boxFirst ? lowsOver(*first, *second, out, reach, normal) : lowsOver(*second, *first, out, reach, normal);
        if (lows.size() < 3)
            return;
        manifold->clearManifold();
        for (auto const& [point, distance] : lows)
            result->addContactPoint(boxFirst ? -normal : normal, boxFirst ? point : point - normal * distance,
                                    distance);
        former.goOn(*manifold);
    }

private:
    /// Those of the other solid's low points that lie near the box's face in a direction, and over it; without that
    /// direction being the face's, none.
    static std::vector<Low> lowsOver(btCollisionObjectWrapper const& box, btCollisionObjectWrapper const& solid,
                                     btVector3 const& out, double reach, btVector3& normal) {
        btTransform const place = box.getWorldTransform().inverse() * solid.getWorldTransform();
        btVector3 const half = static_cast<btBoxShape const&>(*box.getCollisionShape()).getHalfExtentsWithMargin();
        btVector3 const local = out * box.getWorldTransform().getBasis();
        int const axis = local.absolute().maxAxis();
        std::vector<Low> found;
        if (std::abs(local[axis]) < sameDirection)
            return found;
        double const side = local[axis] < 0 ? -1 : 1;
        btVector3 face(0, 0, 0);
        face[axis] = side;
        for (btVector3 const& low : lowPoints(*solid.getCollisionShape(), -face * place.getBasis())) {
            btVector3 const point = place * low;
            double const distance = side * point[axis] - half[axis];
            bool const over = std::abs(point[(axis + 1) % 3]) <= half[(axis + 1) % 3] &&
                              std::abs(point[(axis + 2) % 3]) <= half[(axis + 2) % 3];
            if (over && distance < reach && distance > -half[axis])
                found.push_back({box.getWorldTransform() * point, distance});
        }
        normal = box.getWorldTransform().getBasis() * face;
        return found;
    }
};

struct FlatEndCreation : btCollisionAlgorithmCreateFunc {
    btCollisionAlgorithm* CreateCollisionAlgorithm(btCollisionAlgorithmConstructionInfo& info,
                                                   btCollisionObjectWrapper const* first,
                                                   btCollisionObjectWrapper const* second) override {
        void* memory = info.m_dispatcher1->allocateCollisionAlgorithm(sizeof(FlatEndAlgorithm));
        return new (memory) FlatEndAlgorithm(info, first, second, &depth);
    }

    btGjkEpaPenetrationDepthSolver depth;
};

} // namespace

void registerFlatEndContacts(btCollisionDispatcher& dispatcher) {
    static FlatEndCreation creation;
    for (int round : {CYLINDER_SHAPE_PROXYTYPE, CONE_SHAPE_PROXYTYPE})
        for (int other :
             {BOX_SHAPE_PROXYTYPE, CYLINDER_SHAPE_PROXYTYPE, CONE_SHAPE_PROXYTYPE, CONVEX_HULL_SHAPE_PROXYTYPE}) {
            dispatcher.registerCollisionCreateFunc(round, other, &creation);
            dispatcher.registerCollisionCreateFunc(other, round, &creation);
        }
}

} // namespace hyx
