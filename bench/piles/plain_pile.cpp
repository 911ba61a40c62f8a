// Bullet's turn, as a plain program: reads rows of x, y, z, qx, qy, qz, qw, and prints them after each part.
#include <btBulletDynamicsCommon.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <vector>

int main(int count, char** arguments) {
    if (count < 7)
        return 2;
    double const half = std::atof(arguments[1]), density = std::atof(arguments[2]), friction = std::atof(arguments[3]),
                 step = std::atof(arguments[4]);
    int const steps = std::atoi(arguments[5]), parts = std::atoi(arguments[6]);
    btDefaultCollisionConfiguration configuration;
    btCollisionDispatcher dispatcher(&configuration);
    btDbvtBroadphase broadphase;
    btSequentialImpulseConstraintSolver solver;
    btDiscreteDynamicsWorld world(&dispatcher, &broadphase, &solver, &configuration);
    world.setGravity(btVector3(0, 0, -9.81));
    btStaticPlaneShape plane(btVector3(0, 0, 1), 0);
    btBoxShape shape(btVector3(half, half, half));
    double const mass = density * 8 * half * half * half;
    btVector3 inertia;
    shape.calculateLocalInertia(mass, inertia);
    std::vector<std::unique_ptr<btRigidBody>> bodies;
    auto const add = [&](double weight, btCollisionShape& form, btTransform const& place) {
        btRigidBody::btRigidBodyConstructionInfo info(weight, nullptr, &form,
                                                      weight > 0 ? inertia : btVector3(0, 0, 0));
        info.m_startWorldTransform = place;
        info.m_friction = std::sqrt(friction); // Bullet multiplies the coefficients of two bodies
        bodies.push_back(std::make_unique<btRigidBody>(info));
        world.addRigidBody(bodies.back().get());
    };
    add(0, plane, btTransform::getIdentity());
    double p[7];
    while (std::scanf("%lf%lf%lf%lf%lf%lf%lf", p, p + 1, p + 2, p + 3, p + 4, p + 5, p + 6) == 7)
        add(mass, shape, btTransform(btQuaternion(p[3], p[4], p[5], p[6]), btVector3(p[0], p[1], p[2])));
    double taken = 0;
    for (int part = 0; part < parts; ++part) {
        std::clock_t const start = std::clock();
        for (int i = 0; i < steps; ++i)
            world.stepSimulation(step, 1, step);
        taken += static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
        for (std::size_t i = 1; i < bodies.size(); ++i) {
            btTransform const& place = bodies[i]->getWorldTransform();
            btQuaternion const q = place.getRotation();
            btVector3 const& at = place.getOrigin();
            std::printf("%g %g %g %g %g %g %g %g\n", at.x(), at.y(), at.z(), q.x(), q.y(), q.z(), q.w(),
                        bodies[i]->getLinearVelocity().length());
        }
    }
    std::printf("%g\n", steps * parts / taken);
    for (auto const& body : bodies)
        world.removeRigidBody(body.get());
}
