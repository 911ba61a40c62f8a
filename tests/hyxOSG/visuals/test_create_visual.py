"""Visuals of geometries, bodies, assemblies, simulations, particles and frames."""

import time

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import osg
import pytest
from studio import red

SHAPES = {
    "box": lambda: hyxCollide.Box(0.5, 0.5, 0.5),
    "sphere": lambda: hyxCollide.Sphere(0.6),
    "cylinder": lambda: hyxCollide.Cylinder(0.5, 1.0),
    "capsule": lambda: hyxCollide.Capsule(0.4, 0.6),
    "cone": lambda: hyxCollide.Cone(0.6, 1.0),
    "plane": lambda: hyxCollide.Plane(hyx.Vec3(0, -1, 0), hyx.Vec3(0, 1, 0)),
    "trimesh": lambda: hyxCollide.Trimesh(
        hyx.Vec3Vector([hyx.Vec3(*p) for p in [(-1, 0, -1), (1, 0, -1), (0, 0, 1), (0, 1, 0)]]),
        [0, 1, 2, 0, 3, 1, 1, 3, 2, 2, 3, 0],
    ),
    "height field": lambda: hyxCollide.HeightField(5, 5, 2.0, 2.0),
}


def visit(node, kind=osg.NodeVisitor_UPDATE_VISITOR):
    visitor = osg.NodeVisitor()
    visitor.setVisitorType(kind)
    node.accept(visitor)


def body_of(shape):
    return hyx.RigidBody(hyxCollide.Geometry(shape))


def place(node):
    return list(node.getMatrix().getTrans())


@pytest.mark.parametrize("name", SHAPES)
def test_every_shape_is_seen_in_its_colour(studio, name):
    geometry = hyxCollide.Geometry(SHAPES[name]())
    if name == "height field":
        studio.look_from(hyx.Vec3(0, -2, 3))
    node = hyxOSG.createVisual(geometry, studio.root)
    assert node.className() == "GeometryNode"
    hyxOSG.setDiffuseColor(node, hyx.Vec4f(1, 0, 0, 1))
    picture = studio.picture()
    assert picture.lit() > 500, name
    hyxOSG.setAmbientColor(node, hyx.Vec4f(1, 0, 0, 1))
    assert studio.picture().count(lambda r, g, b: r > 20 and g < 12 and b < 12) > 500, name


def test_a_compound_shows_all_its_parts(studio):
    compound = hyxCollide.Compound()
    compound.add(hyxCollide.Sphere(0.2), hyx.AffineMatrix4x4(hyx.Vec3(-0.7, 0, 0)))
    compound.add(hyxCollide.Box(0.2, 0.2, 0.2), hyx.AffineMatrix4x4(hyx.Vec3(0.7, 0, 0)))
    geometry = hyxCollide.Geometry(compound)
    hyxOSG.createVisual(geometry, studio.root)
    picture = studio.picture()
    left = sum(1 for y in range(128) for x in range(64) if max(picture.pixel(x, y)) > 12)
    right = sum(1 for y in range(128) for x in range(64, 128) if max(picture.pixel(x, y)) > 12)
    assert left > 100 and right > 100 and max(picture.center()) < 12


def test_detail_ratio_changes_the_number_of_facets():
    def vertices(detail):
        root = osg.Group()
        geometry = hyxCollide.Geometry(hyxCollide.Sphere(1))
        shape = hyxOSG.createVisual(geometry, root, detail).getChild(0)
        return shape.asGroup().getChild(0).asGeode().getDrawable(0).asGeometry().getNumVertices()

    assert vertices(2.0) > 3 * vertices(1.0) > 3 * vertices(0.3)
    for bad in (0.0, -1.0, float("nan"), float("inf")):
        with pytest.raises(RuntimeError, match="detail ratio"):
            vertices(bad)


def test_shapes_of_one_form_share_one_mesh():
    root = osg.Group()
    geometries = [hyxCollide.Geometry(hyxCollide.Box(size, 1, 1)) for size in (1, 2)]
    nodes = [hyxOSG.createVisual(geometry, root) for geometry in geometries]
    meshes = [node.getChild(0).asGroup().getChild(0).asGeode().getDrawable(0) for node in nodes]
    assert meshes[0] == meshes[1]
    assert nodes[0].getBound().radius() < nodes[1].getBound().radius()


def test_null_objects_give_nothing(studio):
    geometry = hyxCollide.Geometry(hyxCollide.Sphere(1))
    assert hyxOSG.createVisual(geometry, None) is None
    body = hyx.RigidBody()
    assert hyxOSG.createVisual(body, None) is None
    assert hyxOSG.createVisualUpdater(None, studio.root) is None
    assert hyxOSG.createVisualTemplateCaching(None, studio.root) is None
    assert studio.root.getNumChildren() == 0


def test_the_visual_of_a_body_follows_it(studio):
    body = body_of(hyxCollide.Box(0.2, 0.2, 0.2))
    group = hyxOSG.createVisual(body, studio.root)
    hyxOSG.setDiffuseColor(group, hyx.Vec4f(1, 0, 0, 1))
    node = hyxOSG.findGeometryNode(body.getGeometries()[0], studio.root)
    body.setPosition(hyx.Vec3(0.8, 0, 0))
    picture = studio.picture()
    assert place(node) == [0.8, 0, 0]
    assert max(picture.center()) < 12 and picture.lit() > 100
    body.setPosition(hyx.Vec3(0, 0, 0))
    assert max(studio.picture().center()) > 12


def test_sensors_are_drawn_only_when_asked_for():
    geometry = hyxCollide.Geometry(hyxCollide.Box(1, 1, 1))
    geometry.setSensor(True)
    root = osg.Group()
    assert hyxOSG.createVisual(geometry, root).getNumChildren() == 0
    assert hyxOSG.createVisual(geometry, root, 1.0, True).getNumChildren() == 1


def test_auto_remove_is_chosen_with_the_last_argument():
    geometry = hyxCollide.Geometry(hyxCollide.Box(1, 1, 1))
    root = osg.Group()
    assert hyxOSG.createVisual(geometry, root).getAutoRemove() is True
    assert hyxOSG.createVisual(geometry, root, 1.0, False, False).getAutoRemove() is False


def test_a_changed_shape_gets_a_new_picture(studio):
    box = hyxCollide.Box(0.2, 0.2, 0.2)
    geometry = hyxCollide.Geometry(box)
    hyxOSG.createVisual(geometry, studio.root)
    before = studio.picture().lit()
    box.setHalfExtents(hyx.Vec3(0.4, 0.4, 0.4))
    assert studio.picture().lit() > 2 * before


def test_an_assembly_is_drawn_with_its_parts(studio):
    inner, outer = hyxSDK.Assembly("inner"), hyxSDK.Assembly("outer")
    inner.add(body_of(hyxCollide.Sphere(0.2)))
    outer.add(body_of(hyxCollide.Sphere(0.3)))
    outer.add(inner)
    group = hyxOSG.createVisual(outer, studio.root)
    assert group.getName() == "outer" and group.getNumChildren() == 2
    assert group.getChild(1).getName() == "inner"
    assert studio.picture().lit() > 100


def test_a_cache_shares_the_nodes_of_one_shape():
    shape = hyxCollide.Sphere(0.5)
    assembly = hyxSDK.Assembly()
    for _ in range(3):
        assembly.add(body_of(shape))

    def shape_nodes(group):
        return [group.getChild(i).asGroup().getChild(0).asGroup().getChild(0) for i in range(3)]

    root, cache = osg.Group(), hyxOSG.RigidBodyRenderCache()
    plain = shape_nodes(hyxOSG.createVisualTemplateCaching(assembly, root))
    assert plain[0] != plain[1] and cache.size() == 0
    shared = shape_nodes(hyxOSG.createVisualTemplateCaching(assembly, root, cache))
    assert shared[0] == shared[1] == shared[2] and cache.size() == 1
    again = shape_nodes(hyxOSG.createVisualTemplateCaching(assembly, root, cache, 1.0, True))
    assert again[0] == shared[0]
    finer = shape_nodes(hyxOSG.createVisualTemplateCaching(assembly, root, cache, 2.0))
    assert finer[0] != shared[0] and cache.size() == 2
    shape.setRadius(0.7)
    changed = shape_nodes(hyxOSG.createVisualTemplateCaching(assembly, root, cache))
    assert changed[0] != shared[0]
    cache.clear()
    assert cache.size() == 0


def test_bodies_of_a_simulation_come_and_go_with_their_visuals(studio):
    simulation = hyxSDK.Simulation()
    simulation.setGravity(hyx.Vec3(0, 0, 0))
    first, later = body_of(hyxCollide.Sphere(0.2)), body_of(hyxCollide.Sphere(0.3))
    simulation.add(first)
    group = hyxOSG.createVisual(simulation, studio.root)
    assert group.getNumChildren() == 1
    simulation.add(later)
    assert group.getNumChildren() == 2
    assert hyxOSG.findGeometryNode(later.getGeometries()[0], group) is not None
    simulation.remove(first)
    assert group.getNumChildren() == 1
    assert hyxOSG.findGeometryNode(first.getGeometries()[0], group) is None
    extra = hyxCollide.Geometry(hyxCollide.Box(0.1, 0.1, 0.1))
    later.add(extra)
    assert hyxOSG.findGeometryNode(extra, group) is not None
    studio.clear()
    simulation.add(first)  # the group is gone: nobody draws, nobody crashes
    assert hyxOSG.findGeometryNode(first.getGeometries()[0], studio.root) is None


def test_an_updater_draws_what_its_listener_adds(studio):
    class Maker(hyxSDK.EventListener):
        steps = 0

        def post(self, time):
            self.steps += 1

    simulation, root = hyxSDK.Simulation(), studio.root
    waiting = Maker()
    updater = hyxOSG.createVisualUpdater(waiting, root)
    simulation.add(updater)
    simulation.step()
    assert waiting.steps == 1
    joined = Maker()
    simulation.add(joined)
    assert hyxOSG.createVisualUpdater(joined, root).getSimulation() == simulation
    simulation.step()
    assert (waiting.steps, joined.steps) == (2, 1)
    body = body_of(hyxCollide.Sphere(0.1))
    simulation.add(body)
    assert hyxOSG.findGeometryNode(body.getGeometries()[0], root) is not None
    simulation.cleanup()


def test_the_connection_names_the_places_of_the_geometries():
    body = hyx.RigidBody()
    for size in (0.1, 0.2, 0.3):
        body.add(hyxCollide.Geometry(hyxCollide.Sphere(size)))
    root = osg.Group()
    connection = hyxOSG.createVisualWithGeometryConnection(body, root)
    group = connection.getGroup()
    assert connection.getPlaces() == [0, 1, 2]
    for i, geometry in enumerate(body.getGeometries()):
        assert group.getChild(connection.getPlaces()[i]) == hyxOSG.findGeometryNode(geometry, root)
    assert hyxOSG.createVisualWithGeometryConnection(None, root).getGroup() is None


def test_an_observer_frame_is_drawn_as_axes_that_follow_it(studio):
    body = body_of(hyxCollide.Sphere(0.1))
    frame = hyx.ObserverFrame(body, hyx.AffineMatrix4x4(hyx.Vec3(0, 0, 0.5)))
    axes = hyxOSG.createVisual(frame, studio.root, 0.5)
    body.setPosition(hyx.Vec3(1, 0, 0))
    assert studio.picture().count(red) > 5
    assert place(axes) == [1, 0, 0.5]
    assert hyxOSG.createVisual(frame, studio.root).getBound().radius() > 1.5 * axes.getBound().radius()


def test_finders_search_only_below_their_root():
    geometry = hyxCollide.Geometry(hyxCollide.Sphere(1))
    here, there = osg.Group(), osg.Group()
    node = hyxOSG.createVisual(geometry, here)
    assert hyxOSG.findGeometryNode(geometry, here) == node
    assert hyxOSG.findGeometryNode(geometry, there) is None
    second = hyxOSG.createVisual(geometry, here)
    assert hyxOSG.findGeometryNode(geometry, here) == node != second
    assert hyxOSG.findGeometryNode(None, here) is None and hyxOSG.findGeometryNode(geometry, None) is None
    assert hyxOSG.findRigidBodySystemDrawable(here) is None
    assert hyxOSG.findFrameTrajectoryDrawable(here) is None
    assert hyxOSG.findParticleSystemDrawable(here) is None


def test_five_thousand_visuals_are_made_and_updated_in_time():
    bodies = [body_of(hyxCollide.Box(0.1 + i % 7, 0.1, 0.1)) for i in range(5000)]
    root = osg.Group()
    start = time.thread_time()
    for body in bodies:
        hyxOSG.createVisual(body, root)
    made = time.thread_time() - start
    updates = []
    for turn in range(5):
        for i, body in enumerate(bodies):
            body.setPosition(hyx.Vec3(i, turn, 0))
        start = time.thread_time()
        visit(root)
        root.getBound()
        updates.append(time.thread_time() - start)
    assert place(hyxOSG.findGeometryNode(bodies[4999].getGeometries()[0], root)) == [4999, 4, 0]
    assert made < 1 and min(updates) < 1 / 60, (made, updates)
