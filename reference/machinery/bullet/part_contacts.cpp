// One search for each part of a compound that is near.
#include "reference/machinery/bullet/part_contacts.h"

#include "reference/machinery/bullet/contact_response.h"

#include <BulletCollision/BroadphaseCollision/btCollisionAlgorithm.h>
#include <BulletCollision/CollisionDispatch/btCollisionCreateFunc.h>
#include <BulletCollision/CollisionDispatch/btCollisionObjectWrapper.h>
#include <BulletCollision/CollisionDispatch/btManifoldResult.h>
#include <BulletCollision/CollisionShapes/btCompoundShape.h>
#include <LinearMath/btAabbUtil2.h>

#include <vector>

namespace hyx {

namespace {

class PartsAlgorithm : public btCollisionAlgorithm {
public:
    PartsAlgorithm(btCollisionAlgorithmConstructionInfo const& info, bool swapped)
        : btCollisionAlgorithm(info), m_swapped(swapped) {}

    ~PartsAlgorithm() override { forgetAll(); }

    void processCollision(btCollisionObjectWrapper const* first, btCollisionObjectWrapper const* second,
                          btDispatcherInfo const& info, btManifoldResult* result) override {
        btCollisionObjectWrapper const& whole = m_swapped ? *second : *first;
        btCollisionObjectWrapper const& other = m_swapped ? *first : *second;
        auto const& compound = static_cast<btCompoundShape const&>(*whole.getCollisionShape());
        if (m_revision != compound.getUpdateRevision()) {
            forgetAll();
            m_revision = compound.getUpdateRevision();
        }
        m_searches.resize(compound.getNumChildShapes());
        double const reach = static_cast<ContactDispatcher*>(m_dispatcher)
                                 ->reachOf(*whole.getCollisionObject(), *other.getCollisionObject());
        Bounds around;
        other.getCollisionShape()->getAabb(other.getWorldTransform(), around.lower, around.upper);
        around.lower -= btVector3(reach, reach, reach);
        around.upper += btVector3(reach, reach, reach);
        for (int i = 0; i < compound.getNumChildShapes(); ++i)
            findAt(i, compound, whole, other, around, info, *result);
    }

    btScalar calculateTimeOfImpact(btCollisionObject*, btCollisionObject*, btDispatcherInfo const&,
                                   btManifoldResult*) override {
        return 1;
    }

    void getAllContactManifolds(btManifoldArray& manifolds) override {
        for (btCollisionAlgorithm* search : m_searches)
            if (search)
                search->getAllContactManifolds(manifolds);
    }

private:
    struct Bounds {
        btVector3 lower;
        btVector3 upper;
    };

    void findAt(int index, btCompoundShape const& compound, btCollisionObjectWrapper const& whole,
                btCollisionObjectWrapper const& other, Bounds const& around, btDispatcherInfo const& info,
                btManifoldResult& result) {
        btCollisionShape const* const shape = compound.getChildShape(index);
        btTransform const place = whole.getWorldTransform() * compound.getChildTransform(index);
        Bounds own;
        shape->getAabb(place, own.lower, own.upper);
        btCollisionAlgorithm*& search = m_searches[index];
        if (!partsMayCollide(other.getCollisionShape(), shape) ||
            !TestAabbAgainstAabb2(own.lower, own.upper, around.lower, around.upper)) {
            forget(search);
            return;
        }
        btCollisionObjectWrapper const part(&whole, shape, whole.getCollisionObject(), place,
                                            compound.getChildTransform(index), -1, index);
        static_cast<ContactDispatcher*>(m_dispatcher)->enter(part, other);
        if (!search)
            search = m_dispatcher->findAlgorithm(&part, &other, nullptr, BT_CONTACT_POINT_ALGORITHMS);
        // The result tells the hook of contacts which parts touch.
        if (result.getBody0Internal() == whole.getCollisionObject()) {
            btCollisionObjectWrapper const* const former = result.getBody0Wrap();
            result.setBody0Wrap(&part);
            search->processCollision(&part, &other, info, &result);
            result.setBody0Wrap(former);
        } else {
            btCollisionObjectWrapper const* const former = result.getBody1Wrap();
            result.setBody1Wrap(&part);
            search->processCollision(&part, &other, info, &result);
            result.setBody1Wrap(former);
        }
    }

    void forget(btCollisionAlgorithm*& search) {
        if (!search)
            return;
        search->~btCollisionAlgorithm();
        m_dispatcher->freeCollisionAlgorithm(search);
        search = nullptr;
    }

    void forgetAll() {
        for (btCollisionAlgorithm*& search : m_searches)
            forget(search);
    }

    std::vector<btCollisionAlgorithm*> m_searches;
    int m_revision = -1;
    bool m_swapped;
};

struct Creation : btCollisionAlgorithmCreateFunc {
    explicit Creation(bool swapped) { m_swapped = swapped; }

    btCollisionAlgorithm* CreateCollisionAlgorithm(btCollisionAlgorithmConstructionInfo& info,
                                                   btCollisionObjectWrapper const*,
                                                   btCollisionObjectWrapper const*) override {
        return new (info.m_dispatcher1->allocateCollisionAlgorithm(sizeof(PartsAlgorithm)))
            PartsAlgorithm(info, m_swapped);
    }
};

} // namespace

void registerPartContacts(btCollisionDispatcher& dispatcher) {
    static Creation wholeFirst(false);
    static Creation wholeSecond(true);
    for (int type = 0; type < MAX_BROADPHASE_COLLISION_TYPES; ++type) {
        dispatcher.registerCollisionCreateFunc(type, COMPOUND_SHAPE_PROXYTYPE, &wholeSecond);
        dispatcher.registerCollisionCreateFunc(COMPOUND_SHAPE_PROXYTYPE, type, &wholeFirst);
    }
}

} // namespace hyx
