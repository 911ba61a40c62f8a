"""Pictures into images show the shadows and outlines that the window shows."""

import hyx
import hyxOSG
import hyxRender
import numpy
import pytest
from decorated_stage import CASTS, HEIGHT, WIDTH, stage
from hyxOSG import RenderTarget, SceneDecorator

EYE = hyx.Vec3(0, -7, 5), hyx.Vec3(0, 0, 0.4), hyx.Vec3(0, 0, 1)
FORMS = [(method, 0) for method in range(SceneDecorator.NO_SHADOWS)] + [
    (SceneDecorator.SHADOWVOLUME, 4),
    (SceneDecorator.SHADOWMAP, 4),
]


@pytest.fixture
def target(stage, request):
    """The window's view, drawn into an image."""
    made = hyxOSG.RenderToImage(
        WIDTH, HEIGHT, RenderTarget.COLOR_BUFFER, getattr(request, "param", 0), RenderTarget.RGB
    )
    made.setViewMatrixAsLookAt(*EYE)
    stage.app.addRenderTarget(made)
    stage.visuals["ground"].setNodeMask(0xFFFFFFFF & ~CASTS)
    yield made
    stage.app.removeRenderTarget(made)


def drawn(stage, target):
    for _ in range(2):
        stage.picture()
    return numpy.array(target.pixels).astype(int)


@pytest.mark.parametrize("method, target", FORMS, indirect=["target"])
def test_shadows_fall_in_the_image_too(stage, target, method):
    plain = drawn(stage, target)
    stage.decorator.setShadowMethod(method)
    stage.decorator.setEnableShadows(True)
    darker = (plain - drawn(stage, target)).sum(axis=2) > 60
    assert 200 < darker.sum() < 8000, "a shadow, not darkness all over"


def test_outlines_are_drawn_in_the_image_too(stage, target):
    visual = stage.visuals["box"]
    hyxOSG.setEnableOutline(visual, True, hyxRender.Color(0, 1, 0, 1), 4.0)
    green = drawn(stage, target)
    hyxOSG.setEnableOutline(visual, False)
    assert ((green[..., 1] > 200) & (green[..., 0] < 60)).sum() > 100
