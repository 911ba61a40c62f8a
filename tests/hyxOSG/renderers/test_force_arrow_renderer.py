"""Force arrows: as long as the force, along it, and refreshed by every step."""

import math

import hyx
import hyxCollide
import hyxOSG
import hyxRender
import pytest
from hyxOSG import ForceArrowRenderer
from physics_scene import GRAVITY

MASS = 10.0
WEIGHT = MASS * GRAVITY


def color(r, g, b):
    return hyxRender.Color(float(r), float(g), float(b), 1.0)


def red(r, g, b):
    return r > 60 and g < r / 3 and b < r / 3


def green(r, g, b):
    return g > 60 and r < g / 3 and b < g / 3


def extent(rows):
    return max(rows) - min(rows) + 1 if rows else 0


@pytest.fixture
def arrows(stage):
    renderer = ForceArrowRenderer()
    renderer.setScale(1 / WEIGHT)  # one metre for the weight of a test body
    stage.simulation.add(renderer)
    return renderer


def resting_box(stage, x=0.0):
    floor = hyxCollide.Geometry(hyxCollide.Box(1.0, 1.0, 0.1))
    floor.setLocalPosition(hyx.Vec3(x, 0, -0.1))
    stage.simulation.add(floor)
    box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.2, 0.2, 0.2)))
    box.setMass(MASS)
    box.setPosition(hyx.Vec3(x, 0, 0.2))
    stage.simulation.add(box)
    return box


def hanging_rod(stage):
    """A rod held level against its weight by the motor of a hinge about the Y axis, whose torque is the weight's."""
    rod = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.5, 0.05, 0.05)))
    rod.setMass(MASS)
    rod.setPosition(hyx.Vec3(0.5, 0, 0))
    stage.simulation.add(rod)
    frame = hyx.Frame()
    frame.setLocalTranslate(hyx.Vec3(-0.5, 0, 0))
    frame.setLocalRotate(hyx.Quat(math.pi / 2, hyx.Vec3(1, 0, 0)))
    hinge = hyx.Hinge(rod, frame)
    hinge.getMotor1D().setEnable(True)
    hinge.getMotor1D().setSpeed(0.0)
    stage.simulation.add(hinge)
    return hinge


def test_a_body_at_rest_shows_what_carries_it(stage, arrows):
    assert arrows.add(resting_box(stage), hyx.Vec3(0, 0, 0), color(1, 0, 0))
    stage.step(60)
    one = extent(stage.shoot().rows_of(red))
    arrows.setScale(2 / WEIGHT)
    stage.step()
    two = extent(stage.shoot().rows_of(red))
    assert one > 8 and two == pytest.approx(2 * one, abs=3)


def test_a_falling_body_shows_nothing(stage, arrows):
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.2, 0.2, 0.2)))
    stage.simulation.add(body)
    arrows.add(body, hyx.Vec3(0, 0, 0))
    stage.step(5)
    assert stage.shoot().reddish() == 0


def test_an_added_force_points_its_way(stage, arrows):
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.2, 0.2, 0.2)))
    body.setMass(MASS)
    stage.simulation.add(body)
    stage.simulation.setGravity(hyx.Vec3(0, 0, 0))
    arrows.add(body, hyx.Vec3(0, 0, 0))
    body.addForce(hyx.Vec3(2 * WEIGHT, 0, 0))
    stage.step()
    picture = stage.shoot()
    assert extent(picture.columns_of(red)) > 3 * extent(picture.rows_of(red))


def test_the_attachment_moves_the_arrow_with_the_body(stage, arrows):
    box = resting_box(stage)
    arrows.add(box, hyx.Vec3(1.0, 0, 0), color(1, 0, 0))
    stage.step(60)
    columns = stage.shoot().columns_of(red)
    assert min(columns) > stage.shoot().size[0] / 2


def test_a_constraint_shows_the_forces_asked_for(stage, arrows):
    hinge = hanging_rod(stage)
    arrows.setScale(2 / WEIGHT)
    assert arrows.add(hinge, hyx.Vec3(0, 0, 0), color(1, 0, 0))
    stage.app.setCameraHome(hyx.Vec3(8, 0, 0), hyx.Vec3(0, 0, 0), hyx.Vec3(0, 0, 1))
    stage.step(30)
    assert abs(hinge.getMotor1D().getCurrentForce()) == pytest.approx(WEIGHT / 2, rel=0.05)
    shown = extent(stage.shoot().columns_of(red))
    assert shown > 8
    arrows.remove(hinge)
    others = hyxOSG.ForceArrowRenderer_RANGE1D | hyxOSG.ForceArrowRenderer_LOCK1D
    arrows.add(hinge, hyx.Vec3(0, 0, 0), color(1, 0, 0), others)
    stage.step()
    assert stage.shoot().reddish() == 0
    arrows.remove(hinge)
    arrows.add(hinge, hyx.Vec3(0, 0, 0), color(1, 0, 0), hyxOSG.ForceArrowRenderer_ALL)
    stage.step()
    assert extent(stage.shoot().columns_of(red)) == pytest.approx(shown, abs=2)


def test_the_motor_is_the_default():
    assert hyxOSG.ForceArrowRenderer_DEFAULT == hyxOSG.ForceArrowRenderer_MOTOR1D == 1
    assert hyxOSG.ForceArrowRenderer_ALL == 7


@pytest.mark.parametrize("mask", [8, -1])
def test_other_statistics_are_refused(stage, arrows, mask):
    with pytest.raises(RuntimeError, match="MOTOR1D, RANGE1D and LOCK1D"):
        arrows.add(hanging_rod(stage), hyx.Vec3(0, 0, 0), color(1, 0, 0), mask)


def test_each_body_and_constraint_has_one_arrow(stage, arrows):
    box, hinge = resting_box(stage), hanging_rod(stage)
    at = hyx.Vec3(0, 0, 0)
    assert arrows.add(box, at) and not arrows.add(box, at)
    assert arrows.add(hinge, at, color(0, 0, 1)) and not arrows.add(hinge, at, color(0, 0, 1))
    arrows.remove(box)
    assert arrows.add(box, at)


def test_colors_change_and_arrows_go(stage, arrows):
    box = resting_box(stage)
    arrows.add(box, hyx.Vec3(0, 0, 0), color(1, 0, 0))
    stage.step(30)
    assert stage.shoot().reddish() > 20
    arrows.setColor(box, color(0, 1, 0))
    picture = stage.shoot()
    assert picture.reddish() == 0 and len(picture.rows_of(green)) > 20
    arrows.remove(box)
    assert not stage.shoot().rows_of(green)


def test_smoothing_lets_the_arrow_grow_slowly(stage, arrows):
    def length_after(steps, smooth):
        renderer = ForceArrowRenderer()
        renderer.setScale(2 / WEIGHT)
        renderer.setSmoothFactor(smooth)
        stage.simulation.add(renderer)
        box = resting_box(stage)
        stage.step(30)
        renderer.add(box, hyx.Vec3(0, 0, 0), color(1, 0, 0))
        stage.step(steps)
        length = extent(stage.shoot().rows_of(red))
        stage.simulation.remove(renderer)
        stage.simulation.remove(box)
        return length

    full = length_after(2, 0.0)
    assert 0 < length_after(2, 0.9) < 0.5 * full
    assert length_after(80, 0.9) == pytest.approx(full, abs=3)


def test_the_shape_of_arrows(stage, arrows):
    arrows.add(resting_box(stage), hyx.Vec3(0, 0, 0), color(1, 0, 0))
    stage.step(60)
    thin = stage.shoot().reddish()
    arrows.setArrowRadius(0.12)
    assert stage.shoot().reddish() > 1.8 * thin
    arrows.setConeHeight(0.6)
    assert (arrows.getArrowRadius(), arrows.getConeHeight()) == (0.12, 0.6)


def test_the_renderer_leaves_the_scene_with_the_simulation(stage, arrows):
    arrows.add(resting_box(stage), hyx.Vec3(0, 0, 0), color(1, 0, 0))
    stage.step(30)
    assert stage.shoot().reddish() > 20
    stage.simulation.remove(arrows)
    assert stage.shoot().reddish() == 0


@pytest.mark.parametrize(
    "name, values",
    [
        ("SmoothFactor", [-0.1, 1.0, math.nan]),
        ("ConeHeight", [-1.0, math.inf]),
        ("ArrowRadius", [0.0, -1.0, math.nan]),
        ("Scale", [math.inf, math.nan]),
    ],
)
def test_impossible_settings_are_refused(name, values):
    renderer = ForceArrowRenderer()
    before = getattr(renderer, f"get{name}")()
    for value in values:
        with pytest.raises(RuntimeError):
            getattr(renderer, f"set{name}")(value)
    assert getattr(renderer, f"get{name}")() == before


def test_nothing_can_be_added_or_removed():
    renderer = ForceArrowRenderer()
    renderer.remove(None)
    renderer.setColor(None, color(1, 0, 0))
    assert not renderer.add(None, hyx.Vec3(0, 0, 0))
    with pytest.raises(TypeError, match="ForceArrowRenderer.add.. argument 2 .* not None"):
        renderer.add(None, None)
