"""Whatever a simulation carries along obeys the gravity that it has now, not that of the beginning."""

import hyx
import hyxCable
import hyxCollide
import hyxModel
import hyxSDK
import hyxSensor
import hyxTerrain
import hyxWire
import pytest
from physics_scene import body, box, ground, run

EARTH = hyxSDK.Simulation().getGravity()
# Strong enough to tell what still follows the first gravity, weak enough to keep bodies on the ground.
STRONGER = EARTH * 3.0


def falling(simulation, velocity):
    """Speed gained in a step."""

    def gain():
        before = velocity().z
        simulation.step()
        return before - velocity().z

    simulation.step()
    return gain


def grains(simulation):
    system = hyx.ParticleSystem()
    system.createParticle(hyx.Vec3(0, 0, 50))
    simulation.add(system)
    return falling(simulation, lambda: system.getParticles()[0].velocity)


def one_of(emitter, simulation):
    emitter.setRate(1000.0)
    emitter.setMaximumEmitted(1)
    simulation.add(emitter)


def emitted_grain(simulation):
    system = hyx.ParticleSystem()
    simulation.add(system)
    one_of(hyx.Emitter(system), simulation)
    return falling(simulation, lambda: system.getParticles()[0].velocity)


def emitted_body(simulation):
    emitter = hyx.RigidBodyEmitter()
    one_of(emitter, simulation)
    return falling(simulation, lambda: emitter.getBodies()[0].getVelocity())


def at_rest(simulation, measure):
    """What is measured three seconds later."""

    def measure_later():
        run(simulation, 3)
        return measure()

    return measure_later


def hanging(made):
    for x in (-1, 1):
        made.add(hyx.Vec3(x, 0, 0))
    return made


def wire(simulation):
    """Tension of a wire under its own weight."""
    made = hanging(hyxWire.Wire(0.01, 5))
    made.setDamping(5.0)
    simulation.add(made)
    return at_rest(simulation, made.getMaximumTension)


def soft_cable():
    properties = hyxCable.CableProperties()
    properties.damping = 5.0
    return hanging(hyxCable.Cable(0.01, 5, properties))


def cable(simulation):
    made = soft_cable()
    simulation.add(made)
    return at_rest(simulation, lambda: made.getLoad(0).tension)


def damage(simulation):
    """Stress in a cable by its pull alone."""
    made = soft_cable()
    weights = hyxCable.DamageProperties()
    weights.bendWeight = weights.twistWeight = 0.0
    wear = hyxCable.CableDamage(made, weights)
    simulation.add(made)
    simulation.add(wear)
    return at_rest(simulation, lambda: wear.getStress(0))


def crate(simulation, mass=80.0):
    made = box(0.25, (0, 0, 0.25), mass=mass)
    simulation.add(made)
    return made


def pressure(simulation):
    simulation.add(ground())
    field = hyxModel.PressureField(crate(simulation), 0.1)
    simulation.add(field)
    return at_rest(simulation, field.getForce)


def sinking(simulation):
    """How deep a load sinks into soft ground."""
    geometry = hyxCollide.Geometry(hyxCollide.HeightField(21, 21, 2, 2))
    deformer = hyxModel.HeightFieldDeformer(geometry)
    simulation.add(geometry)
    simulation.add(deformer)
    simulation.add(body(hyxCollide.Sphere(0.25), (0, 0, 0.25), mass=80.0))  # no more legs than know their share
    return at_rest(simulation, lambda: max(deformer.getSinkage(x, y) for x in range(21) for y in range(21)))


def breaking(simulation):
    """Whether a crate bears its own weight."""
    simulation.add(ground())
    generator = hyxModel.FractureGenerator()
    simulation.add(generator)
    whole = crate(simulation)
    run(simulation, 3)  # its fall is not what breaks it
    strongest = max(point.normalForce for point in simulation.getSpace().getGeometryContacts()[0].points())
    generator.setBreakingForce(2 * strongest)
    generator.add(whole)
    return at_rest(simulation, lambda: 2 if len(generator.getFragments()) else 1)


def seen(simulation):
    """How much faster a body came in the second of two steps than in the first, seen from below."""
    simulation.add(body(hyxCollide.Box(1, 1, 1), (0, 0, 90)))
    frame = hyx.Frame()
    frame.setLocalRotate(hyx.Quat(hyx.Vec3(1, 0, 0), hyx.Vec3(0, 0, 1)))
    lidar = hyxSensor.Lidar(frame)
    lidar.setResolution(1, 1)
    lidar.setFieldOfView(0.0, 0.0)
    lidar.setScanRate(0.0)
    simulation.add(lidar)

    def distance():
        simulation.step()
        return lidar.getHits()[0].distance

    def gain():
        first, second, third = distance(), distance(), distance()
        return 2 * second - first - third

    return gain


def slide(simulation):
    """The speed of soil that starts to slide, which goes with the root of its weight."""
    soil = hyxTerrain.Terrain(16, 16, 0.2, 1.0)
    simulation.add(hyxSDK.TerrainInstance(soil))

    def speed():
        soil.addMass(8, 8, 30.0)
        simulation.step()
        fastest = max(soil.getFluidVelocity(x, y).length() for x in range(16) for y in range(16))
        soil.removeAbove(8, 8, 0.0)
        run(simulation, 2)
        return fastest

    return speed


def blade(simulation):
    """The force of the soil on a blade that is drawn through it."""
    soil = hyxTerrain.Terrain(40, 16, 0.2, 1.0)
    soil.setEnableSoilParticles(False)
    pusher = hyx.RigidBody()
    pusher.setMotionControl(hyx.RigidBody.KINEMATICS)
    tool = hyxTerrain.DigTool(pusher, hyx.Vec3(0, -0.5, 0), hyx.Vec3(0, 0.5, 0), hyx.Vec3(0, 0, 1))
    soil.addTool(tool)
    simulation.add(pusher)
    simulation.add(hyxSDK.TerrainInstance(soil))
    rows = iter((1.2, 4.0))

    def force():
        pusher.setPosition(hyx.Vec3(next(rows), 1.6, -0.2))
        pusher.setVelocity(hyx.Vec3(0.1, 0, 0))  # slowly: what is pushed along weighs more than it lags
        simulation.step()
        return tool.getSoilForce().length()

    return force


SCENES = {
    hyx.ParticleSystem: [grains],
    hyx.Emitter: [emitted_grain],
    hyx.RigidBodyEmitter: [emitted_body],
    hyxWire.Wire: [wire],
    hyxCable.Cable: [cable],
    hyxCable.CableDamage: [damage],
    hyxModel.PressureField: [pressure],
    hyxModel.HeightFieldDeformer: [sinking],
    hyxModel.FractureGenerator: [breaking],
    hyxSensor.Lidar: [seen],
    hyxSDK.TerrainInstance: [slide, blade],
}


def kinds(process):
    return {process} | {kind for derived in process.__subclasses__() for kind in kinds(derived)}


def test_there_is_a_scene_for_every_process_of_the_libraries():
    libraries = {"hyx", "hyxCable", "hyxModel", "hyxSDK", "hyxSensor", "hyxTerrain", "hyxWire"}
    made = {kind for kind in kinds(hyx.Process) if kind.__module__.split(".")[0] in libraries}
    assert made - {hyx.Process} == set(SCENES)


@pytest.mark.parametrize("scene", [scene for scenes in SCENES.values() for scene in scenes], ids=lambda s: s.__name__)
def test_gravity_that_changes_later_reaches_every_process(scene):
    simulation = hyxSDK.Simulation()
    reaction = scene(simulation)
    before = reaction()
    simulation.setGravity(STRONGER)
    assert 0 < 1.5 * before < reaction() < 3.5 * before


@pytest.mark.parametrize("scene", [grains, emitted_grain, emitted_body])
def test_a_time_step_that_changes_later_reaches_what_falls(scene):
    simulation = hyxSDK.Simulation()
    gain = scene(simulation)
    before = gain()
    simulation.setTimeStep(simulation.getTimeStep() / 4)
    assert gain() == pytest.approx(before / 4)
