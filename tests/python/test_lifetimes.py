"""Proxies keep what they show alive, are the same for the same object, and let go of it; each in a fresh process."""

import textwrap

import pytest
from subprocesses import run_python

BEGIN = """
import faulthandler
faulthandler.enable()
import gc, weakref
import hyx, hyxCollide, hyxOSG, hyxSDK, osg

def application(width=64, height=48):
    app = hyxOSG.ExampleApplication()
    app.init(None)
    app.initSimulation(hyxSDK.Simulation())
    app.initViewer(width, height, True)
    return app

def box(size=0.5):
    return hyxCollide.Geometry(hyxCollide.Box(size, size, size))

def sphere():
    return hyxOSG.createSphere(hyx.Vec3(), hyx.Vec4(1, 0, 0, 1), 0.5)

def churn():
    "Takes up the memory that a dead object would leave."
    return [osg.Group() for _ in range(200)]
"""

OUTLIVE = {
    "visual without a parent": """
        root = osg.Group()
        node = sphere()
        for _ in range(3):
            root.addChild(node)
            root.removeChild(node)
            churn()
        root.addChild(node)
        assert root.getNumChildren() == 1
    """,
    "visual whose root has gone": """
        def make(body):
            return hyxOSG.createVisual(body, osg.Group())
        body = hyx.RigidBody(box())
        node = make(body)
        churn()
        node.setName("mine")
        assert node.getName() == "mine"
        osg.Group().addChild(node)
    """,
    "visual that was taken away": """
        app = application()
        body = hyx.RigidBody(box())
        app.getSimulation().add(body)
        node = hyxOSG.createVisual(body, app.getSceneRoot())
        app.step()
        app.getSceneRoot().removeChild(node)
        app.step(); churn(); app.step()
        app.getSceneRoot().addChild(node)
        app.step()
    """,
    "simulation after another one": """
        app = application()
        first = app.getSimulation()
        app.initSimulation(hyxSDK.Simulation())
        churn()
        first.add(hyx.RigidBody(box()))
        first.step()
    """,
    "camera after another window": """
        app = application()
        camera, viewer, handler = app.getCamera(), app.getViewer(), app.getPickHandler()
        app.initViewer(80, 60, True)
        churn()
        camera.setName("old")
        assert viewer.getCamera() is camera and camera.getName() == "old"
        handler.pick(1, 1)
    """,
    "pick handler after another set-up": """
        app = application()
        handler = app.getPickHandler()
        app.setupViewer(False, False)
        churn()
        app.step()
        handler.pick(1, 1)
    """,
    "text that was removed": """
        root = osg.Group()
        geometry = box()
        body = hyx.RigidBody(geometry)
        hyxOSG.createVisual(body, root)
        hyxOSG.addText(geometry, root, "text")
        text = hyxOSG.findText(geometry, root)
        hyxOSG.removeText(geometry, root)
        churn()
        text.setName("removed")
        assert text.getName() == "removed"
    """,
    "root and camera of a window that has gone": """
        window = hyxOSG.EmbeddedGLWindow()
        root, camera = window.getRoot(), window.getCamera()
        del window
        churn()
        if root:
            root.addChild(sphere())
        if camera:
            camera.setName("left")
    """,
    "nodes of a former scene": """
        app = application()
        node = sphere()
        app.getSceneRoot().addChild(node)
        child = app.getSceneRoot().getChild(0)
        assert child is node
        app.clearScene(); churn(); app.step()
        child.setName("former")
        app.getSceneRoot().addChild(child)
        app.step()
    """,
    "pixels after another size": """
        target = hyxOSG.RenderToImage(64, 48)
        pixels, image = target.pixels, target.getImage()
        target.setSize(640, 480)
        pixels[:] = 7
        del target
        churn()
        assert (pixels == 7).all() and len(image.getData()) > 0
    """,
    "render target that was removed": """
        app = application()
        target = hyxOSG.RenderToImage(64, 48)
        app.addRenderTarget(target, app.getSceneRoot())
        app.step()
        app.removeRenderTarget(target)
        app.step()
        app.addRenderTarget(target, app.getSceneRoot())
        camera = target.getCamera()
        del target
        app.step()
        camera.setName("left")
    """,
    "a second native object of one Python object": """
        node = hyxOSG.RigidBodyRenderCache()
        node.__class__ = hyxOSG.SplineShader
        node.__init__()
        for _ in range(3):
            assert node.asGeode() is not None
            churn()
        node.className()
    """,
    "what a flat function has deleted, while others held it": """
        import _hyx
        simulation, body = hyxSDK.Simulation(), hyx.RigidBody()
        simulation.add(body)
        for given in (body, simulation.getRigidBodies()[0]):
            for _ in range(3):
                try:
                    _hyx.delete_Referenced(given)
                except TypeError:
                    pass
        (left,) = simulation.getRigidBodies()
        simulation.remove(left)
        del left, simulation
        churn()
        try:
            body.getPosition()
        except TypeError as error:
            assert "holds no native one" in str(error)
        else:
            raise AssertionError("the body has ended")
    """,
    "a listener that flat functions have deleted, before and while it is called": """
        import _hyxSDK
        class Listener(hyxSDK.EventListener):
            def pre(self, time):
                called.append(_hyxSDK.delete_EventListener(self))
        called, listener, simulation = [], Listener(), hyxSDK.Simulation()
        simulation.add(listener)
        for _ in range(3):
            _hyxSDK.delete_EventListener(listener)
        for _ in range(3):
            simulation.step()
            churn()
        assert len(called) == 3
        simulation.remove(listener)
        del listener
        churn()
        simulation.step()
        assert len(called) == 3
    """,
    "members of an object that has gone": """
        data = hyxOSG.LidarOutputRendererLegendPoint(1, osg.Vec4f(1, 2, 3, 4)).color
        churn()
        assert tuple(data) == (1, 2, 3, 4)
    """,
}


def run(program):
    result = run_python(BEGIN + textwrap.dedent(program) + "\nprint('END')", HYX_DISPLAY="offscreen")
    assert result.returncode == 0 and result.stdout.endswith("END\n"), result.stdout + result.stderr[-3000:]


@pytest.mark.parametrize("program", OUTLIVE.values(), ids=OUTLIVE.keys())
def test_held_objects_outlive_who_gave_them(program):
    run(program)


def test_the_same_object_is_the_same_proxy_of_its_true_class():
    run("""
        group, node = osg.Group(), hyxOSG.GeometryNode()
        group.addChild(node)
        assert group.getChild(0) is node
        address = int(node.this)
        del node
        again = group.getChild(0)
        assert type(again) is hyxOSG.GeometryNode and again is group.getChild(0) and int(again.this) == address
        simulation = hyxSDK.Simulation()
        body = hyx.RigidBody(box())
        simulation.add(body)
        assert simulation.getRigidBodies()[0] is body
    """)


def test_attributes_of_derived_objects_come_back():
    run("""
        class Crate(hyx.RigidBody):
            def __init__(self, load):
                super().__init__(box())
                self.load = load
        simulation = hyxSDK.Simulation()
        crate = Crate(5)
        simulation.add(crate)
        assert simulation.getRigidBodies()[0] is crate and simulation.getRigidBodies()[0].load == 5
        number = int(crate.this)
        del crate
        gc.collect()
        back, = simulation.getRigidBodies()
        assert type(back) is Crate and back.load == 5 and int(back.this) == number
        back.load = 6
        del back
        gc.collect()
        back, = simulation.getRigidBodies()
        watch = weakref.ref(back)
        assert back.load == 6
        simulation.remove(back)
        del back
        assert watch() is None
        class Load:
            pass
        crate = Crate(Load())
        watch = weakref.ref(crate.load)
        simulation.add(crate)
        del crate
        gc.collect()
        assert watch() is not None
        simulation.remove(simulation.getRigidBodies()[0])
        gc.collect()
        assert watch() is None
        class Listener(hyxOSG.ExampleApplicationListener):
            def preFrame(self, given):
                self.given = given
        app, listener = application(), Listener()
        app.addListener(listener)
        app.step()
        assert listener.given is app
    """)


def test_addresses_that_are_used_again_show_the_new_object():
    run("""
        for _ in range(2000):
            group = osg.Group()
            group.addChild(osg.Group())
            child = group.getChild(0)
            assert child.getNumChildren() == 0 and child is group.getChild(0)
            child.addChild(osg.Group())
    """)
