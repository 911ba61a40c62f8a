// Contacts that are found anew in each step.
#pragma once

#include "reference/machinery/bullet/former_contacts.h"

#include <BulletCollision/BroadphaseCollision/btCollisionAlgorithm.h>
#include <BulletCollision/CollisionDispatch/btCollisionCreateFunc.h>
#include <BulletCollision/CollisionDispatch/btCollisionDispatcher.h>
#include <BulletCollision/CollisionDispatch/btCollisionObjectWrapper.h>
#include <BulletCollision/CollisionDispatch/btManifoldResult.h>

namespace hyx {

/// Has all points of a pair found by `Find`, called with both objects, the result and how near points count. Their
/// forces go on from the points that were nearest to them.
template <class Find>
class FreshContacts : public btCollisionAlgorithm {
public:
    FreshContacts(btCollisionAlgorithmConstructionInfo const& info, btCollisionObjectWrapper const* first,
                  btCollisionObjectWrapper const* second, bool swapped)
        : btCollisionAlgorithm(info),
          m_manifold(info.m_manifold
                         ? info.m_manifold
                         : m_dispatcher->getNewManifold(first->getCollisionObject(), second->getCollisionObject())),
          m_owned(!info.m_manifold),
          m_swapped(swapped) {}

    ~FreshContacts() override {
        if (m_owned)
            m_dispatcher->releaseManifold(m_manifold);
    }

    void processCollision(btCollisionObjectWrapper const* first, btCollisionObjectWrapper const* second,
                          btDispatcherInfo const&, btManifoldResult* result) override {
        result->setPersistentManifold(m_manifold);
        FormerContacts const former(*m_manifold);
        m_manifold->clearManifold();
        m_find(m_swapped ? *second : *first, m_swapped ? *first : *second, m_swapped, *result,
               m_manifold->getContactBreakingThreshold());
        former.goOn(*m_manifold);
    }

    btScalar calculateTimeOfImpact(btCollisionObject*, btCollisionObject*, btDispatcherInfo const&,
                                   btManifoldResult*) override {
        return 1;
    }

    void getAllContactManifolds(btManifoldArray& manifolds) override {
        if (m_owned)
            manifolds.push_back(m_manifold);
    }

    struct Creation : btCollisionAlgorithmCreateFunc {
        explicit Creation(bool swapped) { m_swapped = swapped; }

        btCollisionAlgorithm* CreateCollisionAlgorithm(btCollisionAlgorithmConstructionInfo& info,
                                                       btCollisionObjectWrapper const* first,
                                                       btCollisionObjectWrapper const* second) override {
            void* memory = info.m_dispatcher1->allocateCollisionAlgorithm(sizeof(FreshContacts));
            return new (memory) FreshContacts(info, first, second, m_swapped);
        }
    };

private:
    /// May keep what makes its next search shorter, and never what it finds.
    Find m_find;
    btPersistentManifold* m_manifold;
    bool m_owned;
    bool m_swapped;
};

} // namespace hyx
