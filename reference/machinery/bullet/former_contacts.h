// The forces that contacts had before their points were found anew.
#pragma once

#include <BulletCollision/NarrowPhaseCollision/btPersistentManifold.h>

#include <utility>

namespace hyx {

/// Keeps the points of a manifold, for new ones to go on from the nearest of them.
class FormerContacts {
public:
    FormerContacts() = default;

    explicit FormerContacts(btPersistentManifold const& manifold) : m_number(manifold.getNumContacts()) {
        for (int i = 0; i < m_number; ++i)
            m_points[i] = FormerPoint(manifold.getContactPoint(i));
    }

    /// From the given point of the manifold on; those before it have their forces. Points keep their order, as rounds
    /// that end early depend on it.
    void goOn(btPersistentManifold& manifold, int start = 0) const {
        int place = start;
        for (int k = 0; k < m_number && place < manifold.getNumContacts(); ++k) {
            int const nearest = nearestOf(manifold, place, manifold.getNumContacts(), k);
            btManifoldPoint& point = manifold.getContactPoint(place);
            if (nearest != place)
                std::swap(point, manifold.getContactPoint(nearest));
            m_points[k].goOn(point);
            ++place;
        }
    }

private:
    struct FormerPoint {
        FormerPoint() = default;

        explicit FormerPoint(btManifoldPoint const& point)
            : place(point.m_positionWorldOnB),
              impulse(point.m_appliedImpulse),
              lateral{point.m_appliedImpulseLateral1, point.m_appliedImpulseLateral2},
              torsion(point.m_prevRHS) {}

        void goOn(btManifoldPoint& point) const {
            point.m_appliedImpulse = impulse;
            point.m_appliedImpulseLateral1 = lateral[0];
            point.m_appliedImpulseLateral2 = lateral[1];
            point.m_prevRHS = torsion;
        }

        btVector3 place;
        double impulse;
        double lateral[2];
        double torsion;
    };

    double distance2(btManifoldPoint const& point, int former) const {
        return m_points[former].place.distance2(point.m_positionWorldOnB);
    }

    /// Of the points from `start` to before `end`; `start` where there are none.
    int nearestOf(btPersistentManifold const& manifold, int start, int end, int former) const {
        int nearest = start;
        for (int i = start + 1; i < end; ++i)
            if (distance2(manifold.getContactPoint(i), former) < distance2(manifold.getContactPoint(nearest), former))
                nearest = i;
        return nearest;
    }

    FormerPoint m_points[MANIFOLD_CACHE_SIZE];
    int m_number = 0;
};

} // namespace hyx
