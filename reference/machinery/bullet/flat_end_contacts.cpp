// The rims and sides of round solids over the faces of boxes, and bullet's search for the rest.
#include "reference/machinery/bullet/flat_end_contacts.h"

#include "reference/machinery/bullet/contact_points.h"
#include "reference/machinery/bullet/former_contacts.h"
#include "reference/machinery/bullet/low_points.h"

#include <BulletCollision/CollisionDispatch/btCollisionDispatcher.h>
#include <BulletCollision/CollisionDispatch/btCollisionObjectWrapper.h>
#include <BulletCollision/CollisionDispatch/btConvexConvexAlgorithm.h>
#include <BulletCollision/CollisionDispatch/btManifoldResult.h>
#include <BulletCollision/CollisionShapes/btBoxShape.h>
#include <BulletCollision/NarrowPhaseCollision/btGjkEpaPenetrationDepthSolver.h>

#include <algorithm>
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
        if (lows.empty())
            return;
        manifold->clearManifold();
        for (auto const& [point, distance] : lows)
            addPoint(*result, boxFirst ? -normal : normal, boxFirst ? point : point - normal * distance, distance);
        former.goOn(*manifold);
    }

private:
    /// Where the other solid may touch the box's face in a direction; without that direction being the face's, nowhere.
    static std::vector<Low> lowsOver(btCollisionObjectWrapper const& box, btCollisionObjectWrapper const& solid,
                                     btVector3 const& out, double reach, btVector3& normal) {
        btTransform const place = box.getWorldTransform().inverse() * solid.getWorldTransform();
        btVector3 const half = static_cast<btBoxShape const&>(*box.getCollisionShape()).getHalfExtentsWithMargin();
        btVector3 const local = out * box.getWorldTransform().getBasis();
        int const axis = local.absolute().maxAxis();
        if (std::abs(local[axis]) < sameDirection)
            return {};
        double const side = local[axis] < 0 ? -1 : 1;
        btVector3 face(0, 0, 0);
        face[axis] = side;
        normal = box.getWorldTransform().getBasis() * face;
        std::vector<Low> near;
        for (btVector3 const& low : lowPoints(*solid.getCollisionShape(), -face * place.getBasis())) {
            btVector3 const point = place * low;
            double const distance = side * point[axis] - half[axis];
            if (distance < reach && distance > -half[axis])
                near.push_back({point, distance});
        }
        // Before a fast body all of it is near.
        std::stable_sort(near.begin(), near.end(), [](Low const& a, Low const& b) { return a.distance < b.distance; });
        if (near.size() > MANIFOLD_CACHE_SIZE)
            near.resize(MANIFOLD_CACHE_SIZE);
        keepOver(near, half, axis);
        for (Low& low : near)
            low.point = box.getWorldTransform() * low.point;
        return near;
    }

    /// Leaves what lies over the face; nothing where more would bear than the points.
    static void keepOver(std::vector<Low>& near, btVector3 const& half, int axis) {
        std::size_t const all = near.size();
        if (all == 2) { // the ends of the side on which the solid lies
            near = partOver(near[0], near[1], half, axis);
            return;
        }
        std::erase_if(near, [&](Low const& low) { return !isOver(low.point, half, axis); });
        if (near.size() < std::min<std::size_t>(all, 3))
            near.clear();
    }

    static bool isOver(btVector3 const& point, btVector3 const& half, int axis) {
        return std::abs(point[(axis + 1) % 3]) <= half[(axis + 1) % 3] &&
               std::abs(point[(axis + 2) % 3]) <= half[(axis + 2) % 3];
    }

    /// The ends of the part of a line that lies over the face.
    static std::vector<Low> partOver(Low const& start, Low const& end, btVector3 const& half, int axis) {
        btVector3 const way = end.point - start.point;
        double first = 0;
        double last = 1;
        for (int across : {(axis + 1) % 3, (axis + 2) % 3}) {
            if (way[across] == 0)
                continue;
            double const one = (-half[across] - start.point[across]) / way[across];
            double const other = (half[across] - start.point[across]) / way[across];
            first = std::max(first, std::min(one, other));
            last = std::min(last, std::max(one, other));
        }
        if (first >= last)
            return {};
        auto const at = [&](double share) {
            return Low{start.point + way * share, start.distance + share * (end.distance - start.distance)};
        };
        return {at(first), at(last)};
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
    for (int round : {CYLINDER_SHAPE_PROXYTYPE, CONE_SHAPE_PROXYTYPE, CAPSULE_SHAPE_PROXYTYPE})
        for (int other :
             {BOX_SHAPE_PROXYTYPE, CYLINDER_SHAPE_PROXYTYPE, CONE_SHAPE_PROXYTYPE, CONVEX_HULL_SHAPE_PROXYTYPE}) {
            dispatcher.registerCollisionCreateFunc(round, other, &creation);
            dispatcher.registerCollisionCreateFunc(other, round, &creation);
        }
}

} // namespace hyx
