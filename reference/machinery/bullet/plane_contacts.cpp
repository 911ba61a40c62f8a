// Closed forms of the contact of solids with planes.
#include "reference/machinery/bullet/plane_contacts.h"

#include "reference/machinery/bullet/contact_points.h"
#include "reference/machinery/bullet/fresh_contacts.h"
#include "reference/machinery/bullet/low_points.h"

#include <BulletCollision/CollisionShapes/btStaticPlaneShape.h>

namespace hyx {

namespace {

struct FindOnPlane {
    void operator()(btCollisionObjectWrapper const& solid, btCollisionObjectWrapper const& flat, bool swapped,
                    btManifoldResult& result, double reach) const {
        auto const& plane = static_cast<btStaticPlaneShape const&>(*flat.getCollisionShape());
        btVector3 const normal = flat.getWorldTransform().getBasis() * plane.getPlaneNormal();
        double const height = plane.getPlaneConstant() + normal.dot(flat.getWorldTransform().getOrigin());
        btTransform const& place = solid.getWorldTransform();
        for (btVector3 const& low : lowPoints(*solid.getCollisionShape(), -normal * place.getBasis())) {
            btVector3 const point = place * low;
            double const distance = normal.dot(point) - height;
            if (distance < reach)
                addPoint(result, swapped ? -normal : normal, swapped ? point : point - normal * distance, distance);
        }
    }
};

} // namespace

void registerPlaneContacts(btCollisionDispatcher& dispatcher) {
    static FreshContacts<FindOnPlane>::Creation solidFirst(false);
    static FreshContacts<FindOnPlane>::Creation planeFirst(true);
    for (int type : {BOX_SHAPE_PROXYTYPE, SPHERE_SHAPE_PROXYTYPE, CAPSULE_SHAPE_PROXYTYPE, CYLINDER_SHAPE_PROXYTYPE,
                     CONE_SHAPE_PROXYTYPE, CONVEX_HULL_SHAPE_PROXYTYPE}) {
        dispatcher.registerCollisionCreateFunc(type, STATIC_PLANE_PROXYTYPE, &solidFirst);
        dispatcher.registerCollisionCreateFunc(STATIC_PLANE_PROXYTYPE, type, &planeFirst);
    }
}

} // namespace hyx
