"""Grains and emitters: piles carry their weight, friction holds, emitters keep their rate."""

import math

import hyx
import hyxCollide
import hyxSDK
import pytest
from physics_scene import GRAVITY

STEP = 1 / 60


def floor():
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Plane()))
    body.setMotionControl(hyx.RigidBody.STATIC)
    return body


def grains_on_floor():
    grains = hyx.ParticleSystem()
    grains.addObstacle(floor())
    return grains


def run(grains, steps):
    for _ in range(steps):
        grains.step(STEP)


def test_a_grain_falls_as_fast_as_it_should():
    grains = hyx.ParticleSystem()
    ident = grains.createParticle(hyx.Vec3(0, 0, 10), hyx.Vec3(1, 0, 0))
    run(grains, 60)
    grain = grains.getParticle(ident)
    assert grain.velocity.z == pytest.approx(-GRAVITY)
    assert grain.position.z == pytest.approx(10 - 0.5 * GRAVITY, abs=0.06)
    assert grain.position.x == pytest.approx(1)
    assert grain.age == pytest.approx(1)


def test_a_pile_rests_and_the_floor_carries_its_weight():
    grains = grains_on_floor()
    for i in range(64):
        grains.createParticle(hyx.Vec3(i % 4 * 0.11, i // 4 % 4 * 0.11, 0.06 + i // 16 * 0.11))
    run(grains, 300)
    assert all(grain.position.z > 0.045 for grain in grains.getParticles())
    assert max(grain.velocity.length() for grain in grains.getParticles()) < 0.1
    none = 2**64 - 1  # the surroundings
    carried = sum(contact.force for contact in grains.getContacts() if contact.second == none)
    assert carried == pytest.approx(grains.getMass() * GRAVITY, rel=0.03)


def test_grains_do_not_enter_each_other():
    grains = grains_on_floor()
    for i in range(5):
        grains.createParticle(hyx.Vec3(0, 0.01 * i, 0.1 + 0.1 * i))
    run(grains, 200)
    places = [grain.position for grain in grains.getParticles()]
    gaps = [(a - b).length() for i, a in enumerate(places) for b in places[:i]]
    assert min(gaps) > 0.097


def test_grains_put_into_each_other_part_without_flying_off():
    grains = grains_on_floor()
    for _ in range(10):
        grains.createParticle(hyx.Vec3(0, 0, 0.05))
    run(grains, 60)
    assert all(grain.position.z < 1.2 and grain.position.length() < 3 for grain in grains.getParticles())


@pytest.mark.parametrize("friction, travels", [(0.0, True), (0.8, False)])
def test_friction_stops_a_sliding_grain(friction, travels):
    grains = grains_on_floor()
    grains.setFriction(friction)
    grains.createParticle(hyx.Vec3(0, 0, 0.05), hyx.Vec3(2, 0, 0))
    run(grains, 60)
    assert (grains.getParticles()[0].position.x > 1.8) == travels


def test_grains_stay_out_of_a_box():
    grains = hyx.ParticleSystem()
    box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(1, 1, 0.5)))
    box.setMotionControl(hyx.RigidBody.STATIC)
    grains.addObstacle(box)
    inside = grains.createParticle(hyx.Vec3(0.2, 0.1, 0.8))
    outside = grains.createParticle(hyx.Vec3(1.5, 0, 0.8))
    run(grains, 90)
    assert grains.getParticle(inside).position.z == pytest.approx(0.55, abs=0.01)
    assert grains.getParticle(outside).position.z < -5
    assert grains.removeObstacle(box) and not grains.removeObstacle(box)
    run(grains, 60)
    assert grains.getParticle(inside).position.z < 0


def test_ids_stay_when_others_go():
    grains = hyx.ParticleSystem()
    first, second, third = (grains.createParticle(hyx.Vec3(i, 0, 0)) for i in range(3))
    assert grains.removeParticle(second) and not grains.removeParticle(second)
    assert grains.getParticle(second) is None
    assert grains.getParticle(third).position.x == 2
    assert grains.createParticle(hyx.Vec3()) not in (first, second, third)


def test_old_grains_end():
    grains = hyx.ParticleSystem()
    grains.setLifetime(0.5)
    grains.createParticle(hyx.Vec3())
    run(grains, 20)
    assert grains.getNumParticles() == 1
    run(grains, 20)
    assert grains.getNumParticles() == 0


def test_a_disabled_system_stands_still():
    grains = hyx.ParticleSystem()
    grains.createParticle(hyx.Vec3(0, 0, 1))
    grains.setEnable(False)
    run(grains, 10)
    assert grains.getParticles()[0].position.z == 1


def test_positions_cross_as_an_array():
    grains = hyx.ParticleSystem()
    assert grains.getPositions().tolist() == []
    grains.createParticle(hyx.Vec3(1, 2, 3))
    grains.createParticle(hyx.Vec3(4, 5, 6))
    assert grains.getPositions().tolist() == [[1, 2, 3], [4, 5, 6]]


def test_bad_grains_are_refused():
    grains = hyx.ParticleSystem()
    with pytest.raises(RuntimeError, match="position of a particle"):
        grains.createParticle(hyx.Vec3(math.nan, 0, 0))
    with pytest.raises(RuntimeError, match="radius"):
        grains.createParticle(hyx.Vec3(), hyx.Vec3(), 0.0, 1.0)
    with pytest.raises(RuntimeError, match="time step"):
        grains.step(0.0)
    assert grains.getNumParticles() == 0


def test_an_emitter_keeps_its_rate_its_box_and_its_limit():
    grains = hyx.ParticleSystem()
    emitter = hyx.Emitter(grains)
    emitter.setRate(30.0)
    emitter.setPosition(hyx.Vec3(5, 0, 2))
    emitter.setHalfExtents(hyx.Vec3(0.5, 0.25, 0))
    emitter.setVelocity(hyx.Vec3(0, 0, -1))
    for _ in range(60):
        emitter.step(STEP)
    assert emitter.getNumEmitted() == grains.getNumParticles() == 30
    for grain in grains.getParticles():
        assert abs(grain.position.x - 5) <= 0.5 and abs(grain.position.y) <= 0.25 and grain.position.z == 2
        assert grain.velocity.z == -1
    assert len({round(grain.position.x, 6) for grain in grains.getParticles()}) == 30
    emitter.setMaximumEmitted(40)
    for _ in range(120):
        emitter.step(STEP)
    assert emitter.getNumEmitted() == 40


def test_an_absurd_rate_makes_no_more_than_a_step_can_bear():
    grains = hyx.ParticleSystem()
    emitter = hyx.Emitter(grains)
    emitter.setRate(1e15)
    emitter.step(1.0)
    assert emitter.getNumEmitted() == 10_000
    with pytest.raises(RuntimeError, match="rate of an emitter"):
        emitter.setRate(math.inf)


def test_emitters_with_one_seed_repeat_each_other():
    def places(seed):
        grains = hyx.ParticleSystem()
        emitter = hyx.Emitter(grains)
        emitter.setSeed(seed)
        emitter.step(1.0)
        return grains.getPositions().tolist()

    assert places(3) == places(3) != places(4)


def test_a_body_emitter_fills_its_simulation():
    simulation = hyxSDK.Simulation()
    emitter = hyx.RigidBodyEmitter()
    emitter.setBoxTemplate(hyx.Vec3(0.1, 0.1, 0.1))
    emitter.setRate(60.0)
    emitter.step(1.0)
    assert emitter.getNumEmitted() == 0  # no simulation yet
    simulation.add(emitter)
    for _ in range(10):
        simulation.step()
    made = emitter.getBodies()
    assert len(made) == emitter.getNumEmitted() == len(simulation.getRigidBodies()) >= 9
    assert made[0].getMass() == pytest.approx(8.0)  # 0.008 m3 of 1000 kg/m3
    assert made[0].getVelocity().z < 0


def test_a_simulation_carries_its_grains_along():
    simulation = hyxSDK.Simulation()
    simulation.setGravity(hyx.Vec3(0, 0, -1))
    grains = hyx.ParticleSystem()
    grains.createParticle(hyx.Vec3(0, 0, 5))
    simulation.add(grains)
    for _ in range(60):
        simulation.step()
    assert grains.getGravity().z == -1
    assert grains.getParticles()[0].velocity.z == pytest.approx(-1)
