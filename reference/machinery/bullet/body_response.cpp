// Pushes bodies one by one to see what follows.
#include "reference/machinery/bullet/body_response.h"

#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/physics_world.h"
#include "reference/machinery/bullet/rigid_body_implementation.h"
#include "reference/machinery/bullet/step_solver.h"

#include <BulletDynamics/Dynamics/btDiscreteDynamicsWorld.h>

#include <algorithm>
#include <map>

namespace hyx {

namespace {

void letStand(Mechanism const& mechanism) {
    for (MovingBody* body : mechanism.bodies())
        body->velocity = body->spin = btVector3(0, 0, 0);
}

void putSpeeds(MovingBody const& body, double* column, std::size_t stride) {
    for (int i = 0; i < 3; ++i) {
        column[i * stride] = body.velocity[i];
        column[(i + 3) * stride] = body.spin[i];
    }
}

void pushAlong(MovingBody& body, int direction) {
    btVector3 impulse(0, 0, 0);
    impulse[direction % 3] = 1;
    if (direction < 3)
        body.velocity = impulse * body.inverseMass;
    else
        body.spin = body.inverseInertia * impulse;
}

} // namespace

BodyResponse StepSolver::respond(btDiscreteDynamicsWorld& world,
                                 std::vector<Constraint::Implementation*> const& constraints,
                                 std::vector<btRigidBody const*> const& bodies, double step) {
    takeBodies(world);
    takeMechanisms(constraints);
    std::size_t const size = 6 * bodies.size();
    BodyResponse response{std::vector<double>(size * size), std::vector<double>(size)};
    std::vector<MovingBody*> moving;
    std::vector<Mechanism*> mechanisms;
    for (btRigidBody const* bullet : bodies) {
        moving.push_back(&m_bodies[std::max(bullet->getCompanionId(), 0)]);
        auto const joined = std::find_if(m_mechanisms.begin(), m_mechanisms.end(), [&](auto const& mechanism) {
            auto const& members = mechanism->bodies();
            return std::find(members.begin(), members.end(), moving.back()) != members.end();
        });
        mechanisms.push_back(joined == m_mechanisms.end() ? nullptr : joined->get());
    }
    for (std::size_t i = 0; i < bodies.size(); ++i) {
        MovingBody& body = *moving[i];
        if (!body.isFree())
            continue;
        Mechanism* const mechanism = mechanisms[i];
        bool const first = std::find(mechanisms.begin(), mechanisms.begin() + i, mechanism) == mechanisms.begin() + i;
        if (mechanism && first) {
            mechanism->aimAtPlaces(step, step); // from where springs count their way
            mechanism->aimAtSpeeds(step, step);
            mechanism->holdAsNow();
        }
        for (int direction = 0; direction <= 6; ++direction) {
            body.velocity = body.spin = btVector3(0, 0, 0);
            if (mechanism)
                letStand(*mechanism);
            if (direction < 6)
                pushAlong(body, direction);
            else if (mechanism)
                for (MovingBody* member : mechanism->bodies())
                    member->accelerate(1);
            else
                body.accelerate(1);
            if (mechanism)
                mechanism->letFollow();
            if (direction == 6)
                putSpeeds(body, &response.acceleration[6 * i], 1);
            else
                for (std::size_t j = 0; j < bodies.size(); ++j)
                    if (j == i || (mechanism && mechanisms[j] == mechanism))
                        putSpeeds(*moving[j], &response.mobility[6 * j * size + 6 * i + direction], size);
        }
    }
    return response;
}

/// By its mass alone.
BodyResponse respondAlone(RigidBody const& body, Vec3 const& gravity) {
    BodyResponse response{std::vector<double>(36), {gravity.x, gravity.y, gravity.z, 0, 0, 0}};
    btMatrix3x3 const& inverse = body.implementation().bullet.getInvInertiaTensorWorld();
    for (int i = 0; i < 3; ++i) {
        response.mobility[7 * i] = 1 / body.getMass();
        for (int j = 0; j < 3; ++j)
            response.mobility[6 * (i + 3) + j + 3] = inverse[i][j];
    }
    return response;
}

BodyResponse respond(std::vector<RigidBody*> const& bodies, Vec3 const& gravity, Real timeStep) {
    std::map<PhysicsWorld*, std::vector<std::size_t>> groups;
    for (std::size_t i = 0; i < bodies.size(); ++i)
        groups[bodies[i]->implementation().carrier.world].push_back(i);
    std::size_t const size = 6 * bodies.size();
    BodyResponse all{std::vector<double>(size * size), std::vector<double>(size)};
    auto const place = [&](BodyResponse const& part, std::vector<std::size_t> const& members) {
        for (std::size_t r = 0; r < 6 * members.size(); ++r) {
            std::size_t const row = 6 * members[r / 6] + r % 6;
            all.acceleration[row] = part.acceleration[r];
            for (std::size_t c = 0; c < 6 * members.size(); ++c)
                all.mobility[row * size + 6 * members[c / 6] + c % 6] = part.mobility[r * 6 * members.size() + c];
        }
    };
    for (auto const& [world, members] : groups) {
        std::vector<RigidBody*> group;
        for (std::size_t const i : members)
            group.push_back(bodies[i]);
        if (world)
            place(world->respond(group, timeStep), members);
        for (std::size_t k = 0; !world && k < members.size(); ++k)
            place(respondAlone(*group[k], gravity), {members[k]});
    }
    return all;
}

} // namespace hyx
