// The forces that contacts had before their points were found anew.
#pragma once

#include <BulletCollision/NarrowPhaseCollision/btPersistentManifold.h>

#include <algorithm>

namespace hyx {

/// Keeps the points of a manifold, for new ones to go on from the nearest of them.
class FormerContacts {
public:
    explicit FormerContacts(btPersistentManifold const& manifold) : m_number(manifold.getNumContacts()) {
        for (int i = 0; i < m_number; ++i)
            m_points[i] = manifold.getContactPoint(i);
    }

    /// From the given point of the manifold on.
    void goOn(btPersistentManifold& manifold, int start = 0) const {
        bool taken[MANIFOLD_CACHE_SIZE] = {};
        for (int i = start; i < manifold.getNumContacts(); ++i) {
            btManifoldPoint& point = manifold.getContactPoint(i);
            int nearest = -1;
            for (int k = 0; k < m_number; ++k)
                if (!taken[k] && (nearest < 0 || distance2(point, k) < distance2(point, nearest)))
                    nearest = k;
            if (nearest < 0)
                return;
            taken[nearest] = true;
            btManifoldPoint const& found = m_points[nearest];
            point.m_appliedImpulse = found.m_appliedImpulse;
            point.m_appliedImpulseLateral1 = found.m_appliedImpulseLateral1;
            point.m_appliedImpulseLateral2 = found.m_appliedImpulseLateral2;
            point.m_prevRHS = found.m_prevRHS;
        }
    }

private:
    double distance2(btManifoldPoint const& point, int former) const {
        return m_points[former].m_positionWorldOnB.distance2(point.m_positionWorldOnB);
    }

    btManifoldPoint m_points[MANIFOLD_CACHE_SIZE];
    int m_number;
};

} // namespace hyx
