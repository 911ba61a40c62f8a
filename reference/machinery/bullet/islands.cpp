// Finds who pushes or holds whom.
#include "reference/machinery/bullet/islands.h"

#include <BulletCollision/NarrowPhaseCollision/btPersistentManifold.h>
#include <BulletDynamics/Dynamics/btRigidBody.h>

#include <algorithm>
#include <numeric>

namespace hyx {

namespace {

class IslandSearch {
public:
    explicit IslandSearch(std::vector<MovingBody>& bodies)
        : m_bodies(bodies), m_parents(bodies.size()), m_numbers(bodies.size(), -1) {
        std::iota(m_parents.begin(), m_parents.end(), 0);
    }

    void unite(MovingBody const& first, MovingBody const& second) {
        if (first.isFree() && second.isFree())
            m_parents[rootOf(first)] = rootOf(second);
    }

    Island& islandOf(MovingBody const& body) {
        int& number = m_numbers[rootOf(body)];
        if (number < 0) {
            number = static_cast<int>(m_islands.size());
            m_islands.emplace_back();
        }
        return m_islands[number];
    }

    std::vector<Island> finish() {
        Island alone;
        std::vector<char> driven(m_bodies.size());
        for (Island& island : m_islands) {
            std::sort(island.bodies.begin(), island.bodies.end());
            island.bodies.erase(std::unique(island.bodies.begin(), island.bodies.end()), island.bodies.end());
            for (MovingBody const* body : island.bodies)
                driven[body - m_bodies.data()] = 1;
        }
        for (std::size_t i = 1; i < m_bodies.size(); ++i)
            if (int const number = m_bodies[i].isFree() ? m_numbers[rootOf(m_bodies[i])] : -1; number >= 0)
                m_islands[number].bodies.push_back(&m_bodies[i]);
            else if (!driven[i])
                alone.bodies.push_back(&m_bodies[i]);
        m_islands.push_back(std::move(alone));
        return std::move(m_islands);
    }

private:
    int rootOf(MovingBody const& body) {
        int root = static_cast<int>(&body - m_bodies.data());
        while (m_parents[root] != root)
            root = m_parents[root] = m_parents[m_parents[root]];
        return root;
    }

    std::vector<MovingBody>& m_bodies;
    std::vector<int> m_parents;
    /// Of the islands, at their roots.
    std::vector<int> m_numbers;
    std::vector<Island> m_islands;
};

void addDriven(Island& island, MovingBody& body) {
    if (body.bullet && !body.isFree())
        island.bodies.push_back(&body);
}

/// Each has one.
MovingBody const& freeOf(Mechanism const& mechanism) {
    auto const& bodies = mechanism.bodies();
    return **std::find_if(bodies.begin(), bodies.end(), [](MovingBody const* body) { return body->isFree(); });
}

} // namespace

MovingBody& movingBody(btCollisionObject const* object, std::vector<MovingBody>& bodies) {
    // Bullet's own solvers number bodies in the same way.
    return bodies[btRigidBody::upcast(object) ? std::max(object->getCompanionId(), 0) : 0];
}

std::vector<Island> findIslands(std::vector<MovingBody>& bodies, std::vector<btPersistentManifold*> const& manifolds,
                                std::vector<std::unique_ptr<Mechanism>> const& mechanisms) {
    IslandSearch search(bodies);
    for (btPersistentManifold const* manifold : manifolds)
        search.unite(movingBody(manifold->getBody0(), bodies), movingBody(manifold->getBody1(), bodies));
    for (auto const& mechanism : mechanisms)
        for (MovingBody const* body : mechanism->bodies())
            search.unite(freeOf(*mechanism), *body);
    for (btPersistentManifold* manifold : manifolds) {
        MovingBody& first = movingBody(manifold->getBody0(), bodies);
        MovingBody& second = movingBody(manifold->getBody1(), bodies);
        if (!first.isFree() && !second.isFree())
            continue;
        Island& island = search.islandOf(first.isFree() ? first : second);
        island.manifolds.push_back(manifold);
        addDriven(island, first);
        addDriven(island, second);
    }
    for (auto const& mechanism : mechanisms) {
        Island& island = search.islandOf(freeOf(*mechanism));
        island.mechanisms.push_back(mechanism.get());
        for (MovingBody* body : mechanism->bodies())
            addDriven(island, *body);
    }
    return search.finish();
}

} // namespace hyx
