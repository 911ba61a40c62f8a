"""What moves or grows: particles, emitters, terrains, trajectories, contact graphs and pieces of broken bodies."""

import hyx
import hyxCollide
import hyxModel
import hyxOSG
import hyxRender
import hyxSDK
import hyxTerrain
import osg
import osgViewer
import pytest
from studio import blue, red


def body_of(shape):
    return hyx.RigidBody(hyxCollide.Geometry(shape))


DRAWABLE = hyxOSG.ParticleSystemDrawable


def grains(*places, radius=0.4):
    system = hyx.ParticleSystem()
    system.setParticleRadius(radius)
    for point in places:
        system.createParticle(hyx.Vec3(*point), hyx.Vec3())
    return system


def lines(geode):
    return geode.getDrawable(0).asGeometry()


@pytest.mark.parametrize("rendering", [DRAWABLE.SPRITES, DRAWABLE.QUAD_SPRITES, DRAWABLE.TRIANGLES])
@pytest.mark.parametrize("shader", [DRAWABLE.SIMPLE_SPRITES, DRAWABLE.ROTATION_SPRITES, DRAWABLE.ALPHA_SPRITES])
def test_particles_are_round_lit_and_in_place_in_every_mode(studio, rendering, shader):
    system = grains((0, 0, 0))
    geode = hyxOSG.createVisual(system, studio.root, rendering, shader)
    assert geode.getDrawable(0).className() == "ParticleSystemDrawable"
    picture = studio.picture()
    assert picture.lit() > 200
    assert max(picture.center()) > 12 and max(picture.pixel(5, 5)) < 12
    drawable = hyxOSG.findParticleSystemDrawable(studio.root)
    assert drawable.getParticleShaderMode() == shader
    if shader == DRAWABLE.SIMPLE_SPRITES:
        assert sum(picture.pixel(64, 74)) != sum(picture.pixel(64, 54)), "light falls from one side"


def test_the_omitted_modes_are_quads_with_bands(studio):
    geode = hyxOSG.createVisual(grains((0, 0, 0)), studio.root)
    assert hyxOSG.findParticleSystemDrawable(studio.root).getParticleShaderMode() == DRAWABLE.ROTATION_SPRITES
    assert geode.getNumDrawables() == 1
    with pytest.raises(RuntimeError, match="rendering mode 3"):
        hyxOSG.createVisual(grains((0, 0, 0)), studio.root, 3)


def test_bands_turn_with_the_particle(studio):
    system = grains((0, 0, 0))
    hyxOSG.createVisual(system, studio.root, DRAWABLE.QUAD_SPRITES, DRAWABLE.ROTATION_SPRITES)
    banded = studio.picture()
    hyxOSG.findParticleSystemDrawable(studio.root).setParticleShaderMode(DRAWABLE.SIMPLE_SPRITES)
    assert studio.picture().difference(banded) > 50


@pytest.mark.parametrize("rendering", [DRAWABLE.SPRITES, DRAWABLE.QUAD_SPRITES, DRAWABLE.TRIANGLES])
def test_particles_and_bodies_hide_each_other_at_their_surfaces(studio, rendering):
    hyxOSG.createVisual(grains((0, 0, 0), radius=0.5), studio.root, rendering, DRAWABLE.SIMPLE_SPRITES)
    box = body_of(hyxCollide.Box(1, 0.01, 1))
    plate = hyxOSG.createVisual(box, studio.root)
    hyxOSG.setDiffuseColor(plate, hyx.Vec4f(1, 0, 0, 1))
    hyxOSG.setAmbientColor(plate, hyx.Vec4f(1, 0, 0, 1))
    box.setPosition(hyx.Vec3(0, -0.4, 0))  # cuts a cap of 0.3 m off the ball
    picture = studio.picture()
    assert not red(*picture.center())
    cap = picture.count(lambda r, g, b: r > 20 and g > 12)
    box.setPosition(hyx.Vec3(0, -0.6, 0))
    assert studio.picture().count(lambda r, g, b: r > 20 and g > 12) == 0
    box.setPosition(hyx.Vec3(0, 0.6, 0))
    assert studio.picture().count(lambda r, g, b: r > 20 and g > 12) > 1.5 * cap > 0


def test_small_and_large_particles_look_alike_in_every_mode(studio):
    """Whatever form suits their size."""
    system = grains((0.3, 0, 0.1))
    for distance in (1.2, 4.0, 20.0):
        studio.look_from(hyx.Vec3(0, -distance, 0))
        sizes = []
        for rendering in (DRAWABLE.SPRITES, DRAWABLE.QUAD_SPRITES, DRAWABLE.TRIANGLES):
            geode = hyxOSG.createVisual(system, studio.root, rendering, DRAWABLE.SIMPLE_SPRITES)
            sizes.append(studio.picture().lit())
            studio.root.removeChild(geode)
        assert min(sizes) > 10 and max(sizes) - min(sizes) < 0.06 * max(sizes) + 6, (distance, sizes)


def test_the_drawable_follows_its_system_and_can_be_switched_off(studio):
    system = grains((0, 0, 0))
    hyxOSG.createVisual(system, studio.root)
    one = studio.picture().lit()
    system.createParticle(hyx.Vec3(0.9, 0, 0), hyx.Vec3())
    assert studio.picture().lit() > 1.5 * one
    drawable = hyxOSG.findParticleSystemDrawable(studio.root)
    drawable.setEnable(False)
    assert studio.picture().lit() == 0 and not drawable.getEnable()
    drawable.setEnable(True)
    system.setEnable(False)
    assert studio.picture().lit() == 0


def test_many_bodies_of_spheres_are_one_drawable(studio):
    geode, drawable = osg.Geode(), hyxOSG.RigidBodySystemDrawable()
    geode.addDrawable(drawable)
    studio.root.addChild(geode)
    assert hyxOSG.findRigidBodySystemDrawable(studio.root) == drawable
    ball, box = body_of(hyxCollide.Sphere(0.4)), body_of(hyxCollide.Box(1, 1, 1))
    assert drawable.add(ball) and not drawable.add(ball) and not drawable.add(box) and not drawable.add(None)
    assert drawable.getNumBodies() == 1 and max(studio.picture().center()) > 12
    ball.setPosition(hyx.Vec3(0.7, 0, 0))
    picture = studio.picture()
    assert max(picture.center()) < 12 < picture.lit()
    assert drawable.remove(ball) and not drawable.remove(ball)
    assert studio.picture().lit() == 0


def test_a_frame_drawable_draws_the_ways_of_its_frames(studio):
    drawable, frame = hyxOSG.FrameTrajectoryDrawable(3, hyx.Vec4f(1, 0, 0, 1)), hyx.Frame()
    geode = osg.Geode()
    geode.addDrawable(drawable)
    studio.root.addChild(geode)
    assert hyxOSG.findFrameTrajectoryDrawable(studio.root) == drawable
    assert drawable.add(frame) and not drawable.add(frame) and not drawable.add(None) and drawable.getNumFrames() == 1
    for x in (-0.9, -0.5, 0.0, 0.5):
        frame.setLocalTranslate(hyx.Vec3(x, 0, 0))
        drawable.update()
    assert drawable.getNumPoints() == 3
    assert studio.picture().count(red) > 25
    drawable.clear()
    assert drawable.getNumPoints() == 0 and studio.picture().lit() == 0
    assert drawable.remove(frame) and not drawable.remove(frame)
    with pytest.raises(RuntimeError, match="at least 2"):
        hyxOSG.FrameTrajectoryDrawable(1)


def test_an_emitter_shows_its_volume_where_it_is(studio):
    emitter = hyx.Emitter()
    emitter.setHalfExtents(hyx.Vec3(0.5, 0.5, 0.5))
    group = hyxOSG.createVisual(emitter, studio.root)
    assert studio.picture().lit() > 500
    emitter.setPosition(hyx.Vec3(3, 0, 0))
    studio.picture()
    assert group.getBound().center().x == pytest.approx(3)
    assert group.getChild(0).getStateSet().isTransparent()


def test_a_body_emitter_draws_what_it_emits(studio):
    simulation = hyxSDK.Simulation()
    emitter = hyx.RigidBodyEmitter()
    emitter.setRate(60.0)
    simulation.add(emitter)
    group = hyxOSG.createVisual(emitter, studio.root)
    assert group.getNumChildren() == 1
    for _ in range(4):
        simulation.step()
    assert group.getNumChildren() == 1 + len(emitter.getBodies()) > 2
    simulation.cleanup()


def test_a_terrain_has_one_renderer(studio):
    simulation = hyxSDK.Simulation()
    instance = hyxSDK.TerrainInstance(hyxTerrain.Terrain(20, 20, 0.1, 1.0))
    simulation.add(instance)
    renderer = hyxOSG.createVisual(instance, studio.root)
    assert renderer is not None and hyxOSG.createVisual(instance, studio.root) == renderer
    studio.look_from(hyx.Vec3(1, -2, 2), hyx.Vec3(1, 1, 0))
    assert studio.picture().lit() > 1000
    assert hyxOSG.setupTerrainJournalPlaybackSettings(simulation) is None
    assert instance.getEnableCompaction() is False
    assert instance.getTerrain().getEnableSoilParticles() is False
    hyxOSG.setupTerrainJournalPlaybackSettings(None)
    simulation.cleanup()


def falling():
    simulation = hyxSDK.Simulation()
    body = body_of(hyxCollide.Sphere(0.1))
    body.setVelocity(hyx.Vec3(1, 0, 0))
    simulation.add(body)
    return simulation, body


def update(root, simulation, steps):
    """Steps, with the update traversal of a viewer after each."""
    viewer = osgViewer.Viewer()
    viewer.setSceneData(root)
    for _ in range(steps):
        simulation.step()
        viewer.updateTraversal()


def test_the_ways_of_bodies_grow_to_their_length():
    simulation, body = falling()
    root = osg.Group()
    geode = hyxOSG.createRigidBodyTrajectoriesVisual(simulation, root, 0.0, 10)
    update(root, simulation, 4)
    assert lines(geode).getNumVertices() == 4
    assert list(lines(geode).getVertex(3)) == pytest.approx(list(body.getPosition()), abs=1e-5)
    update(root, simulation, 20)
    assert lines(geode).getNumVertices() == 10
    simulation.remove(body)
    update(root, simulation, 1)
    assert lines(geode).getNumVertices() == 0


def test_ways_take_points_at_their_interval():
    simulation, _ = falling()
    root = osg.Group()
    geode = hyxOSG.createRigidBodyTrajectoriesVisual(simulation, root, 0.1, 100)
    update(root, simulation, 60)
    assert 9 <= lines(geode).getNumVertices() <= 11
    for interval, points in ((-1.0, 10), (float("nan"), 10), (0.0, 1)):
        with pytest.raises(RuntimeError):
            hyxOSG.createRigidBodyTrajectoriesVisual(simulation, root, interval, points)


def test_ways_are_coloured_by_speed():
    simulation, _ = falling()
    root = osg.Group()
    colours = hyxRender.ColorVector([hyxRender.Color(0, 0, 1, 1), hyxRender.Color(1, 0, 0, 1)])
    geode = hyxOSG.createRigidBodyTrajectoriesVisual(
        simulation, root, 0.0, 200, hyxOSG.ScalarColorMap(colours, 0.0, 10.0)
    )
    update(root, simulation, 100)
    slow, fast = lines(geode).getColor(0), lines(geode).getColor(99)
    assert slow[2] > 0.8 and fast[0] > 0.8


def test_ways_of_frames_follow_observer_frames():
    simulation, body = falling()
    simulation.add(hyx.ObserverFrame(body))
    root = osg.Group()
    geode = hyxOSG.createFrameTrajectoryDrawable(simulation, root, 5, hyx.Vec4f(0, 1, 0, 1))
    assert hyxOSG.findFrameTrajectoryDrawable(root) is not None
    update(root, simulation, 3)
    assert lines(geode).getNumVertices() == 3
    assert list(lines(geode).getColor(0)) == [0, 1, 0, 1]
    update(root, simulation, 10)
    assert lines(geode).getNumVertices() == 5
    assert hyxOSG.createFrameTrajectoryDrawable(None, root, 5) is None


def test_ways_of_particles_end_with_them(studio):
    simulation = hyxSDK.Simulation()
    system = grains((0, 0, 0), (1, 0, 0))
    simulation.add(system)
    root = osg.Group()
    geode = hyxOSG.createParticleTrajectoriesVisual(system, root, 0.0, 50)
    update(root, simulation, 6)
    assert lines(geode).getNumVertices() == 12
    system.clear()
    update(root, simulation, 1)
    assert lines(geode).getNumVertices() == 0
    assert hyxOSG.createParticleTrajectoriesVisual(system, None, 0.0, 50) is None


def test_the_contact_graph_joins_grains_that_touch():
    simulation = hyxSDK.Simulation()
    system = grains((5, 0, 0))
    system.createParticle(hyx.Vec3(0, 0, 0), hyx.Vec3(20, 0, 0))
    system.createParticle(hyx.Vec3(0.9, 0, 0), hyx.Vec3(-20, 0, 0))
    simulation.setGravity(hyx.Vec3())
    simulation.add(system)
    root = osg.Group()
    geode = hyxOSG.createParticleContactGraph(system, root, 0.0, 1e-3)
    update(root, simulation, 1)
    assert lines(geode).getNumVertices() == 2
    ends = sorted(round(lines(geode).getVertex(i)[0], 1) for i in (0, 1))
    assert ends[1] - ends[0] == pytest.approx(0.8, abs=0.11)
    assert lines(geode).getColor(0)[0] > 0.9
    with pytest.raises(RuntimeError, match="minForce < maxForce"):
        hyxOSG.createParticleContactGraph(system, root, 2.0, 1.0)


def broken_box(root, watch):
    simulation = hyxSDK.Simulation()
    generator = hyxModel.FractureGenerator()
    simulation.add(generator)
    generator.setNumFragments(5)
    body = body_of(hyxCollide.Box(0.5, 0.5, 0.5))
    simulation.add(body)
    visual = hyxOSG.createVisual(body, root)
    watch(generator)
    pieces = generator.fracture(body, hyx.Vec3())
    return simulation, body, visual, pieces


def test_pieces_of_a_broken_body_are_drawn_in_its_place(studio):
    simulation, body, visual, pieces = broken_box(
        studio.root, lambda g: hyxOSG.addRenderCallbackToFracture(g, studio.root)
    )
    assert hyxOSG.findGeometryNode(body.getGeometries()[0], studio.root) is None
    assert len(pieces) > 2
    assert all(hyxOSG.findGeometryNode(piece.getGeometries()[0], studio.root) for piece in pieces)
    assert studio.picture().lit() > 1000
    hyxOSG.addRenderCallbackToFracture(None, studio.root)
    simulation.cleanup()


def test_pieces_take_the_given_colour(studio):
    colour = hyx.Vec4f(0, 0, 1, 1)
    simulation, _, _, pieces = broken_box(
        studio.root, lambda g: hyxOSG.addRenderColorCallbackToFracture(g, studio.root, colour)
    )
    assert studio.picture().count(blue) > 500
    with pytest.raises(TypeError, match="not None"):
        hyxOSG.addRenderColorCallbackToFracture(None, studio.root, None)
    simulation.cleanup()
