"""Bodies that rest, slide, roll and bounce."""

import math
import random

import hyx
import hyxCollide
import hyxSDK
import pytest
from physics_scene import GRAVITY, body, box, ground, run, simulation

STEPS = pytest.mark.parametrize("step", [1 / 60, 1 / 240, 1 / 1000], ids=["1/60 s", "1/240 s", "1/1000 s"])
SOLVERS = pytest.mark.parametrize(
    "solver",
    [hyxSDK.Simulation.MULTI, hyxSDK.Simulation.ITERATIVE, hyxSDK.Simulation.DIRECT],
    ids=["MULTI", "ITERATIVE", "DIRECT"],
)
UPRIGHT = hyx.Quat(math.pi / 2, hyx.Vec3(1, 0, 0))


def slab():
    return body(hyxCollide.Box(20, 20, 0.5), (0, 0, -0.5), control=hyx.RigidBody.STATIC)


def field():
    return hyxCollide.Geometry(hyxCollide.HeightField(161, 161, 80, 80))


def mesh():
    count = 80
    corners = [(i - 40.0, j - 40.0, 0) for j in range(count + 1) for i in range(count + 1)]
    first = [j * (count + 1) + i for j in range(count) for i in range(count)]
    triangles = [t for a in first for t in ((a, a + 1, a + count + 2), (a, a + count + 2, a + count + 1))]
    return hyxCollide.Geometry(hyxCollide.Trimesh(corners, triangles))


def of_one_material(*things, friction=None, restitution=None):
    material = hyx.Material()
    if friction is not None:
        material.setFriction(friction)
    if restitution is not None:
        material.setRestitution(restitution)
    for thing in things:
        for geometry in thing.getGeometries() if isinstance(thing, hyx.RigidBody) else [thing]:
            geometry.setMaterial(material)


@STEPS
@pytest.mark.parametrize("floor", [ground, slab])
@pytest.mark.parametrize(
    "shape", [hyxCollide.Sphere(0.1), hyxCollide.Box(0.1, 0.1, 0.1)], ids=lambda shape: type(shape).__name__
)
@pytest.mark.parametrize("restitution", [1.0, 0.7])
def test_a_bounce_reaches_its_height_at_every_phase(measured, step, floor, shape, restitution):
    heights = []
    for phase in range(6 if step > 1 / 500 else 2):
        height = 1 + phase * 0.037
        bouncing, base = body(shape, (0, 0, height + 0.1)), floor()
        of_one_material(bouncing, base, restitution=restitution)
        world = simulation(base, bouncing)
        world.setTimeStep(step)
        # Into the rise after the second bounce.
        fall = math.sqrt(2 * height / GRAVITY)
        run(world, fall * (1 + 2 * restitution + 0.5 * restitution**2))
        energy = bouncing.getPosition().z - 0.1 + bouncing.getVelocity().length2() / 2 / GRAVITY
        heights.append(energy / height)
    measured.relative("least height", restitution**4, min(heights), 0.01)
    measured.relative("greatest height", restitution**4, max(heights), 0.01)


@SOLVERS
@pytest.mark.parametrize("count, size", [(20, 1), (10, 0.1), (10, 0.02), (10, 0.01)])
def test_a_tower_stands_for_half_a_minute(measured, solver, count, size):
    cubes = [box(size / 2, (0, 0, size * (0.5 + i))) for i in range(count)]
    world = simulation(ground(), *cubes)
    world.setSolver(solver)
    run(world, 30 if solver != hyxSDK.Simulation.DIRECT else 2)
    drift = max(math.hypot(cube.getPosition().x, cube.getPosition().y) for cube in cubes)
    measured("drift, sizes", 0, drift / size, 0.05)
    measured("height, sizes", count - 0.5, cubes[-1].getPosition().z / size, 0.01 * count)


@pytest.mark.parametrize("size, load", [(1, 20), (1, 100), (0.1, 20), (0.1, 100)])
def test_ten_cubes_bear_a_heavy_one(measured, size, load):
    cubes = [box(size / 2, (0, 0, size * (0.5 + i))) for i in range(10)]
    cubes[-1].setMass(load * cubes[0].getMass())
    world = simulation(ground(), *cubes)
    run(world, 30)
    drift = max(math.hypot(cube.getPosition().x, cube.getPosition().y) for cube in cubes)
    measured("drift, sizes", 0, drift / size, 0.1)
    measured("height, sizes", 9.5, cubes[-1].getPosition().z / size, 0.1)


@STEPS
@pytest.mark.parametrize("floor", [ground, slab])
@pytest.mark.parametrize("friction, radius", [(0.4, 0.5), (0.6, 0.2)])
def test_a_spinning_disc_stops_as_an_even_pressure_stops_it(measured, step, floor, friction, radius):
    disc, base = body(hyxCollide.Cylinder(radius, 0.1), (0, 0, 0.05)), floor()
    disc.setRotation(UPRIGHT)
    disc.setAngularVelocity(hyx.Vec3(0, 0, 20))
    of_one_material(disc, base, friction=friction)
    world = simulation(base, disc)
    world.setTimeStep(step)
    while disc.getAngularVelocity().length() > 1e-2 and world.getTimeStamp() < 10:
        world.step()
    measured.relative("time, s", 0.75 * radius * 20 / (friction * GRAVITY), world.getTimeStamp(), 0.03)


@STEPS
@pytest.mark.parametrize("heading", [0, 17, 45])
def test_a_launched_box_goes_straight_and_as_far_as_friction_lets_it(measured, step, heading):
    angle = math.radians(heading)
    way = hyx.Vec3(math.cos(angle), math.sin(angle), 0)
    slider, base = body(hyxCollide.Box(0.2, 0.1, 0.1), (0, 0, 0.1)), ground()
    slider.setRotation(hyx.Quat(angle, hyx.Vec3(0, 0, 1)))
    slider.setVelocity(way * 4.43)
    of_one_material(slider, base, friction=0.5)
    world = simulation(base, slider)
    world.setTimeStep(step)
    run(world, 2)
    front = slider.getRotation() * hyx.Vec3(1, 0, 0)
    measured("yaw, deg", 0, math.degrees(math.atan2(front.y, front.x)) - heading, 0.1)
    measured.relative("way, m", 4.43**2 / (2 * 0.5 * GRAVITY), slider.getPosition().dot(way), 0.01)
    measured("speed, m/s", 0, slider.getVelocity().length(), 1e-3)


@pytest.mark.parametrize("step", [1 / 60, 1 / 240], ids=["1/60 s", "1/240 s"])
@pytest.mark.parametrize("floor", [ground, field, mesh])
@pytest.mark.parametrize(
    "shape", [hyxCollide.Cylinder(0.3, 0.2), hyxCollide.Sphere(0.3)], ids=lambda shape: type(shape).__name__
)
def test_a_free_wheel_keeps_its_speed_on_flat_ground(measured, step, floor, shape):
    wheel, highest = body(shape, (-30, 0.1, 0.3)), 0
    wheel.setVelocity(hyx.Vec3(10, 0, 0))
    wheel.setAngularVelocity(hyx.Vec3(0, 10 / 0.3, 0))
    world = simulation(floor(), wheel)
    world.setTimeStep(step)
    while world.getTimeStamp() < 5:
        world.step()
        highest = max(highest, wheel.getPosition().z)
    measured.relative("speed, m/s", 10, wheel.getVelocity().length(), 0.01)
    measured("highest place, m", 0.3, highest, 2e-3)


def slope(floor, angle, material):
    """A floor through the origin that falls towards +X."""
    if floor == "plane":
        geometry = hyxCollide.Geometry(hyxCollide.Plane(hyx.Vec3(math.sin(angle), 0, math.cos(angle)), hyx.Vec3()))
        made = hyx.RigidBody(geometry)
    else:
        shapes = {
            "box": lambda: hyxCollide.Box(30, 5, 1),
            "field": lambda: hyxCollide.HeightField(41, 5, 60.0, 10.0),
            "mesh": lambda: hyxCollide.Trimesh(
                [(-30, -5, 0), (30, -5, 0), (30, 5, 0), (-30, 5, 0)], [0, 1, 2, 0, 2, 3]
            ),
        }
        made = hyx.RigidBody(hyxCollide.Geometry(shapes[floor]()))
        made.setRotation(hyx.Quat(angle, hyx.Vec3(0, 1, 0)))
        if floor == "box":
            made.setPosition(hyx.Vec3(-math.sin(angle), 0, -math.cos(angle)))
    made.setMotionControl(hyx.RigidBody.STATIC)
    made.getGeometries()[0].setMaterial(material)
    return made


ROUND = {
    "ball": (lambda: hyxCollide.Sphere(0.3), 2 / 5),
    "cylinder": (lambda: hyxCollide.Cylinder(0.3, 0.5), 1 / 2),
    "capsule": (lambda: hyxCollide.Capsule(0.3, 0.5), None),
}


@pytest.mark.parametrize("floor", ["plane", "box", "mesh", "field"])
@pytest.mark.parametrize("shape", ROUND)
@pytest.mark.parametrize("degrees, friction", [(5, 0.5), (20, 0.2), (35, 0.2)])
def test_what_is_round_rolls_or_slips_down_a_slope(measured, floor, shape, degrees, friction):
    angle = math.radians(degrees)
    material = hyx.Material("slope")
    material.setFriction(friction)
    make, share = ROUND[shape]
    rolling = body(make(), (0.3 * math.sin(angle), 0, 0.3 * math.cos(angle)))
    rolling.getGeometries()[0].setMaterial(material)
    world = simulation(slope(floor, angle, material), rolling)
    run(world, 1)
    share = share or rolling.getInertia().y / (rolling.getMass() * 0.3**2)
    slips = math.tan(angle) * share / (1 + share) > friction
    gain = math.sin(angle) - friction * math.cos(angle) if slips else math.sin(angle) / (1 + share)
    measured.relative("speed, m/s", GRAVITY * gain, rolling.getVelocity().length(), 0.005)


@pytest.mark.parametrize("floor", ["plane", "box", "mesh", "field"])
@pytest.mark.parametrize("shape", ROUND)
@pytest.mark.parametrize("speed, step", [(2, 1 / 60), (10, 1 / 60), (10, 1 / 240), (4, 1 / 1000)])
def test_a_cart_drives_as_its_wheels_turn(measured, floor, shape, speed, step):
    material = hyx.Material("road")
    material.setFriction(0.6)
    cart = body(hyxCollide.Box(0.8, 0.6, 0.1), (-20, 0, 0.7), mass=50)
    world = simulation(slope(floor, 0, material), cart)
    world.setTimeStep(step)
    for x in (-20.7, -19.3):
        for y in (-1, 1):
            wheel = body(ROUND[shape][0](), (x, y, 0.3), mass=3)
            wheel.getGeometries()[0].setMaterial(material)
            wheel.setVelocity(hyx.Vec3(speed, 0, 0))
            wheel.setAngularVelocity(hyx.Vec3(0, speed / 0.3, 0))
            axle = hyx.Hinge(hyx.Vec3(x, y, 0.3), hyx.Vec3(0, 1, 0), wheel, cart)
            axle.getMotor1D().setSpeed(speed / 0.3)
            axle.getMotor1D().setEnable(True)
            world.add(wheel)
            world.add(axle)
    cart.setVelocity(hyx.Vec3(speed, 0, 0))
    run(world, 0.5)
    start = cart.getPosition().x
    run(world, 1)
    measured.relative("way in 1 s, m", speed, cart.getPosition().x - start, 0.003)
    measured("aside, m", 0, cart.getPosition().y, 1e-3)


@pytest.mark.parametrize("count", [600, 1600])
def test_hundreds_of_bodies_in_one_place_are_refused(count):
    world = simulation(*(body(hyxCollide.Sphere(0.1)) for _ in range(count)))
    with pytest.raises(RuntimeError, match="too near each other"):
        world.step()
    for i, ball in enumerate(world.getRigidBodies()):
        ball.setPosition(hyx.Vec3(i, 0, 0))
    world.step()


def test_a_bundle_of_long_rods_is_no_crowd():
    """Their boxes overlap far more often than they themselves."""
    chance = random.Random(1)
    rods = [body(hyxCollide.Capsule(0.01, 3)) for _ in range(500)]
    for rod in rods:
        rod.setPosition(hyx.Vec3(*(chance.uniform(-2, 2) for _ in range(3))))
        rod.setRotation(hyx.Quat(chance.uniform(0, 3), hyx.Vec3(*(chance.gauss(0, 1) for _ in range(3))).normal()))
    simulation(*rods).step()


def thin_slab():
    return body(hyxCollide.Box(20, 20, 0.01), (0, 0, -0.01), control=hyx.RigidBody.STATIC)


@pytest.mark.parametrize("floor", [ground, slab, thin_slab, field, mesh])
@pytest.mark.parametrize("kind", ["Sphere", "Box", "plate", "Cylinder", "Capsule"])
def test_nothing_falls_through_a_floor(floor, kind):
    chance = random.Random(kind)
    for _ in range(30):
        size, height = math.exp(chance.uniform(math.log(0.02), math.log(0.3))), chance.uniform(0.1, 6)
        shape = {
            "Sphere": lambda size=size: hyxCollide.Sphere(size),
            "Box": lambda size=size: hyxCollide.Box(size, 2 * size, size),
            "plate": lambda size=size: hyxCollide.Box(5 * size, 5 * size, 0.2 * size),
            "Cylinder": lambda size=size: hyxCollide.Cylinder(size, 2 * size),
            "Capsule": lambda size=size: hyxCollide.Capsule(size, 2 * size),
        }[kind]()
        falling = body(shape, (chance.uniform(-3, 3), chance.uniform(-3, 3), height + 2 * size))
        if kind == "Cylinder":
            falling.setRotation(UPRIGHT)
        world = simulation(floor(), falling)
        run(world, 2)
        assert falling.getPosition().z > 0.1 * size, f"of size {size} from {height} m"
