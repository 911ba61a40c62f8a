"""Light at each pixel: lamps and spots on large faces, and both sides of open meshes."""

import hyx
import hyxCollide
import pytest
from test_grounded_pictures import KEPT, SIZE, scene, whole_set  # noqa: F401


@pytest.fixture
def lamp(scene):
    """A lamp two metres above the middle of a large ground that is seen from above."""
    decorator = scene.decorator
    decorator.setEnableShaderState(True)
    decorator.setEnableCalculateLightPositions(decorator.ALL, False)
    light = decorator.getLightSource(decorator.LIGHT0)
    before = light.getPosition()
    light.setPosition(hyx.Vec4(0, 0, 2, 1))
    light.setDirection(hyx.Vec3(0, 0, -1))
    scene.add(hyxCollide.Box(10, 10, 0.1), (0, 0, -0.1))
    yield light
    light.setSpotCutoff(180)
    light.setPosition(before)
    decorator.setEnableCalculateLightPositions(decorator.ALL, True)
    decorator.setEnableShaderState(False)


ABOVE = (0, -0.01, 12)


@pytest.mark.parametrize("shadows", [False, True])
def test_a_lamp_over_a_large_ground_lights_what_is_below_it(scene, lamp, shadows):
    scene.decorator.setEnableShadows(shadows)
    picture = scene.picture(ABOVE)[..., 0]
    assert picture[SIZE // 2, SIZE // 2] > 1.5 * picture[SIZE // 2, 4]


@pytest.mark.parametrize("shadows", [False, True])
def test_a_spot_makes_a_round_cone(scene, lamp, shadows):
    scene.decorator.setEnableShadows(shadows)
    lamp.setSpotCutoff(26.565)  # a circle of one metre
    lit = scene.picture(ABOVE)[..., 0] > 140
    pixels_a_metre = SIZE / 2 / 12 / 0.41421
    assert lit.sum() == pytest.approx(3.1416 * pixels_a_metre**2, rel=0.1)


@pytest.mark.parametrize("program", [False, True])
def test_the_back_of_an_open_mesh_is_lit_as_its_front(scene, program):
    scene.decorator.setEnableShaderState(program)
    corners = [hyx.Vec3(x, y, 0) for x, y in ((-1, -1), (1, -1), (1, 1), (-1, 1))]
    seen = []
    for triangles in ([0, 1, 2, 0, 2, 3], [0, 2, 1, 0, 3, 2]):
        visual = scene.add(hyxCollide.Trimesh(corners, triangles))
        seen.append(scene.picture((0, -2, 3))[SIZE // 2, SIZE // 2, 0])
        scene.root.removeChild(visual)
    scene.decorator.setEnableShaderState(False)
    assert abs(seen[0] - seen[1]) <= 2 and seen[0] > 120
