"""The scene graph's own classes, as far as scripts need them."""

import gc
import math

import hyx
import osg
import osgDB
import osgGA
import osgText
import osgViewer
import pytest

VECTORS = [(osg.Vec2f, 2), (osg.Vec3f, 3), (osg.Vec4f, 4), (osg.Vec3d, 3)]


@pytest.mark.parametrize("kind, size", VECTORS)
def test_vectors_are_sequences_with_arithmetic(kind, size):
    numbers = [1.5 + i for i in range(size)]
    value = kind(*numbers)
    assert list(value) == numbers == list(kind(numbers)) and len(value) == size
    assert value == kind(*numbers) and value != kind()
    value[-1] = 9
    assert value[size - 1] == 9 and value.x == 1.5
    value.y = 4
    assert value[1] == 4
    assert list(value + value) == [2 * n for n in value] == list(value * 2.0)
    assert list(-value) == [-n for n in value] and list(value - value) == [0] * size
    assert repr(kind()) == f"osg.{kind.__name__}({', '.join('0' * size)})"
    with pytest.raises(IndexError):
        value[size]
    with pytest.raises(ValueError):
        kind([1] * (size + 1))


def test_vectors_of_floats_have_two_names():
    assert osg.Vec3 is osg.Vec3f and osg.Vec4 is osg.Vec4f and osg.Matrix is osg.Matrixd


def test_matrices_act_from_the_left():
    move, grow = osg.Matrix.translate(1, 2, 3), osg.Matrix.scale(osg.Vec3d(2, 2, 2))
    assert list((move * grow).transform(osg.Vec3d(1, 0, 0))) == [4, 4, 6]
    assert list((move * move.inverse()).getTrans()) == [0, 0, 0]
    assert list(move.getTrans()) == [1, 2, 3] and list(grow.getScale()) == [2, 2, 2] and osg.Matrix().isIdentity()
    quarter = osg.Matrix.rotate(osg.Quat(1.5707963267948966, osg.Vec3d(0, 0, 1)))
    assert list(quarter.transform(osg.Vec3d(1, 0, 0))) == pytest.approx([0, 1, 0])
    assert move.get(3, 0) == 1
    with pytest.raises(IndexError):
        move.get(4, 0)
    with pytest.raises(RuntimeError, match="no inverse"):
        osg.Matrix.scale(0, 0, 0).inverse()


def test_groups_hold_their_children():
    group, child, other = osg.Group(), osg.Group(), osg.Geode()
    child.setName("child")
    assert group.addChild(child) and group.insertChild(0, other) and not group.addChild(None)
    assert group.getNumChildren() == 2 and group.getChild(1).getName() == "child" and group.getChildIndex(child) == 1
    assert group.containsNode(other) and child.getNumParents() == 1 and child.getParent(0) == group
    assert group.replaceChild(other, osg.Switch()) and not group.removeChild(other) and group.removeChild(child)
    for call in (lambda: group.getChild(5), lambda: child.getParent(0), lambda: group.setChild(7, child)):
        with pytest.raises(IndexError):
            call()


def test_python_objects_keep_their_nodes_alive():
    group = osg.Group()
    group.addChild(osg.Group())
    child = group.getChild(0)
    assert child.referenceCount() == 2
    del group
    gc.collect()
    assert child.referenceCount() == 1 and child.getNumParents() == 0


def test_nodes_tell_their_class_and_what_they_are():
    geode, mesh = osg.Geode(), osg.Geometry()
    geode.addDrawable(mesh)
    node = geode.getDrawable(0)
    assert (node.className(), node.libraryName()) == ("Geometry", "osg")
    assert node.asGeometry() == mesh and node.asGroup() is None
    assert geode.asGeode() == geode and osg.MatrixTransform().asMatrixTransform() is not None
    assert geode.removeDrawable(mesh) and geode.getNumDrawables() == 0


def test_meshes_are_made_point_by_point():
    mesh = osg.Geometry()
    mesh.setVertexArray([(0, 0, 0), (2, 0, 0), (0, 2, 0)])
    mesh.setNormalArray([(0, 0, 1)] * 3)
    mesh.setColorArray([(1, 0, 0, 1)])
    mesh.setTexCoordArray([(0, 0), (1, 0), (0, 1)])
    mesh.addElements(4, [0, 1, 2])
    assert mesh.getNumVertices() == 3 and mesh.getNumPrimitiveSets() == 1
    assert (
        list(mesh.getVertex(1)) == [2, 0, 0]
        and list(mesh.getNormal(2)) == [0, 0, 1]
        and list(mesh.getColor(2)) == [1, 0, 0, 1]
    )
    assert list(mesh.getBoundingBox().upper()) == [2, 2, 0]
    with pytest.raises(IndexError):
        mesh.addElements(4, [0, 1, 3])
    with pytest.raises(ValueError):
        mesh.setVertexArray([(1, 2)])


def test_state_sets_hold_modes_materials_and_uniforms():
    state = osg.Group().getOrCreateStateSet()
    material = osg.Material()
    material.setDiffuse(osg.Vec4f(0.1, 0.2, 0.3, 1))
    material.setShininess(12.0)
    state.setAttributeAndModes(material)
    state.setMode(0x0B50, osg.StateAttribute_OFF)  # GL_LIGHTING
    state.addUniform(osg.Uniform("u", 0.5))
    assert state.getMaterial() == material and material.getShininess() == 12
    assert state.getAttribute(osg.StateAttribute_MATERIAL) is not None and state.getTexture(0) is None
    assert state.getMode(0x0B50) == 0 and state.getUniform("u").getFloat() == 0.5 and state.getUniform("v") is None
    program = osg.Program()
    assert program.addShader(osg.Shader(osg.Shader_VERTEX, "void main() {}")) and program.getNumShaders() == 1


@pytest.mark.parametrize("unit", [32, 2**31])
def test_texture_units_are_few(unit):
    with pytest.raises(RuntimeError, match="the last one is 31"):
        osg.StateSet().setTextureAttributeAndModes(unit, osg.Texture2D())


def test_images_give_and_take_pixels():
    image = osg.Image(4, 2)
    assert (image.s(), image.t(), len(image.getData())) == (4, 2, 24)
    image.setColor(osg.Vec4f(1, 0, 0, 1), 3, 1)
    assert list(image.getColor(3, 1)) == [1, 0, 0, 1] and image.getData()[-3:] == b"\xff\0\0"
    image.setData(bytes(range(24)))
    assert image.getData() == bytes(range(24))
    with pytest.raises(IndexError):
        image.getColor(4, 0)
    with pytest.raises(RuntimeError, match="24 bytes"):
        image.setData(b"few")
    with pytest.raises(RuntimeError, match="1 to 32768"):
        osg.Image(0, 1)


def test_images_and_nodes_are_written_and_read(tmp_path):
    image = osg.Image(2, 2)
    image.setColor(osg.Vec4f(0, 1, 0, 1), 0, 0)
    assert osgDB.writeImageFile(image, str(tmp_path / "a.png"))
    assert list(osgDB.readImageFile(str(tmp_path / "a.png")).getColor(0, 0)) == [0, 1, 0, 1]
    assert osgDB.readImageFile(str(tmp_path / "none.png")) is None
    group = osg.Group()
    group.setName("kept")
    assert osgDB.writeNodeFile(group, str(tmp_path / "a.osgt"))
    assert osgDB.readNodeFile(str(tmp_path / "a.osgt")).getName() == "kept"
    assert osgDB.Options("x y").getOptionString() == "x y"


def test_cameras_and_viewers():
    viewer, scene = osgViewer.Viewer(), osg.Group()
    viewer.setSceneData(scene)
    camera = viewer.getCamera()
    camera.setClearColor(osg.Vec4f(0.5, 0.25, 0, 1))
    camera.setViewport(0, 0, 30, 20)
    camera.setViewMatrixAsLookAt(osg.Vec3d(0, 0, 5), osg.Vec3d(), osg.Vec3d(0, 1, 0))
    assert viewer.getSceneData() == scene and list(camera.getClearColor()) == [0.5, 0.25, 0, 1]
    assert (camera.getViewport().width(), camera.getViewport().height()) == (30, 20)
    assert list(camera.getViewMatrix().transform(osg.Vec3d())) == pytest.approx([0, 0, -5])
    viewer.setCameraManipulator(osgGA.TrackballManipulator())
    assert viewer.getCameraManipulator().className() == "TrackballManipulator"
    orbit = osgGA.OrbitManipulator()
    orbit.setCenter(osg.Vec3d(1, 2, 3))
    orbit.setDistance(7.0)
    assert list(orbit.getCenter()) == [1, 2, 3] and orbit.getDistance() == 7


@pytest.mark.parametrize(
    "name, good",
    [
        ("setProjectionMatrixAsPerspective", (45.0, 1.0, 0.1, 10.0)),
        ("setProjectionMatrixAsOrtho", (-1.0, 1.0, -1.0, 1.0, 0.1, 10.0)),
        ("setViewport", (0, 0, 64, 48)),
    ],
)
def test_a_camera_refuses_what_gives_no_picture(name, good):
    camera = osgViewer.Viewer().getCamera()
    getattr(camera, name)(*good)
    before = list(camera.getProjectionMatrix().transform(osg.Vec3d(0.1, 0.2, -3)))
    bad = [good[:-1] + (good[-2] * (name != "setViewport"),)]
    if name != "setViewport":
        bad += [good[:i] + (value,) + good[i + 1 :] for i in range(len(good)) for value in (math.nan, math.inf)]
    for wrong in bad:
        with pytest.raises(ValueError):
            getattr(camera, name)(*wrong)
    assert list(camera.getProjectionMatrix().transform(osg.Vec3d(0.1, 0.2, -3))) == before


def test_events_are_put_into_the_queue():
    queue = osgGA.EventQueue()
    queue.setMouseInputRange(0.0, 0.0, 100.0, 100.0)
    queue.mouseMotion(1.0, 2.0)
    queue.mouseButtonPress(1.0, 2.0, 1)
    queue.mouseButtonRelease(1.0, 2.0, 1)
    queue.mouseScroll(osg.GUIEventAdapter_SCROLL_UP)
    queue.keyPress(ord("a"))
    queue.keyRelease(ord("a"))
    assert queue.getNumEvents() == 6


def test_text_keeps_letters_beyond_ascii():
    text = osgText.Text()
    text.setText("åα")
    text.setPosition(osg.Vec3f(1, 2, 3))
    text.setColor(osg.Vec4f(1, 0, 0, 1))
    text.setCharacterSize(2.0)
    assert text.getText() == "åα" and list(text.getPosition()) == [1, 2, 3]
    assert list(text.getColor()) == [1, 0, 0, 1] and text.getCharacterHeight() == 2


def test_classes_of_other_packages_are_refused():
    with pytest.raises(TypeError):
        osg.Group().addChild(hyx.Vec3())
